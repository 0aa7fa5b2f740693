#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "document/attributes_text.h"
#include "document/collect_parameters.h"
#include "document/definition_lines.h"
#include "document/general_settings.h"
#include "document/interval_text.h"
#include "document/list_text.h"
#include "document/number_text.h"
#include "document/parameter_values.h"
#include "document/plot_entry.h"
#include "document/range_bounds.h"
#include "document/storable_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using term::TrimBlanks;

constexpr std::size_t kMostMessages = 10;
constexpr std::size_t kQuotedBytes = 60;  // of a line that a message quotes

constexpr Column kDefinitionColumns[] = {Column::Functions, Column::Parameters, Column::Details,
                                         Column::Ranges, Column::Integrals};

// The messages for the user; of very many lines the first.
class Messages
{
public:
    void Add(std::string_view line, std::string_view message)
    {
        if (++count_ > kMostMessages) return;
        text_.append("„").append(Quoted(line)).append("“: ").append(message).append("\n");
    }

    std::string Text() const
    {
        if (count_ <= kMostMessages)
            return std::string(text_.substr(0, text_.find_last_not_of('\n') + 1));
        return text_ + "... und " + std::to_string(count_ - kMostMessages) + " weitere";
    }

private:
    static std::string Quoted(std::string_view line)
    {
        if (line.size() <= kQuotedBytes) return std::string(line);
        std::size_t end = kQuotedBytes;
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) --end;
        return std::string(line.substr(0, end)) + "...";
    }

    std::string text_;
    std::size_t count_ = 0;
};

// Whether a field could hold the text.
bool IsTooLong(std::string_view text)
{
    if (text.size() <= static_cast<std::size_t>(kLongestTerm)) return false;
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) units += byte >= 0xF0U ? 2U : 1U;
    }
    return units > static_cast<std::size_t>(kLongestTerm);
}

// A finite number, decimal point, and nothing else.
std::optional<double> ReadNumber(std::string_view text)
{
    text = TrimBlanks(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size()) return {};
    if (!std::isfinite(value)) return {};
    return value;
}

std::optional<int> ReadWhole(std::string_view text, int lowest, int highest)
{
    const std::optional<double> value = ReadNumber(text);
    if (!value || *value != std::trunc(*value) || *value < lowest || *value > highest) return {};
    return static_cast<int>(*value);
}

// Calls with each line of a column that is not empty.
template <class Take>
void ForEachLine(std::string_view text, Take take)
{
    for (const std::string_view line : SplitText(text, kLineBreak)) {
        const std::string_view trimmed = TrimBlanks(line);
        if (!trimmed.empty()) take(trimmed);
    }
}

// What the lines of an entry say about one parameter.
struct ParameterLines
{
    Parameter initial;
    std::string_view value_line, details_line;  // "" when there is none
    std::string_view value;
};

// Reads the lines of one entry into the plot.
class EntryReader
{
public:
    EntryReader(const CollectionEntry& entry, PlotDocument& plot) : entry_(entry), plot_(plot) {}

    std::string Run()
    {
        Clear();
        TakeLooks();
        for (const Column column : kDefinitionColumns) {
            ForEachLine(entry_[column], [this](std::string_view line) { TakeLine(line); });
        }
        // What goes by names waits for them.
        for (const std::string_view line : slot_lines_) TakeSlotLine(line);
        for (auto& [name, lines] : parameters_) TakeParameter(lines);
        TakeRanges();
        TakeLists();
        return messages_.Text();
    }

    void TakeRangesOnly()
    {
        ForEachLine(entry_[Column::Ranges], [this](std::string_view line) { TakeLine(line); });
        TakeRanges();
    }

private:
    void Clear()
    {
        DisplayAttributes& attributes = plot_.attributes;
        const DisplayAttributes before = attributes;
        for (const SlotIndex index : AllSlots()) {
            attributes.slots[index].colour = before.slots[ColourPlace(plot_.slots[index])].colour;
            plot_.rows[index].clear();
            plot_.slots[index] = {};
            plot_.slots[index].colour_index = static_cast<std::int16_t>(index);
        }
        for (Parameter& parameter : plot_.parameters) parameter = {};
        plot_.dormant_parameters.clear();
        plot_.ranges = {};
        plot_.lines_text.clear();
        plot_.points_text.clear();
        plot_.unknown_lines.clear();
    }

    void TakeLooks()
    {
        DisplayAttributes& attributes = plot_.attributes;
        const auto take = [this](Column column, auto into) {
            if (!entry_[column].empty()) into(entry_[column]);
        };
        take(Column::Colours, [&](auto text) { TakeColourTable(text, attributes); });
        take(Column::Widths, [&](auto text) { TakeLineWidths(text, attributes); });
        take(Column::LineTypes, [&](auto text) { TakeLineTypes(text, attributes); });
        take(Column::Attributes,
             [&](auto text) { TakeAttributesText(text, AttributeScope::Picture, attributes); });
    }

