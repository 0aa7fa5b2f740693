#include "render/graph_value.h"

#include <cmath>

namespace korvinth::render {

GraphValue::GraphValue(const document::PlotDocument& document, term::MathParser& parser,
                       document::SlotIndex slot, double step)
    : parser_(parser),
      argument_scope_(parser, document.variables.x),
      step_scope_(parser, document.variables.sw),
      argument_(document.variables.x),
      step_(step)
{
    const document::FunctionSlot& function = document.slots[slot];
    parser_.SetVariableValue(document.variables.sw, step);
    if (function.integral_term.empty()) {
        term_ = parser_.Parse(function.parser_term);
    } else {
        integrand_ = function.integral_term;
        lower_bound_ = document.parameters[document::LowerBoundParameter(slot)].value;
        rule_ = document::RuleOf(document.attributes, parser_, 1);
    }
}

GraphValue::~GraphValue()
{
    parser_.ReleaseExpr(term_);
    parser_.EvalText("");
}

std::optional<double> GraphValue::At(double argument)
{
    if (!integrand_.empty()) return Sum(argument);
    parser_.SetVariableValue(argument_, argument);
    const double value = parser_.Evaluate(term_);
    if (parser_.GetError() != term::Error::None || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<double> GraphValue::Sum(double argument)
{
    constexpr double kMostSteps = 100'000;  // a pointer that moves does not wait for more
    if (!(step_ > 0)) return std::nullopt;
    const document::RowGrid place{argument, step_, 1};
    if (!(document::IntegralSteps(place, rule_, lower_bound_) <= kMostSteps)) return std::nullopt;
    const double sum =
        document::SumIntegral(parser_, argument_, integrand_, lower_bound_, place, rule_).front();
    if (!std::isfinite(sum)) return std::nullopt;
    return sum;
}

}  // namespace korvinth::render
