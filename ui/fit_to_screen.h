// Keeps windows within the screen: dialogs on small ones, and all windows when a screen shrinks or
// goes, as when a projector is attached.
#pragma once

#include <QObject>
#include <QRect>

class QScreen;
class QWidget;

namespace korvinth::ui {

// Where a window with this frame lies in the room that a screen has, moved as little as possible;
// its size stays. One that is larger begins at the upper left corner.
QRect PlacedInside(const QRect& frame, const QRect& room);

// A shown window that the room of its screen cannot hold is moved. The main window, which can be of
// any size, fills the screen when it is larger; a dialog, the toolkit's own too, becomes smaller,
// and what it cannot do without scrolls then.
void FitToScreen(QWidget& window);

// An event filter of the application: does that with every dialog once it is shown and when it
// grows, and with all windows whenever the screens have changed.
class ScreenFitter final : public QObject
{
    Q_OBJECT
public:
    ScreenFitter();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Follow(const QScreen* screen) const;
    void FitAllSoon();
};

}  // namespace korvinth::ui
