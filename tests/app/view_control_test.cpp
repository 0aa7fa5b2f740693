#include "app/view_control.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>

#include "app/application.h"
#include "render/axis_marks.h"

namespace korvinth::app {
namespace {

using render::ClickButton;
using render::ViewRange;
using std::chrono::milliseconds;

class ViewControlTest : public testing::Test, public ViewListener
{
protected:
    ViewControlTest()
    {
        document::DefineSystemVariables(parser, document);
        views.SetAreaSize(400, 200);
        views.SetListener(this);
    }

    void updatex() override { ++shown_x; }
    void updatey() override { ++shown_y; }
    void updatet() override {}
    void RedrawGraph() override
    {
        ++redraws;
        EXPECT_EQ(parser.VariableValue(document.variables.xmi), views.View().x_min);
        EXPECT_EQ(parser.VariableValue(document.variables.ymu), views.View().ymu);
    }
    void HistoryChanged(bool back) override { can_go_back = back; }

    void Define(std::string_view name, double value)
    {
        document::Parameter& parameter = document.parameters[kA];
        parameter.name = name;
        parameter.handle = parser.DefineVariable(name);
        SetParameter(value);
    }
    void SetParameter(double value)
    {
        document.parameters[kA].value = value;
        parser.SetVariableValue(document.parameters[kA].handle, value);
    }
    std::string Take(const char* x_lower, const char* x_upper)
    {
        document::RangeTexts typed = document.ranges;
        typed.x_lower = x_lower;
        typed.x_upper = x_upper;
        std::string faults;
        for (const ui::RangeFault& fault : views.TakeRanges(typed)) faults += fault.text;
        return faults;
    }
    long Views() const
    {
        return std::count(views.History().Text().begin(), views.History().Text().end(), ' ');
    }

    static constexpr document::ParameterIndex kA{document::kFirstUserParameter};
    term::MathParser parser;
    document::PlotDocument document;
    std::chrono::steady_clock::time_point now{};
    ViewControl views{parser, document, [this] { return now; }};
    int shown_x = 0;
    int shown_y = 0;
    int redraws = 0;
    bool can_go_back = false;
};

TEST_F(ViewControlTest, RefusesRangesThatCannotBeDisplayedAndNamesTheField)
{
    struct Case
    {
        std::string_view behaviour;
        const char *lower, *upper;
        std::string_view fault;
    };
    constexpr Case kCases[] = {
        {"no number below", "1+", "2", "x-Bereich, untere Grenze: "},
        {"nothing below", "", "2", "x-Bereich, untere Grenze: "},
        {"no number above", "1", "1/0", "x-Bereich, obere Grenze: "},
        {"too large", "-1", "1,1*10^15", "x-Bereich, obere Grenze: Die Grenzen müssen zwischen"},
        {"in the wrong order", "2", "1", "x-Bereich: Die untere Grenze muss kleiner"},
        {"equal", "1", "1", "x-Bereich: Die untere Grenze muss kleiner"},
        {"too narrow", "1000", "1000+10^-10", "x-Bereich: Der Bereich ist zu schmal"},
        {"garbage", "\x01\xF0\x9F\x98\x80", "1", "x-Bereich, untere Grenze: "},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_TRUE(Take(row.lower, row.upper).starts_with(row.fault));
        EXPECT_EQ(views.View().x_min, -10);
        EXPECT_EQ(document.ranges.x_upper, "10");
        EXPECT_EQ(parser.GetError(), term::Error::None);
    }
    EXPECT_EQ(Views(), 0);
    EXPECT_EQ(Take("-1,5", std::string(10000, '1').c_str()).substr(0, 9), "x-Bereich");
}

TEST_F(ViewControlTest, TakesEachRangeByItself)
{
    document::RangeTexts typed = document.ranges;
    typed.x_lower = "5";
    typed.x_upper = "4";
    typed.y_lower = "-1,5";
    typed.y_upper = "2*pi";
    typed.t_upper = "1";
    const auto faults = views.TakeRanges(typed);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].axis, ui::RangeAxis::X);
    EXPECT_EQ(views.View().x_min, -10);
    EXPECT_EQ(views.View().y_min, -1.5);
    EXPECT_EQ(views.View().t_max, 1);
    EXPECT_EQ(document.ranges.y_upper, "2*pi");
    EXPECT_EQ(Views(), 1);
    EXPECT_EQ(redraws, 1);
}

