// The desktop's style, with what it leaves to be wished.
#pragma once

#include <QProxyStyle>

namespace korvinth::ui {

// Menus higher than the screen scroll instead of breaking into columns that leave it; unmarked
// boxes and the hints in empty fields are seen in dark colours, too.
class DesktopStyle : public QProxyStyle
{
    Q_OBJECT
public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace korvinth::ui
