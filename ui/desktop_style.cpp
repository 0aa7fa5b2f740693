#include "ui/desktop_style.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QIconEngine>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPalette>
#include <QStyleOption>
#include <QStyleOptionButton>
#include <QStyleOptionMenuItem>
#include <algorithm>
#include <cmath>

namespace korvinth::ui {
namespace {

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

// High contrast, where no colour is darker than the window's.
bool IsBlack(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 24; }

// Relative luminance, from 0 for black to 1 for white (WCAG 2.1).
double Luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor Mixed(const QColor& a, const QColor& b, double part_of_b)
{
    const auto mix = [part_of_b](int x, int y) {
        return static_cast<int>(std::lround(x + part_of_b * (y - x)));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

struct TextAndGround
{
    QPalette::ColorRole text, ground;
};

// What cannot be used at the moment is weaker than the rest, but it can be read.
void MakeDisabledTextReadable(QPalette& palette)
{
    constexpr double kLeastContrast = 2.5;
    constexpr double kStrength = 0.5;
    constexpr TextAndGround kTexts[] = {{QPalette::WindowText, QPalette::Window},
                                        {QPalette::Text, QPalette::Base},
                                        {QPalette::ButtonText, QPalette::Button}};
    for (const auto [text, ground] : kTexts) {
        const QColor below = palette.color(QPalette::Disabled, ground);
        if (Contrast(palette.color(QPalette::Disabled, text), below) >= kLeastContrast) continue;
        const QColor above = palette.color(QPalette::Active, text);
        palette.setColor(QPalette::Disabled, text, Mixed(below, above, kStrength));
    }
}

// Desktops that name their colours, but none for links, leave the dark blue of light ones.
void MakeLinksReadable(QPalette& palette)
{
    constexpr double kLeastContrast = 4.5;
    const QColor lightest(0x8A, 0xB8, 0xFF);
    for (const QPalette::ColorRole link : {QPalette::Link, QPalette::LinkVisited}) {
        const double contrast = Contrast(palette.color(link), palette.color(QPalette::Window));
        if (IsDark(palette) && contrast < kLeastContrast) palette.setColor(link, lightest);
    }
}

// Lines between windows and around samples of colours.
void MakeLinesVisible(QPalette& palette)
{
    if (!IsDark(palette)) return;
    const double strength = IsBlack(palette) ? 0.6 : 0.3;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(
            group, QPalette::Mid,
            Mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), strength));
    }
}

QColor OutlineColour(const QPalette& palette)
{
    QColor colour = palette.color(QPalette::WindowText);
    constexpr float kStrength = 0.7F;  // less than that of text
    colour.setAlphaF(kStrength);
    return colour;
}

void DrawOutline(QPainter& painter, const QRect& rect, const QStyleOption& option)
{
    if (!IsBlack(option.palette)) return;
    painter.setPen(OutlineColour(option.palette));
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

// Behind the handle of a slider: how far it can go.
void DrawWay(QPainter& painter, const QRect& knob, const QStyleOption& option)
{
    if (!IsBlack(option.palette) || !(option.state & QStyle::State_Horizontal)) return;
    painter.setPen(OutlineColour(option.palette));
    painter.drawLine(knob.right() + 1, knob.center().y(), option.rect.right(), knob.center().y());
}

// Then the style has drawn an outline already.
bool HasKeys(const QStyleOption& option) { return (option.state & QStyle::State_HasFocus) != 0; }

// Where styles show too little of what has the keys.
void MarkKeys(QPainter& painter, const QRect& rect, const QStyleOption& option)
{
    constexpr double kWidth = 2;
    QPen pen(option.palette.color(QPalette::Highlight), kWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect).adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2));
}

}  // namespace

double Contrast(const QColor& a, const QColor& b)
{
    const double lighter = std::max(Luminance(a), Luminance(b));
    const double darker = std::min(Luminance(a), Luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

// Desktops that name their colours, but none for hints, leave that of light ones.
void DesktopStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    MakeDisabledTextReadable(palette);
    MakeLinksReadable(palette);
    MakeLinesVisible(palette);
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
        const QRect knob = proxy()->subControlRect(control, option, handle, widget);
        if (control == CC_Slider) DrawWay(*painter, knob, *option);
        DrawOutline(*painter, knob, *option);
        if (control == CC_Slider && HasKeys(*option)) MarkKeys(*painter, knob, *option);
    } else if (control == CC_ComboBox || control == CC_SpinBox) {
        if (!HasKeys(*option)) {
            DrawOutline(*painter, option->rect, *option);
        } else if (IsBlack(option->palette)) {
            MarkKeys(*painter, option->rect, *option);
        }
    }
}

void DesktopStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const
{
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!box || button == nullptr || !IsDark(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool outlined = element == PE_FrameLineEdit || element == PE_PanelButtonCommand ||
                              element == PE_Frame || element == PE_FrameMenu ||
                              element == PE_FrameGroupBox || element == PE_FrameTabWidget;
        if (outlined && !HasKeys(*option)) DrawOutline(*painter, option->rect, *option);
        return;
    }
    // Styles take the outline from a darkened window colour, which only shows on light ones.
    QStyleOptionButton seen = *button;
    seen.palette.setColor(QPalette::Window, button->palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &seen, painter, widget);
}

void DesktopStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    const bool list = qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
    if (element == CE_ShapedFrame && list && HasKeys(*option)) {
        MarkKeys(*painter, option->rect, *option);
    }
    const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const bool separator = element == CE_MenuItem && entry != nullptr &&
                           entry->menuItemType == QStyleOptionMenuItem::Separator;
    if (!separator || !IsBlack(option->palette)) return;
    painter->setPen(OutlineColour(option->palette));
    const int y = option->rect.center().y();
    painter->drawLine(option->rect.left(), y, option->rect.right(), y);
}

}  // namespace korvinth::ui