TEST_F(ViewControlTest, RangesFollowTheirParametersPastTheHistory)
{
    Define("a", 3);
    EXPECT_EQ(Take("-a", "2a"), "");
    EXPECT_EQ(views.View().x_max, 6);
    EXPECT_EQ(document.parameters[kA].state, document::kInXRange);
    const long pushed = Views();
    redraws = 0;

    SetParameter(5);
    views.FollowParameter(kA);
    EXPECT_EQ(views.View().x_min, -5);
    EXPECT_EQ(parser.VariableValue(document.variables.xmi), -5);
    SetParameter(-5);
    views.FollowParameter(kA);
    EXPECT_EQ(views.View().x_min, -5) << "the old range stays";
    EXPECT_EQ(Views(), pushed);
    EXPECT_EQ(redraws, 0);

    views.scrlr(10);
    EXPECT_EQ(document.parameters[kA].state, 0U) << "a gesture takes the range from the parameter";
    EXPECT_EQ(document.ranges.x_lower, "-3.5");
}

TEST_F(ViewControlTest, ARebuildLeavesWhatAGestureHasShown)
{
    const std::function<void()> kGestures[] = {
        [this] { views.zoom(ClickButton::Left, render::kCtrlKey, 1234, 777); },
        [this] { views.zoom(ClickButton::Left, render::kShiftKey, 1234, 777); },
        [this] { views.ZoomByWheel(1, 0, 999, 3); },
        [this] { views.ScrollByKey(10, 0); },
        [this] {
            for (int i = 0; i < 200; ++i) views.ZoomByWheel(1, 0, 999, 3);
        },
        [this] { Take("0", "1"); },
        [this] { views.UseStandardRange(); },
    };
    for (const auto& gesture : kGestures) {
        gesture();
        const ViewRange shown = views.View();
        bool changed = false;
        EXPECT_EQ(views.ReadRanges(changed), "");
        EXPECT_FALSE(changed);
        EXPECT_EQ(views.View().x_min, shown.x_min);
        EXPECT_EQ(views.View().y_max, shown.y_max);
        const document::RangeTexts texts = document.ranges;
        views.UseStandardRange();
        document.ranges = texts;  // as a file or an earlier step has them
        EXPECT_EQ(views.ReadRanges(changed), "");
        EXPECT_EQ(views.View().x_min, shown.x_min);
        EXPECT_EQ(views.View().x_max, shown.x_max);
        EXPECT_EQ(views.View().y_max, shown.y_max);
    }
}

TEST_F(ViewControlTest, TheStandardRangeHasOneScaleAndKeepsItWhenTheAreaGrows)
{
    Take("2", "3");
    views.UseStandardRange();
    for (const int height : {200, 400, 31}) {
        views.SetAreaSize(400, height);
        EXPECT_EQ(views.View().x_min, -10);
        EXPECT_NEAR(views.View().xmu, views.View().ymu, 1e-9 * views.View().xmu);
        EXPECT_EQ(document.ranges.y_lower, "");
    }
    Take("2", "3");
    const double y_max = views.View().y_max;
    views.SetAreaSize(400, 200);
    EXPECT_EQ(views.View().y_max, y_max) << "a scale of the user's own stays";
}

TEST_F(ViewControlTest, EinszueinsKeepsTheCentreAndTheRangeThatLeads)
{
    for (const ClickButton button : {ClickButton::Left, ClickButton::Right}) {
        Take("0", "7");
        const ViewRange before = views.View();
        views.einszueins(button);
        const ViewRange& view = views.View();
        EXPECT_NEAR(view.xmu, view.ymu, 1e-9 * view.xmu);
        EXPECT_NEAR(view.x_min + view.x_max, before.x_min + before.x_max, 1e-9);
        EXPECT_NEAR(view.y_min + view.y_max, before.y_min + before.y_max, 1e-9);
        EXPECT_EQ(view.x_max == before.x_max, button == ClickButton::Left);
        EXPECT_EQ(view.y_max == before.y_max, button == ClickButton::Right);
        views.UseStandardRange();
    }
}

TEST_F(ViewControlTest, AKeptRatioLetsTheOtherRangeFollow)
{
    struct Case
    {
        std::string_view behaviour;
        KeptRatio kept;
        std::function<void()> change;
        bool x_stays, y_stays;
    };
    const Case cases[] = {
        {"y follows x", KeptRatio::X, [this] { Take("0", "7"); }, false, false},
        {"y follows the area", KeptRatio::X, [this] { views.SetAreaSize(400, 300); }, true, false},
        {"x follows the area", KeptRatio::Y, [this] { views.SetAreaSize(400, 300); }, false, true},
        {"x follows y", KeptRatio::X,
         [this] { views.zoom(ClickButton::Left, render::kAltKey, 100, 100); }, false, false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.behaviour);
        views.SetKeptRatio(KeptRatio::None);
        views.SetAreaSize(400, 200);
        views.UseStandardRange();
        views.SetKeptRatio(row.kept);
        const ViewRange before = views.View();
        row.change();
        EXPECT_NEAR(views.View().xmu, views.View().ymu, 1e-9 * views.View().xmu);
        EXPECT_EQ(views.View().x_max == before.x_max, row.x_stays);
        EXPECT_EQ(views.View().y_max == before.y_max, row.y_stays);
    }
}

