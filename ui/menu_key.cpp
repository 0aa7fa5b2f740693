#include "ui/menu_key.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace korvinth::ui {

// The place is where the toolkit has it for the menu key.
bool MenuKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool asked = key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
    if (widget == nullptr || !asked) return false;
    const QPoint place = widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, place, widget->mapToGlobal(place));
    QCoreApplication::sendEvent(widget, &menu);
    return true;
}

}  // namespace korvinth::ui
