// The list of term rows: thirteen fields with their colours, and the status line below.
#pragma once

#include <QWidget>
#include <string>
#include <string_view>

#include "document/display_attributes.h"
#include "document/slots.h"

class QLabel;
class QLineEdit;

namespace korvinth::ui {

// A square of a graph's colour; its size follows the font.
class ColourSquare : public QWidget
{
    Q_OBJECT
public:
    explicit ColourSquare(QWidget* parent);
    void SetColour(document::Colour colour);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    document::Colour colour_{};
};

class TermList : public QWidget
{
    Q_OBJECT
public:
    explicit TermList(QWidget* parent = nullptr);

    std::string Row(document::SlotIndex row) const;
    // Shows the rows; the caret stays where it is in those that do not change.
    void SetRows(const document::SlotTable<std::string>& rows);
    void SetColours(const document::SlotTable<document::SlotAttributes>& slots);
    // "o.k." when `error` is empty, else the error on red.
    void ShowStatus(std::string_view error);

Q_SIGNALS:
    void applied();  // Enter in a row

private:
    document::SlotTable<QLineEdit*> fnam_;
    document::SlotTable<ColourSquare*> fcol_;
    QLabel* status_;
};

}  // namespace korvinth::ui