TEST_F(ViewControlTest, TheWorldPointUnderTheHandStaysThere)
{
    const double x = 1500;
    const double y = 600;
    const std::function<void()> kGestures[] = {
        [&] { views.zoom(ClickButton::Left, render::kCtrlKey | render::kAltKey, x, y); },
        [&] { views.zoom(ClickButton::Right, render::kCtrlKey | render::kAltKey, x, y); },
        [&] { views.ZoomByWheel(3, 0, x, y); },
        [&] { views.ZoomByWheel(-0.5, render::kShiftKey, x, y); },
        [&] { views.ZoomByPinch(1.1, x, y); },
    };
    for (const auto& gesture : kGestures) {
        const ViewRange before = views.View();
        gesture();
        EXPECT_FALSE(before.x_min == views.View().x_min && before.y_min == views.View().y_min);
        EXPECT_NEAR(views.View().WorldX(x), before.WorldX(x), 1e-9);
        EXPECT_NEAR(views.View().WorldY(y), before.WorldY(y), 1e-9);
    }
    const ViewRange start = views.View();
    views.BeginDrag();
    views.Drag(300, -450);
    views.Drag(150, 300);
    EXPECT_NEAR(views.View().WorldX(x + 150), start.WorldX(x), 1e-9);
    EXPECT_NEAR(views.View().WorldY(y + 300), start.WorldY(y), 1e-9);
    views.CancelDrag();
    EXPECT_EQ(views.View().x_min, start.x_min);
    EXPECT_EQ(views.View().y_max, start.y_max);
}

TEST_F(ViewControlTest, KeysOfTheWheelChooseTheAxis)
{
    const ViewRange before = views.View();
    views.ZoomByWheel(1, render::kCtrlKey, 100, 100);
    EXPECT_EQ(views.View().y_max, before.y_max);
    EXPECT_LT(views.View().x_max, before.x_max);
    const ViewRange narrow = views.View();
    views.ZoomByWheel(-1, render::kAltKey, 100, 100);
    EXPECT_EQ(views.View().x_max, narrow.x_max);
    EXPECT_LT(views.View().y_min, narrow.y_min);
}

TEST_F(ViewControlTest, ARunOfGesturesIsOneEntryOfTheHistory)
{
    // Wheel, key, key that zooms, click, drag, drag that comes back, scroll bars, standard range;
    // "," lets a second pass, ";" a little more.
    struct Case
    {
        std::string_view behaviour, gestures;
        long entries;
    };
    constexpr Case kCases[] = {
        {"a run of wheel steps", "ww,w", 1},
        {"a pause ends the run", "w;w", 2},
        {"keys after the wheel", "wkkz", 2},
        {"a click between", "wcw", 3},
        {"a whole drag", "d", 1},
        {"a drag that comes back", "b", 0},
        {"scroll bars", "s", 0},
        {"standard range when it is there", "0", 0},
    };
    const auto drag = [this](bool comes_back) {
        views.BeginDrag();
        views.Drag(15, 0);
        views.Drag(30, 0);
        if (comes_back) views.CancelDrag();
        views.EndDrag();
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        views.UseStandardRange();
        views.ClearViewHistory();
        const ViewRange before = views.View();
        for (const char gesture : row.gestures) {
            switch (gesture) {
                case ',': now += milliseconds(1000); break;
                case ';': now += milliseconds(1001); break;
                case 'w': views.ZoomByWheel(1, 0, 10, 10); break;
                case 'k': views.ScrollByKey(10, 0); break;
                case 'z': views.ZoomByKey(1); break;
                case 'c': views.zoom(ClickButton::Left, 2, 1, 1); break;
                case 's': views.scrlr(10); break;
                case '0': views.UseStandardRange(); break;
                default: drag(gesture == 'b');
            }
        }
        EXPECT_EQ(Views(), row.entries);
        EXPECT_EQ(can_go_back, row.entries > 0);
        for (long i = 0; i < row.entries; ++i) views.PopView();
        EXPECT_TRUE(row.entries == 0 || views.View().x_min == before.x_min);
        EXPECT_FALSE(can_go_back);
    }
}

