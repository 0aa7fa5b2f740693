// The range window: bounds of x, y and the curve parameter, each of them a term.
#pragma once

#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "render/view_range.h"
#include "ui/range_actions.h"

class QLabel;
class QLineEdit;

namespace korvinth::ui {

class InterForm : public QWidget
{
    Q_OBJECT
public:
    // Shows the ranges of `document` and `view`; hands what is typed to `actions`. All three
    // outlive the window.
    InterForm(const document::PlotDocument& document, const render::ViewRange& view,
              RangeActions& actions, QWidget* parent = nullptr);

    // Show a range as it is now: terms while they are in force, else numbers to the precision of
    // the picture. What is being typed goes.
    void updatex();
    void updatey();
    void updatet();
    void updateall();

    // Takes what is typed (Enter in a field, the button); faults stand in the status line and mark
    // their fields.
    void TakeFields();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr int kFields = 6;  // lower and upper bound of x, y, t

    void MakeFields();
    void MakeButtons();
    void Show(int field, const std::string& term, double value, double resolution);
    std::string Typed(int field) const;
    void ShowFaults(const std::vector<RangeFault>& faults);
    void MarkField(int field, const QString& fault);

    const document::PlotDocument& document_;
    const render::ViewRange& view_;
    RangeActions& actions_;
    std::array<QLineEdit*, kFields> fields_{};
    std::array<std::string, kFields> terms_;  // what the fields stand for while they are not edited
    QLabel* status_ = nullptr;
};

}  // namespace korvinth::ui
