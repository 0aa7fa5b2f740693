// A button that tells which mouse button and which keys clicked it.
#pragma once

#include <QToolButton>

#include "render/view_zoom.h"

namespace korvinth::ui {

render::ClickButton ButtonOf(Qt::MouseButton button);
// Bits kShiftKey, kCtrlKey, kAltKey.
unsigned KeysOf(Qt::KeyboardModifiers modifiers);

class ClickButton : public QToolButton
{
    Q_OBJECT
public:
    explicit ClickButton(QWidget* parent = nullptr);

Q_SIGNALS:
    // Released over the button; the space bar and a mnemonic count as the left button, the space
    // bar with Shift as the right one.
    void clickedWith(korvinth::render::ClickButton button, unsigned keys);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    bool shift_held_ = false;
};

// A ClickButton with a magnifying glass in the colour of the palette.
class ZoomButton : public ClickButton
{
    Q_OBJECT
public:
    using ClickButton::ClickButton;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace korvinth::ui
