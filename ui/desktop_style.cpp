#include "ui/desktop_style.h"

#include <QPalette>
#include <QStyleOption>
#include <QStyleOptionButton>

namespace korvinth::ui {
namespace {

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

}  // namespace

// Desktops that name their colours, but none for hints, leave that of light ones.
void DesktopStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    QColor hint = palette.color(QPalette::PlaceholderText);
    if (!IsDark(palette) || hint.lightness() > 128) return;
    hint = palette.color(QPalette::Text);
    hint.setAlphaF(0.6F);
    palette.setColor(QPalette::PlaceholderText, hint);
}

int DesktopStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* data) const
{
    if (hint == SH_Menu_Scrollable) return 1;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

void DesktopStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const
{
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!box || button == nullptr || !IsDark(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    // Styles take the outline from a darkened window colour, which only shows on light ones.
    QStyleOptionButton seen = *button;
    seen.palette.setColor(QPalette::Window, button->palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &seen, painter, widget);
}

}  // namespace korvinth::ui
