// Additional lines and points, the coupling to the pointer and the general settings, through the
// controls of the main window.
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <cmath>

#include "document/parameter_values.h"
#include "window_fixture.h"

namespace korvinth::app {
namespace {

class GraphAdditionsTest : public ShownWindow
{
protected:
    GraphAdditionsTest() { Show(); }
    void Enter(const char* window, const char* text)
    {
        auto* field = Find(window)->findChild<QLineEdit*>("Text1");
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        Picture();
        QApplication::processEvents();
    }
    QWidget* Area() { return Find("Picture1"); }
    QPoint PixelOf(double x, double y)
    {
        const render::ViewRange& view = application_.View();
        return {qRound(view.AreaX(x) / view.twips_per_pixel_x),
                qRound(view.AreaY(y) / view.twips_per_pixel_y)};
    }
    double Value(const char* name) { return application_.Document().FindParameter(name)->value; }
    document::PlotDocument& Plot() { return application_.Document(); }
};

TEST_F(GraphAdditionsTest, ALineIsDrawnFollowsItsParameterAndCanBeUndone)
{
    Type(0, "f(x)=a*x^2");
    Trigger("mn_asy");
    const QImage without = Picture();
    Enter("Asymptoten", "f(1)+f'(1)*(x-1)");
    const QImage with_tangent = Picture();
    EXPECT_NE(with_tangent, without);
    Trigger("mn_asyvis");
    EXPECT_EQ(Picture(), without);
    Trigger("mn_asyvis");
    EXPECT_EQ(Picture(), with_tangent);
    Trigger("mn_undo");
    EXPECT_EQ(Plot().lines_text, "");
    EXPECT_EQ(Picture(), without);
    EXPECT_TRUE(dialogs_.errors.empty());
}

TEST_F(GraphAdditionsTest, TheListsAreFilledByKeyboardFromTheMenuOn)
{
    for (const auto& [entry, item] : {std::pair{"mn_asy", "y=1"}, std::pair{"mn_punkt", "(1|2)"}}) {
        SCOPED_TRACE(entry);
        Trigger(entry);
        QWidget* field = QApplication::focusWidget();
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->objectName(), "Text1");
        QTest::keyClicks(field, item);
        QTest::keyClick(field, Qt::Key_Return);
        QStringList order;
        while (order.size() < 12 && !order.contains("weg")) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order += QApplication::focusWidget()->objectName();
        }
        EXPECT_EQ(order.first(), "hinzu");
        EXPECT_LT(order.indexOf("List1"), order.indexOf("oben"));
        EXPECT_GT(order.indexOf("weg"), 0) << order.join(' ').toStdString();
    }
    EXPECT_EQ(Plot().lines_text, "y=1:c=+0");
    EXPECT_EQ(Plot().points_text, "(1)(2)");
    Enter("Asymptoten", "z=4");
    EXPECT_TRUE(Find("Asymptoten")->findChild<QLabel*>("meldung")->text().contains("z=4"));
    EXPECT_EQ(Plot().FindParameter("z"), nullptr) << "what is not drawn needs no parameter";
}

TEST_F(GraphAdditionsTest, AFaultyLineIsToldOnceUntilTheListIsTakenAgain)
{
    Trigger("mn_asy");
    Enter("Asymptoten", "1/0");
    ASSERT_EQ(dialogs_.errors.size(), 1U);
    EXPECT_TRUE(dialogs_.errors[0].starts_with("Geradenfenster:|")) << dialogs_.errors[0];
    Type(0, "x");
    Picture();
    QApplication::processEvents();
    EXPECT_EQ(dialogs_.errors.size(), 1U);
    Enter("Asymptoten", "2");
    EXPECT_EQ(dialogs_.errors.size(), 2U);
}

TEST_F(GraphAdditionsTest, APointIsDraggedWithItsParameter)
{
    Type(0, "f(x)=a*x");
    Trigger("mn_punkt");
    Enter("Punkte", "(a | 2)");
    const QPoint start = PixelOf(1, 2);
    const QPoint end = PixelOf(3, -1);
    QTest::mousePress(Area(), Qt::LeftButton, {}, start);
    QTest::mouseMove(Area(), (start + end) / 2);
    QTest::mouseMove(Area(), end);
    EXPECT_NEAR(Value("a"), 3, 0.05);
    QTest::keyClick(Area(), Qt::Key_Escape);
    EXPECT_EQ(Value("a"), 1) << "Esc puts it back";
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, end);
    QTest::mousePress(Area(), Qt::LeftButton, {}, start);
    QTest::mouseMove(Area(), end);
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, end);
    EXPECT_NEAR(Value("a"), 3, 0.05);
    EXPECT_EQ(application_.View().x_min, -10) << "the view stays";
    Enter("Punkte", "(4 | 4)");
    QTest::mousePress(Area(), Qt::LeftButton, {}, PixelOf(4, 4));
    QTest::mouseMove(Area(), PixelOf(5, 2));
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, PixelOf(5, 2));
    EXPECT_EQ(Plot().points_text.find("(4)(4)"), std::string::npos) << Plot().points_text;
    Trigger("mn_undo");
    EXPECT_NE(Plot().points_text.find("(4)(4)"), std::string::npos) << "a drag is one step";
    Enter("Punkte", "(-4,0123 | 4)");
    QTest::mousePress(Area(), Qt::LeftButton, {}, PixelOf(-4, 4));
    QTest::mouseMove(Area(), PixelOf(-5, 2));
    EXPECT_EQ(Plot().points_text.find("(-4,0123)(4)"), std::string::npos);
    QTest::keyClick(Area(), Qt::Key_Escape);
    EXPECT_NE(Plot().points_text.find("(-4,0123)(4)"), std::string::npos) << Plot().points_text;
}

