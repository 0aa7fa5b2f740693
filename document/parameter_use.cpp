#include "document/parameter_use.h"

#include <numbers>

namespace korvinth::document {

double ParserValue(const Parameter& parameter, term::TrigMode mode)
{
    if (parameter.name != kStripeWidthName) return parameter.value;
    switch (mode) {
        case term::TrigMode::Radians: return parameter.value;
        case term::TrigMode::Degrees: return parameter.value * std::numbers::pi / 180;
        case term::TrigMode::Grads: return parameter.value * std::numbers::pi / 200;
    }
    return parameter.value;
}

void SetParameterValue(PlotDocument& document, term::MathParser& parser, ParameterIndex index,
                       double value)
{
    Parameter& parameter = document.parameters[index];
    parameter.value = value;
    parser.SetVariableValue(parameter.handle,
                            ParserValue(parameter, document.attributes.angle_mode));
}

bool TermUsesParameter(PlotDocument& document, term::MathParser& parser, ParameterIndex index,
                       std::string_view term)
{
    Parameter& parameter = document.parameters[index];
    parser.ReleaseVariable(parser.DefineVariable(parameter.name));
    parser.EvalText(term);
    const bool used = parser.GetError() == term::Error::UndefinedVariable;
    parser.EvalText("");
    parameter.handle = parser.DefineVariable(parameter.name);
    SetParameterValue(document, parser, index, parameter.value);
    return used;
}

}  // namespace korvinth::document
