#include "app/screen_fit.h"

#include <QApplication>
#include <QMainWindow>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace korvinth::app {
namespace {

// The nearest begin of a length within the room.
int Inside(int begin, int length, int room_begin, int room_length)
{
    return std::max(room_begin, std::min(begin, room_begin + room_length - length));
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
    const QRect room = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    if (room.contains(frame)) return;
    window.move(PlacedInside(frame, room).topLeft());
    const bool has_room = frame.width() <= room.width() && frame.height() <= room.height();
    if (!has_room && qobject_cast<QMainWindow*>(&window) != nullptr) {
        window.setWindowState(Qt::WindowMaximized);
    }
}

ScreenFit::ScreenFit()
{
    for (const QScreen* screen : QGuiApplication::screens()) Follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenFit::Follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenFit::FitSoon);
}

void ScreenFit::Follow(const QScreen* screen) const
{
    connect(screen, &QScreen::availableGeometryChanged, this, &ScreenFit::FitSoon);
}

// After the toolkit has given the windows of a screen that went to another.
void ScreenFit::FitSoon()
{
    const auto fit = [] {
        for (QWidget* window : QApplication::topLevelWidgets()) FitToScreen(*window);
    };
    QMetaObject::invokeMethod(this, fit, Qt::QueuedConnection);
}

}  // namespace korvinth::app
