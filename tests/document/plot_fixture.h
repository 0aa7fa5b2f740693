// A plot document with parser and a host that stands in for the windows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

class RecordingHost : public PlotHost
{
public:
    void StopAnimation() override { calls.emplace_back("StopAnimation"); }
    void StoreRows(PlotDocument&) override { calls.emplace_back("StoreRows"); }
    void RowsChecked(const PlotDocument&) override { calls.emplace_back("RowsChecked"); }
    void UpdateMapping() override { calls.emplace_back("UpdateMapping"); }
    void InitSlider(ParameterIndex index) override
    {
        calls.emplace_back("InitSlider " + std::to_string(Number(index)));
    }
    std::vector<double> DisplayedArguments() const override
    {
        std::vector<double> arguments;
        for (int k = 0; k <= 200; ++k) arguments.push_back(-10 + k * 0.1);
        return arguments;
    }

    std::vector<std::string> calls;
};

class PlotTest : public testing::Test
{
protected:
    static constexpr SlotIndex Slot(int number)
    {
        return SlotIndex{static_cast<std::int16_t>(number)};
    }
    static constexpr ParameterIndex Index(int number)
    {
        return ParameterIndex{static_cast<std::int16_t>(number)};
    }

    void SetRows(const std::vector<std::string_view>& rows)
    {
        int number = 0;
        for (std::string& row : document.rows) row.clear();
        for (std::string_view row : rows) document.rows[Slot(number++)] = row;
    }

    PlotReport Apply() { return ApplyPlot(document, parser, host); }
    PlotReport Apply(const std::vector<std::string_view>& rows)
    {
        SetRows(rows);
        return Apply();
    }

    double Value(std::string_view term)
    {
        const double value = parser.EvalText(term);
        EXPECT_EQ(parser.GetError(), term::Error::None) << term << ": " << parser.ErrorText();
        return value;
    }

    PlotDocument document;
    term::MathParser parser;
    RecordingHost host;
};

}  // namespace korvinth::document
