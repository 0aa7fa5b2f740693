#include "ui/optionsgraph.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>
#include <set>
#include <string>
#include <vector>

#include "scripted_dialogs.h"

namespace korvinth::ui {
namespace {

class OptionsGraphTest : public testing::Test
{
protected:
    OptionsGraphTest()
    {
        QObject::connect(&window, &OptionsGraph::settingsChanged, &window,
                         [this](const document::DisplayAttributes& changed) {
                             document::CopyGeneralSettings(changed, attributes);
                             ++changes;
                         });
    }

    void Open()
    {
        window.Open(attributes, 640);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    template <class Widget>
    Widget* Find(const char* name)
    {
        auto* found = window.findChild<Widget*>(name);
        auto* tabs = window.findChild<QTabWidget*>("pages");
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->widget(i)->isAncestorOf(found)) tabs->setCurrentIndex(i);
        }
        return found;
    }
    void Click(const char* name) { QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton); }
    void Type(const char* name, const char* text)
    {
        auto* field = Find<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    QString Message() { return window.findChild<QLabel*>("message")->text(); }

    document::DisplayAttributes attributes;
    const document::DisplayAttributes defaults;
    term::MathParser parser;
    ScriptedDialogs dialogs;
    OptionsGraph window{parser, dialogs};
    int changes = 0;
};

TEST_F(OptionsGraphTest, EveryChangeIsToldAtOnceAndAbbrechenTakesAllBack)
{
    Open();
    EXPECT_EQ(changes, 0);
    Type("xname", "t");
    EXPECT_EQ(attributes.x_axis_name, "t");
    Type("axwidth", "2,5");
    EXPECT_EQ(attributes.axis_width, 2.5);
    Click("smooth");
    EXPECT_FALSE(attributes.smooth_drawing);
    dialogs.colour = document::MakeColour(0, 0, 0);
    Click("colback");
    EXPECT_EQ(attributes.background, document::MakeColour(0, 0, 0));
    QTest::keyClicks(Find<QComboBox>("ystepmode"), "V");
    EXPECT_EQ(attributes.y_step.mode, document::StepMode::MultiplesOfPi);
    window.Open(attributes, 640);   // from the menu once more
    attributes.help_lines = false;  // from the menu, meanwhile
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(attributes.help_lines);
    attributes.help_lines = true;
    EXPECT_EQ(attributes, defaults);
}

TEST_F(OptionsGraphTest, OkKeepsTheChanges)
{
    Open();
    Type("famcount", "7");
    QTest::keyClick(Find<QLineEdit>("famcount"), Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(attributes.family_count, 7);
    Open();
    EXPECT_EQ(Find<QLineEdit>("famcount")->text(), "7");
    Click("cmcancel");
    EXPECT_EQ(attributes.family_count, 7);
}

TEST_F(OptionsGraphTest, VoreinstellungenCanBeTakenBackToo)
{
    attributes.family_step = 3;
    Open();
    Click("cmdefault");
    EXPECT_EQ(attributes, defaults);
    EXPECT_EQ(Find<QLineEdit>("famstep")->text(), "1");
    Click("cmcancel");
    EXPECT_EQ(attributes.family_step, 3);
}

TEST_F(OptionsGraphTest, WrongInputIsRefusedInPlaceWithItsName)
{
    Open();
    Type("limit", "2");
    EXPECT_EQ(Message(), "") << "not while one types";
    QTest::keyClick(Find<QLineEdit>("limit"), Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(Message().contains("numerische Grenze für 1/(1+abs(x)): "));
    EXPECT_EQ(attributes, defaults);
    Find<QLineEdit>("xname");  // another page
    Click("cmok");
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.findChild<QLineEdit*>("limit")->isVisible())
        << "its page comes to the front";
    EXPECT_TRUE(dialogs.errors.empty() && dialogs.exclamations.empty());
    Type("limit", "0,5");
    EXPECT_EQ(Message(), "");
    Click("cmok");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(attributes.integrand_limit, "0.5");
}

TEST_F(OptionsGraphTest, AConstantSampleCountStartsWithTheOneInForce)
{
    Open();
    EXPECT_FALSE(Find<QLineEdit>("samples")->isEnabled());
    Click("constsamples");
    EXPECT_TRUE(attributes.constant_sample_count);
    EXPECT_EQ(attributes.sample_count, 640);
    Type("samples", "1");
    Click("constsamples");
    EXPECT_EQ(Find<QLineEdit>("samples")->text(), "640")
        << "nothing wrong stays in a field at rest";
    Click("cmok");
    EXPECT_FALSE(window.isVisible());
}

// The letters after "&" of what is visible.
std::vector<QChar> Mnemonics(const QWidget& window)
{
    std::vector<QChar> letters;
    const auto add = [&](const QString& caption) {
        const qsizetype place = caption.indexOf('&');
        if (place >= 0) letters.push_back(caption[place + 1].toLower());
    };
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->isVisible()) add(label->text());
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible()) add(button->text());
    }
    const auto* tabs = window.findChild<QTabWidget*>();
    for (int i = 0; i < tabs->count(); ++i) add(tabs->tabText(i));
    return letters;
}

TEST_F(OptionsGraphTest, EveryControlIsReachedByAMnemonicOfItsOwn)
{
    Open();
    auto* tabs = window.findChild<QTabWidget*>("pages");
    for (int page = 0; page < tabs->count(); ++page) {
        tabs->setCurrentIndex(page);
        SCOPED_TRACE(tabs->tabText(page).toStdString());
        const std::vector<QChar> letters = Mnemonics(window);
        EXPECT_EQ(std::set<QChar>(letters.begin(), letters.end()).size(), letters.size());
        EXPECT_GE(letters.size(), 12U);
        for (const auto* field : window.findChildren<QLineEdit*>()) {
            EXPECT_FALSE(field->accessibleName().isEmpty());
        }
    }
}

TEST_F(OptionsGraphTest, FitsASmallScreenWithALargeFont)
{
    QFont large = window.font();
    large.setPointSize(16);
    window.setFont(large);
    Open();
    window.resize(window.minimumSizeHint());
    EXPECT_LE(window.width(), 1000);
    EXPECT_LE(window.height(), 560);
    EXPECT_TRUE(window.findChild<QPushButton*>("cmok")->isVisible());
}

}  // namespace
}  // namespace korvinth::ui