    // A line is known by its form, in whatever column it is.
    void TakeLine(std::string_view line)
    {
        if (TakeBracketedLine(line) || TakeIntegralLine(line) || TakeRow(line)) return;
        const std::size_t equals = line.find('=');
        if (equals != line.npos && IsName(line.substr(0, equals))) {
            TakeValue(UserParameter(std::string(line.substr(0, equals))), line,
                      line.substr(equals + 1));
            return;
        }
        if (!plot_.unknown_lines.empty()) plot_.unknown_lines += kLineBreak;
        plot_.unknown_lines += line;
    }

    bool TakeBracketedLine(std::string_view line)
    {
        const std::optional<BracketedLine> bracketed = ReadBracketed(line);
        if (!bracketed) return false;
        const std::string_view head = bracketed->head;
        for (std::size_t axis = 0; axis < std::size(kRangeLines); ++axis) {
            if (head == kRangeLines[axis].numbers) number_ranges_[axis] = line;
            if (head == kRangeLines[axis].terms) term_ranges_[axis] = line;
            if (head == kRangeLines[axis].numbers || head == kRangeLines[axis].terms) return true;
        }
        if (head.empty() || !IsName(head.substr(1))) return false;
        if (head.front() == kSlotMark || head.front() == kIntervalMark) {
            slot_lines_.push_back(line);
            return true;
        }
        if (head.front() != kParameterMark) return false;
        if (ParameterLines* lines = LinesOf(UserParameter(std::string(head.substr(1))), line)) {
            lines->details_line = line;
        }
        return true;
    }

    // "u[g]=1", "u[g,anz]=500"
    bool TakeIntegralLine(std::string_view line)
    {
        constexpr std::string_view kOpening = "u[";
        const std::size_t close = line.find("]=");
        if (!line.starts_with(kOpening) || close == line.npos) return false;
        std::string_view name = line.substr(kOpening.size(), close - kOpening.size());
        const bool count = name.ends_with(kSampleCountKey);
        if (count) name.remove_suffix(kSampleCountKey.size());
        if (!IsName(name)) return false;
        // Either line tells what both parameters are.
        const Parameter lower_bound = LowerBoundOf(std::string(name));
        const Parameter sample_count = SampleCountOf(std::string(name));
        if (LinesOf(count ? lower_bound : sample_count, line) == nullptr) return true;
        TakeValue(count ? sample_count : lower_bound, line, line.substr(close + 2));
        return true;
    }

    // "f(x)=x^2", "$f(x)=x^2", "$" for an empty row, "$$" before one that is kept as typed.
    bool TakeRow(std::string_view line)
    {
        const std::string_view whole = line;
        if (line.starts_with(kFaultyMark)) {
            line.remove_prefix(kFaultyMark.size());
            const bool visible = !line.starts_with(kInvisibleMark);
            AddRow(whole, std::string(TrimBlanks(line.substr(visible ? 0 : 1))), visible);
            return true;
        }
        const bool visible = !line.starts_with(kInvisibleMark);
        if (!visible) line.remove_prefix(1);
        const std::size_t equals = line.find('=');
        const std::string_view left = TrimBlanks(line.substr(0, equals));
        const bool empty = !visible && line.empty();
        const bool row =
            equals != line.npos && left.find('(') != left.npos && left.find(')') != left.npos;
        if (!empty && !row) return false;
        AddRow(whole,
               row ? std::string(left) + " = " + std::string(TrimBlanks(line.substr(equals + 1)))
                   : std::string(),
               visible || empty);
        return true;
    }

    void AddRow(std::string_view line, std::string text, bool visible)
    {
        if (next_row_ >= kSlotCount) {
            messages_.Add(line, "Es gibt nur dreizehn Zeilen");
        } else if (IsTooLong(text)) {
            messages_.Add(line, "Der Term ist zu lang");
        } else {
            const SlotIndex index{static_cast<std::int16_t>(next_row_++)};
            plot_.slots[index].visible = visible;
            // Its name keeps interval and looks with the row when the rows are checked.
            text = StorableTerm(text);  // as if it had been typed
            plot_.slots[index].name = NameOfRow(text);
            plot_.rows[index] = std::move(text);
        }
    }

    void TakeSlotLine(std::string_view line)
    {
        const BracketedLine bracketed = ReadBracketed(line).value_or(BracketedLine{});
        const auto slot =
            std::ranges::find(plot_.slots, bracketed.head.substr(1), &FunctionSlot::name);
        if (slot == plot_.slots.end()) {
            messages_.Add(line, "Diese Funktion gibt es nicht");
        } else if (bracketed.head.front() == kIntervalMark) {
            TakeInterval(line, bracketed.inner, *slot);
        } else {
            TakeSettings(line, bracketed.inner, *slot);
        }
    }

