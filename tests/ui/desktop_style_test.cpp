#include "ui/desktop_style.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QSlider>
#include <QStyleOption>
#include <algorithm>

namespace korvinth::ui {
namespace {

// The lightest pixel on the line through the middle.
int Lightest(QWidget& widget, const QColor& ground)
{
    DesktopStyle style;
    widget.setStyle(&style);
    widget.setPalette(QPalette(ground, ground));
    widget.resize(widget.sizeHint());
    const QImage image = widget.grab().toImage();
    int lightest = 0;
    for (int x = 0; x < image.width(); ++x) {
        lightest = std::max(lightest, image.pixelColor(x, image.height() / 2).lightness());
    }
    widget.setStyle(nullptr);
    return lightest;
}

TEST(DesktopStyle, FieldsAndHandlesAreSeenOnBlack)
{
    QLineEdit field;
    EXPECT_GT(Lightest(field, Qt::black), 100);
    QSlider slider(Qt::Horizontal);
    EXPECT_GT(Lightest(slider, Qt::black), 100);
}

TEST(DesktopStyle, WeakTextsAreReadOnEveryGround)
{
    for (const QColor& ground : {QColor(Qt::black), QColor(42, 46, 50), QColor(239, 239, 239)}) {
        SCOPED_TRACE(ground.name().toStdString());
        QPalette palette(ground, ground);
        palette.setColor(QPalette::Disabled, QPalette::WindowText, ground);
        DesktopStyle().polish(palette);
        EXPECT_GT(Contrast(palette.color(QPalette::Disabled, QPalette::WindowText), ground), 2.5);
        EXPECT_GT(Contrast(palette.color(QPalette::Link), ground), 4.5);
    }
    EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 1e-9);
}

TEST(DesktopStyle, AListShowsThatItHasTheKeys)
{
    QListWidget list;
    QImage image(40, 40, QImage::Format_RGB32);
    QStyleOptionFrame option;
    option.initFrom(&list);
    option.rect = image.rect();
    option.frameShape = QFrame::StyledPanel;
    option.state |= QStyle::State_HasFocus;
    QPainter painter(&image);
    DesktopStyle().drawControl(QStyle::CE_ShapedFrame, &option, &painter, &list);
    for (const QPoint side : {QPoint(0, 20), QPoint(20, 0), QPoint(39, 20), QPoint(20, 39)}) {
        EXPECT_EQ(image.pixelColor(side), list.palette().color(QPalette::Highlight));
    }
}

TEST(DesktopStyle, AnUnmarkedBoxIsSeenInDarkColours)
{
    const QColor ground(42, 46, 50);
    QCheckBox box;
    EXPECT_GT(Lightest(box, ground), ground.lightness() + 60);
}

}  // namespace
}  // namespace korvinth::ui
