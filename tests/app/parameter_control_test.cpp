#include "app/parameter_control.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <initializer_list>

#include "app/animation_control.h"
#include "document/apply_plot.h"
#include "document/number_text.h"
#include "tests/ui/scripted_dialogs.h"
#include "ui/para.h"
#include "ui/parameter_column.h"
#include "ui/parameter_list.h"
#include "ui/timer_dialog.h"
#include "ui/timer_symbol.h"

namespace korvinth::app {
namespace {

using document::ParameterIndex;
using document::SlotIndex;
using Texts = std::vector<std::string>;

using ui::ScriptedDialogs;

// A plot with its parameter windows; `calls` is what they ask of the rest of the program.
class ParameterWindows : public testing::Test, public document::PlotHost, public ParameterHost
{
protected:
    ParameterWindows()
    {
        column.resize(400, 700);
        column.show();
        control.SetList(list);
        list.show();
    }

    void StopAnimation() override { animation.StopAll(); }
    void StoreRows(document::PlotDocument&) override {}
    void RowsChecked(const document::PlotDocument&) override {}
    void UpdateMapping() override {}
    void InitSlider(ParameterIndex index) override { control.InitSlider(index); }
    std::vector<double> DisplayedArguments() const override { return {-1, 0, 1}; }

    void RereadRanges() override
    {
        calls.push_back("ranges at " + document::ShortestText(parser.EvalText("a")));
    }
    void RedrawGraph() override { calls.push_back("redraw"); }
    void RefreshCalculator() override { calls.push_back("calculator"); }
    document::Bounds DisplayedXRange() const override { return displayed; }
    void FamilyChosen() override {}

    void Apply(std::initializer_list<const char*> rows)
    {
        int number = 0;
        for (std::string& row : document.rows) row.clear();
        for (const char* row : rows) {
            document.rows[SlotIndex{static_cast<std::int16_t>(number++)}] = row;
        }
        document::ApplyPlot(document, parser, *this);
        control.FollowPlot();
        calls.clear();
    }

    // The names of the slider windows that are shown, in their order.
    Texts Shown() const
    {
        Texts names;
        for (const ParameterIndex index : column.Shown()) {
            names.push_back(column.Window(index)->windowTitle().toStdString());
        }
        return names;
    }
    document::Parameter& Named(const char* name) { return *document.FindParameter(name); }
    ui::Para& Window(const char* name)
    {
        for (const ParameterIndex index : document::AllParameters()) {
            if (document.parameters[index].name == name) {
                return *column.findChild<ui::Para*>(
                    QStringLiteral("para[%1]").arg(document::Number(index)));
            }
        }
        ADD_FAILURE() << "no parameter " << name;
        return column.Make(ParameterIndex{60});
    }
    QLineEdit& Field(const char* parameter, const char* field)
    {
        return *Window(parameter).findChild<QLineEdit*>(field);
    }
    QSlider& Slider(const char* name) { return *Window(name).findChild<QSlider*>("HScroll1"); }
    ui::TimerSymbol& Symbol(const char* name)
    {
        return *Window(name).findChild<ui::TimerSymbol*>("Image1");
    }
    static void Type(QLineEdit& field, const char* text, bool enter = true)
    {
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, text);
        if (enter) QTest::keyClick(&field, Qt::Key_Return);
    }
    // Types a step into the timer dialog and presses OK.
    void ConfirmTimer(const char* step, int mode)
    {
        ui::TimerDialog& dialog = control.TimerSettings();
        dialog.findChild<QComboBox*>("Combo1")->setCurrentIndex(mode);
        Type(*dialog.findChild<QLineEdit*>("Text1"), step, false);
        QTest::mouseClick(dialog.findChild<QPushButton*>("OKButton"), Qt::LeftButton);
    }

    document::PlotDocument document;
    term::MathParser parser;
    document::Bounds displayed{-10, 10};
    Texts calls;
    ScriptedDialogs dialogs;
    ui::ParameterColumn column;
    ui::ParameterList list;
    ParameterControl control{document, parser, column, dialogs, *this};
    AnimationControl animation{document, control};
};

const Texts kRedrawn = {"redraw", "calculator"};

TEST_F(ParameterWindows, ChangesOfAValueReachEverythingInAFixedOrder)
{
    Apply({"a*x"});
    QTest::keyClick(&Slider("a"), Qt::Key_PageUp);
    EXPECT_EQ(Slider("a").value(), 600);
    QTest::keyClick(&Slider("a"), Qt::Key_Right);
    EXPECT_DOUBLE_EQ(parser.EvalText("a"), 2.02);
    EXPECT_EQ(Field("a", "Text3").text(), "2,02");
    EXPECT_EQ(calls, (Texts{"redraw", "calculator", "redraw", "calculator"}));

    calls.clear();
    Named("a").state = document::kInYRange;
    Type(Field("a", "Text3"), "2*pi/2");
    EXPECT_EQ(calls, (Texts{"ranges at 3.141592653589793", "redraw", "calculator"}));
    EXPECT_EQ(Field("a", "Text3").text(), "3,14159265359");
    EXPECT_EQ(Slider("a").value(), 657);
    QTest::keyClick(&Field("a", "Text3"), Qt::Key_Return);
    EXPECT_EQ(Named("a").value, 3.141592653589793) << "no digit is lost by Enter";
}

TEST_F(ParameterWindows, ValuesAreTakenByEnterAndWhenAnEditedFieldLosesTheFocus)
{
    Apply({"a*x"});
    Type(Field("a", "Text3"), "50", false);
    EXPECT_EQ(Named("a").value, 1);
    column.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&column));
    Field("a", "Text3").setFocus();
    Slider("a").setFocus();
    EXPECT_EQ(Named("a").value, 50);
    EXPECT_EQ(Slider("a").value(), 1000) << "rests at its end";
    calls.clear();
    Field("a", "Text3").setFocus();
    Slider("a").setFocus();
    EXPECT_EQ(calls, Texts{}) << "not edited";
    Type(Field("a", "Text3"), "7", false);
    QTest::keyClick(&Field("a", "Text3"), Qt::Key_Escape);
    EXPECT_EQ(Field("a", "Text3").text(), "50");
    Type(Field("a", "Text3"), "Unsinn");
    EXPECT_EQ(Named("a").value, 0);
    EXPECT_EQ(Field("a", "Text3").text(), "0");
}

