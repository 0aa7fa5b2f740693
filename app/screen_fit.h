// Windows stay within reach when a screen shrinks or goes: a projector is attached, a laptop taken
// from its desk.
#pragma once

#include <QObject>
#include <QRect>

class QScreen;
class QWidget;

namespace korvinth::app {

// Where a window with this frame lies in the room that a screen has, moved as little as possible;
// its size stays. One that is larger begins at the upper left corner.
QRect PlacedInside(const QRect& frame, const QRect& room);

// A window that the room of its screen cannot hold is moved; the main window, which can be of any
// size, fills the screen when it is larger.
void FitToScreen(QWidget& window);

// Does that with all windows whenever the screens have changed.
class ScreenFit final : public QObject
{
    Q_OBJECT
public:
    ScreenFit();

private:
    void Follow(const QScreen* screen) const;
    void FitSoon();
};

}  // namespace korvinth::app
