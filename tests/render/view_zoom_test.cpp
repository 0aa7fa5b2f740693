#include "render/view_zoom.h"

#include <gtest/gtest.h>

#include <string_view>

namespace korvinth::render {
namespace {

constexpr ZoomFactors kFactors{2, 4};
constexpr double kX = 3000;
constexpr double kY = 1800;

ViewRange SomeView()
{
    ViewRange view{-7, 13, -2, 8};
    UpdateDerived(view);
    return view;
}

struct ClickCase
{
    std::string_view behaviour;
    ClickButton button;
    unsigned keys;
    double width, height;  // of the view afterwards, 20 x 10 before
};
constexpr ClickCase kZoomCases[] = {
    {"Ctrl zooms in x only", ClickButton::Left, kCtrlKey, 10, 10},
    {"Alt zooms in y only", ClickButton::Left, kAltKey, 20, 2.5},
    {"both zoom in both directions", ClickButton::Left, kCtrlKey | kAltKey, 10, 2.5},
    {"the right button zooms out", ClickButton::Right, kCtrlKey | kAltKey, 40, 40},
    {"every other button zooms in", ClickButton::Other, kCtrlKey, 10, 10},
    {"Shift besides makes no difference", ClickButton::Left, kCtrlKey | kShiftKey, 10, 10},
};

TEST(ViewZoom, KeepsTheClickedPointInItsPlace)
{
    for (const ClickCase& row : kZoomCases) {
        SCOPED_TRACE(row.behaviour);
        ViewHistory history;
        ViewRange view = SomeView();
        const double x = view.WorldX(kX);
        const double y = view.WorldY(kY);
        EXPECT_TRUE(ZoomByClick(view, history, row.button, row.keys, kX, kY, kFactors));
        EXPECT_DOUBLE_EQ(view.width, row.width);
        EXPECT_DOUBLE_EQ(view.height, row.height);
        EXPECT_NEAR(view.WorldX(kX), x, 1e-12);
        EXPECT_NEAR(view.WorldY(kY), y, 1e-12);
        EXPECT_TRUE(history.PopView(view));
        EXPECT_EQ(view.x_min, -7);
    }
}

TEST(ViewZoom, LeavesTheOtherAxisBitForBit)
{
    ViewHistory history;
    ViewRange view = SomeView();
    view.y_min = 0.1 + 0.2;
    ZoomByClick(view, history, ClickButton::Left, kCtrlKey, kX, kY, kFactors);
    EXPECT_EQ(view.y_min, 0.1 + 0.2);
    EXPECT_EQ(view.y_max, 8);
}

TEST(ViewZoom, MovesTheOriginToTheClickedPoint)
{
    ViewHistory history;
    ViewRange view = SomeView();
    EXPECT_TRUE(ZoomByClick(view, history, ClickButton::Left, kShiftKey, kX, kY, kFactors));
    EXPECT_NEAR(view.AreaX(0), kX, 1e-9);
    EXPECT_NEAR(view.AreaY(0), kY, 1e-9);
    EXPECT_DOUBLE_EQ(view.width, 20);
    EXPECT_DOUBLE_EQ(view.height, 10);
}

TEST(ViewZoom, BringsTheClickedPointToTheCentre)
{
    ViewHistory history;
    ViewRange view = SomeView();
    const double x = view.WorldX(kX);
    const double y = view.WorldY(kY);
    EXPECT_TRUE(ZoomByClick(view, history, ClickButton::Right, kShiftKey, kX, kY, kFactors));
    EXPECT_NEAR(view.AreaX(x), view.area_width / 2, 1e-9);
    EXPECT_NEAR(view.AreaY(y), view.area_height / 2, 1e-9);
}

TEST(ViewZoom, StopsBeforeDoublePrecisionEnds)
{
    ViewHistory history;
    ViewRange view = SomeView();
    int steps = 0;
    // About a point away from 0, so that the marks' numbers grow.
    while (steps < 1000 &&
           ZoomByClick(view, history, ClickButton::Left, kCtrlKey, 100, kY, kFactors)) {
        ++steps;
    }
    EXPECT_GT(steps, 30);
    EXPECT_LT(steps, 60);
    EXPECT_FALSE(IsTooDeep(view));
    const double width = view.width;
    EXPECT_FALSE(ZoomByClick(view, history, ClickButton::Left, kCtrlKey, 100, kY, kFactors));
    EXPECT_EQ(view.width, width);
}

TEST(ViewZoom, ShowsWhatTheFrameHolds)
{
    ViewHistory history;
    ViewRange view = SomeView();
    const double left = view.WorldX(1500);
    const double right = view.WorldX(1500 + 301);
    const double top = view.WorldY(600);
    const double bottom = view.WorldY(600 + 900);
    EXPECT_TRUE(ZoomToFrame(view, history, {1500, 600, 301, 900}));
    EXPECT_DOUBLE_EQ(view.x_min, left);
    EXPECT_DOUBLE_EQ(view.x_max, right);
    EXPECT_DOUBLE_EQ(view.y_max, top);
    EXPECT_DOUBLE_EQ(view.y_min, bottom);
    EXPECT_FALSE(history.Empty());
}

TEST(ViewZoom, IgnoresAFrameThatIsTooSmall)
{
    for (const ZoomFrame& frame : {ZoomFrame{0, 0, 301, 300}, ZoomFrame{0, 0, 300, 301}}) {
        ViewHistory history;
        ViewRange view = SomeView();
        EXPECT_FALSE(ZoomToFrame(view, history, frame));
        EXPECT_TRUE(history.Empty());
        EXPECT_EQ(view.x_min, -7);
    }
}

}  // namespace
}  // namespace korvinth::render