TEST_F(ParameterWindows, BoundsAreTakenOrRefusedWithOneMessage)
{
    Apply({"a*x"});
    Type(Field("a", "Text2"), "pi");
    EXPECT_EQ(Named("a").upper, 3.141592653589793);
    EXPECT_EQ(Slider("a").value(), 837) << "placed again";
    Type(Field("a", "Text1"), "4");
    EXPECT_EQ(dialogs.errors, (Texts{"Ungültige Parametergrenzen von a:|"
                                     "Untere Grenze muss kleiner sein als obere Grenze!"}));
    EXPECT_EQ(Field("a", "Text1").text(), "-10");
    EXPECT_EQ(Named("a").lower, -10);
    EXPECT_EQ(calls, Texts{}) << "bounds change no picture";
}

TEST_F(ParameterWindows, IntegralBoundsFollowTheDisplayedRangeUntilTyped)
{
    Apply({"g(x) = x^2", "h(x) = G(x)"});
    displayed = {-3, 7};
    control.FollowRange();
    EXPECT_EQ(Field("hu", "Text2").text(), "7");
    EXPECT_EQ(Slider("hu").value(), 300);
    Type(Field("hu", "Text2"), "5");
    control.FollowRange();
    EXPECT_EQ(Named("hu").upper, 5) << "the range has not changed";
    displayed = {-4, 8};
    control.FollowRange();
    EXPECT_EQ(Named("hu").upper, 8);
}

TEST_F(ParameterWindows, WindowsComeAndGoWithTheirParameters)
{
    Apply({"a*x+b", "fill*x"});
    EXPECT_EQ(Shown(), (Texts{"a", "b"})) << "the stripes' width only when it is asked for";
    Type(Field("b", "Text3"), "5");
    QTest::mouseClick(Window("a").findChild<QAbstractButton*>("Command1"), Qt::LeftButton);
    EXPECT_EQ(Shown(), (Texts{"b"}));
    Apply({"a*x+b+c"});
    EXPECT_EQ(Shown(), (Texts{"b", "c"})) << "closed stays closed";
    Apply({"c*x"});
    EXPECT_EQ(Shown(), (Texts{"c"}));
    Apply({"g(x) = x", "h(x) = G(x)", "c*x+a+b"});
    EXPECT_EQ(Shown(), (Texts{"hu", "hanz", "c", "a", "b"})) << "in the order of their indices";
    column.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&column));
    auto* last = Window("hanz").findChild<QAbstractButton*>("Command1");
    last->setFocus();
    QTest::keyClick(last, Qt::Key_Tab);
    EXPECT_EQ(column.focusWidget(), &Field("c", "Text3")) << "so does the tab key";
    Apply({"c*x+a+b"});
    EXPECT_EQ(Shown(), (Texts{"c", "a", "b"})) << "names that come back are shown again";
    EXPECT_EQ(Field("b", "Text3").text(), "5");
}

