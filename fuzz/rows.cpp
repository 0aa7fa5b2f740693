// Rows of the term editor through ApplyPlot. Input: lines; one that begins with "@" and a letter
// goes to another field of the plot, the others are rows.
#include "document/apply_plot.h"
#include "document/calculator.h"
#include "document/hatched_term.h"
#include "document/interval_text.h"
#include "document/parameters_of.h"
#include "document/plot_document.h"
#include "document/terms_text.h"
#include "document/value_table.h"
#include "fuzz/fuzzing.h"
#include "fuzz/quiet_host.h"
#include "term/math_parser.h"

#include <sstream>

namespace {

using namespace korvinth;
using document::PlotDocument;

void TakeField(PlotDocument& plot, std::string_view line)
{
    const std::string text(line.substr(1));
    switch (line.front()) {
        case 'l': plot.lines_text += text + "\r\n"; break;
        case 'p': plot.points_text += text + "\r\n"; break;
        case 'x': plot.ranges.x_upper = text; break;
        case 'y': plot.ranges.y_lower = text; break;
        case 't': plot.ranges.t_upper = text; break;
        case 'd': plot.attributes.angle_mode = term::TrigMode::Degrees; break;
        case 'i': plot.attributes.detect_integrals = false; break;
        default: plot.unknown_lines = text;
    }
}

PlotDocument PlotOf(std::string_view input)
{
    PlotDocument plot;
    std::int16_t row = 0;
    for (const std::string& line : fuzzing::Lines(input, 30)) {
        if (line.size() > 1 && line.front() == '@') {
            TakeField(plot, std::string_view(line).substr(1));
        } else if (row < document::kSlotCount) {
            plot.rows[document::SlotIndex{row++}] = line;
        }
    }
    return plot;
}

// What windows and command line ask of a plot that has been applied.
void Use(PlotDocument& plot, term::MathParser& parser)
{
    for (const document::SlotIndex index : document::AllSlots()) {
        document::ParametersOf(plot, index);
        document::IsHatched(plot, index);
        const std::string& name = plot.slots[index].name;
        if (!name.empty()) document::CalculatorLine(parser, plot, name + "(2)", 3);
    }
    document::TermsText(plot, document::TermsTextMode::WithParameterValues);
    document::RowGrid grid;
    if (document::ReadTableRange(plot, parser, "-2;2;0,5", grid).empty()) {
        std::ostringstream table;
        document::WriteValueTable(plot, parser, grid, table);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    term::MathParser parser;
    fuzzing::QuietHost host;
    PlotDocument plot = PlotOf(fuzzing::Input(data, size));
    const document::PlotReport first = ApplyPlot(plot, parser, host);
    fuzzing::Require(parser.LivePrograms() == 0, "no program is left");
    fuzzing::Require((first.count == 0) == first.errors.empty(), "faults are told", first.errors);
    fuzzing::Require(first.status == (first.errors.empty() ? "Ok." : first.errors),
                     "the status is the faults", first.status);
    // Deliberate: brackets in the wrong order are exchanged, which other ones may follow.
    for (const document::FunctionSlot& slot : plot.slots) {
        if (slot.argument.find(')') != std::string::npos) return 0;
    }
    const auto rows = plot.rows;
    const std::string parameters = plot.parameter_list;
    const document::PlotReport second = ApplyPlot(plot, parser, host);
    fuzzing::Require(plot.rows == rows, "applied rows stay as they are");
    fuzzing::Require(second.status == first.status, "the same rows have the same faults",
                     first.status, second.status);
    fuzzing::Require(plot.parameter_list == parameters, "and the same parameters", parameters,
                     plot.parameter_list);
    Use(plot, parser);
    return 0;
}
