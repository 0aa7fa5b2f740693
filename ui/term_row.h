// What a row of the term editor is made of: colour field and text field, and the pane behind them.
#pragma once

#include <QColor>
#include <QLineEdit>
#include <QPoint>
#include <QString>
#include <QWidget>

#include "document/storable_text.h"

namespace korvinth::ui {

// A square of a graph's colour, hollow when the graph is invisible. A press of a button chooses.
class ColourField : public QWidget
{
    Q_OBJECT
public:
    explicit ColourField(QWidget* parent);
    void Show(QColor colour, bool visible);

Q_SIGNALS:
    void pressed();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_;
    bool hollow_ = false;
};

// A line of text, always one that a collection file takes. Text with line breaks, or too long for
// it, is offered whole instead of taken.
class TermField : public QLineEdit
{
    Q_OBJECT
public:
    // Pasting more is refused: beyond it typing in the line is no longer quick.
    static constexpr int kLongestText = document::kLongestTerm;

    explicit TermField(QWidget* parent);

    // Another text, without a way back; the caret keeps its distance to the end.
    void ShowText(const QString& shown);
    // Another text that the field's own undo takes back.
    void ReplaceText(const QString& replacement);
    // What the text would be with `inserted` in the place of the selection.
    QString TextWith(const QString& inserted) const;
    // Red frame with the message as tool tip; "" takes it away.
    void ShowFault(const QString& message);

Q_SIGNALS:
    void unfitTextOffered(const QString& text);
    void rowMenuRequested(QPoint global_position);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Paste();
    bool Offered(const QString& text);  // true when it was offered as unfit

    bool faulty_ = false;
};

// Draws a soft highlight behind the row in hand.
class TermRowsPane : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    void Highlight(const QWidget* field);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QWidget* highlighted_ = nullptr;
};

}  // namespace korvinth::ui