TEST_F(ViewControlTest, RefusesViewsBeyondThePrecisionSilently)
{
    const std::function<void()> kGestures[] = {
        [&] { views.ZoomByWheel(1, 0, 4000, 100); },
        [&] { views.ZoomByWheel(-1, 0, 4000, 100); },
        [&] { views.zoom(ClickButton::Left, 6, 4000, 100); },
        [&] { views.zoom(ClickButton::Right, 6, 4000, 100); },
        [&] {
            views.ZoomToFrame({4000, 100, 301, 301});
        },
        [&] { views.ZoomByKey(1); },
        [&] { views.ZoomByPinch(0.01, 4000, 100); },
        [&] { views.scrlr(32767); },
    };
    for (const auto& gesture : kGestures) {
        for (int i = 0; i < 3000; ++i) gesture();
        const ViewRange& view = views.View();
        EXPECT_GT(view.x_max, view.x_min);
        EXPECT_GT(view.y_max, view.y_min);
        EXPECT_TRUE(std::isfinite(view.xmu) && std::isfinite(view.ymu));
        EXPECT_GT(render::CoarseMarks(view.x_min, view.x_max).Count(), 0);
        views.UseStandardRange();
    }
}

// Deliberate: a refused click zoom leaves its entry in the history.
TEST_F(ViewControlTest, ARefusedClickZoomLeavesItsEntry)
{
    views.SetZoomFactors({1e200, 1e200});
    const ViewRange before = views.View();
    views.zoom(ClickButton::Left, 6, 100, 100);
    EXPECT_EQ(views.View().x_min, before.x_min);
    EXPECT_EQ(Views(), 1);
}

TEST_F(ViewControlTest, TheLockHoldsClicksBackOnly)
{
    views.SetClickZoomLocked(true);
    const ViewRange before = views.View();
    views.zoom(ClickButton::Left, 6, 0, 0);
    EXPECT_EQ(views.View().x_max, before.x_max);
    views.ZoomByWheel(1, 0, 0, 0);
    EXPECT_NE(views.View().x_max, before.x_max);
}

TEST(ApplicationRanges, AParameterOfARangeIsMarkedAfterARebuild)
{
    Application application;
    application.SetAreaSize(400, 200);
    document::PlotDocument& plot = application.Document();
    plot.ranges.x_upper = "9+a";
    EXPECT_EQ(application.Apply().errors, "");
    ASSERT_NE(plot.FindParameter("a"), nullptr);
    EXPECT_EQ(plot.FindParameter("a")->state, document::kInXRange);
    plot.ranges.x_upper = "19+a";
    EXPECT_EQ(application.Apply().errors, "");
    EXPECT_EQ(application.View().x_max, 20);
    EXPECT_EQ(plot.FindParameter("a")->state, document::kInXRange);
}

TEST(EntryRanges, DoNotDependOnWhatWasDisplayedBefore)
{
    struct Case
    {
        std::string_view behaviour, ranges, attributes;
        double x_centre, y_centre, width, height;
    };
    // The area is twice as wide as high.
    const Case cases[] = {
        {"numbers", "x[0;4]\r\ny[2;10]", "r=0", 2, 6, 4, 8},
        {"a y-range left to the view", "x[0;4]\r\ny[2;10]\r\ny$[;]", "r=0", 2, 6, 4, 2},
        {"y follows x", "x[0;4]\r\ny[2;10]", "r=1", 2, 6, 4, 2},
        {"x follows y", "x[0;4]\r\ny[2;10]", "r=2", 2, 6, 16, 8},
    };
    for (const Case& row : cases) {
        for (const std::string_view before :
             {"x[-10;10]\r\ny[-5;5]", "x[0;4]\r\ny[-9;8]", "x[5;6]\r\ny[2;10]"}) {
            SCOPED_TRACE(std::string(row.behaviour) + " after " + std::string(before));
            Application application;
            application.SetAreaSize(400, 200);
            for (const std::string_view ranges : {before, row.ranges}) {
                document::CollectionEntry entry;
                entry.Set(document::Column::Ranges, std::string(ranges));
                const bool last = ranges == row.ranges;
                entry.Set(document::Column::Attributes, last ? std::string(row.attributes) : "r=0");
                EXPECT_EQ(application.TakeEntry(entry), "");
                EXPECT_EQ(application.Apply().errors, "");
            }
            const render::ViewRange& view = application.View();
            EXPECT_NEAR((view.x_min + view.x_max) / 2, row.x_centre, 1e-9);
            EXPECT_NEAR((view.y_min + view.y_max) / 2, row.y_centre, 1e-9);
            EXPECT_NEAR(view.x_max - view.x_min, row.width, 1e-9);
            EXPECT_NEAR(view.y_max - view.y_min, row.height, 1e-9);
        }
    }
}

}  // namespace
}  // namespace korvinth::app
