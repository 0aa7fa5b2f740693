#include "document/apply_plot.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "document/collect_parameters.h"
#include "document/final_check.h"
#include "document/integral_term.h"
#include "document/parameter_use.h"
#include "document/prepare_term.h"
#include "document/row_check.h"

namespace korvinth::document {
namespace {

using term::Error;
using term::MathParser;

struct AliasName
{
    std::string_view name, existing;
};
constexpr AliasName kAliases[] = {
    {"nicht", "not"},   {"wenn", "iif"},    {"arcsin", "asin"},
    {"arccos", "acos"}, {"arctan", "atan"}, {"sinhyp", "sinh"},
    {"coshyp", "cosh"}, {"tanhyp", "tanh"}, {"betrag", "abs"},
};
constexpr std::string_view kStandardFunctions[] = {
    "log(m, n)=ln(m)/ln(n)", "exp(m, n)=exp2(m*log2(n))", "wurzel(m)=sqrt(m)",
    "integral(m)=0",  // lets terms with integral functions parse; they are summed while drawing
};

std::string HeadOf(const FunctionSlot& slot) { return slot.name + "(" + slot.argument + ")"; }

void LeaveUndrawn(FunctionSlot& slot)
{
    slot.parser_term.clear();
    slot.integral_term.clear();
}

// One rebuild; the members are its steps in their order.
class Rebuild
{
public:
    Rebuild(PlotDocument& document, MathParser& parser, PlotHost& host)
        : document_(document), parser_(parser), host_(host)
    {
    }

    PlotReport Run()
    {
        host_.StopAnimation();
        parser_.Reset();
        DefineSystemVariables(parser_, document_);
        document_.parameter_list = ":";
        ReadRows();
        parser_.SetVariableValue(document_.variables.sw, 1);
        PrepareTerms();
        ParameterCollector parameters(document_, parser_, host_);
        parameters.SetUpIntegrals();
        Collect(parameters.CollectUserParameters());
        ReleasePlaceholders(document_, parser_);
        DefineFunctionsInOrder();
        CheckResult();
        return Finish();
    }

private:
    void Collect(const std::string& message)
    {
        if (message.empty()) return;
        collected_ += message + "; ";
        ++report_.count;
    }

    // The rows are checked with the parser freshly reset, so that no function of the plot before
    // makes a name look taken.
    void ReadRows()
    {
        host_.StoreRows(document_);
        const RowCheck check = CheckNames(document_, parser_);
        report_.row_errors = check.errors;
        report_.first_faulty_row = check.first_faulty;
        if (!check.errors.empty()) ++report_.count;
        host_.RowsChecked(document_);
        host_.UpdateMapping();
    }

    void PrepareTerms()
    {
        for (SlotIndex index : AllSlots()) {
            FunctionSlot& slot = document_.slots[index];
            LeaveUndrawn(slot);
            if (!slot.name.empty()) PrepareTerm(index);
        }
        ReportUsesOfIntegralFunctions();
    }

    void PrepareTerm(SlotIndex index)
    {
        FunctionSlot& slot = document_.slots[index];
        if (document_.attributes.detect_integrals) slot.term = RewriteFirstIntegral(slot.term);
        std::string message = PrepareFunctionTerm(document_, parser_, index);
        const std::optional<std::string> integrand = IntegrandOf(slot.parser_term);
        if (message.empty() && !integrand) message = kIntegralNotAlone;
        if (message.empty()) {
            slot.integral_term = *integrand;
        } else {
            RejectSlot(index, message);
        }
    }

    void RejectSlot(SlotIndex index, std::string_view message)
    {
        FunctionSlot& slot = document_.slots[index];
        MarkFaulty(index);
        Collect(HeadOf(slot) + ": " + std::string(message));
        LeaveUndrawn(slot);
    }

    // The rows' own check comes first, as in the collected text; then the uppermost row counts.
    void MarkFaulty(SlotIndex index)
    {
        if (!report_.row_errors.empty()) return;
        const SlotIndex first = report_.first_faulty_row.value_or(index);
        report_.first_faulty_row = std::min(first, index);
    }