TEST_F(GraphAdditionsTest, CoupledParametersFollowThePointerUntilAClickHoldsThem)
{
    Type(0, "f(x)=a*x+b+c_int");
    const auto couple = [this](const char* window, const char* entry) {
        auto* menu = Find(window)->findChild<QMenu*>("mn_pop2");
        menu->findChild<QAction*>(entry)->trigger();
    };
    couple("para[26]", "mnp_x");
    couple("para[27]", "mnp_winkel");
    couple("para[28]", "mnp_y");
    EXPECT_TRUE(Checked("mnka"));
    QTest::mouseMove(Area(), PixelOf(-3, 3));
    EXPECT_NEAR(Value("a"), -3, 0.05);
    EXPECT_NEAR(Value("b"), 3 * 3.14159265 / 4, 0.02);
    EXPECT_EQ(Value("c_int"), std::trunc(Value("c_int"))) << "whole numbers stay whole";
    QTest::mouseClick(Area(), Qt::LeftButton, {}, PixelOf(-3, 3));
    QTest::mouseMove(Area(), PixelOf(5, 1));
    EXPECT_NEAR(Value("a"), -3, 0.05) << "held by the click";
    QTest::mouseClick(Area(), Qt::LeftButton, {}, PixelOf(5, 1));
    QTest::mouseMove(Area(), PixelOf(6, 1));
    EXPECT_NEAR(Value("a"), 6, 0.05);
    Trigger("mnkc");
    EXPECT_FALSE(Checked("mnka"));
    QTest::mouseMove(Area(), PixelOf(2, 1));
    EXPECT_NEAR(Value("a"), 6, 0.05);
}

TEST_F(GraphAdditionsTest, AnIntegralFunctionTakesTheSampleCountOfAResizedArea)
{
    Type(0, "x");
    Type(1, "F(x)");
    EXPECT_EQ(application_.SampleCount(document::SlotIndex{1}), 1000) << "its own from the start";
    window_.resize(1024, 700);
    QApplication::processEvents();
    EXPECT_EQ(Value("ganz"), Area()->width() + 1);
    Plot().attributes.constant_sample_count = true;
    window_.resize(1280, 800);
    QApplication::processEvents();
    EXPECT_NE(Value("ganz"), Area()->width() + 1);
}

TEST_F(GraphAdditionsTest, TheMenuOverAGraphIsForThatGraph)
{
    Type(0, "4");
    Type(1, "-3");
    const auto hide_at = [this](double y) {
        QTest::mouseClick(Area(), Qt::RightButton, {}, PixelOf(2, y));
        Trigger("mng_vis");
        while (QWidget* menu = QApplication::activePopupWidget()) menu->close();
    };
    QTest::mouseClick(Area(), Qt::RightButton, {}, PixelOf(2, -3));
    QApplication::activePopupWidget()->close();
    Find("termform_frame")->close();
    Trigger("mng_intervals");
    EXPECT_TRUE(Row(1)->isVisible()) << "the editor opens at the graph's row";
    EXPECT_EQ(window_.focusWidget()->objectName(), "fnam[1]");
    EXPECT_TRUE(Row(1)->text().contains("-oo"));
    Trigger("mng_terms");
    hide_at(4);
    EXPECT_FALSE(Plot().slots[document::SlotIndex{0}].visible);
    EXPECT_TRUE(Plot().slots[document::SlotIndex{1}].visible);
    hide_at(-3);
    EXPECT_FALSE(Plot().slots[document::SlotIndex{1}].visible);
}

TEST_F(GraphAdditionsTest, SettingsShowAtOnceAndCancelRestoresThem)
{
    Type(0, "f(x)=x");
    const QImage before = Picture();
    Trigger("mn_groptions");
    auto* settings = Find<QDialog>("optionsgraph");
    ASSERT_TRUE(settings->isVisible());
    auto* name = settings->findChild<QLineEdit*>("xname");
    name->clear();
    QTest::keyClicks(name, "Zeit");
    EXPECT_EQ(Plot().attributes.x_axis_name, "Zeit");
    EXPECT_NE(Picture(), before);
    QTest::keyClick(settings, Qt::Key_Escape);
    EXPECT_EQ(Plot().attributes.x_axis_name, "x");
    EXPECT_EQ(Picture(), before);
    Plot().attributes.font_points = 20;
    Trigger("mn_optdef");
    EXPECT_EQ(Plot().attributes.font_points, 9);
    EXPECT_EQ(Picture(), before);
}

TEST(MouseCoupling, ValuesOfThePointersPlace)
{
    using document::CoupledValue;
    using document::Coupling;
    EXPECT_EQ(CoupledValue(Coupling::X, 2, 3, term::TrigMode::Radians), 2);
    EXPECT_EQ(CoupledValue(Coupling::Y, 2, 3, term::TrigMode::Radians), 3);
    EXPECT_DOUBLE_EQ(CoupledValue(Coupling::Angle, 0, -1, term::TrigMode::Degrees), 270);
    EXPECT_DOUBLE_EQ(CoupledValue(Coupling::Angle, -1, 0, term::TrigMode::Grads), 200);
    EXPECT_EQ(CoupledValue(Coupling::Angle, 0, 0, term::TrigMode::Degrees), 0);
}

}  // namespace
}  // namespace korvinth::app
