// The value of a slot's graph at single arguments.
#pragma once

#include <optional>
#include <string>

#include "document/integral_sum.h"
#include "document/plot_document.h"
#include "document/slots.h"
#include "render/variable_scope.h"
#include "term/math_parser.h"

namespace korvinth::render {

// While it lives, the parser variable `sw` is the step; parser variables and error are as before
// afterwards.
class GraphValue
{
public:
    // `step` is that between two samples of the drawing; an integral is summed in steps as wide.
    GraphValue(const document::PlotDocument& document, term::MathParser& parser,
               document::SlotIndex slot, double step);
    ~GraphValue();
    GraphValue(const GraphValue&) = delete;
    GraphValue& operator=(const GraphValue&) = delete;

    // Nothing where the graph has no value, or an integral's would take too long.
    std::optional<double> At(double argument);

private:
    std::optional<double> Sum(double argument);

    term::MathParser& parser_;
    VariableScope argument_scope_;
    VariableScope step_scope_;
    term::VariableHandle argument_;
    double step_;
    term::ExprHandle term_{};
    std::string integrand_;  // of an integral function
    double lower_bound_ = 0;
    document::IntegralRule rule_;
};

}  // namespace korvinth::render
