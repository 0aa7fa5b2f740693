// Shift+F10 opens menus like the menu key, which many keyboards lack and not every platform's
// toolkit replaces.
#pragma once

#include <QObject>

namespace korvinth::ui {

// An event filter of the application.
class MenuKey : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace korvinth::ui
