// Keys and mouse in the rows of the term editor, and what they do.
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>
#include <algorithm>

#include "ui/term_row.h"
#include "ui/termform.h"

namespace korvinth::ui {
namespace {

using document::kSlotCount;
using document::Number;
using document::SlotIndex;

constexpr SlotIndex kLastRow{kSlotCount - 1};

SlotIndex Row(int number) { return SlotIndex{static_cast<std::int16_t>(number)}; }

template <class Controls>
std::optional<SlotIndex> IndexOf(const Controls& controls, const QObject* control)
{
    const auto found = std::ranges::find_if(
        controls, [&](const QObject* candidate) { return candidate == control; });
    if (found == controls.end()) return std::nullopt;
    return Row(static_cast<int>(found - controls.begin()));
}

}  // namespace

struct TermForm::KeyAction
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    void (*run)(TermForm& form) = nullptr;
};

const TermForm::KeyAction* TermForm::FindKeyAction(const QKeyEvent& event)
{
    static const KeyAction kActions[] = {
        {Qt::Key_Return, {}, [](TermForm& form) { form.findandgetpre(form.state_); }},
        {Qt::Key_Return, Qt::ShiftModifier,
         [](TermForm& form) { form.InsertBelow(form.current_, true); }},
        {Qt::Key_Insert, {}, [](TermForm& form) { form.InsertBelow(form.current_, false); }},
        {Qt::Key_Insert, Qt::ControlModifier,
         [](TermForm& form) {
             if (form.current_ != kLastRow) form.add_before(form.current_, false);
         }},
        {Qt::Key_Delete, Qt::ShiftModifier, [](TermForm& form) { form.clr(form.current_); }},
        {Qt::Key_Escape,
         {},
         [](TermForm& form) {
             TermField& field = *form.fnam_[form.current_];
             if (field.text() != form.text_at_focus_) field.ReplaceText(form.text_at_focus_);
             field.end(false);
         }},
        {Qt::Key_PageUp, {}, [](TermForm& form) { form.RequestRowMenu(); }},
        {Qt::Key_PageDown, {}, [](TermForm& form) { form.RequestRowMenu(); }},
        {Qt::Key_PageDown, Qt::ShiftModifier,
         [](TermForm& form) { form.ToggleVisibility(form.current_); }},
        {Qt::Key_PageUp, Qt::ShiftModifier, [](TermForm& form) { form.SwitchState(); }},
        {Qt::Key_Up, {}, [](TermForm& form) { form.Step(-1); }},
        {Qt::Key_Down, {}, [](TermForm& form) { form.Step(1); }},
    };
    const int key = event.key() == Qt::Key_Enter ? Qt::Key_Return : event.key();
    const Qt::KeyboardModifiers modifiers =
        event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    const auto* found = std::ranges::find_if(kActions, [&](const KeyAction& action) {
        return action.key == key && action.modifiers == modifiers;
    });
    return found == std::end(kActions) ? nullptr : found;
}

bool TermForm::eventFilter(QObject* watched, QEvent* event)
{
    if (const auto plus = IndexOf(cmplus_, watched)) {
        if (event->type() != QEvent::MouseButtonRelease) return false;
        const auto* mouse = dynamic_cast<QMouseEvent*>(event);
        shift_held_ = mouse->modifiers().testFlag(Qt::ShiftModifier);
        if (mouse->button() == Qt::LeftButton) return false;  // becomes a click
        SetCurrentRow(*plus);
        ToggleVisibility(*plus);
        return true;
    }
    const auto row = IndexOf(fnam_, watched);
    if (!row) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::FocusIn: {
            SetCurrentRow(*row);
            const Qt::FocusReason reason = dynamic_cast<QFocusEvent*>(event)->reason();
            const bool comes_back =
                reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
            if (!comes_back || *row != row_at_focus_) text_at_focus_ = fnam_[*row]->text();
            row_at_focus_ = *row;
            return false;
        }
        case QEvent::MouseButtonPress: SetCurrentRow(*row); return false;
        case QEvent::ShortcutOverride:
            if (FindKeyAction(*dynamic_cast<QKeyEvent*>(event)) == nullptr) return false;
            event->accept();
            return true;
        case QEvent::KeyPress: {
            SetCurrentRow(*row);
            const auto* key = dynamic_cast<QKeyEvent*>(event);
            if (const KeyAction* action = FindKeyAction(*key)) {
                action->run(*this);
                return true;
            }
            return key->matches(QKeySequence::Undo) && !fnam_[*row]->isUndoAvailable() &&
                   TakeBackMove();
        }
        default: return false;
    }
}

void TermForm::Step(int rows)
{
    const int number = Number(current_) + rows;
    if (number < 0 || number >= kSlotCount) return;
    fnam_[Row(number)]->setCursorPosition(fnam_[current_]->cursorPosition());
    FocusRow(Row(number));
}

void TermForm::InsertBelow(SlotIndex row, bool focus)
{
    if (row == kLastRow) return;
    if (add_before(row, true) && focus) FocusRow(Row(Number(row) + 1));
}

void TermForm::PlusClicked(SlotIndex row, bool shift)
{
    if (!shift) {
        InsertBelow(row, true);
        return;
    }
    clr(row);
    FocusRow(row == kLastRow ? Row(Number(row) - 1) : row);
}

void TermForm::ToggleVisibility(SlotIndex row)
{
    if (rows_.IsNew(row)) {
        rows_.ToggleNewRow(row);
        ShowRows();
    } else {
        Q_EMIT visibilityToggled(row);
    }
}

void TermForm::RequestRowMenu(std::optional<QPoint> global_position)
{
    if (const auto x_part = rows_.XPartOf(current_)) SetCurrentRow(*x_part);
    const TermField* field = fnam_[current_];
    const QPoint below = field->mapToGlobal(QPoint(0, field->height()));
    Q_EMIT rowMenuRequested(current_, global_position.value_or(below));
}

}  // namespace korvinth::ui
