#include <algorithm>
#include <functional>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "document/attributes_text.h"
#include "document/collection_format.h"
#include "document/definition_lines.h"
#include "document/list_text.h"
#include "document/number_text.h"
#include "document/plot_entry.h"
#include "document/storable_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

std::string Whole(int number) { return std::to_string(number); }

std::string Bracketed(std::string_view head, std::initializer_list<std::string> items)
{
    std::string line(head);
    char separator = '[';
    for (const std::string& item : items) {
        line += separator + item;
        separator = ';';
    }
    return line + ']';
}

std::string WithMark(char mark, std::string_view name) { return mark + std::string(name); }

// Writes the columns of one entry.
class EntryWriter
{
public:
    EntryWriter(const PlotDocument& plot, const DisplayedRanges& ranges)
        : plot_(plot), ranges_(ranges)
    {
    }

    CollectionEntry Run()
    {
        WriteRows();
        WriteParameters();
        WriteRanges();
        WriteSlots();
        WriteLooks();
        entry_.Set(Column::Lines, ReadList(Text2List(plot_.lines_text)));
        entry_.Set(Column::Points, ReadPoints(Text2Points(plot_.points_text)));
        if (plot_.unknown_lines.empty()) return entry_;
        for (const std::string_view line : SplitText(plot_.unknown_lines, kLineBreak)) {
            Add(line);
        }
        return entry_;
    }

private:
    // To the column that reading would put it in; false when that takes it for something else.
    bool Add(std::string_view line)
    {
        const std::optional<Column> column = ColumnOfWholeLine(line);
        if (column) entry_.Append(*column, line);
        return column.has_value();
    }

    std::string RowText(SlotIndex index) const
    {
        return std::string(term::TrimBlanks(StorableTerm(plot_.rows[index])));
    }

    void WriteRows()
    {
        int empty_rows = 0;
        for (const SlotIndex index : AllSlots()) {
            const std::string line = RowLine(index);
            if (line.empty()) {
                ++empty_rows;
                continue;
            }
            for (; empty_rows > 0; --empty_rows) {
                Add(std::string(1, kInvisibleMark));
            }
            Add(line);
        }
    }

    std::string RowLine(SlotIndex index) const
    {
        const FunctionSlot& slot = plot_.slots[index];
        std::string line = slot.visible ? "" : std::string(1, kInvisibleMark);
        if (!slot.name.empty()) {
            // Brackets in the other order read alike, and such an argument needs them.
            const bool swapped = slot.argument.find(')') != slot.argument.npos;
            return line + slot.name + (swapped ? ")" : "(") + StorableTerm(slot.argument) +
                   (swapped ? "(=" : ")=") + StorableTerm(slot.raw_term);
        }
        const std::string text = RowText(index);
        if (text.empty()) return {};
        line = std::string(kFaultyMark) + line;
        if (text.front() == kInvisibleMark) line += ' ';
        return line + text;
    }

    void WriteParameters()
    {
        for (const ParameterIndex index : AllParameters()) {
            const Parameter& parameter = plot_.parameters[index];
            if (!parameter.name.empty()) WriteParameter(parameter, ValueName(index));
        }
        // A row behind a fault still needs the values of its parameters once the fault is gone.
        const std::set<std::string, std::less<>> names = NamesOfFaultyRows();
        for (const auto& [name, parameter] : plot_.dormant_parameters) {
            if (names.contains(name)) WriteParameter(parameter, name);
        }
    }

    std::set<std::string, std::less<>> NamesOfFaultyRows() const
    {
        std::set<std::string, std::less<>> names;
        for (const SlotIndex index : AllSlots()) {
            const std::string& row = plot_.rows[index];
            if (!plot_.slots[index].name.empty() || row.empty()) continue;
            names.merge(NamesIn(row));
            const std::string function = NameOfRow(row);
            names.insert({function + "u", function + "anz"});
        }
        return names;
    }

