#include "ui/termform.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "document/storable_text.h"
#include "scripted_dialogs.h"

namespace korvinth::ui {
namespace {

using document::EditorState;
using document::SlotIndex;

constexpr SlotIndex Slot(int number) { return SlotIndex{static_cast<std::int16_t>(number)}; }

class TermFormTest : public testing::Test
{
protected:
    TermFormTest()
    {
        // A plot as ApplyPlot leaves it: f, and the curve of xa and ya.
        Define(0, "f", "x", document::kPlainFunction);
        Define(1, "xa", "cos(x)", 2);
        Define(2, "ya", "sin(x)", document::kCurveYPart);
        form.init();
        form.resize(form.sizeHint());
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        QApplication::setActiveWindow(&form);
        form.FocusRow(Slot(0));
    }

    void Define(int number, const char* name, const char* term, std::int16_t link)
    {
        document::FunctionSlot& slot = plot.slots[Slot(number)];
        slot.name = name;
        slot.raw_term = term;
        slot.curve_link = link;
        plot.rows[Slot(number)] = slot.name + "(x) = " + term;
    }

    QLineEdit* Field(int row)
    {
        return form.findChild<QLineEdit*>(QStringLiteral("fnam[%1]").arg(row));
    }
    QString Shown(int row) { return Field(row)->text(); }
    QWidget* Part(const char* name) { return form.findChild<QWidget*>(name); }
    QString Status() { return form.findChild<QLabel*>("status")->text(); }
    void Press(int row, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        form.FocusRow(Slot(row));
        QTest::keyClick(Field(row), key, modifiers);
    }
    void Type(int row, const char* text)
    {
        form.FocusRow(Slot(row));
        Field(row)->selectAll();
        QTest::keyClicks(Field(row), text);
    }
    void Paste(int row, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        Press(row, Qt::Key_V, Qt::ControlModifier);
    }

