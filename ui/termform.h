// The term editor: thirteen rows of equations, or of the intervals in which they are drawn.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "document/editor_rows.h"
#include "document/plot_document.h"
#include "ui/dialogs.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace korvinth::ui {

class ColourField;
class TermField;
class TermRowsPane;

// Shows the document's rows and reports what the user does; it changes nothing but the rows that
// are being typed. Rows inserted or deleted are applied together with their texts: until then row
// and slot of the document can differ, SlotOf tells which slot a row belongs to.
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

    // For the session, when the user applies. Stores into the document, whose owner passes it.
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

    // Commands on rows; nothing is applied by them.
    void clrall();
    void clr(document::SlotIndex row);
    void add_before(document::SlotIndex row, bool after);
    void findandgetpre(document::EditorState state);  // applies: emits applied
    void showcd();                                    // colour chooser for the current row

    // The status line: `text` on red when `error`, else on the normal colour.
    void showerror(std::string_view text, bool error);
    // Red frame and tool tip until the row is edited or another mark is set; the row is one of the
    // document as applied.
    void MarkFaultyRow(document::SlotIndex slot, std::string_view message);
    void ClearFaultyRow();

    // Fonts, heights and positions from the font; with `reset` also empties every row.
    void LayoutRows(bool reset = false);
    // Tells by sizeHint and heightFitted the height that shows the rows in use and one more.
    void fitheight();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void applied(korvinth::document::EditorState state);        // Enter
    void visibilityToggled(korvinth::document::SlotIndex row);  // swvis
    // The row's pop-up menu is wanted at the point; the row is the current one.
    void rowMenuRequested(korvinth::document::SlotIndex row, QPoint global_position);
    void colourChosen(korvinth::document::SlotIndex row, korvinth::document::Colour colour);
    void stateChanged(korvinth::document::EditorState state);
    void currentRowChanged(korvinth::document::SlotIndex row);
    void heightFitted(int height);  // pixels

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    document::EditorRows rows_;
    const document::PlotDocument& document_;
    Dialogs& dialogs_;
    document::EditorState state_ = document::EditorState::Terms;
    document::SlotIndex current_{};
    document::SlotTable<TermField*> fnam_;
    document::SlotTable<ColourField*> fcol_;
    document::SlotTable<QToolButton*> cmplus_;
    QPushButton* btback_ = nullptr;
    QLabel* status_ = nullptr;
};

}  // namespace korvinth::ui