    // The parser knows an integral function as 0, so a term that calls one would be drawn wrongly.
    void ReportUsesOfIntegralFunctions()
    {
        std::vector<std::string> integrals;
        for (const FunctionSlot& slot : document_.slots) {
            if (!slot.integral_term.empty()) integrals.push_back(slot.name);
        }
        for (const SlotIndex index : AllSlots()) {
            for (const std::string& name : integrals) {
                if (!CallsFunction(document_.slots[index].parser_term, name)) continue;
                RejectSlot(index, kIntegralNotAlone);
                break;
            }
        }
    }

    // A function is defined as soon as those that it calls are; what cannot be evaluated after as
    // many passes as there are slots calls itself, around a corner, or a function that is none.
    void DefineFunctionsInOrder()
    {
        SlotTable<bool> pending;
        for (bool& entry : pending) entry = true;
        for (int pass = 1; pass <= kSlotCount; ++pass) {
            for (SlotIndex index : AllSlots()) {
                if (pending[index]) pending[index] = !DefineWhenEvaluable(index, pass);
            }
        }
        for (const FunctionSlot& slot : document_.slots) {
            if (!slot.name.empty() && slot.parser_term.empty()) DefineFunction(slot);
        }
        parser_.EvalText("");
    }

    bool DefineWhenEvaluable(SlotIndex index, int pass)
    {
        FunctionSlot& slot = document_.slots[index];
        parser_.EvalText(slot.parser_term);
        const bool evaluable = parser_.GetError() != Error::UndefinedFunction;
        if (evaluable && !slot.parser_term.empty()) DefineFunction(slot);
        if (!evaluable && pass == kSlotCount) {
            Collect(parser_.ErrorText());
            MarkFaulty(index);
            LeaveUndrawn(slot);
        }
        parser_.EvalText("");
        return evaluable;
    }

    void DefineFunction(const FunctionSlot& slot)
    {
        parser_.DefineFunction(slot.name + "(" + std::string(term::kFreeVariable) +
                               ")=" + slot.parser_term);
    }

    void CheckResult()
    {
        const FinalCheck check = CheckDefinitions(document_, parser_, host_);
        for (const std::string& message : check.errors) Collect(message);
        if (check.first_faulty) MarkFaulty(*check.first_faulty);
        for (const std::string& note : check.notes) report_.notes += note + "; ";
    }

    PlotReport Finish()
    {
        report_.errors = report_.row_errors;
        if (!report_.errors.empty() && !collected_.empty()) report_.errors += "; ";
        report_.errors += collected_;
        report_.status = report_.errors.empty() ? "Ok." : report_.errors;
        return report_;
    }

    PlotDocument& document_;
    MathParser& parser_;
    PlotHost& host_;
    std::string collected_;  // without the messages of the rows
    PlotReport report_;
};

}  // namespace

void DefineSystemVariables(MathParser& parser, PlotDocument& document)
{
    SystemVariables& variables = document.variables;
    variables.x = parser.DefineVariable(term::kFreeVariable);
    variables.qq = parser.DefineVariable("qq");
    variables.sw = parser.DefineVariable("sw");
    variables.xmu = parser.DefineVariable("xmu");
    variables.xmi = parser.DefineVariable("xmi");
    variables.ymu = parser.DefineVariable("ymu");
    variables.ymi = parser.DefineVariable("ymi");
    // In radians, whatever the user's unit of angles, so that pi is 3.14159...
    parser.SetTrigMode(term::TrigMode::Radians);
    parser.DefineVariable("pi=2*asin(1)");
    parser.DefineVariable("e=exp(1)");
    for (std::string_view function : kStandardFunctions) parser.DefineFunction(function);
    for (const AliasName& alias : kAliases) parser.Alias(alias.name, alias.existing);
    parser.SetTrigMode(document.attributes.angle_mode);
}

PlotReport ApplyPlot(PlotDocument& document, MathParser& parser, PlotHost& host)
{
    return Rebuild(document, parser, host).Run();
}

}  // namespace korvinth::document
