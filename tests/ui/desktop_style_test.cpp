#include "ui/desktop_style.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <algorithm>

namespace korvinth::ui {
namespace {

TEST(DesktopStyle, AnUnmarkedBoxIsSeenInDarkColours)
{
    const QColor ground(42, 46, 50);
    DesktopStyle style;
    QCheckBox box;
    box.setStyle(&style);
    box.setPalette(QPalette(ground, ground));
    box.resize(box.sizeHint());
    const QImage image = box.grab().toImage();
    int lightest = 0;
    for (int x = 0; x < image.width(); ++x) {
        lightest = std::max(lightest, image.pixelColor(x, image.height() / 2).lightness());
    }
    EXPECT_GT(lightest, ground.lightness() + 60);
}

}  // namespace
}  // namespace korvinth::ui
