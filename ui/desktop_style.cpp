#include "ui/desktop_style.h"

#include <QApplication>
#include <QIconEngine>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPalette>
#include <QStyleOption>
#include <QStyleOptionButton>

namespace korvinth::ui {
namespace {

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

// High contrast, where no colour is darker than the window's.
bool IsBlack(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 24; }

void DrawOutline(QPainter& painter, const QRect& rect, const QStyleOption& option)
{
    if (!IsBlack(option.palette)) return;
    QColor colour = option.palette.color(QPalette::WindowText);
    constexpr float kStrength = 0.7F;  // less than that of text
    colour.setAlphaF(kStrength);
    painter.setPen(colour);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

// Drawn when it is seen: an icon from a file has all readers of images loaded first.
class ArrowIcon : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QStyleOption option;
        option.rect = rect;
        option.state = mode == QIcon::Disabled ? QStyle::State_None : QStyle::State_Enabled;
        QApplication::style()->drawPrimitive(QStyle::PE_IndicatorArrowRight, &option, painter);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new ArrowIcon(*this); }
};

// Then the style has drawn an outline already.
bool HasKeys(const QStyleOption& option) { return (option.state & QStyle::State_HasFocus) != 0; }

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

QIcon DesktopStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                 const QWidget* widget) const
{
    if (icon == SP_TitleBarMenuButton || qobject_cast<const QMdiSubWindow*>(widget) != nullptr) {
        return {};
    }
    if (icon == SP_ToolBarHorizontalExtensionButton) return QIcon(new ArrowIcon);
    return QProxyStyle::standardIcon(icon, option, widget);
}

void DesktopStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_Slider || control == CC_ScrollBar) {
        const SubControl handle = control == CC_Slider ? SC_SliderHandle : SC_ScrollBarSlider;
        DrawOutline(*painter, proxy()->subControlRect(control, option, handle, widget), *option);
    } else if ((control == CC_ComboBox || control == CC_SpinBox) && !HasKeys(*option)) {
        DrawOutline(*painter, option->rect, *option);
    }
}

void DesktopStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const
{
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!box || button == nullptr || !IsDark(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool outlined = element == PE_FrameLineEdit || element == PE_PanelButtonCommand;
        if (outlined && !HasKeys(*option)) DrawOutline(*painter, option->rect, *option);
        return;
    }
    // Styles take the outline from a darkened window colour, which only shows on light ones.
    QStyleOptionButton seen = *button;
    seen.palette.setColor(QPalette::Window, button->palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &seen, painter, widget);
}

}  // namespace korvinth::ui