    document::PlotDocument plot;
    ScriptedDialogs dialogs;
    TermForm form{plot, dialogs};
};

TEST_F(TermFormTest, SignsThatNoFileTakesAreRewrittenWhileTyping)
{
    Type(3, "{7\\n}");
    EXPECT_EQ(Shown(3), "(7\\ n)");
    EXPECT_EQ(Field(3)->cursorPosition(), 6);
    Field(3)->setCursorPosition(1);
    QTest::keyClicks(Field(3), "\\{");
    EXPECT_EQ(Shown(3), "(\\(7\\ n)");
    EXPECT_EQ(Field(3)->cursorPosition(), 3);
    Press(3, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Shown(3), "(7\\ n)") << "undoing goes on behind a bracket";
    Paste(4, "f(x)={x}\t\\n\u0085");
    EXPECT_EQ(Shown(4), "f(x)=(x) \\ n ");
    form.StoreRows(plot);
    EXPECT_EQ(plot.rows[Slot(3)], "(7\\ n)");
    EXPECT_EQ(plot.rows[Slot(4)], "f(x)=(x) \\ n ");
}

TEST_F(TermFormTest, TypingChangesNothingUntilEnterApplies)
{
    QSignalSpy applied(&form, &TermForm::applied);
    Type(3, "g(x)=3");
    EXPECT_EQ(plot.rows[Slot(3)], "");
    EXPECT_EQ(applied.count(), 0);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(Field(3), key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
        ASSERT_EQ(applied.count(), 1);
        EXPECT_EQ(applied.takeFirst().at(0).value<EditorState>(), EditorState::Terms);
    }
    form.StoreRows(plot);
    EXPECT_EQ(plot.rows[Slot(3)], "g(x)=3");
}

struct KeyCase
{
    const char* behaviour;
    int row;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* rows;  // first letters of the names, "-" for an empty row
    int focus;
};

const KeyCase kKeyCases[] = {
    {"Shift+Enter inserts below and goes there", 0, Qt::Key_Return, Qt::ShiftModifier, "f-xy", 1},
    {"Insert inserts below", 0, Qt::Key_Insert, {}, "f-xy", 0},
    {"Ctrl+Insert inserts in front", 0, Qt::Key_Insert, Qt::ControlModifier, "-fxy", 0},
    {"Shift+Delete deletes", 0, Qt::Key_Delete, Qt::ShiftModifier, "xy--", 0},
    {"Down goes to the next row", 0, Qt::Key_Down, {}, "fxy-", 1},
    {"Up goes to the row before", 1, Qt::Key_Up, {}, "fxy-", 0},
    {"Tab goes to the next row", 0, Qt::Key_Tab, {}, "fxy-", 1},
    {"Up rests at the first row", 0, Qt::Key_Up, {}, "fxy-", 0},
    {"Shift+Enter does nothing in the last row", 12, Qt::Key_Return, Qt::ShiftModifier, "fxy-", 12},
    {"Insert does nothing in the last row", 12, Qt::Key_Insert, {}, "fxy-", 12},
    {"Ctrl+Insert does nothing in the last row", 12, Qt::Key_Insert, Qt::ControlModifier, "fxy-",
     12},
};

TEST_F(TermFormTest, KeysMoveRowsAndTheFocus)
{
    for (const KeyCase& row : kKeyCases) {
        SCOPED_TRACE(row.behaviour);
        form.init();
        Press(row.row, row.key, row.modifiers);
        std::string rows;
        for (int number = 0; number < 4; ++number) {
            rows += Shown(number).isEmpty() ? '-' : Shown(number).front().toLatin1();
        }
        EXPECT_EQ(rows, row.rows);
        EXPECT_EQ(form.CurrentRow(), Slot(row.focus));
        EXPECT_TRUE(Field(row.focus)->hasFocus());
        EXPECT_EQ(plot.rows[Slot(0)], "f(x) = x") << "nothing is applied";
    }
}

TEST_F(TermFormTest, EscPutsBackTheTextThatTheRowHad)
{
    Type(0, "17");
    QTest::keyClick(Field(0), Qt::Key_Escape);
    EXPECT_EQ(Shown(0), "f(x) = x");
    EXPECT_EQ(Field(0)->cursorPosition(), 8);
    QTest::keyClick(Field(0), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Shown(0), "17") << "even that is not lost";
    form.FocusRow(Slot(1));
    QTest::keyClick(Field(1), Qt::Key_Home);
    QTest::keyClick(Field(1), Qt::Key_Escape);
    EXPECT_EQ(Field(1)->cursorPosition(), 14) << "also when there is nothing to put back";
}

TEST_F(TermFormTest, UndoBringsADeletedRowBack)
{
    Type(3, "h(x)=unapplied");
    Press(3, Qt::Key_Delete, Qt::ShiftModifier);
    Press(0, Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(Shown(0), "xa(x) = cos(x)");
    QTest::keyClick(Field(0), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(Field(0), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Shown(0), "f(x) = x");
    EXPECT_EQ(Shown(3), "h(x)=unapplied");
}

TEST_F(TermFormTest, TheButtonAtARowInsertsDeletesAndToggles)
{
    QSignalSpy toggled(&form, &TermForm::visibilityToggled);
    QTest::mouseClick(Part("cmplus[0]"), Qt::LeftButton);
    EXPECT_EQ(Shown(1), "");
    EXPECT_TRUE(Field(1)->hasFocus());
    QTest::mouseClick(Part("cmplus[1]"), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(Shown(1), "xa(x) = cos(x)");
    EXPECT_TRUE(Field(1)->hasFocus());
    QTest::mouseClick(Part("cmplus[12]"), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_TRUE(Field(11)->hasFocus());
    QTest::mouseClick(Part("cmplus[2]"), Qt::RightButton);
    EXPECT_EQ(form.CurrentRow(), Slot(2));
    Press(1, Qt::Key_PageDown, Qt::ShiftModifier);
    ASSERT_EQ(toggled.count(), 2);
    EXPECT_EQ(toggled.at(0).at(0).value<SlotIndex>(), Slot(2));
    EXPECT_EQ(toggled.at(1).at(0).value<SlotIndex>(), Slot(1));
}

TEST_F(TermFormTest, TheRowMenuOfAYPartIsThatOfItsXPart)
{
    QSignalSpy wanted(&form, &TermForm::rowMenuRequested);
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown}) {
        Press(2, key);
        ASSERT_EQ(wanted.count(), 1);
        EXPECT_EQ(wanted.takeFirst().at(0).value<SlotIndex>(), Slot(1));
        EXPECT_EQ(form.CurrentRow(), Slot(1));
    }
}

TEST_F(TermFormTest, SwitchesBetweenTermsAndIntervals)
{
    QSignalSpy changed(&form, &TermForm::stateChanged);
    auto* button = form.findChild<QPushButton*>("btback");
    EXPECT_EQ(form.windowTitle(), "Funktionsterme");
    EXPECT_EQ(button->text(), "[ a ; b ]");
    Type(3, "half typ");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(form.windowTitle(), "Darstellungsintervalle");
    EXPECT_EQ(button->text(), "Terme");
    EXPECT_EQ(Shown(1), QStringLiteral("Param. für xa: ] -oo ; +oo ["));
    EXPECT_EQ(Shown(2), "") << "the x-part holds the interval of the curve";
    EXPECT_EQ(Shown(3), "");
    Type(0, "f: ] 0 ; oo [");
    form.StoreIntervals(plot);
    EXPECT_EQ(Shown(0), "f: ] 0 ; +oo [");
    Press(0, Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_EQ(Shown(3), "half typ");
    EXPECT_EQ(changed.count(), 2);
    form.setstate(-1);
    EXPECT_EQ(form.State(), EditorState::Terms);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(TermFormTest, SymbolsTypeWhatTermsKnow)
{
    form.SetCurrentRow(Slot(4));
    for (int k = 0; k < 8; ++k) {
        QTest::mouseClick(form.findChild<QToolButton*>(QStringLiteral("symbol[%1]").arg(k)),
                          Qt::LeftButton);
    }
    form.StoreRows(plot);
    EXPECT_EQ(plot.rows[Slot(4)], "²³piwurzel(≤≥*'");
}

TEST_F(TermFormTest, ColourFieldsChooseAndShowColours)
{
    QSignalSpy chosen(&form, &TermForm::colourChosen);
    plot.attributes.slots[Slot(1)].colour = document::MakeColour(10, 200, 30);
    plot.slots[Slot(2)].visible = false;
    plot.slots[Slot(2)].colour_index = 1;
    form.Refresh();
    QTest::mouseClick(Part("fcol[1]"), Qt::LeftButton);
    EXPECT_EQ(chosen.count(), 0) << "cancelled";
    dialogs.colour = document::MakeColour(1, 2, 3);
    QTest::mouseClick(Part("fcol[1]"), Qt::LeftButton);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.at(0).at(0).value<SlotIndex>(), Slot(1));
    EXPECT_EQ(dialogs.offered_colours.back(), document::MakeColour(10, 200, 30));
    const QImage hollow = Part("fcol[2]")->grab().toImage();
    EXPECT_NE(hollow.pixelColor(hollow.rect().center()), QColor(10, 200, 30));
    EXPECT_EQ(hollow.pixelColor(hollow.width() / 2, 2), QColor(10, 200, 30));
}

TEST_F(TermFormTest, AFaultyRowIsMarkedUntilItIsEdited)
{
    plot.rows[Slot(3)] = "g(x)=";
    form.init();
    form.MarkFaultyRow(Slot(3), "Funktionsterm <fehlt>!");
    EXPECT_TRUE(Field(3)->toolTip().contains("&lt;fehlt&gt;"));
    Press(2, Qt::Key_Insert);
    EXPECT_EQ(Field(3)->toolTip(), "") << "the mark moves with its row";
    EXPECT_NE(Field(4)->toolTip(), "");
    Type(4, "1");
    EXPECT_EQ(Field(4)->toolTip(), "");
}

TEST_F(TermFormTest, ALongMessageLeavesTheWindowAsItIs)
{
    const QSize least = form.minimumSizeHint();
    form.showerror("<b>f(x)</b>: " + std::string(100'000, 'x'), true);
    QApplication::processEvents();
    EXPECT_TRUE(Status().contains("<b>f(x)</b>"));
    EXPECT_EQ(form.minimumSizeHint(), least);
    EXPECT_LT(Part("status")->height(), 8 * form.fontMetrics().lineSpacing());
    form.showerror("", false);
    EXPECT_EQ(Status(), "o.k.");
}

TEST_F(TermFormTest, PastedLinesFillTheFollowingRows)
{
    Type(3, "a|c");
    Field(3)->setSelection(1, 1);
    QApplication::clipboard()->setText("1\r\n2\n\r4\n\n");
    QTest::keyClick(Field(3), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Shown(3), "a1");
    EXPECT_EQ(Shown(4), "2");
    EXPECT_EQ(Shown(5), "");
    EXPECT_EQ(Shown(6), "4");
    EXPECT_EQ(Shown(8), "c") << "what stood behind the caret";

    Paste(11, "p\nq\nr\ns");
    EXPECT_EQ(Shown(12), "q");
    EXPECT_TRUE(Status().contains("2 Zeilen: r | s")) << Status().toStdString();

    Type(0, "");
    Paste(0, "f(x)=2\nx²");
    EXPECT_EQ(Shown(1), QStringLiteral("x²"));
    EXPECT_TRUE(Status().contains("ersetzt"));
    QTest::keyClick(Field(1), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Shown(1), "xa(x) = cos(x)");
}

TEST_F(TermFormTest, TheFieldsOwnMenuPastesLinesAndOffersTheRowsMenu)
{
    QSignalSpy wanted(&form, &TermForm::rowMenuRequested);
    QApplication::clipboard()->setText("1\n2");
    for (const char* entry : {"mn_row_paste", "mn_row"}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, form.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(Field(4), &event);
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        auto* action = menu->findChild<QAction*>(entry);
        ASSERT_NE(action, nullptr) << entry;
        action->trigger();
        menu->close();
    }
    EXPECT_EQ(Shown(4), "1");
    EXPECT_EQ(Shown(5), "2");
    EXPECT_TRUE(QTest::qWaitFor([&] { return wanted.count() == 1; }));
}

TEST_F(TermFormTest, HostileTextIsKeptAndAnsweredQuickly)
{
    const QString odd = QString("\u0001\t\u202E\u0645\u0631😀a\u0301") + QChar(0);
    const QString texts[] = {QString(10'000, '('), odd.repeated(1000),
                             QString("x+").repeated(5000)};
    for (int row = 0; row < document::kSlotCount; ++row) {
        Paste(row, QString());
        Field(row)->clear();
        Paste(row, texts[row % 3]);
        const std::string storable = document::StorableTerm(texts[row % 3].toStdString());
        EXPECT_EQ(Shown(row), QString::fromStdString(storable));
    }
    // Hebrew and Bengali need some marks on a letter, drawing thousands takes its time.
    const QString words = QString::fromUtf8("בּ֭ + ক্ষ্ম্য + ");
    Field(0)->clear();
    Paste(0, words + 'a' + QString(10'000, QChar(0x301)) + "+1");
    EXPECT_EQ(Shown(0), words + 'a' + QString(30, QChar(0x301)) + "+1");
    Field(0)->clear();
    Paste(0, texts[0]);
    const QString megabyte(1 << 20, 'x');
    Paste(0, megabyte);
    EXPECT_EQ(Shown(0), texts[0]) << "refused as a whole";
    EXPECT_TRUE(Status().contains("100000"));
    Paste(0, QString("x+1\n").repeated(1 << 18));
    EXPECT_EQ(Shown(12), "x+1");
    EXPECT_TRUE(Status().contains("262131"));
    form.grab();
}

}  // namespace
}  // namespace korvinth::ui
