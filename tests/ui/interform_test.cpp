#include "ui/interform.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace korvinth::ui {
namespace {

class InterFormTest : public testing::Test, public RangeActions
{
protected:
    InterFormTest()
    {
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
    }
    std::vector<RangeFault> TakeRanges(const document::RangeTexts& texts) override
    {
        typed = texts;
        if (faults.empty()) document.ranges = texts;
        return faults;
    }
    void UseStandardRange() override { ++standard; }
    void einszueins(render::ClickButton pressed) override { button = pressed; }

    QLineEdit* Field(const char* name) { return form.findChild<QLineEdit*>(name); }
    void Type(const char* name, const char* text)
    {
        Field(name)->setFocus();
        Field(name)->selectAll();
        QTest::keyClicks(Field(name), text);
    }
    QLabel* Status() { return form.findChild<QLabel*>("interstatus"); }

    document::PlotDocument document;
    render::ViewRange view;
    document::RangeTexts typed;
    std::vector<RangeFault> faults;
    int standard = 0;
    render::ClickButton button = render::ClickButton::Other;
    InterForm form{document, view, *this};
};

TEST_F(InterFormTest, ShowsTermsWhileTheyAreInForceAndElseNumbers)
{
    EXPECT_EQ(Field("xu")->text(), "-10");
    EXPECT_EQ(Field("to")->text(), "2*pi");
    EXPECT_EQ(Field("yo")->text(), "10") << "a range left to the view is shown";
    view.x_min = -1.23456789;
    render::UpdateDerived(view);
    document.ranges.x_lower = "-1.23456789";
    document.ranges.x_upper = "a+1/3";
    form.updateall();
    EXPECT_EQ(Field("xu")->text(), "-1,23");
    EXPECT_EQ(Field("xo")->text(), "a+1/3");
    QTest::keyClick(Field("xu"), Qt::Key_Return);
    EXPECT_EQ(typed.x_lower, "-1.23456789") << "what is not edited keeps its digits";
}

TEST_F(InterFormTest, EnterTakesTheFields)
{
    Type("yu", "-1,5");
    QTest::keyClick(Field("yu"), Qt::Key_Return);
    EXPECT_EQ(typed.y_lower, "-1,5");
    EXPECT_EQ(typed.y_upper, "10");
    EXPECT_EQ(typed.x_lower, "-10");
    EXPECT_EQ(Field("yu")->text(), "-1,5");
    EXPECT_EQ(Status()->text(), "");
    Type("xo", "2a");
    QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    EXPECT_EQ(typed.x_upper, "2a");
}

TEST_F(InterFormTest, MarksTheFieldThatIsRefused)
{
    faults = {{RangeAxis::X, RangeBound::Upper, "x-Bereich, obere Grenze: falsch"}};
    Type("xo", "((");
    QTest::keyClick(Field("xo"), Qt::Key_Return);
    EXPECT_EQ(Status()->text(), "⚠ x-Bereich, obere Grenze: falsch");
    EXPECT_EQ(Field("xo")->text(), "((") << "what is typed stays";
    EXPECT_EQ(Field("xo")->toolTip(), "x-Bereich, obere Grenze: falsch");
    EXPECT_EQ(Field("xu")->toolTip(), "untere Grenze von x");
    form.updatex();
    EXPECT_EQ(Field("xo")->text(), "((") << "also when the view changes meanwhile";
    QTest::keyClick(Field("xo"), Qt::Key_Escape);
    EXPECT_EQ(Field("xo")->text(), "10");
    EXPECT_EQ(Status()->text(), "");
}

TEST_F(InterFormTest, ButtonsGoOn)
{
    QTest::mouseClick(form.findChild<QPushButton*>("Command2"), Qt::LeftButton);
    EXPECT_EQ(standard, 1);
    auto* one_to_one = form.findChild<QToolButton*>("einszueins");
    QTest::mouseClick(one_to_one, Qt::RightButton);
    EXPECT_EQ(button, render::ClickButton::Right);
    QTest::keyClick(&form, Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return button == render::ClickButton::Left; }));
    QTest::keyClick(one_to_one, Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(button, render::ClickButton::Right);
}

}  // namespace
}  // namespace korvinth::ui
