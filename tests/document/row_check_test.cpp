#include "document/row_check.h"

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

class CheckNamesTest : public PlotTest
{
protected:
    RowCheck Check(const std::vector<std::string_view>& rows)
    {
        SetRows(rows);
        parser.Reset();
        DefineSystemVariables(parser, document);
        return CheckNames(document, parser);
    }
};

struct HeadCase
{
    std::string_view behaviour, row, name, argument, term, text;
};

constexpr HeadCase kHeadCases[] = {
    {"a full equation", "f(x)=x^2", "f", "x", "_x^2", "f(x) = x^2"},
    {"a term alone takes the first free letter", "x^2", "f", "x", "_x^2", "f(x) = x^2"},
    {"another argument", "g(t) = t + x", "g", "t", "_x + x", "g(t) = t + x"},
    {"empty brackets mean x", "g()=1+x", "g", "x", "1+_x", "g(x) = 1+x"},
    {"no brackets mean x", "g = x", "g", "x", "_x", "g(x) = x"},
    {"brackets in the wrong order are exchanged", "f)x(=1", "f", "x", "1", "f(x) = 1"},
    {"a longer name and argument", "area(radius)=pi*radius^2", "area", "radius", "pi*_x^2",
     "area(radius) = pi*radius^2"},
    {"blanks leave the head but not the term", " f ( x )  =  x und x ", "f", "x", "_x und _x",
     "f(x) = x und x"},
    {"a comparison after the first equals sign", "f(x)=x<=1", "f", "x", "_x<=1", "f(x) = x<=1"},
    {"a function's name as argument", "f(f)=f^2", "f", "f", "_x^2", "f(f) = f^2"},
};

TEST_F(CheckNamesTest, SplitsARowIntoHeadAndTerm)
{
    for (const HeadCase& row : kHeadCases) {
        SCOPED_TRACE(row.behaviour);
        document = {};
        const RowCheck check = Check({row.row});
        EXPECT_EQ(check.errors, "");
        EXPECT_FALSE(check.first_faulty.has_value());
        const FunctionSlot& slot = document.slots[Slot(0)];
        EXPECT_EQ(slot.name, row.name);
        EXPECT_EQ(slot.argument, row.argument);
        EXPECT_EQ(slot.term, row.term);
        EXPECT_EQ(document.rows[Slot(0)], row.text);
    }
}

struct FaultCase
{
    std::string_view behaviour, row, message;
};

constexpr FaultCase kFaultCases[] = {
    {"two equals signs", "f(x)=x==1", "Zu viele Gleichheitszeichen!"},
    {"two equals signs at the head", "f(x)==1", "Zu viele Gleichheitszeichen!"},
    {"no name", "=x", "Funktionsname fehlt!"},
    {"no name but an argument", "(x)=x", "Funktionsname fehlt!"},
    {"no term", "f(x)= ", "Funktionsterm fehlt!"},
    {"a standard function", "wurzel(x)=x", "Funktionsname wurzel wird bereits verwendet!"},
    {"a built-in function", "sin(x)=x", "Funktionsname sin wird bereits verwendet!"},
    {"a built-in function of two arguments", "min(x)=x",
     "Funktionsname min wird bereits verwendet!"},
    {"an operator word", "and(x)=x", "Funktionsname and wird bereits verwendet!"},
    {"an alias in capitals", "WENN(x)=x", "Funktionsname WENN wird bereits verwendet!"},
    {"a name that is none", "a+b(x)=x", "Nicht definierte Funktion: b: b"},
    {"an umlaut", "ä(x)=x", "Ungültiger Term: "},
};

TEST_F(CheckNamesTest, ReportsAFaultyRow)
{
    for (const FaultCase& row : kFaultCases) {
        SCOPED_TRACE(row.behaviour);
        document = {};
        const RowCheck check = Check({"", row.row});
        EXPECT_EQ(check.errors, row.message);
        EXPECT_EQ(check.first_message, row.message);
        EXPECT_EQ(check.first_faulty, Slot(1));
        EXPECT_EQ(document.rows[Slot(1)], row.row);
        EXPECT_EQ(document.slots[Slot(1)].name, "");
        EXPECT_EQ(document.slots_in_use, 0);
    }
}

