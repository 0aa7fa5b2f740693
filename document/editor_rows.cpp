#include "document/editor_rows.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "document/interval_text.h"

namespace korvinth::document {
namespace {

// What a row inserted or emptied has of its own when it is stored; colour, line width and line type
// are those of the slot that it has taken over. Deliberate: so is the name, until the rows are
// checked, so that the name of a row just deleted is not given to a new one at once.
void StartAnew(FunctionSlot& slot, const FunctionSlot& row)
{
    slot.lower_bound = row.lower_bound;
    slot.upper_bound = row.upper_bound;
    slot.interval = row.interval;
    slot.stripe_count = row.stripe_count;
    slot.visible = row.visible;
    slot.family_allowed = row.family_allowed;
    slot.point_radius = row.point_radius;
    slot.support_points = row.support_points;
}

}  // namespace

void EditorRows::Fill(const PlotDocument& document)
{
    for (const SlotIndex row : AllSlots()) {
        rows_[row] = {};
        rows_[row].slot = row;
    }
    Refresh(document);
}

void EditorRows::Refresh(const PlotDocument& document)
{
    for (Row& row : rows_) {
        if (row.is_new) continue;
        row.function = document.slots[row.slot];
        Show(row.term, document.rows[row.slot]);
        Show(row.interval, IntervalRow(row.function));
    }
}

void EditorRows::Show(RowText& text, std::string_view shown)
{
    if (text.text == text.shown) text.text = shown;
    text.shown = shown;
}

const std::string& EditorRows::Text(EditorState state, SlotIndex row) const
{
    return (state == EditorState::Terms ? rows_[row].term : rows_[row].interval).text;
}

void EditorRows::SetText(EditorState state, SlotIndex row, std::string_view text)
{
    (state == EditorState::Terms ? rows_[row].term : rows_[row].interval).text = text;
}

SlotIndex EditorRows::RowOf(SlotIndex slot) const
{
    const auto* found = std::ranges::find(rows_, slot, &Row::slot);
    return SlotIndex{static_cast<std::int16_t>(found - rows_.begin())};
}

std::optional<SlotIndex> EditorRows::XPartOf(SlotIndex row) const
{
    const FunctionSlot& y_part = rows_[row].function;
    if (y_part.name.empty() || y_part.curve_link != kCurveYPart) return std::nullopt;
    const std::string name = "x" + y_part.name.substr(1);
    for (const SlotIndex other : AllSlots()) {
        if (rows_[other].function.name == name) return other;
    }
    return std::nullopt;
}

std::optional<SlotIndex> EditorRows::LastRowWithTerm() const
{
    std::optional<SlotIndex> last;
    for (const SlotIndex row : AllSlots()) {
        if (!rows_[row].term.text.empty()) last = row;
    }
    return last;
}

void EditorRows::Empty(Row& row)
{
    const std::int16_t colour = row.function.colour_index;
    row.function = {};
    row.function.colour_index = colour;
    row.function.interval = kOpenInterval;
    row.term = {};
    row.interval = {};
    row.is_new = true;
}

bool EditorRows::AddBefore(SlotIndex row, bool after)
{
    const int place = Number(row) + (after ? 1 : 0);
    const SlotIndex last{kSlotCount - 1};
    const bool holds_text =
        !Text(EditorState::Terms, last).empty() || !Text(EditorState::Intervals, last).empty();
    if (place >= kSlotCount || holds_text) return false;
    std::rotate(rows_.begin() + place, rows_.end() - 1, rows_.end());
    Empty(*(rows_.begin() + place));
    SortBlankRows();
    return true;
}

void EditorRows::Clear(SlotIndex row)
{
    Empty(rows_[row]);
    std::rotate(rows_.begin() + Number(row), rows_.begin() + Number(row) + 1, rows_.end());
    SortBlankRows();
}

void EditorRows::SortBlankRows()
{
    std::vector<Row*> places;
    std::vector<Row> blank;
    for (Row& row : rows_) {
        if (!row.term.text.empty() || !row.interval.text.empty() || !row.function.name.empty()) {
            continue;
        }
        places.push_back(&row);
        blank.push_back(row);
    }
    std::ranges::stable_sort(blank, {}, [](const Row& row) { return row.function.colour_index; });
    for (std::size_t k = 0; k < blank.size(); ++k) *places[k] = std::move(blank[k]);
}

void EditorRows::ClearAll()
{
    for (Row& row : rows_) Empty(row);
}

void EditorRows::ToggleNewRow(SlotIndex row)
{
    rows_[row].function.visible = !rows_[row].function.visible;
}

void EditorRows::StoreRows(PlotDocument& document)
{
    const SlotTable<FunctionSlot> slots = document.slots;
    const SlotTable<SlotAttributes> looks = document.attributes.slots;
    for (const SlotIndex index : AllSlots()) {
        Row& row = rows_[index];
        FunctionSlot& slot = document.slots[index];
        slot = slots[row.slot];
        if (row.is_new) StartAnew(slot, row.function);
        // The colour is found through the slot's colour index, which moves along.
        document.attributes.slots[index].width = looks[row.slot].width;
        document.attributes.slots[index].type = looks[row.slot].type;
        document.rows[index] = row.term.text;
        row.slot = index;
        row.is_new = false;
        row.term.shown = row.term.text;
    }
}

void EditorRows::StoreIntervals(PlotDocument& document)
{
    for (Row& row : rows_) {
        const IntervalReading reading = ReadIntervalRow(row.interval.text);
        FunctionSlot& function = row.is_new ? row.function : document.slots[row.slot];
        if (!reading.empty) {
            if (!reading.has_semicolon) return;
            function.lower_bound = reading.lower;
            function.upper_bound = reading.upper;
        }
        row.interval.shown = row.interval.text;
        if (function.curve_link != kCurveYPart) {
            function.interval = IntervalText(function.lower_bound, function.upper_bound);
            if (!function.name.empty()) Show(row.interval, IntervalRow(function));
        }
        row.function = function;
    }
}

}  // namespace korvinth::document
