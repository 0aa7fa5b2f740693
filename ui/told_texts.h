// Names and descriptions for those who listen, told again only when they are others: readers of
// screens hear of every one that is set.
#pragma once

#include <QWidget>

namespace korvinth::ui {

inline void TellName(QWidget& control, const QString& name)
{
    if (control.accessibleName() != name) control.setAccessibleName(name);
}

inline void TellDescription(QWidget& control, const QString& description)
{
    if (control.accessibleDescription() != description) {
        control.setAccessibleDescription(description);
    }
}

}  // namespace korvinth::ui
