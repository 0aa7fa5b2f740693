#include "ui/minicalc.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <vector>

#include "scripted_dialogs.h"

namespace korvinth::ui {
namespace {

class MiniCalcTest : public testing::Test
{
protected:
    MiniCalcTest()
    {
        QObject::connect(&form, &MiniCalc::placesChosen, &form, [this](int places) {
            chosen.push_back(places);
            document.attributes.calculator_places = places;
        });
        form.show();
        form.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
        Term()->setFocus();
    }
    QLineEdit* Term() { return form.findChild<QLineEdit*>("Text1"); }
    QLineEdit* Places() { return form.findChild<QLineEdit*>("Text2"); }
    QString Line() { return form.findChild<QLabel*>("Label1")->text(); }
    QPushButton* Button(const char* name) { return form.findChild<QPushButton*>(name); }
    void Enter(const char* term)
    {
        Term()->setText(term);
        QTest::keyClick(Term(), Qt::Key_Return);
    }
    void TypePlaces(const char* text)
    {
        Places()->setFocus();
        Places()->selectAll();
        QTest::keyClicks(Places(), text);
    }

    term::MathParser parser;
    document::PlotDocument document;
    ScriptedDialogs dialogs;
    std::vector<int> chosen;
    MiniCalc form{parser, document, dialogs};
};

TEST_F(MiniCalcTest, EnterAndTheButtonsCalculateAndClear)
{
    EXPECT_EQ(Line(), "");
    EXPECT_EQ(Places()->text(), "3");
    Enter("1,5*sqrt(2)");
    EXPECT_EQ(Line(), "2.121");
    Term()->setText("1/0");
    EXPECT_EQ(Line(), "2.121") << "not yet calculated";
    QTest::mouseClick(Button("Command1"), Qt::LeftButton);
    EXPECT_EQ(Line(), "Error: Division durch 0");
    EXPECT_EQ(form.focusWidget(), Term());
    EXPECT_EQ(form.findChild<QLabel*>("Label1")->toolTip(), Line()) << "it may be too long";
    QTest::mouseClick(Button("Command3"), Qt::LeftButton);
    EXPECT_EQ(Term()->text() + Line(), "");
    EXPECT_EQ(form.focusWidget(), Term());
    form.Refresh();
    EXPECT_EQ(Line(), "") << "there is no result to follow";
    bool closing = false;
    QObject::connect(&form, &MiniCalc::closeWanted, &form, [&closing] { closing = true; });
    QTest::mouseClick(Button("Command2"), Qt::LeftButton);
    EXPECT_TRUE(closing);
}

TEST_F(MiniCalcTest, ANumberOfPlacesIsTakenByEnterAndByLeavingTheField)
{
    Enter("2/3");
    TypePlaces("1,5");
    EXPECT_TRUE(chosen.empty());
    QTest::keyClick(Places(), Qt::Key_Return);
    EXPECT_EQ(chosen, std::vector<int>{2});
    EXPECT_EQ(Line(), "0.67");
    EXPECT_EQ(Places()->text(), "2");
    TypePlaces("2*3");
    Term()->setFocus();
    EXPECT_EQ(chosen.back(), 6);
    EXPECT_EQ(Line(), "0.666667");
    Places()->setFocus();
    QTest::keyClick(Places(), Qt::Key_Up);
    EXPECT_EQ(Places()->text(), "2*3");
    QTest::keyClick(Places(), Qt::Key_Up);
    EXPECT_EQ(Places()->text(), "1,5") << "the field leafs through what it took";
    QTest::keyClick(Places(), Qt::Key_Escape);
    EXPECT_EQ(Places()->text(), "6");
    document.attributes.calculator_places = 1;
    form.FollowSettings();
    EXPECT_EQ(Places()->text(), "1");
    EXPECT_EQ(Line(), "0.7");
}

TEST_F(MiniCalcTest, ARefusedNumberOfPlacesIsToldOnceAndEscTakesItBack)
{
    Term()->setText("2/3");
    TypePlaces("23");
    QTest::keyClick(Places(), Qt::Key_Return);
    const std::vector<std::string> message = {"Stellen nach dem Komma:|Ungültige Stellenzahl!"};
    EXPECT_EQ(dialogs.errors, message);
    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(Places()->text(), "23");
    EXPECT_EQ(Line(), "0.667") << "calculated in any case";
    QTest::keyRelease(Places(), Qt::Key_Return);  // of the Enter that closed the message
    EXPECT_EQ(dialogs.errors, message);
    QTest::keyClick(Places(), Qt::Key_Escape);
    EXPECT_EQ(Places()->text(), "3");
    Term()->setFocus();
    EXPECT_EQ(dialogs.errors, message);
}

TEST_F(MiniCalcTest, UpAndDownLeafThroughTheTermsAndLoseNothing)
{
    for (const char* term : {"1+1", "2+2", "2+2", "  "}) Enter(term);
    Term()->setText("3+");
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(Term(), key);
        return Term()->text();
    };
    EXPECT_EQ(press(Qt::Key_Up), "2+2");
    EXPECT_EQ(press(Qt::Key_Up), "1+1");
    EXPECT_EQ(press(Qt::Key_Up), "1+1");
    QTest::keyClicks(Term(), "*5");
    EXPECT_EQ(press(Qt::Key_Down), "2+2");
    EXPECT_EQ(press(Qt::Key_Down), "3+") << "the half-typed line";
    EXPECT_EQ(press(Qt::Key_Down), "3+");
    press(Qt::Key_Up);
    EXPECT_EQ(press(Qt::Key_Up), "1+1*5");
    QTest::keyClick(Term(), Qt::Key_Return);
    EXPECT_EQ(Line(), "6");
    EXPECT_EQ(press(Qt::Key_Up), "1+1*5");
    press(Qt::Key_Up);
    EXPECT_EQ(press(Qt::Key_Up), "1+1") << "as it was calculated";
}

TEST_F(MiniCalcTest, KeepsItsHeightAndFillsItsWidth)
{
    const int height = form.height();
    form.resize(1, 1);
    EXPECT_EQ(form.height(), height);
    EXPECT_NEAR(form.width(), height * 3000 / 1590, 2);
    const int room = form.width() - Term()->width();
    form.resize(900, 900);
    EXPECT_EQ(form.height(), height);
    EXPECT_EQ(form.width(), 900);
    EXPECT_EQ(form.width() - Term()->width(), room);
    EXPECT_EQ(Button("Command1")->x(), Button("Command3")->x());
    EXPECT_NEAR(form.width() - Button("Command1")->x(), height * 1020 / 1590, 2);
}

}  // namespace
}  // namespace korvinth::ui