    void WriteParameter(const Parameter& parameter, const std::string& value_name)
    {
        const std::string value = ShortestText(parameter.value);
        std::string details = Bracketed(
            WithMark(kParameterMark, parameter.name),
            {ShortestText(parameter.lower), ShortestText(parameter.upper),
             ShortestText(parameter.step), Whole(static_cast<int>(parameter.mode)),
             Whole(static_cast<int>(parameter.coupling)), Whole(parameter.family ? 1 : 0)});
        // Where it would read as a keyword, the value goes to the end of the other line.
        if (!Add(value_name + "=" + value)) details.insert(details.size() - 1, ";" + value);
        Add(details);
    }

    std::string ValueName(ParameterIndex index) const
    {
        const int number = Number(index);
        if (number >= kFirstUserParameter) return plot_.parameters[index].name;
        const bool count = number >= kFirstSampleCount;
        const SlotIndex slot{
            static_cast<std::int16_t>(count ? number - kFirstSampleCount : number)};
        return "u[" + plot_.slots[slot].name + std::string(count ? kSampleCountKey : "") + "]";
    }

    void WriteRanges()
    {
        const double numbers[][2] = {{ranges_.x_lower, ranges_.x_upper},
                                     {ranges_.y_lower, ranges_.y_upper},
                                     {ranges_.t_lower, ranges_.t_upper}};
        const auto* number = numbers;
        for (const RangeAxisLine& axis : kRangeLines) {
            const std::string lower = ShortestText((*number)[0]);
            const std::string upper = ShortestText((*number)[1]);
            ++number;
            Add(Bracketed(axis.numbers, {lower, upper}));
            const std::string lower_text = StorableTerm(plot_.ranges.*axis.lower);
            const std::string upper_text = StorableTerm(plot_.ranges.*axis.upper);
            if (lower_text == lower && upper_text == upper) continue;
            Add(Bracketed(axis.terms, {lower_text, upper_text}));
        }
    }

    // Of rows with a fault too, which have a name in their text at best.
    void WriteSlots()
    {
        std::vector<std::string> names;
        for (const SlotIndex index : AllSlots()) {
            const FunctionSlot& slot = plot_.slots[index];
            std::string name = slot.name.empty() ? NameOfRow(RowText(index)) : slot.name;
            const bool used = std::ranges::find(names, name) != names.end();
            if (name.empty() || used) continue;
            const bool integral = !plot_.parameters[SampleCountParameter(index)].name.empty();
            Add(Bracketed(WithMark(kSlotMark, name),
                          {Whole(slot.point_radius), Whole(slot.family_allowed ? 1 : 0),
                           Whole(integral ? 0 : slot.support_points)}));
            if (!slot.lower_bound.empty() || !slot.upper_bound.empty()) {
                Add(Bracketed(WithMark(kIntervalMark, name),
                              {StorableTerm(slot.lower_bound), StorableTerm(slot.upper_bound)}));
            }
            names.push_back(std::move(name));
        }
    }

    // The colours go by slots here: no file says which slot has which entry of the table.
    void WriteLooks()
    {
        DisplayAttributes attributes = plot_.attributes;
        for (const SlotIndex index : AllSlots()) {
            const SlotIndex colour = ColourPlace(plot_.slots[index]);
            attributes.slots[index].colour = plot_.attributes.slots[colour].colour;
        }
        entry_.Set(Column::Colours, ColourTableText(attributes));
        entry_.Set(Column::Widths, LineWidthsText(attributes));
        entry_.Set(Column::LineTypes, LineTypesText(attributes));
        entry_.Set(Column::Attributes, AttributesText(attributes));
    }

    const PlotDocument& plot_;
    const DisplayedRanges& ranges_;
    CollectionEntry entry_;
};

}  // namespace

CollectionEntry EntryOfPlot(const PlotDocument& plot, const DisplayedRanges& ranges)
{
    return EntryWriter(plot, ranges).Run();
}

}  // namespace korvinth::document
