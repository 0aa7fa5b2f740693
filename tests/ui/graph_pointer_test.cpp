#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QRubberBand>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <string>

#include "recorded_gestures.h"
#include "ui/graphform.h"

namespace korvinth::ui {
namespace {

class GraphPointerTest : public testing::Test
{
protected:
    GraphPointerTest()
    {
        form.resize(500, 400);
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        area = form.findChild<QWidget*>("Picture1");
        view.area_width = 15.0 * area->width();
        view.area_height = 15.0 * area->height();
        render::UpdateDerived(view);
        area->setFocus();
    }

    std::string Click(Qt::MouseButton button, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(area, button, keys, {20, 10});
        return gestures.Take();
    }
    std::string Drag(Qt::MouseButton button, QPoint from, QPoint to)
    {
        QTest::mousePress(area, button, Qt::NoModifier, from);
        MoveTo(to, button);
        QTest::mouseRelease(area, button, Qt::NoModifier, to);
        return gestures.Take();
    }
    void MoveTo(QPoint to, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent move(QEvent::MouseMove, to, area->mapToGlobal(to), Qt::NoButton, buttons,
                         Qt::NoModifier);
        QApplication::sendEvent(area, &move);
    }
    std::string Wheel(QPoint delta, Qt::KeyboardModifiers keys, QWidget* target = nullptr)
    {
        if (target == nullptr) target = area;
        const QPointF place(20, 10);
        QWheelEvent wheel(place, target->mapToGlobal(place), {}, delta, Qt::NoButton, keys,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
        return gestures.Take();
    }
    std::string Key(int key, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::keyClick(area, static_cast<Qt::Key>(key), keys);
        return gestures.Take();
    }
    QLabel* Readout() { return form.findChild<QLabel*>("Label1"); }

    render::ViewRange view;
    RecordedGestures gestures;
    GraphForm form{view, gestures, [](render::DrawingSurface&) {}};
    QWidget* area = nullptr;
};

TEST_F(GraphPointerTest, ClicksZoomWithTheirKeysAndMeanSomethingElseWithout)
{
    QSignalSpy plain(&form, &GraphForm::plainClicked);
    QSignalSpy menu(&form, &GraphForm::menuWanted);
    EXPECT_EQ(Click(Qt::LeftButton, Qt::ControlModifier), "zoom 0 2 300 150");
    EXPECT_EQ(Click(Qt::RightButton, Qt::AltModifier | Qt::ControlModifier), "zoom 1 6 300 150");
    EXPECT_EQ(Click(Qt::LeftButton, Qt::ShiftModifier), "zoom 0 1 300 150");
    EXPECT_EQ(plain.count() + menu.count(), 0);
    EXPECT_EQ(Click(Qt::LeftButton), "");
    EXPECT_EQ(plain.count(), 1);
    EXPECT_EQ(Click(Qt::RightButton), "");
    ASSERT_EQ(menu.count(), 1);
    EXPECT_EQ(menu[0][1].toPointF(), QPointF(300, 150));
    form.SetMode(PointerMode::Move);
    Click(Qt::LeftButton);
    EXPECT_EQ(plain.count(), 1);
}

TEST_F(GraphPointerTest, DragsWithTheLeftButtonInItsModeAndTheMiddleOneAlways)
{
    EXPECT_EQ(Drag(Qt::LeftButton, {10, 10}, {20, 40}), "");
    for (const PointerMode mode : {PointerMode::Plain, PointerMode::Move, PointerMode::ZoomFrame}) {
        form.SetMode(mode);
        EXPECT_EQ(Drag(Qt::MiddleButton, {10, 10}, {20, 40}), "begin; drag 150 450; end");
    }
    form.SetMode(PointerMode::Move);
    EXPECT_EQ(Drag(Qt::LeftButton, {20, 40}, {10, 10}), "begin; drag -150 -450; end");
    EXPECT_EQ(Click(Qt::LeftButton, Qt::ControlModifier), "zoom 0 2 300 150");
}

TEST_F(GraphPointerTest, EscapeRestoresTheViewOfADrag)
{
    QTest::mousePress(area, Qt::MiddleButton, Qt::NoModifier, {5, 5});
    MoveTo({6, 5}, Qt::MiddleButton);
    EXPECT_EQ(Wheel({0, 120}, Qt::NoModifier), "begin; drag 15 0") << "the wheel rests in a drag";
    EXPECT_EQ(Key(Qt::Key_Plus), "");
    EXPECT_EQ(Key(Qt::Key_Escape), "cancel");
    MoveTo({9, 9}, Qt::MiddleButton);
    QTest::mouseRelease(area, Qt::MiddleButton, Qt::ControlModifier, {9, 9});
    EXPECT_EQ(gestures.Take(), "") << "its release is no click";
    EXPECT_EQ(Click(Qt::MiddleButton), "begin; end");
}

TEST_F(GraphPointerTest, AFrameZoomsOnceAndSmallOnesKeepTheMode)
{
    QSignalSpy mode_changed(&form, &GraphForm::modeChanged);
    auto* frame = form.findChild<QRubberBand*>("frame");
    form.SetMode(PointerMode::ZoomFrame);

    QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, {60, 70});
    MoveTo({10, 20}, Qt::LeftButton);
    EXPECT_TRUE(frame->isVisible());
    EXPECT_EQ(Key(Qt::Key_Escape), "");
    EXPECT_FALSE(frame->isVisible());
    QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, {10, 20});
    EXPECT_EQ(gestures.Take(), "") << "Esc has ended the frame";
    EXPECT_EQ(form.Mode(), PointerMode::ZoomFrame);

