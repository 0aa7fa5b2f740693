// A label of one line whose text ends in "…" where it is too long.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace korvinth::ui {

class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::AlignLeft, palette(),
                              isEnabled(), shown, foregroundRole());
    }
};

}  // namespace korvinth::ui
