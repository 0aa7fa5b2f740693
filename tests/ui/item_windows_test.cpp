#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <optional>
#include <string>
#include <vector>

#include "scripted_dialogs.h"
#include "ui/asymptoten.h"
#include "ui/punkte.h"

namespace korvinth::ui {
namespace {

// A window under test and the texts that it told.
template <class Window>
struct WindowTest : testing::Test
{
    WindowTest()
    {
        QObject::connect(&window, &Window::taken,
                         [this](const std::string& text) { told.push_back("taken " + text); });
        QObject::connect(&window, &Window::restyled,
                         [this](const std::string& text) { told.push_back("restyled " + text); });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    template <class Control>
    Control* Find(const char* name)
    {
        return window.template findChild<Control*>(name);
    }
    ItemList* List() { return Find<ItemList>("List1"); }
    void Enter(const char* field, const QString& text)
    {
        auto* edit = Find<QLineEdit>(field);
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void EditItem(int row, const QString& text)
    {
        List()->Select(row);
        List()->setFocus();
        QTest::keyClick(List(), Qt::Key_F2);
        auto* editor = List()->viewport()->template findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        // The editor hands its text over, and goes, when there is nothing else to do.
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString Message()
    {
        return Find<MessageLine>("meldung")->isVisible() ? Find<MessageLine>("meldung")->text()
                                                         : "";
    }
    std::string Last() { return told.empty() ? "" : told.back(); }

    ScriptedDialogs dialogs;
    Window window{dialogs};
    std::vector<std::string> told;
};

using AsymptotenTest = WindowTest<Asymptoten>;
using PunkteTest = WindowTest<Punkte>;

TEST_F(AsymptotenTest, EnterAddsALineOfThePresentTypeOnce)
{
    Enter("Text1", "  2*x+1 ");
    EXPECT_EQ(Last(), "taken y=2*_x+1:c=+0");
    EXPECT_EQ(window.readlist(), "y=2*x+1:c=+0");
    EXPECT_EQ(Find<QLineEdit>("Text1")->text(), "");
    EXPECT_EQ(List()->SelectedRows(), std::vector{0});
    List()->clearSelection();
    Enter("Text2", "3");
    Enter("Text1", "x=2");
    EXPECT_EQ(Last(), "taken y=2*_x+1:c=+0\r\nx=2:c=+3");
    Enter("Text1", "y=2*x+1");
    EXPECT_EQ(Last(), "taken y=2*_x+1:c=+3\r\nx=2:c=+3");
    told.clear();
    Enter("Text1", "   ");
    EXPECT_TRUE(told.empty());
    Enter("Text1", "z=3");
    window.ShowProblems("");
    EXPECT_TRUE(Message().contains("z=3 wird nicht gezeichnet")) << "as long as it is in the list";
    EXPECT_EQ(List()->count(), 3);
}

TEST_F(AsymptotenTest, TheLineTypeIsThatOfTheSelectionAndAWrongOneIsRefusedOnce)
{
    window.text2list("y=1:c=+2\r\ny=2:c=+4");
    EXPECT_TRUE(told.empty());
    List()->Select(1);
    EXPECT_EQ(Find<QLineEdit>("Text2")->text(), "4");
    Enter("Text2", "6");
    EXPECT_EQ(Last(), "restyled y=1:c=+2\r\ny=2:c=+6");
    told.clear();
    for (const char* wrong : {"7", "-1"}) {
        Enter("Text2", wrong);
        Find<QLineEdit>("Text1")->setFocus();
        EXPECT_EQ(Find<QLineEdit>("Text2")->text(), "6");
    }
    EXPECT_EQ(dialogs.errors,
              std::vector<std::string>(2, "Fehler:|Unerlaubter Wert für die Linienart!"));
    EXPECT_TRUE(told.empty());
}

TEST_F(AsymptotenTest, LinesAreEditedMovedHiddenColouredAndRemoved)
{
    window.text2list("y=1:c=+0\r\ny=_x:c=+0\r\nx=3:c=+0");
    EditItem(1, "2*x");
    EXPECT_EQ(Last(), "taken y=1:c=+0\r\ny=2*_x:c=+0\r\nx=3:c=+0");
    QTest::keyClick(List(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Last(), "restyled y=2*_x:c=+0\r\ny=1:c=+0\r\nx=3:c=+0");
    EXPECT_EQ(List()->SelectedRows(), std::vector{0});
    const std::size_t count = told.size();
    QTest::keyClick(List(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(told.size(), count) << "it is the first already";
    QTest::keyClick(List(), Qt::Key_Space);
    EXPECT_EQ(Last(), "restyled y=2*_x:c=+0:-1\r\ny=1:c=+0\r\nx=3:c=+0");
    dialogs.colour = document::Colour{255};
    QTest::mouseClick(Find<QPushButton>("farbe"), Qt::LeftButton);
    EXPECT_EQ(Last(), "restyled y=2*_x:c=+0:+255:-1\r\ny=1:c=+0\r\nx=3:c=+0");
    QTest::mouseClick(Find<QPushButton>("unten"), Qt::LeftButton);
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Delete);
    EXPECT_EQ(Last(), "taken y=1:c=+0\r\nx=3:c=+0");
    EditItem(0, "");
    EXPECT_EQ(List()->item(0)->text(), "y=1") << "nothing typed, nothing lost";
    List()->selectAll();
    QTest::keyClick(List(), Qt::Key_Delete);
    EXPECT_EQ(Last(), "taken ");
}

TEST_F(PunkteTest, EnterAddsAPointAndKeepsWhatIsNone)
{
    Enter("Text1", "P(2|a)");
    EXPECT_EQ(Last(), "taken (2)(a):n=P");
    EXPECT_EQ(List()->item(0)->text(), "P(2 | a)");
    Enter("Text1", "17");
    EXPECT_EQ(told.size(), 1U);
    EXPECT_EQ(Find<QLineEdit>("Text1")->text(), "17");
    EXPECT_TRUE(Message().contains("(x | y)"));
    Enter("Text1", "(1;2)");
    EXPECT_EQ(Last(), "taken (2)(a):n=P\r\n(1)(2)");
    EXPECT_EQ(Message(), "");
}

TEST_F(PunkteTest, TheLookIsThatOfTheSelectedPoints)
{
    window.text2list("(1)(1):s=1:r=7:n=A\r\n(2)(2)");
    List()->Select(0);
    EXPECT_EQ(Find<QComboBox>("form")->currentText(), "Kreis");
    EXPECT_EQ(Find<QSpinBox>("radius")->value(), 7);
    Enter("name", "B");
    EXPECT_EQ(Last(), "restyled (1)(1):s=1:r=7:n=B\r\n(2)(2)");
    List()->selectAll();
    Find<QSpinBox>("radius")->setValue(9);
    EXPECT_EQ(Last(), "restyled (1)(1):s=1:r=9:n=B\r\n(2)(2):r=9");
    QTest::keyClick(Find<QComboBox>("form"), Qt::Key_Down);
    EXPECT_EQ(Last(), "restyled (1)(1):s=2:r=9:n=B\r\n(2)(2):s=2:r=9");
    const std::size_t count = told.size();
    EditItem(1, "C(3 | 4)");
    EXPECT_EQ(Last(), "taken (1)(1):s=2:r=9:n=B\r\n(3)(4):s=2:r=9:n=C");
    window.text2list("(1)(1):s=2:r=9:n=B\r\n(3,5)(4):s=2:r=9:n=C");
    EXPECT_EQ(List()->SelectedRows(), std::vector{1}) << "a dragged point stays selected";
    EXPECT_EQ(List()->item(1)->text(), "C(3,5 | 4)");
    QTest::keyClick(List(), Qt::Key_Delete);
    EXPECT_EQ(Last(), "taken (1)(1):s=2:r=9:n=B");
    EXPECT_EQ(told.size(), count + 2);
}

}  // namespace
}  // namespace korvinth::ui
