#include "ui/fit_to_screen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QMainWindow>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace korvinth::ui {
namespace {

constexpr const char* kScroll = "fitted";

bool Fits(QSize size, QSize room) { return size.boundedTo(room) == size; }

// The nearest begin of a length within the room.
int Inside(int begin, int length, int room_begin, int room_length)
{
    return std::max(room_begin, std::min(begin, room_begin + room_length - length));
}

// Without the frame: the window manager tells its size late or not at all.
QRect RoomFor(const QDialog& dialog)
{
    constexpr int kBorder = 4;
    const int title = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog);
    return dialog.screen()->availableGeometry().adjusted(kBorder, title, -kBorder, -kBorder);
}

// A message box breaks its lines only where it is too wide, which it is not when it scrolls.
void BreakLines(const QDialog& dialog)
{
    const auto* scroll = dialog.findChild<QScrollArea*>(kScroll);
    auto* text = scroll == nullptr ? nullptr : scroll->findChild<QLabel*>("qt_msgbox_label");
    if (text != nullptr) text->setWordWrap(true);
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
    // Message boxes become as small as they can.
    scroll->setMinimumSize(dialog.size().boundedTo(room));
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
    for (auto* button : content->findChildren<QAbstractButton*>()) {
        const auto later = [&dialog] { BreakLines(dialog); };  // details make the box size itself
        QObject::connect(button, &QAbstractButton::clicked, &dialog, later, Qt::QueuedConnection);
    }
    scroll->show();
    if (focused != nullptr) focused->setFocus();
}

void Shrink(QDialog& dialog)
{
    BreakLines(dialog);
    const QRect room = RoomFor(dialog);
    if (Fits(dialog.size(), room.size())) return;
    const QSize least = dialog.minimumSizeHint().expandedTo(dialog.minimumSize());
    if (dialog.layout() != nullptr && !Fits(least, room.size())) {
        MakeScrollable(dialog, room.size());
    }
    dialog.setMinimumSize(dialog.minimumSize().boundedTo(room.size()));
    dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const QRect smaller(dialog.geometry().topLeft(), dialog.size().boundedTo(room.size()));
    dialog.setGeometry(PlacedInside(smaller, room));
    BreakLines(dialog);
}

}  // namespace

QRect PlacedInside(const QRect& frame, const QRect& room)
{
    return {QPoint(Inside(frame.x(), frame.width(), room.x(), room.width()),
                   Inside(frame.y(), frame.height(), room.y(), room.height())),
            frame.size()};
}

void FitToScreen(QWidget& window)
{
    constexpr Qt::WindowStates kFollowsByItself =
        Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen;
    const Qt::WindowType type = window.windowType();
    if (type == Qt::Popup || type == Qt::ToolTip) return;  // they go by themselves
    if (!window.isVisible() || window.windowState().testAnyFlags(kFollowsByItself)) return;
    if (auto* dialog = qobject_cast<QDialog*>(&window)) Shrink(*dialog);
    const QRect room = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    if (room.contains(frame)) return;
    window.move(PlacedInside(frame, room).topLeft());
    if (!Fits(frame.size(), room.size()) && qobject_cast<QMainWindow*>(&window) != nullptr) {
        window.setWindowState(Qt::WindowMaximized);
    }
}

ScreenFitter::ScreenFitter()
{
    for (const QScreen* screen : QGuiApplication::screens()) Follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenFitter::Follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenFitter::FitAllSoon);
}

void ScreenFitter::Follow(const QScreen* screen) const
{
    connect(screen, &QScreen::availableGeometryChanged, this, &ScreenFitter::FitAllSoon);
}

// After the toolkit has given the windows of a screen that went to another.
void ScreenFitter::FitAllSoon()
{
    const auto fit = [] {
        for (QWidget* window : QApplication::topLevelWidgets()) FitToScreen(*window);
    };
    QMetaObject::invokeMethod(this, fit, Qt::QueuedConnection);
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
