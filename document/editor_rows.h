// The rows of the term editor between typing and applying: texts, and what moves along with a row.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/plot_document.h"

namespace korvinth::document {

// What the editor's rows show.
enum class EditorState : std::int16_t { Terms = 0, Intervals = 1 };

// Rows can be inserted, deleted and typed in while the document stays as it was last applied. Every
// row therefore belongs to a slot of the document: before anything is moved, to the one of its own
// number. Storing the rows brings the slots into the rows' order.
class EditorRows
{
public:
    EditorRows();

    // Everything as the document has it; what is typed and not applied goes.
    void Fill(const PlotDocument& document);
    // The same, but texts that are typed and not applied stay.
    void Refresh(const PlotDocument& document);

    const std::string& Text(EditorState state, SlotIndex row) const;
    // The user has typed. Text equal to the one shown before counts as not typed.
    void SetText(EditorState state, SlotIndex row, std::string_view text);
    bool HasUnappliedText(EditorState state, SlotIndex row) const;

    SlotIndex SlotOf(SlotIndex row) const { return rows_[row].slot; }
    SlotIndex RowOf(SlotIndex slot) const;
    // The row's function as last applied, with the interval, colour, visibility, ... of the row.
    const FunctionSlot& Function(SlotIndex row) const { return rows_[row].function; }
    // For the y-part of a curve the row of its x-part, nothing for any other row.
    std::optional<SlotIndex> XPartOf(SlotIndex row) const;
    // The last row with a text of either state.
    std::optional<SlotIndex> LastFilledRow() const;

    // Inserts an empty row in front of `row`, or below it. False, and nothing happens, when the
    // last row holds a text that would fall out, or when the new row would come after it.
    bool AddBefore(SlotIndex row, bool after);
    void Clear(SlotIndex row);  // the rows below move up
    void ClearAll();

    // Applying the terms: texts into document.rows, and the slots (with their line widths and line
    // types) into the order of the rows. The texts count as applied.
    void StoreRows(PlotDocument& document);
    // Applying the intervals: reads the rows in their order into the bounds of their slots.
    // Deliberate: at the first row without ";" it stops, without a message; neither this row nor
    // one below it is stored.
    void StoreIntervals(PlotDocument& document);

private:
    struct RowText
    {
        std::string text;
        std::string shown;  // what the document has
    };
    struct Row
    {
        SlotIndex slot{};
        FunctionSlot function;
        RowText term;
        RowText interval;
    };

    const RowText& TextOf(EditorState state, SlotIndex row) const;
    void Show(const PlotDocument& document, bool keep_typed);
    void Empty(Row& row);

    SlotTable<Row> rows_;
};

}  // namespace korvinth::document
