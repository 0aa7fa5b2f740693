// Fields that take an interval, a number, a line, a point or a setting. Input: two texts, each a
// line, which every field gets.
#include <cmath>

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "document/apply_plot.h"
#include "document/calculator.h"
#include "document/general_settings.h"
#include "document/interval_text.h"
#include "document/number_text.h"
#include "document/parameter_values.h"
#include "document/plot_document.h"
#include "document/range_bounds.h"
#include "document/storable_text.h"
#include "document/text_encoding.h"
#include "document/value_table.h"
#include "fuzz/fuzzing.h"
#include "fuzz/quiet_host.h"

namespace {

using namespace korvinth;
using namespace korvinth::document;

void CheckIntervals(const std::string& text)
{
    const IntervalReading reading = ReadIntervalRow(text);
    if (!reading.has_semicolon) return;
    FunctionSlot slot;
    slot.name = "f";
    slot.lower_bound = reading.lower;
    slot.upper_bound = reading.upper;
    slot.interval = IntervalText(reading.lower, reading.upper);
    const IntervalReading again = ReadIntervalRow(IntervalRow(slot));
    fuzzing::Require(again.lower == reading.lower && again.upper == reading.upper,
                     "bounds come back", text, IntervalRow(slot));
}

void CheckNumbers(term::MathParser& parser, const PlotDocument& plot, const std::string& text,
                  const std::string& other)
{
    fuzzing::Require(!std::isnan(EvalNumberField(parser, text)), "a number or 0", text);
    fuzzing::Require(std::isfinite(LeadingNumber(text)), "a leading number is finite", text);
    const double value = LeadingNumber(text);
    fuzzing::Require(LeadingNumber(ShortestText(value)) == value, "digits come back", text);
    RoundHalfEven(value);
    const RangeBounds bounds = ReadRangeBounds(parser, plot, text, other);
    fuzzing::Require(parser.GetError() == term::Error::None, "no error is left", text);
    if (bounds.fault.empty()) {
        fuzzing::Require(bounds.lower < bounds.upper && std::fabs(bounds.lower) <= kLargestBound &&
                             std::fabs(bounds.upper) <= kLargestBound,
                         "bounds without a fault can be displayed", text, other);
    }
    for (const int places : {0, 3, kMostDecimalPlaces}) {
        fuzzing::Require(!CalculatorLine(parser, plot, text, places).empty() || text.empty(),
                         "the calculator answers", text);
    }
    RowGrid grid;
    ReadTableRange(plot, parser, text + ";" + other, grid);
    RoundedText(value, LeadingNumber(other));
}

void CheckSettings(term::MathParser& parser, const std::string& text)
{
    for (std::size_t number = 0; number < kSettingCount; ++number) {
        const auto setting = static_cast<Setting>(number);
        DisplayAttributes attributes;
        parser.EvalText("");
        const std::string refusal = TakeSetting(attributes, setting, text, parser);
        fuzzing::Require(parser.GetError() == term::Error::None, "no error is left", text);
        fuzzing::Require(refusal.empty() || attributes == DisplayAttributes(),
                         "a refused setting changes nothing", text);
        if (!refusal.empty()) continue;
        DisplayAttributes read;
        TakeStoredSetting(read, setting, StoredSetting(attributes, setting));
        fuzzing::Require(read == attributes, "a setting comes back", text,
                         StoredSetting(attributes, setting));
        const std::string shown = SettingText(attributes, setting);
        DisplayAttributes again = attributes;
        fuzzing::Require(TakeSetting(again, setting, shown, parser).empty(),
                         "what a field shows it takes", text, shown);
    }
}

void CheckItems(const PlotDocument& plot, const std::string& text)
{
    const std::vector<AdditionalLine> lines = Text2List(text);
    const std::string lines_text = TakeLines(lines);
    // Deliberate: the guard of "x=" breaks a longer word, here "xx=", into two.
    if (lines_text.find("_xx=") == std::string::npos) {
        fuzzing::Require(Text2List(lines_text) == Text2List(TakeLines(Text2List(lines_text))),
                         "lines come back", text, lines_text);
    }
    for (const AdditionalLine& line : lines) TranslateLine(plot, line.equation);
    TranslateLine(plot, LineEquation(text));

    // Without control characters, which the text form drops.
    const std::string points_text = ReadPoints(Text2Points(text));
    fuzzing::Require(ReadPoints(Text2Points(points_text)) == points_text, "points come back", text,
                     points_text);
    AdditionalPoint point;
    ReadPointText(text, point);
    ReadPointText(PointText(point), point);
    TranslateCoordinate(plot, point.x);
    MovePoint(plot, 0, {1.5, -2.25, 0.01, 0.01});
}

void CheckStorable(const std::string& text)
{
    const std::string term = StorableTerm(text);
    fuzzing::Require(StorableTerm(term) == term, "a storable term stays", text, term);
    const std::string name = StorableShortText(text);
    fuzzing::Require(StorableShortText(name) == name, "a storable name stays", text, name);
    const std::string description = StorableLongText(text);
    fuzzing::Require(StorableLongText(description) == description, "a storable description stays",
                     text, description);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static term::MathParser parser;
    static fuzzing::QuietHost host;
    PlotDocument plot;
    plot.rows[SlotIndex{0}] = "f(x)=a*x^2";
    plot.points_text = "(a)(2)";
    ApplyPlot(plot, parser, host);

    // Fields hold characters, whatever the bytes.
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const std::string input =
        DecodeText(std::string(kByteOrderMark).append(fuzzing::Input(data, size)));
    std::vector<std::string> lines = fuzzing::Lines(input, 2);
    lines.resize(2);
    const std::string& text = lines[0];
    CheckIntervals(text);
    CheckNumbers(parser, plot, text, lines[1]);
    CheckSettings(parser, text);
    CheckItems(plot, text);
    CheckStorable(text);
    return 0;
}