    EXPECT_EQ(Drag(Qt::LeftButton, {10, 20}, {29, 90}),
              "frame 150 300 300 1065; zoom 0 0 435 1350");
    EXPECT_EQ(form.Mode(), PointerMode::ZoomFrame);
    EXPECT_EQ(Drag(Qt::LeftButton, {60, 70}, {10, 20}), "frame 150 300 765 765");
    EXPECT_EQ(form.Mode(), PointerMode::Plain);
    EXPECT_FALSE(frame->isVisible());
    EXPECT_EQ(mode_changed.count(), 2);
}

TEST_F(GraphPointerTest, WheelAndFingersZoomAboutTheirPlace)
{
    EXPECT_EQ(Wheel({0, 120}, Qt::NoModifier), "wheel 1 0 300 150");
    EXPECT_EQ(Wheel({0, -60}, Qt::ControlModifier), "wheel -0.5 2 300 150");
    EXPECT_EQ(Wheel({120, 0}, Qt::AltModifier), "wheel 1 4 300 150");
    EXPECT_EQ(Wheel({0, 0}, Qt::NoModifier), "");
    EXPECT_EQ(Wheel({120, 0}, Qt::NoModifier), "") << "sideways";
    const QPointF place(20, 10);
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                              place, place, area->mapToGlobal(place), 0.25, {});
    QApplication::sendEvent(area, &pinch);
    EXPECT_EQ(gestures.Take(), "pinch 1.25 300 150");
}

TEST_F(GraphPointerTest, KeysScrollAndZoom)
{
    struct Case
    {
        int key;
        Qt::KeyboardModifiers keys;
        const char* gesture;
    };
    const Case cases[] = {
        {Qt::Key_Left, Qt::NoModifier, "keys -10 0"},
        {Qt::Key_Right, Qt::NoModifier, "keys 10 0"},
        {Qt::Key_Up, Qt::NoModifier, "keys 0 10"},
        {Qt::Key_Down, Qt::NoModifier, "keys 0 -10"},
        {Qt::Key_PageUp, Qt::NoModifier, "keys 0 50"},
        {Qt::Key_PageDown, Qt::NoModifier, "keys 0 -50"},
        {Qt::Key_PageUp, Qt::ShiftModifier, "keys 50 0"},
        {Qt::Key_Plus, Qt::KeypadModifier, "keyzoom 1"},
        {Qt::Key_Minus, Qt::NoModifier, "keyzoom -1"},
        {Qt::Key_Home, Qt::NoModifier, "standard"},
        {Qt::Key_Backspace, Qt::NoModifier, "back"},
        {Qt::Key_Left, Qt::ControlModifier, ""},
        {Qt::Key_A, Qt::NoModifier, ""},
    };
    for (const Case& row : cases) EXPECT_EQ(Key(row.key, row.keys), row.gesture) << row.key;
}

