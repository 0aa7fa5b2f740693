// Work that waits until a window is seen.
#pragma once

#include <QWidget>
#include <functional>

namespace korvinth::ui {

// Runs the action once, after the window has been painted for the first time.
void AfterFirstPaint(QWidget& window, std::function<void()> action);

}  // namespace korvinth::ui