TEST_F(CheckNamesTest, NamesRowsFromThePool)
{
    EXPECT_EQ(Check({"x", "g(x)=1", "x^2", "", "x^3"}).errors, "");
    EXPECT_EQ(document.name_list, ":f,0:g,1:h,2:i,4:");
    EXPECT_EQ(document.slots_in_use, 4);
    EXPECT_EQ(document.last_slot_in_use, 4);
    EXPECT_EQ(document.free_names, "jklmnopqrstuvwxyzabcde");
}

TEST_F(CheckNamesTest, NamesOfThePresentTableAreNotGivenAgain)
{
    Check({"f(x)=1", "g(x)=2"});
    Check({"f(x)=1", "x"});
    EXPECT_EQ(document.name_list, ":f,0:h,1:");
}

// To the parser, F and f are one function.
TEST_F(CheckNamesTest, AnUpperCaseNameTakesItsLetterToo)
{
    EXPECT_EQ(Check({"F(x)=x", "x^2"}).errors, "");
    EXPECT_EQ(document.name_list, ":F,0:g,1:");
    EXPECT_EQ(Check({"F(x)=x", "f(x)=1"}).errors, "Funktionsname f wird bereits verwendet!");
}

TEST_F(CheckNamesTest, TheSecondOfTwoEqualNamesIsTaken)
{
    const RowCheck check = Check({"f(x)=1", "f(x)=2"});
    EXPECT_EQ(check.errors, "Funktionsname f wird bereits verwendet!");
    EXPECT_EQ(check.first_faulty, Slot(1));
    EXPECT_EQ(document.name_list, ":f,0:");
}

TEST_F(CheckNamesTest, LeavesNoTemporaryFunctions)
{
    Check({"f(x)=1", "g(x)=2"});
    parser.EvalText("f(1)");
    EXPECT_EQ(parser.GetError(), term::Error::UndefinedFunction);
    EXPECT_EQ(Value("wurzel(9)"), 3);
}

// Deliberate: behind a faulty row only equals signs are still complained about.
TEST_F(CheckNamesTest, RowsBehindAFaultyOneAreLeftOut)
{
    const RowCheck check = Check({"f(x)=1", "=2", "sin(x)=1", "g(x)=1==1", "h(x)=1"});
    EXPECT_EQ(check.errors, "Funktionsname fehlt!Zu viele Gleichheitszeichen!");
    EXPECT_EQ(check.first_faulty, Slot(1));
    EXPECT_EQ(check.first_message, "Funktionsname fehlt!");
    EXPECT_EQ(document.name_list, ":f,0:");
    EXPECT_EQ(document.rows[Slot(4)], "h(x)=1");
}

TEST_F(CheckNamesTest, PairsCurves)
{
    EXPECT_EQ(
        Check({"ya(t)=sin(t)", "xa(t)=cos(t)", "xb(t)=t", "y(t)=t", "x(t)=1", "yc(t)=t"}).errors,
        "");
    EXPECT_EQ(document.x_list, ":a,1:b,2:,4:");
    EXPECT_EQ(document.slots[Slot(0)].curve_link, kCurveYPart);
    EXPECT_EQ(document.slots[Slot(1)].curve_link, 0);
    EXPECT_EQ(document.slots[Slot(2)].curve_link, kPlainFunction);  // no partner
    EXPECT_EQ(document.slots[Slot(3)].curve_link, kCurveYPart);
    EXPECT_EQ(document.slots[Slot(4)].curve_link, 3);
    EXPECT_EQ(document.slots[Slot(5)].curve_link, kPlainFunction);
}

TEST_F(CheckNamesTest, AChangedRowLosesItsCurve)
{
    Check({"xa(t)=1", "ya(t)=2"});
    Check({"xa(t)=1", "f(t)=2"});
    EXPECT_EQ(document.slots[Slot(0)].curve_link, kPlainFunction);
    EXPECT_EQ(document.slots[Slot(1)].curve_link, kPlainFunction);
}

}  // namespace
}  // namespace korvinth::document
