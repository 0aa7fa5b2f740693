#include "app/page_layout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvinth::app {
namespace {

using render::ViewRange;

constexpr Room kPortrait{10, 10, 190, 277};

// 0 when the value is a multiple, as near as the numbers go.
double OffMultiple(double value, double of) { return std::abs(std::remainder(value, of)); }

struct ScaleCase
{
    const char* behaviour;
    double x_min, x_max, y_min, y_max, scale;
    bool cut, on_squares;
};
constexpr ScaleCase kScaleCases[] = {
    {"a range that fits", -7, 7, -5, 5, 1, false, true},
    {"bounds between the pixels", -3.14159265358979, 6.2831853, -2, 2, 1, false, true},
    {"a range that just fits keeps its bounds", -9.25, 9.75, 0, 4, 1, false, false},
    {"a wide range is cut", -10, 10, -5, 5, 1, true, true},
    {"a wide range far from the origin is cut", 100.3, 150.3, -5, 5, 1, true, true},
    {"a high range is cut", -3, 3, -200, 200, 0.5, true, true},
    {"units below a pixel", -1000, 1000, -1000, 1000, 0.004, false, true},
    {"a unit beyond the page", -2, 2, -2, 2, 50, true, true},
    {"no whole number of millimetres", -5, 5, -5, 5, 0.7, false, true},
};

TEST(PageLayout, KeepsTheScaleOnThePage)
{
    for (const ScaleCase& row : kScaleCases) {
        SCOPED_TRACE(row.behaviour);
        const PlacedPicture picture = ScalePictureOnPage(
            ViewRange{row.x_min, row.x_max, row.y_min, row.y_max}, row.scale, kPortrait);
        ASSERT_EQ(picture.fault, "");
        EXPECT_EQ(!picture.note.empty(), row.cut);
        const render::ViewRange& view = picture.view;
        const double mm = picture.mm_per_pixel;
        EXPECT_NEAR(view.WidthInPixels() * mm / view.width, 10 * row.scale, 1e-9);
        EXPECT_NEAR(view.HeightInPixels() * mm / view.height, 10 * row.scale, 1e-9);
        EXPECT_EQ(picture.width, view.WidthInPixels() + 1);
        EXPECT_GT(mm, 0.15);
        EXPECT_LT(mm, 0.4);
        EXPECT_LT(OffMultiple(view.x_min * 10 * row.scale, mm), 1e-6) << "whole pixels";
        // Inside the room, and what is not cut is there to a pixel.
        EXPECT_GE(picture.left, kPortrait.left - 1e-6);
        EXPECT_GE(picture.top, kPortrait.top - 1e-6);
        EXPECT_LE(picture.left + (picture.width - 1) * mm, 200 + 1e-6);
        EXPECT_LE(picture.top + (picture.height - 1) * mm, 287 + 1e-6);
        const double pixel = mm / (10 * row.scale);
        if (!row.cut) {
            EXPECT_NEAR(view.x_min, row.x_min, pixel);
            EXPECT_NEAR(view.y_max, row.y_max, pixel);
            EXPECT_LE(view.x_min, row.x_min + 1e-6);
            EXPECT_GE(view.x_max, row.x_max - 1e-6);
        } else {
            const double square = 5 / (10 * row.scale);
            EXPECT_NEAR(view.x_min + view.x_max, row.x_min + row.x_max, square + 2 * pixel);
        }
        const double origin = picture.left - view.x_min * 10 * row.scale;
        EXPECT_EQ(OffMultiple(origin, 5) < 1e-6, row.on_squares) << origin;
    }
}

TEST(PageLayout, RefusesPicturesThatNobodyCouldUse)
{
    EXPECT_NE(ScalePicture(ViewRange{0, 0.1, -5, 5}, 1).fault, "");
    EXPECT_NE(ScalePicture(ViewRange{-1e17, 1e17, -5, 5}, 1).fault, "");
    EXPECT_NE(FitPicture(ViewRange{-1, 1, -1, 1}, {10, 10, -3, 100}).fault, "");
    EXPECT_EQ(ScalePicture(ViewRange{-100, 100, -5, 5}, 1).fault, "");
}

TEST(PageLayout, FitsTheScreensPictureIntoTheRoom)
{
    const ViewRange view{-4, 4, -3, 3};  // 800 x 600 pixels
    const PlacedPicture wide = FitPicture(view, kPortrait);
    EXPECT_NEAR(wide.mm_per_pixel, 190.0 / 800, 1e-12);
    EXPECT_NEAR(wide.left, 10 + wide.mm_per_pixel / 2, 1e-9);
    const PlacedPicture high = FitPicture(view, {10, 10, 277, 190});
    EXPECT_NEAR(high.mm_per_pixel, 190.0 / 600, 1e-12);
    EXPECT_NEAR(high.left + 399.5 * high.mm_per_pixel, 10 + 277 / 2.0, 1e-9) << "in the middle";
}

}  // namespace
}  // namespace korvinth::app
