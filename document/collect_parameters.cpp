#include "document/collect_parameters.h"

#include <utility>

#include "document/outside_terms.h"
#include "document/parameter_use.h"
#include "document/parameter_values.h"

namespace korvinth::document {
Parameter LowerBoundOf(const std::string& function)
{
    Parameter bound;
    bound.name = function + "u";
    bound.caption = bound.name + " = untere Grenze für Integralfunktion in " + function;
    bound.value = 0;
    bound.state = kIntegralBoundState;
    return bound;
}

Parameter SampleCountOf(const std::string& function)
{
    Parameter count;
    count.name = function + "anz";
    count.caption = "Stützstellenanzahl für " + function;
    count.value = 1001;  // support points, for 1000 steps
    count.lower = 2;
    count.upper = 20000;
    count.state = kSampleCountState;
    return count;
}

Parameter UserParameter(const std::string& name)
{
    Parameter parameter;
    parameter.name = name;
    parameter.caption = "Parameter: " + name;
    if (name == kStripeWidthName) parameter.value = 10;
    if (name.ends_with("_int")) parameter.state = kIntegerState;
    return parameter;
}

ParameterCollector::ParameterCollector(PlotDocument& document, term::MathParser& parser,
                                       PlotHost& host)
    : document_(document), parser_(parser), host_(host)
{
    for (Parameter& parameter : document_.parameters) {
        Parameter former = std::exchange(parameter, {});
        if (former.name.empty()) continue;
        std::string name = former.name;
        document_.dormant_parameters.insert_or_assign(std::move(name), std::move(former));
    }
}

void ParameterCollector::SetUpIntegrals()
{
    for (SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document_.slots[index];
        if (slot.integral_term.empty()) continue;
        Define(LowerBoundParameter(index), LowerBoundOf(slot.name));
        Define(SampleCountParameter(index), SampleCountOf(slot.name));
    }
}

std::string ParameterCollector::CollectUserParameters()
{
    bool all_defined = true;
    for (const FunctionSlot& slot : document_.slots) {
        all_defined = DefineUnknownNames(slot.parser_term) && all_defined;
    }
    for (const OutsideTerms& outside : TermsOutsideSlots(document_)) {
        for (const std::string& term : outside.terms) {
            all_defined = DefineUnknownNames(term) && all_defined;
        }
    }
    if (all_defined) return {};
    return "Fehler: mehr als " + std::to_string(kParameterCount - 1) + " Parameter!";
}

void ParameterCollector::Define(ParameterIndex index, Parameter initial)
{
    const auto dormant = document_.dormant_parameters.find(initial.name);
    if (dormant != document_.dormant_parameters.end()) {
        const Parameter& former = dormant->second;
        // It may have been another kind of parameter, or come from a file.
        initial.value = former.value;
        if (!CheckBounds(initial, {former.lower, former.upper})) {
            initial.lower = former.lower;
            initial.upper = former.upper;
        }
        initial.step = former.step;
        initial.mode = former.mode;
        initial.coupling = former.coupling;
        initial.family = former.family;
        document_.dormant_parameters.erase(dormant);
    }
    initial.handle = parser_.DefineVariable(initial.name);
    const double value = AcceptedValue(initial.value, initial.state);
    const bool has_slider = initial.name != kStripeWidthName;
    document_.parameters[index] = std::move(initial);
    SetParameterValue(document_, parser_, index, value);
    if (has_slider) host_.InitSlider(index);
}

// Evaluates the term until the parser knows all its names; false when the table is full.
bool ParameterCollector::DefineUnknownNames(const std::string& term)
{
    parser_.EvalText(term);
    while (parser_.GetError() == term::Error::UndefinedVariable) {
        if (next_user_parameter_ >= kParameterCount) {
            parser_.EvalText("");
            return false;
        }
        const std::string name = parser_.GetErrorData();
        const ParameterIndex index{static_cast<std::int16_t>(next_user_parameter_++)};
        Define(index, UserParameter(name));
        document_.parameter_list += name + "," + std::to_string(Number(index)) + ":";
        parser_.EvalText(term);
    }
    parser_.EvalText("");
    return true;
}

}  // namespace korvinth::document
