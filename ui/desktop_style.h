// The desktop's style, with what it leaves to be wished.
#pragma once

#include <QProxyStyle>

namespace korvinth::ui {

// Of two colours, from 1 to 21 (WCAG 2.1).
double Contrast(const QColor& a, const QColor& b);

// Menus higher than the screen scroll instead of breaking into columns that leave it; unmarked
// boxes, links, disabled texts and the hints in empty fields are seen in dark colours, too; on
// black, fields, buttons, frames, menus and the handles of sliders have outlines; lists, texts and
// sliders show that they have the keys. The menus that child windows have behind their own title
// bars go without icons, which would have to be read from files for each window.
class DesktopStyle : public QProxyStyle
{
    Q_OBJECT
public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace korvinth::ui
