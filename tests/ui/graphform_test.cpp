#include "ui/graphform.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <vector>

#include "recorded_gestures.h"
#include "render/qt/raster_surface.h"

namespace korvinth::ui {
namespace {

const render::Pen kRed{document::MakeColour(255, 0, 0), 4, document::LineType::Solid};

// A red bar across the middle of the surface.
void DrawBar(render::DrawingSurface& surface)
{
    surface.Clear(document::MakeColour(255, 255, 255));
    surface.SelectPen(kRed);
    surface.MoveTo({0, surface.Height() / 2});
    surface.LineTo({surface.Width(), surface.Height() / 2});
}

// Rows of the image whose middle pixel is red.
std::vector<int> RedRows(const QImage& image)
{
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(image.width() / 2, y) == QColor(255, 0, 0)) rows.push_back(y);
    }
    return rows;
}

TEST(GraphForm, ShowsWhatItsRoutineDraws)
{
    RecordedGestures gestures;
    const render::ViewRange view;
    int drawings = 0;
    GraphForm form(view, gestures, [&drawings](render::DrawingSurface& surface) {
        ++drawings;
        DrawBar(surface);
    });
    QSignalSpy resized(&form, &GraphForm::areaResized);
    form.resize(300, 200);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    EXPECT_GE(resized.count(), 1);
    drawings = 0;
    for (int i = 0; i < 5; ++i) form.Redraw();
    EXPECT_EQ(drawings, 0) << "the newest view is drawn when the events at hand are done";
    EXPECT_EQ(RedRows(form.Picture()).size(), RedRows(form.grab().toImage()).size());
    EXPECT_GE(RedRows(form.Picture()).size(), 3U);
    EXPECT_EQ(drawings, 1);
}

TEST(RasterSurface, GrowsEverythingWithItsScale)
{
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        render::RasterSurface surface(100, 60, 2 * render::kSmoothSteps, scale);
        DrawBar(surface);
        const render::GridExtent text = surface.MeasureText("−12,5");
        surface.Refresh();
        const QImage& image = surface.Image();
        EXPECT_EQ(image.size(), (QSizeF(100, 60) * scale).toSize());
        const std::vector<int> rows = RedRows(image);
        ASSERT_FALSE(rows.empty());
        EXPECT_NEAR(static_cast<double>(rows.size()), 4 * scale, 1.01);
        EXPECT_NEAR((rows.front() + rows.back() + 1) / 2.0, 30.5 * scale, 1);

        render::RasterSurface plain(100, 60, 2 * render::kSmoothSteps);
        const render::GridExtent same = plain.MeasureText("−12,5");
        EXPECT_NEAR(text.width, same.width, 0.1 * same.width) << "texts take the same room";
    }
}

}  // namespace
}  // namespace korvinth::ui
