// Keeps dialogs within the screen.
#pragma once

#include <QDialog>

namespace korvinth::ui {

// Makes a shown dialog, the toolkit's own too, as small as the screen is and moves it there. What a
// dialog cannot do without scrolls then.
void FitToScreen(QDialog& dialog);

// An event filter of the application: fits every dialog once it is shown, and when it grows.
class ScreenFitter : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace korvinth::ui
