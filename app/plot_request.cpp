#include "app/plot_request.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "app/message_text.h"

namespace korvinth::app {
namespace {

struct ParameterValue
{
    std::string name;
    double value = 0;
};

bool IsName(std::string_view text)
{
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const auto continues = [&letter](char c) {
        return letter(c) || c == '_' || (c >= '0' && c <= '9');
    };
    return !text.empty() && letter(text[0]) && std::ranges::all_of(text, continues);
}

// Evaluates the parameters one after the other; a term may use those before it.
std::vector<ParameterValue> ReadParameters(Application& application, const CommandLine& command,
                                           std::string& errors)
{
    term::MathParser& parser = application.Parser();
    std::vector<ParameterValue> values;
    for (const CommandLine::Parameter& parameter : command.parameters) {
        const auto complain = [&](std::string_view what) {
            errors += "Parameter " + Quoted(parameter.name) + ": " + std::string(what) + "; ";
        };
        if (!IsName(parameter.name)) {
            complain("Das ist kein Name");
            continue;
        }
        parser.EvalText(parameter.name);
        if (parser.GetError() != term::Error::UndefinedVariable) {
            complain("Der Name ist schon vergeben");
            continue;
        }
        const double value = parser.EvalText(application.Document().Translate(parameter.term));
        if (parser.GetError() != term::Error::None) {
            complain(parser.ErrorText());
        } else if (!std::isfinite(value)) {
            complain("Der Wert ist zu groß");
        } else {
            values.push_back({parameter.name, value});
            parser.SetVariableValue(parser.DefineVariable(parameter.name), value);
        }
    }
    parser.EvalText("");
    return values;
}

// The slot that holds the interval of a function: that of the x-part for both parts of a curve.
document::FunctionSlot* IntervalSlot(document::PlotDocument& plot, const std::string& function)
{
    for (const document::SlotIndex index : document::AllSlots()) {
        if (plot.slots[index].name != function) continue;
        if (plot.slots[index].curve_link != document::kCurveYPart) return &plot.slots[index];
        for (document::FunctionSlot& x_part : plot.slots) {
            if (x_part.curve_link == document::Number(index)) return &x_part;
        }
    }
    return nullptr;
}

// Functions without a left side have their names only after the rows were applied once.
void FillIntervals(document::PlotDocument& plot, const CommandLine& command, std::string& errors)
{
    for (const auto& [function, bounds] : command.intervals) {
        document::FunctionSlot* slot = IntervalSlot(plot, function);
        if (slot == nullptr) {
            errors += "Intervall: Es gibt keine Funktion " + Quoted(function) + "; ";
            continue;
        }
        slot->lower_bound = bounds.lower;
        slot->upper_bound = bounds.upper;
        slot->interval = (bounds.lower.empty() ? "-oo" : bounds.lower) + " ; " +
                         (bounds.upper.empty() ? "+oo" : bounds.upper);
    }
}

void FillPlot(document::PlotDocument& plot, const CommandLine& command)
{
    plot.attributes.angle_mode = command.angle_mode;
    if (command.places) plot.attributes.calculator_places = *command.places;
    for (std::size_t i = 0; i < command.rows.size(); ++i) {
        plot.rows[document::SlotIndex{static_cast<std::int16_t>(i)}] = command.rows[i];
    }
}

void FillRanges(document::RangeTexts& ranges, const CommandLine& command)
{
    if (command.x_range) {
        ranges.x_lower = command.x_range->lower;
        ranges.x_upper = command.x_range->upper;
    }
    if (command.y_range) {
        ranges.y_lower = command.y_range->lower;
        ranges.y_upper = command.y_range->upper;
    }
}

}  // namespace

PlotRequestReport ApplyRequest(Application& application, const CommandLine& command)
{
    document::PlotDocument& plot = application.Document();
    PlotRequestReport request;
    FillPlot(plot, command);
    application.Parser().Reset();
    document::DefineSystemVariables(application.Parser(), plot);
    const auto values = ReadParameters(application, command, request.errors);
    for (const ParameterValue& parameter : values) {
        document::Parameter& kept = plot.dormant_parameters[parameter.name];
        kept.name = parameter.name;
        kept.value = parameter.value;
    }
    // An area of another shape moves the standard range, so the wanted one comes after it.
    application.SetAreaSize(command.width, command.height);
    FillRanges(plot.ranges, command);

    document::PlotReport report = application.Apply();
    if (report.errors.empty() && !command.intervals.empty()) {
        FillIntervals(plot, command, request.errors);
        report = application.Apply();
    }
    request.errors += report.errors;
    request.notes = report.notes;
    request.first_faulty_row = report.first_faulty_row;

    for (const ParameterValue& parameter : values) {
        if (plot.FindParameter(parameter.name) != nullptr) continue;
        term::MathParser& parser = application.Parser();
        parser.SetVariableValue(parser.DefineVariable(parameter.name), parameter.value);
    }
    return request;
}

}  // namespace korvinth::app
