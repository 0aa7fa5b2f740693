// The rows of the term editor between typing and applying: texts, and what moves along with a row.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "document/plot_document.h"

namespace korvinth::document {

// What the editor's rows show.
enum class EditorState : std::int16_t { Terms = 0, Intervals = 1 };

// Rows can be inserted, deleted and typed in while the document stays as it was last applied. Every
// row therefore belongs to a slot of the document: before anything is moved, to the one of its own
// number; a new row takes over the slot of a blank one. Storing the rows brings the slots into the
// rows' order.
class EditorRows
{
public:
    EditorRows() { Fill({}); }

    // Everything as the document has it; what is typed and not applied goes.
    void Fill(const PlotDocument& document);
    // The same, but texts that are typed and not applied stay, and so do moved rows.
    void Refresh(const PlotDocument& document);

    const std::string& Text(EditorState state, SlotIndex row) const;
    void SetText(EditorState state, SlotIndex row, std::string_view text);  // the user has typed

    SlotIndex SlotOf(SlotIndex row) const { return rows_[row].slot; }
    SlotIndex RowOf(SlotIndex slot) const;
    // Inserted or emptied since the rows were last stored.
    bool IsNew(SlotIndex row) const { return rows_[row].is_new; }
    // The row's function as last applied; of a new row only interval, colour and visibility count.
    const FunctionSlot& Function(SlotIndex row) const { return rows_[row].function; }
    // For the y-part of a curve the row of its x-part, nothing for any other row.
    std::optional<SlotIndex> XPartOf(SlotIndex row) const;
    std::optional<SlotIndex> LastRowWithTerm() const;

    // Inserts an empty row in front of `row`, or below it. False, and nothing happens, when the
    // last row holds a text that would fall out, or when the new row would come after it.
    bool AddBefore(SlotIndex row, bool after);
    void Clear(SlotIndex row);  // deletes it, the rows below move up
    void ClearAll();
    void ToggleNewRow(SlotIndex row);  // the visibility of a row that the document does not know

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
        std::string shown;  // without anything typed
    };
    struct Row
    {
        SlotIndex slot{};
        bool is_new = false;
        FunctionSlot function;
        RowText term;
        RowText interval;
    };

    static void Show(RowText& text, std::string_view shown);
    static void Empty(Row& row);
    void SortBlankRows();  // so that the next function takes the first free colour

    SlotTable<Row> rows_;
};

}  // namespace korvinth::document