    void TakeInterval(std::string_view line, std::string_view inner, FunctionSlot& slot)
    {
        const auto bounds = SplitBounds(inner);
        if (!bounds || IsTooLong(inner)) {
            messages_.Add(line, bounds ? "Der Term ist zu lang" : "Semikolon fehlt!");
            return;
        }
        slot.lower_bound = StorableTerm(bounds->first);
        slot.upper_bound = StorableTerm(bounds->second);
        slot.interval = IntervalText(slot.lower_bound, slot.upper_bound);
    }

    void TakeSettings(std::string_view line, std::string_view inner, FunctionSlot& slot)
    {
        const std::vector<std::string_view> items = SplitItems(inner);
        const auto item = [&items](std::size_t place) {
            return place < items.size() ? items[place] : std::string_view("0");
        };
        const auto radius = ReadWhole(item(0), 0, kLargestPoint);
        const auto family = ReadWhole(item(1), 0, 1);
        auto points = ReadWhole(item(2), 0, kMostSettableSamples);
        if (points && *points != 0 && *points < kFewestSettableSamples) points.reset();
        if (radius) slot.point_radius = static_cast<std::int16_t>(*radius);
        if (family) slot.family_allowed = *family != 0;
        if (points) slot.support_points = *points;
        if (!radius || !family || !points) messages_.Add(line, "Unerlaubter Wert");
    }

    // The lines of the parameter's name; nullptr, with a message, when there are too many names.
    ParameterLines* LinesOf(const Parameter& initial, std::string_view line)
    {
        const auto found = parameters_.find(initial.name);
        if (found != parameters_.end()) {
            if (initial.state > found->second.initial.state) found->second.initial = initial;
            return &found->second;
        }
        if (parameters_.size() >= kMostParameterNames) {
            messages_.Add(line, "Zu viele Parameter");
            return nullptr;
        }
        ParameterLines& lines = parameters_[initial.name];
        lines.initial = initial;
        return &lines;
    }

    void TakeValue(const Parameter& initial, std::string_view line, std::string_view value)
    {
        if (ParameterLines* lines = LinesOf(initial, line)) {
            lines->value_line = line;
            lines->value = value;
        }
    }

    // ApplyPlot takes the values of the names that it meets from the dormant parameters.
    void TakeParameter(ParameterLines& lines)
    {
        Parameter parameter = lines.initial;
        if (!lines.details_line.empty()) {
            const std::string fault = TakeDetails(lines, parameter);
            if (!fault.empty()) messages_.Add(lines.details_line, fault);
        }
        if (!lines.value_line.empty()) {
            const std::optional<double> value = ReadNumber(lines.value);
            if (!value) {
                messages_.Add(lines.value_line, "Das ist keine Zahl");
            } else if (parameter.value = AcceptedValue(*value, parameter.state);
                       parameter.value != *value) {
                messages_.Add(lines.value_line, "Unerlaubter Wert");
            }
        }
        plot_.dormant_parameters[parameter.name] = parameter;
    }

    // "Pa[lower;upper;step;mode;coupling;family]", and the value where it has no line of its own.
    std::string TakeDetails(ParameterLines& lines, Parameter& parameter)
    {
        const BracketedLine bracketed = ReadBracketed(lines.details_line).value_or(BracketedLine{});
        const std::vector<std::string_view> items = SplitItems(bracketed.inner);
        if (items.size() > 6) {
            lines.value_line = lines.details_line;
            lines.value = items[6];
        }
        const std::string defaults[] = {
            ShortestText(parameter.lower), ShortestText(parameter.upper), "0", "0", "0", "0"};
        const auto item = [&](std::size_t place) {
            return place < items.size() ? items[place] : std::string_view(defaults[place]);
        };
        const auto lower = ReadNumber(item(0));
        const auto upper = ReadNumber(item(1));
        const auto step = ReadNumber(item(2));
        if (!lower || !upper || !step) return "Das ist keine Zahl";
        const Bounds bounds{*lower, *upper};
        if (const auto refusal = CheckBounds(parameter, bounds)) return refusal->text;
        if (const auto refusal = CheckStep(*step, bounds)) return refusal->text;
        const auto mode = ReadWhole(item(3), 0, static_cast<int>(AnimationMode::Bounce));
        const auto coupling = ReadWhole(item(4), 0, static_cast<int>(Coupling::Angle));
        const auto family = ReadWhole(item(5), 0, 1);
        if (!mode || !coupling || !family) return "Unerlaubter Wert";
        if (*family != 0 && family_taken_) return "Nur ein Parameter kann Scharparameter sein";
        family_taken_ = family_taken_ || *family != 0;
        parameter.lower = *lower;
        parameter.upper = *upper;
        parameter.step = *step;
        parameter.mode = AnimationMode{*mode};
        parameter.coupling = Coupling{*coupling};
        parameter.family = *family != 0;
        return {};
    }