TEST_F(GraphPointerTest, ScrollBarsRestAtZeroAndRaiseTheBoundsAtTheirUpperEnd)
{
    auto* across = form.findChild<QScrollBar*>("HScroll1");
    auto* upright = form.findChild<QScrollBar*>("VScroll1");
    EXPECT_EQ(across->minimum(), -100);
    EXPECT_EQ(upright->maximum(), 100);
    across->setValue(0);
    EXPECT_EQ(gestures.Take(), "");
    for (const int value : {10, 10, -37}) {
        across->setValue(value);
        EXPECT_EQ(across->value(), 0);
    }
    EXPECT_EQ(gestures.Take(), "scrlr 10; scrlr 10; scrlr -37");
    QTest::keyClick(upright, Qt::Key_Up);
    EXPECT_EQ(gestures.Take(), "scrud 10");
    QTest::keyClick(upright, Qt::Key_PageDown);
    EXPECT_EQ(gestures.Take(), "scrud -50");
    // The arrow or trough at the upper end.
    QTest::mouseClick(upright, Qt::LeftButton, Qt::NoModifier, {upright->width() / 2, 5});
    EXPECT_EQ(gestures.Take(), "scrud 10");
    EXPECT_EQ(Wheel({0, 120}, Qt::NoModifier, upright), "scrud 30");
}

TEST_F(GraphPointerTest, ButtonsPassTheMouseButtonOn)
{
    auto* zoom = form.findChild<QToolButton*>("Image1");
    auto* one_to_one = form.findChild<QToolButton*>("Label2");
    EXPECT_EQ(zoom->toolTip(), "Links oder rechts klicken für Zoom");
    EXPECT_EQ(one_to_one->text(), "1:1");
    EXPECT_EQ(one_to_one->toolTip(), "Links oder rechts anklicken für Skalierungsverhältnis 1:1");
    const std::string centre = " " + QString::number(view.area_width / 2).toStdString() + " " +
                               QString::number(view.area_height / 2).toStdString();
    QTest::mouseClick(zoom, Qt::LeftButton);
    EXPECT_EQ(gestures.Take(), "zoom 0 6" + centre);
    QTest::mouseClick(zoom, Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(gestures.Take(), "zoom 1 6" + centre);
    QTest::keyClick(zoom, Qt::Key_Space);
    EXPECT_EQ(gestures.Take(), "zoom 0 6" + centre);
    QTest::mouseClick(one_to_one, Qt::RightButton);
    EXPECT_EQ(gestures.Take(), "1:1 1");

    QSignalSpy ranges(&form, &GraphForm::rangeWindowWanted);
    QSignalSpy factors(&form, &GraphForm::zoomFactorsWanted);
    QTest::mouseClick(zoom, Qt::LeftButton, Qt::ShiftModifier);
    QTest::mouseClick(zoom, Qt::RightButton, Qt::ControlModifier);
    EXPECT_EQ(ranges.count(), 1);
    EXPECT_EQ(factors.count(), 1);
    EXPECT_EQ(gestures.Take(), "");
}

TEST_F(GraphPointerTest, TheStatusLineTellsThePlaceAndTheGraphNearIt)
{
    view.x_min = -1;
    view.x_max = 1;
    render::UpdateDerived(view);
    MoveTo({0, 0});
    EXPECT_TRUE(Readout()->text().startsWith("x = −1   y = 10")) << Readout()->text().toStdString();
    form.SetProbe([](double, double) { return render::ProbedPoint{{}, "f", 0.25, -0.5}; });
    MoveTo({9, 9});
    EXPECT_TRUE(Readout()->text().endsWith("   f(0,25) = −0,5"));
    form.SetMode(PointerMode::Move);
    EXPECT_FALSE(Readout()->text().contains("f("));
    MoveTo({-1, 9});
    EXPECT_EQ(Readout()->text(), "");
    MoveTo({9, 9});
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(area, &leave);
    EXPECT_EQ(Readout()->text(), "");
}

}  // namespace
}  // namespace korvinth::ui
