// Stands in for the windows while a plot is applied.
#pragma once

#include <vector>

#include "document/apply_plot.h"

namespace korvinth::fuzzing {

class QuietHost final : public document::PlotHost
{
public:
    void StopAnimation() override {}
    void StoreRows(document::PlotDocument&) override {}
    void RowsChecked(const document::PlotDocument&) override {}
    void UpdateMapping() override {}
    void InitSlider(document::ParameterIndex) override {}
    std::vector<double> DisplayedArguments() const override
    {
        std::vector<double> arguments;
        for (int k = 0; k <= 20; ++k) arguments.push_back(-10 + k);
        return arguments;
    }
};

}  // namespace korvinth::fuzzing
