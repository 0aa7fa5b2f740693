// The term editor: thirteen rows of equations, or of the intervals in which they are drawn.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>
#include <optional>
#include <string_view>
#include <vector>

#include "document/editor_rows.h"
#include "document/plot_document.h"
#include "ui/dialogs.h"

class QKeyEvent;
class QPushButton;
class QScrollArea;
class QToolButton;

namespace korvinth::ui {

class ColourField;
class StatusLine;
class SymbolBar;
class TermField;
class TermRowsPane;

// Shows the document's rows and reports what the user does; it changes nothing but the rows that
// are being typed. Rows inserted or deleted are applied together with their texts: until then row
// and slot of the document can differ, and SlotOf tells which slot a row belongs to.
class TermForm : public QWidget
{
    Q_OBJECT
public:
    // Both outlive the window. Fills itself from the document.
    TermForm(const document::PlotDocument& document, Dialogs& dialogs, QWidget* parent = nullptr);

    // Everything as the document has it; what is typed and not applied goes (a new document, undo).
    void init();
    // After ApplyPlot, and after changes of colours, visibility or intervals: what the document
    // has, but texts that are typed and not applied stay.
    void Refresh();

    // Stores into the document, whose owner passes it when the user has applied.
    void StoreRows(document::PlotDocument& document);       // state 0, before ApplyPlot
    void StoreIntervals(document::PlotDocument& document);  // state 1

    document::EditorState State() const { return state_; }
    // 0 or 1; a negative argument displays the present state again.
    void setstate(int state);

    document::SlotIndex CurrentRow() const { return current_; }
    void SetCurrentRow(document::SlotIndex row);  // without the focus
    void FocusRow(document::SlotIndex row);
    document::SlotIndex SlotOf(document::SlotIndex row) const { return rows_.SlotOf(row); }
    document::SlotIndex RowOf(document::SlotIndex slot) const { return rows_.RowOf(slot); }

    int FilledRows() const;  // rows that hold a term, applied or not

    // Commands on rows; nothing is applied by them.
    void clrall();
    void clr(document::SlotIndex row);
    bool add_before(document::SlotIndex row, bool after);  // false when there is no room
    void findandgetpre(document::EditorState state);       // applies: emits applied
    void showcd();                                         // colour chooser for the current row

    // The status line: `text` on red when `error`, else on the normal colour; "" reads "o.k.".
    void showerror(std::string_view text, bool error);
    // Red frame and tool tip at the row of a slot, until it is edited.
    void MarkFaultyRow(document::SlotIndex slot, std::string_view message);
    void ClearFaultyRow();

    void LayoutRows();  // fonts, heights and positions from the font
    // The rows' font size in points; without one of its own it follows the window's font.
    void SetRowPoints(std::optional<int> points);
    int RowPoints() const;
    bool HasOwnRowPoints() const { return row_points_.has_value(); }
    // Makes sizeHint the size that shows the rows in use and one more.
    void fitheight();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int HeightOfAllRows() const;  // pixels

Q_SIGNALS:
    void applied(korvinth::document::EditorState state);        // Enter
    void visibilityToggled(korvinth::document::SlotIndex row);  // swvis; never for a new row
    // The row's pop-up menu is wanted at the point; the row is the current one.
    void rowMenuRequested(korvinth::document::SlotIndex row, QPoint global_position);
    void colourChosen(korvinth::document::SlotIndex row, korvinth::document::Colour colour);
    void stateChanged(korvinth::document::EditorState state);
    void currentRowChanged(korvinth::document::SlotIndex row);
    void heightFitted(int height);  // pixels, when sizeHint has changed

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct KeyAction;
    static const KeyAction* FindKeyAction(const QKeyEvent& event);

    void MakeRows();
    void MakeButtons();
    void ShowRows();
    void Typed(document::SlotIndex row, const QString& text);
    void PasteLines(document::SlotIndex row, const QString& text);
    void SwitchState();
    void TypeSymbol(const QString& text);
    void PlusClicked(document::SlotIndex row, bool shift);
    void RowsMoved();
    void RememberRows();
    bool TakeBackMove();
    void ToggleVisibility(document::SlotIndex row);
    void RequestRowMenu(std::optional<QPoint> global_position = {});
    void InsertBelow(document::SlotIndex row, bool focus);
    void Step(int rows);
    int HeightOf(int rows) const;  // of the window, when it shows so many rows

    document::EditorRows rows_;
    std::vector<document::EditorRows> former_rows_;  // before rows were inserted or deleted
    const document::PlotDocument& document_;
    Dialogs& dialogs_;
    document::EditorState state_ = document::EditorState::Terms;
    document::SlotIndex current_{};
    QString text_at_focus_;  // the text that Esc puts back, and its row
    document::SlotIndex row_at_focus_{};
    bool shift_held_ = false;  // when a button of a row was released
    std::optional<document::SlotIndex> faulty_slot_;
    QString fault_;

    document::SlotTable<TermField*> fnam_;
    document::SlotTable<ColourField*> fcol_;
    document::SlotTable<QToolButton*> cmplus_;
    TermRowsPane* pane_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QPushButton* btback_ = nullptr;
    SymbolBar* symbols_ = nullptr;
    std::optional<int> row_points_;
    StatusLine* status_ = nullptr;
    int fitted_height_ = 0;
};

}  // namespace korvinth::ui
