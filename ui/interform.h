// The range window: bounds of x, y and the curve parameter, each of them a term.
#pragma once

#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "render/view_range.h"
#include "ui/range_actions.h"

class QGridLayout;
class QLabel;
class QLineEdit;

namespace korvinth::ui {

// The window `interform`, "Dargestellter Bereich".
class InterForm : public QWidget
{
    Q_OBJECT
public:
    // Shows the ranges of `document` and `view`; hands what is typed to `actions`. All three
    // outlive the window.
    InterForm(const document::PlotDocument& document, const render::ViewRange& view,
              RangeActions& actions, QWidget* parent = nullptr);

    // Show a range as it is now: terms while they are in force, else numbers to the precision of
    // the picture. A field in which someone is typing keeps its text.
    void updatex() { ShowAxis(RangeAxis::X); }
    void updatey() { ShowAxis(RangeAxis::Y); }
    void updatet() { ShowAxis(RangeAxis::T); }
    void updateall();
    void FocusFirstField();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // A lower and an upper bound.
    struct FieldPair
    {
        QLineEdit* lower = nullptr;
        QLineEdit* upper = nullptr;
        bool Edited() const;
    };

    void AddRow(QGridLayout& layout, RangeAxis axis, const QString& variable);
    QLineEdit* MakeField(const QString& name, const QString& caption);
    void AddButtons(QGridLayout& layout);
    void ShowAxis(RangeAxis axis);
    void TakeFields();
    void ShowFaults(const std::vector<RangeFault>& faults);
    void ForgetEdits();
    FieldPair& Fields(RangeAxis axis) { return fields_[static_cast<std::size_t>(axis)]; }

    const document::PlotDocument& document_;
    const render::ViewRange& view_;
    RangeActions& actions_;
    std::array<FieldPair, 3> fields_;
    QLabel* status_;
    bool taking_ = false;  // the typed texts stay until it is known which are refused
};

}  // namespace korvinth::ui
