#include "ui/fit_to_screen.h"

#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace korvinth::ui {
namespace {

constexpr const char* kScroll = "fitted";

bool Fits(QSize size, QSize room) { return size.boundedTo(room) == size; }

// Without the frame: the window manager tells its size late or not at all.
QRect RoomFor(const QDialog& dialog)
{
    constexpr int kBorder = 4;
    const int title = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog);
    return dialog.screen()->availableGeometry().adjusted(kBorder, title, -kBorder, -kBorder);
}

void MakeScrollable(QDialog& dialog, QSize room)
{
    QWidget* focused = dialog.focusWidget();
    dialog.layout()->setSizeConstraint(QLayout::SetDefaultConstraint);
    auto* content = new QWidget;
    content->setLayout(dialog.layout());  // takes what the layout holds along
    auto* scroll = new QScrollArea(&dialog);
    scroll->setObjectName(kScroll);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setMinimumSize(
        dialog.size().boundedTo(room));  // message boxes are as small as they can
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
    scroll->show();
    if (focused != nullptr) focused->setFocus();
}

// A message box breaks its lines only where it is too wide, which it is not when it scrolls.
void BreakLines(const QDialog& dialog)
{
    const auto* scroll = dialog.findChild<QScrollArea*>(kScroll);
    auto* text = scroll == nullptr ? nullptr : scroll->findChild<QLabel*>("qt_msgbox_label");
    if (text != nullptr) text->setWordWrap(true);
}

}  // namespace

void FitToScreen(QDialog& dialog)
{
    BreakLines(dialog);
    const QRect room = RoomFor(dialog);
    if (Fits(dialog.size(), room.size())) return;
    const QSize least = dialog.minimumSizeHint().expandedTo(dialog.minimumSize());
    if (dialog.layout() != nullptr && !Fits(least, room.size()))
        MakeScrollable(dialog, room.size());
    dialog.setMinimumSize(dialog.minimumSize().boundedTo(room.size()));
    dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QRect place(dialog.geometry().topLeft(), dialog.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    dialog.setGeometry(place);
    BreakLines(dialog);
}

bool ScreenFitter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show && event->type() != QEvent::Resize) return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (dialog == nullptr || !dialog->isWindow() || !dialog->isVisible()) return false;
    // Dialogs settle their size when they are shown.
    QMetaObject::invokeMethod(
        dialog, [dialog] { FitToScreen(*dialog); }, Qt::QueuedConnection);
    return false;
}

}  // namespace korvinth::ui