    void TakeRanges()
    {
        for (std::size_t axis = 0; axis < std::size(kRangeLines); ++axis) {
            TakeNumberRange(number_ranges_[axis], kRangeLines[axis]);
            TakeTermRange(term_ranges_[axis], kRangeLines[axis]);
        }
    }

    void TakeNumberRange(std::string_view line, const RangeAxisLine& axis)
    {
        if (line.empty()) return;
        const auto bounds = SplitBounds(ReadBracketed(line)->inner);
        const auto lower = bounds ? ReadNumber(bounds->first) : std::nullopt;
        const auto upper = bounds ? ReadNumber(bounds->second) : std::nullopt;
        if (!lower || !upper) {
            messages_.Add(line, "Das ist keine Zahl");
        } else if (!(*lower < *upper)) {
            messages_.Add(line, "Die untere Grenze muss kleiner als die obere sein");
        } else if (std::max(std::abs(*lower), std::abs(*upper)) > kLargestBound) {
            messages_.Add(line, "Die Grenzen müssen zwischen -10^15 und 10^15 liegen");
        } else {
            plot_.ranges.*axis.lower = ShortestText(*lower);
            plot_.ranges.*axis.upper = ShortestText(*upper);
        }
    }

    void TakeTermRange(std::string_view line, const RangeAxisLine& axis)
    {
        if (line.empty()) return;
        const std::string_view inner = ReadBracketed(line)->inner;
        const auto bounds = SplitBounds(inner);
        const bool left_to_view = axis.lower == &RangeTexts::y_lower && inner == ";";
        if (!bounds) return messages_.Add(line, "Semikolon fehlt!");
        if (IsTooLong(inner)) return messages_.Add(line, "Der Term ist zu lang");
        // Blanks and signs that are no text are none of a bound.
        const std::string lower = StorableTerm(bounds->first);
        const std::string upper = StorableTerm(bounds->second);
        const bool both = !term::TrimBlanks(lower).empty() && !term::TrimBlanks(upper).empty();
        if (!both && !left_to_view) return messages_.Add(line, "Eine Grenze fehlt");
        plot_.ranges.*axis.lower = lower;
        plot_.ranges.*axis.upper = upper;
    }

    // The lines not in the form of TakeLines, which changes a name that ends in x at each pass.
    void TakeLists()
    {
        plot_.lines_text = ReadList(Text2List(ItemsOf(Column::Lines)));
        plot_.points_text = ReadPoints(Text2Points(ItemsOf(Column::Points)));
    }

    // The items of a list that its window could hold.
    std::string ItemsOf(Column column)
    {
        std::string items;
        std::size_t count = 0;
        ForEachLine(entry_[column], [&](std::string_view line) {
            if (IsTooLong(line)) {
                messages_.Add(line, "Der Term ist zu lang");
            } else if (count == kMostListItems) {
                messages_.Add(line, "Es sind zu viele");
            } else {
                if (count++ > 0) items += kLineBreak;
                items += line;
            }
        });
        return items;
    }

    const CollectionEntry& entry_;
    PlotDocument& plot_;
    Messages messages_;
    int next_row_ = 0;
    bool family_taken_ = false;
    std::vector<std::string_view> slot_lines_;
    std::map<std::string, ParameterLines, std::less<>> parameters_;
    std::string_view number_ranges_[std::size(kRangeLines)];
    std::string_view term_ranges_[std::size(kRangeLines)];
};

}  // namespace

std::string FillPlot(const CollectionEntry& entry, PlotDocument& plot)
{
    return EntryReader(entry, plot).Run();
}

DisplayedRanges StatedRanges(const CollectionEntry& entry, const DisplayedRanges& others)
{
    PlotDocument stated;
    for (const RangeAxisLine& axis : kRangeLines) {
        stated.ranges.*axis.lower = stated.ranges.*axis.upper = "";
    }
    CollectionEntry numbers;
    ForEachLine(entry[Column::Ranges], [&numbers](std::string_view line) {
        if (line.find('$') == line.npos) numbers.Append(Column::Ranges, line);
    });
    EntryReader(numbers, stated).TakeRangesOnly();
    const auto number = [](const std::string& text, double other) {
        return text.empty() ? other : LeadingNumber(text);
    };
    const RangeTexts& texts = stated.ranges;
    return {number(texts.x_lower, others.x_lower), number(texts.x_upper, others.x_upper),
            number(texts.y_lower, others.y_lower), number(texts.y_upper, others.y_upper),
            number(texts.t_lower, others.t_lower), number(texts.t_upper, others.t_upper)};
}

}  // namespace korvinth::document