TEST_F(ParameterWindows, TheListShowsSlidersAndChoosesFamilies)
{
    Apply({"f(x) = a*x", "h(x) = F(x)", "k(x) = fill*x"});
    auto* entries = list.findChild<QListWidget*>("List1");
    Texts texts;
    for (int row = 0; row < entries->count(); ++row) {
        texts.push_back(entries->item(row)->text().toStdString());
    }
    EXPECT_EQ(texts, (Texts{"hu = untere Grenze für Integralfunktion in h",
                            "Stützstellenanzahl für h", "a", "dichte"}));
    auto* button = list.findChild<QPushButton*>("Command1");
    EXPECT_EQ(button->text(), "&Alle anzeigen");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(Shown(), (Texts{"hu", "hanz", "a", "dichte"}));
    EXPECT_EQ(button->text(), "&Keinen anzeigen");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(Shown(), Texts{});
    const QPoint third = entries->visualItemRect(entries->item(2)).center();
    QTest::mouseClick(entries->viewport(), Qt::LeftButton, {}, third);
    QTest::mouseDClick(entries->viewport(), Qt::LeftButton, {}, third);
    EXPECT_EQ(Shown(), Texts{"a"});

    auto* family = list.findChild<QComboBox*>("Scharparameter");
    EXPECT_EQ(family->currentText(), "KEINER");
    family->setFocus();
    QTest::keyClick(family, Qt::Key_Down);
    EXPECT_EQ(family->currentText(), "hu");
    QTest::keyClick(family, Qt::Key_Down);
    EXPECT_TRUE(Named("a").family);
    EXPECT_FALSE(Named("hu").family) << "one parameter at most";
    auto* functions = list.findChild<QListWidget*>("Scharfunktionen");
    functions->setFocus();
    functions->setCurrentRow(1);
    QTest::keyClick(functions, Qt::Key_Space);
    EXPECT_TRUE(document.slots[SlotIndex{1}].family_allowed);
    QTest::keyClick(family, Qt::Key_Home);
    EXPECT_FALSE(Named("a").family);
    EXPECT_EQ(calls.size(), 4 * kRedrawn.size()) << "each choice is drawn once";
}

TEST_F(ParameterWindows, TheTimerSymbolAsksForAStepFirstThenStartsAndStops)
{
    Apply({"a*x"});
    QTest::mouseClick(&Symbol("a"), Qt::LeftButton);
    ui::TimerDialog& dialog = control.TimerSettings();
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Timer für a"));
    ConfirmTimer("-21", 1);
    EXPECT_TRUE(dialog.isVisible()) << "stays open after a refusal";
    EXPECT_EQ(dialogs.errors, (Texts{"Inakzeptable Schrittweite|"
                                     "Schrittweite ist größer als das Intervall!"}));
    ConfirmTimer("-20", 1);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(Named("a").step, -20);
    EXPECT_EQ(Named("a").mode, document::AnimationMode::Bounce);
    EXPECT_FALSE(Symbol("a").Framed());

    QTest::mouseClick(&Symbol("a"), Qt::LeftButton);
    EXPECT_TRUE(Symbol("a").Framed());
    EXPECT_TRUE(animation.Active());
    for (const char* field : {"Text1", "Text2", "Text3"}) {
        EXPECT_FALSE(Field("a", field).isEnabled());
    }
    QTest::mouseClick(&Symbol("a"), Qt::RightButton);
    ASSERT_TRUE(dialog.isVisible());
    ConfirmTimer("0", 0);
    EXPECT_FALSE(Symbol("a").Framed()) << "step 0 stops";
    EXPECT_FALSE(animation.Active());
    EXPECT_TRUE(Field("a", "Text1").isEnabled());
}

TEST_F(ParameterWindows, TheTimerDialogOpensBesideItsSliderAndOnTheScreen)
{
    Apply({"a*x"});
    const QRect screen = column.screen()->availableGeometry();
    ui::TimerDialog& dialog = control.TimerSettings();
    for (const int y : {screen.top(), screen.bottom() - 80}) {
        column.move(screen.left() + 20, y);
        QTest::mouseClick(&Symbol("a"), Qt::LeftButton);
        const QRect slider(Window("a").mapToGlobal(QPoint()), Window("a").size());
        EXPECT_TRUE(screen.contains(dialog.geometry()));
        EXPECT_FALSE(dialog.geometry().intersects(slider));
        EXPECT_EQ(dialog.x(), slider.x());
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    }
}

TEST_F(ParameterWindows, AllRunningParametersShareOneRedrawATick)
{
    Apply({"a*x+b+c"});
    EXPECT_EQ(animation.MenuCaption(), "Alle &Timer gleichzeitig starten");
    Named("a").step = 1;
    Named("a").state = document::kInXRange;
    Named("c").step = -2;
    animation.StartOrStopAll();
    EXPECT_EQ(animation.MenuCaption(), "Alle &Timer anhalten");
    EXPECT_EQ(animation.Running().Text(), "\x1a\x1c");
    animation.Tick();
    EXPECT_EQ(calls, (Texts{"ranges at 2", "redraw", "calculator"}));
    EXPECT_EQ(Field("a", "Text3").text(), "2");
    EXPECT_EQ(Field("b", "Text3").text(), "1");
    EXPECT_EQ(Slider("c").value(), 450);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Named("c").value == -10; }));

    Apply({"a*x+b+c"});
    EXPECT_FALSE(animation.Active()) << "applying the plot stops everything";
    EXPECT_FALSE(Symbol("a").Framed());
    EXPECT_EQ(Named("a").step, 1);
}

TEST_F(ParameterWindows, TheFirstTickWithoutAParameterSwitchesTheTimerOff)
{
    Apply({"a*x"});
    QSignalSpy active(&animation, &AnimationControl::activeChanged);
    animation.StartOrStopAll();
    EXPECT_TRUE(animation.Active());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !animation.Active(); }));
    EXPECT_EQ(active.count(), 2);
    EXPECT_EQ(calls, Texts{});
}

}  // namespace
}  // namespace korvinth::app
