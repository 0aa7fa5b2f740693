#include "document/apply_plot.h"

#include <numbers>

#include "document/list_text.h"
#include "plot_fixture.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using term::Error;

class ApplyPlotTest : public PlotTest
{
protected:
    const Parameter& At(int index) const { return document.parameters[Index(index)]; }
    const FunctionSlot& SlotAt(int number) const { return document.slots[Slot(number)]; }
};

TEST_F(ApplyPlotTest, TalksToTheWindowsInAFixedOrder)
{
    Apply({"f(x)=a*x", "g(x)=F(x)"});
    const std::vector<std::string> expected{"StopAnimation", "StoreRows",    "RowsChecked",
                                            "UpdateMapping", "InitSlider 1", "InitSlider 14",
                                            "InitSlider 26"};
    EXPECT_EQ(host.calls, expected);
}

TEST_F(ApplyPlotTest, TheSameRowsAreOkTwice)
{
    EXPECT_EQ(Apply({"f(x)=a*sin(x)+b", "x^2"}).status, "Ok.");
    const SlotTable<std::string> rows = document.rows;
    EXPECT_EQ(Apply().status, "Ok.");
    EXPECT_EQ(document.rows, rows);
    EXPECT_EQ(document.parameter_list, ":a,26:b,27:");
}

TEST_F(ApplyPlotTest, DefinesFunctionsAfterThoseThatTheyCall)
{
    EXPECT_EQ(Apply({"f(x)=2*g(x)", "", "g(x)=h(x)^2", "h(x)=x+1"}).status, "Ok.");
    EXPECT_EQ(Value("f(2)"), 18);
}

TEST_F(ApplyPlotTest, TheStandardDefinitionsHold)
{
    Apply();
    EXPECT_DOUBLE_EQ(Value("exp(2,3)"), 9);
    EXPECT_DOUBLE_EQ(Value("log(8,2)"), 3);
    EXPECT_EQ(Value("wurzel(9)"), 3);
    EXPECT_EQ(Value("wenn(1>0,5,6)"), 5);
    EXPECT_EQ(Value("betrag(-2)"), 2);
    EXPECT_EQ(Value("nicht(0)"), 1);
    EXPECT_DOUBLE_EQ(Value("arcsin(1)+arccos(1)+arctan(0)"), std::numbers::pi / 2);
    EXPECT_DOUBLE_EQ(Value("sinhyp(1)+coshyp(1)"), std::numbers::e);
    EXPECT_EQ(Value("tanhyp(0)"), 0);
    EXPECT_EQ(Value("sw"), 1);
}

TEST_F(ApplyPlotTest, PiIsTheSameInEveryAngleMode)
{
    for (term::TrigMode mode : {term::TrigMode::Degrees, term::TrigMode::Grads}) {
        document.attributes.angle_mode = mode;
        Apply();
        EXPECT_DOUBLE_EQ(Value("pi"), std::numbers::pi);
    }
    document.attributes.angle_mode = term::TrigMode::Degrees;
    Apply();
    EXPECT_EQ(Value("sin(90)"), 1);
}

struct ReportCase
{
    std::string_view behaviour, rows, errors, notes;
    int count;
};

constexpr ReportCase kReportCases[] = {
    {"nothing", "", "", "", 0},
    {"a wrong term", "f(x)=2*+", "f(x): Ungültiger Term; ", "", 1},
    {"the argument as typed", "f(t)=(t", "f(t): Fehlerhafte Klammersetzung; ", "", 1},
    {"a superscript with nothing to raise", "²x", "f(x): Ungültiger Term; ", "", 1},
    {"two wrong terms", "f(x)=(x|g(x)=)x",
     "f(x): Fehlerhafte Klammersetzung; g(x): Fehlerhafte Klammersetzung; ", "", 2},
    {"an unknown function, once", "f(x)=2*h(x)", "f(x): Nicht definierte Funktion: h; ", "", 1},
    {"the derivative of an unknown function", "f(x)=h'(x)", "f(x): Nicht definierte Funktion: h; ",
     "", 1},
    {"a cycle, for both", "f(x)=g(x)|g(x)=f(x)",
     "Nicht definierte Funktion: g; Nicht definierte Funktion: f; ", "", 2},
    {"a function that calls itself", "f(x)=f(x)+1", "Nicht definierte Funktion: f; ", "", 1},
    {"a caller of a wrong term", "f(x)=(x|g(x)=f(x)",
     "f(x): Fehlerhafte Klammersetzung; Nicht definierte Funktion: f; ", "", 2},
    {"a faulty row, which opens the text", "f(x)=(x|=1",
     "Funktionsname fehlt!; f(x): Fehlerhafte Klammersetzung; ", "", 2},
    {"a faulty row alone", "=1", "Funktionsname fehlt!", "", 1},
    {"a pole", "f(x)=1/x", "", "", 0},
    {"a function without values at most arguments", "f(x)=ln(x)|(x-5)!", "", "", 0},
    {"no value anywhere", "f(x)=wurzel(-1-x^2)", "", "f: Ungültiger Wert unter der Wurzel; ", 0},
    {"an integral with a factor", "f(x)=x|g(x)=2*F(x)",
     "g(x): Integralfunktion muss allein stehen!; ", "", 1},
    {"two integrals", "f(x)=x|g(x)=x|h(x)=F(x)+G(x)",
     "h(x): Integralfunktion muss allein stehen!; ", "", 1},
    {"a call of an integral function", "f(x)=x|g(x)=F(x)|h(x)=g(x)+1",
     "h(x): Integralfunktion muss allein stehen!; ", "", 1},
    {"the integral of an unknown function", "g(x)=F(x)", "g(x): Nicht definierte Funktion: f; ", "",
     1},
    {"the integral of a hatched function", "f(x)=fill*x|g(x)=2*f(x)|h(x)=G(x)", "",
     "h: Das Integral einer schraffierten Funktion zählt nur ihre Striche; ", 0},
};

TEST_F(ApplyPlotTest, CollectsTheMessages)
{
    for (const ReportCase& row : kReportCases) {
        SCOPED_TRACE(row.behaviour);
        document = {};
        const PlotReport report = Apply(SplitText(row.rows, "|"));
        EXPECT_EQ(report.errors, row.errors);
        EXPECT_EQ(report.notes, row.notes);
        EXPECT_EQ(report.count, row.count);
        EXPECT_EQ(report.status, row.errors.empty() ? "Ok." : row.errors);
    }
}

TEST_F(ApplyPlotTest, TellsTheFirstFaultyRow)
{
    const PlotReport report = Apply({"f(x)=(x", "=1", "=2"});
    EXPECT_EQ(report.row_errors, "Funktionsname fehlt!");
    EXPECT_EQ(report.first_faulty_row, Slot(1));
    EXPECT_FALSE(Apply({"f(x)=x"}).first_faulty_row.has_value());
    EXPECT_EQ(Apply({"f(x)=x", "g(x)=x+", "h(x)=(x"}).first_faulty_row, Slot(1));
    EXPECT_EQ(Apply({"f(x)=x", "g(x)=g(x)"}).first_faulty_row, Slot(1));
}

TEST_F(ApplyPlotTest, FaultyFunctionsAreNeitherDrawnNorCallable)
{
    Apply({"f(x)=g(x)", "g(x)=f(x)", "h(x)=(x", "i(x)=x"});
    for (int number : {0, 1, 2}) EXPECT_EQ(SlotAt(number).parser_term, "");
    EXPECT_EQ(SlotAt(3).parser_term, "_x");
    for (std::string_view call : {"f(1)", "g(1)", "h(1)"}) {
        parser.EvalText(call);
        EXPECT_EQ(parser.GetError(), Error::UndefinedFunction) << call;
    }
    EXPECT_EQ(Value("i(4)"), 4);
}

// Deliberate: an apostrophe on what is no function leaves the slot empty without a message.
TEST_F(ApplyPlotTest, ADerivativeOfAVariableIsSilentlyNotDrawn)
{
    EXPECT_EQ(Apply({"f(x)=x'+1"}).status, "Ok.");
    EXPECT_EQ(SlotAt(0).parser_term, "");
}

TEST_F(ApplyPlotTest, AnExpansionBeyondTheLimitsIsReported)
{
    std::string nested = "x";
    for (int number = 0; number < 12; ++number) {
        const std::string name(1, static_cast<char>('a' + number));
        document.rows[Slot(number)] = name + "(x)=x^2";
        nested = name + "''(" + nested + ")";
    }
    document.rows[Slot(12)] = "z(x)=" + nested;
    const PlotReport report = Apply();
    EXPECT_EQ(report.errors, "z: Speicher für Definitionen ist voll; ");
}

struct ChainCase
{
    std::string_view behaviour;
    std::string_view first;   // the term of the first function
    std::string_view others;  // that of each other, with @ for the function before it
    std::string_view end_of_status;
    std::size_t operations;  // of the last function at most
};

const ChainCase kChainCases[] = {
    {"equal calls", "x", "@(x)+@(x)+@(x)", "Ok.", 100},
    {"equal calls without a value", "ln(-1-x^2)", "@(x)+@(x)+@(x)", "Ok.", 100},
    {"derivatives", "sin(x)", "@'(x)", "Ok.", 500},
    {"derivatives and calls", "x^2", "@'(x)+@(x)+@'(x)", "Ok.", 500},
    {"second derivatives", "x^2", "@''(x)", "Speicher für Definitionen ist voll; ", 0},
    {"calls that differ", "x", "@(x+1)+@(x+2)+@(2*x)", "Speicher für Definitionen ist voll; ", 0},
    {"calls in calls", "sin(x)", "@(@(@(x)))", "Speicher für Definitionen ist voll; ", 0},
    {"calls that differ, without a value", "wurzel(-1-x^2)", "@(x+1)+@(x+2)+@(2*x)",
     "Speicher für Definitionen ist voll; ", 0},
};

TEST_F(ApplyPlotTest, ThirteenFunctionsThatCallEachOtherAnswerOrAreRefused)
{
    for (const ChainCase& row : kChainCases) {
        SCOPED_TRACE(row.behaviour);
        document = {};
        document.rows[Slot(0)] = "f(x)=" + std::string(row.first);
        for (int number = 1; number < kSlotCount; ++number) {
            const std::string name(1, static_cast<char>('f' + number));
            const std::string before(1, static_cast<char>('f' + number - 1));
            document.rows[Slot(number)] = name + "(x)=" + term::ReplaceAll(row.others, "@", before);
        }
        const PlotReport report = Apply();
        EXPECT_TRUE(report.status.ends_with(row.end_of_status)) << report.status;
        if (row.operations == 0) continue;
        const term::ExprHandle last = parser.Parse(SlotAt(kSlotCount - 1).parser_term);
        EXPECT_GT(parser.OperationCount(last), 0U);
        EXPECT_LE(parser.OperationCount(last), row.operations);
    }
}

TEST_F(ApplyPlotTest, CollectsUserParametersInOrderOfAppearance)
{
    document.ranges.x_upper = "c";
    document.lines_text = "y=m*_x+a:c=+3\r\nx=k:c=+0";
    document.points_text = "(1)(p)\r\n(q_int)(2)";
    EXPECT_EQ(Apply({"f(x)=b*x+a", "", "g(t)=z*t+pi*e*sw*xmu"}).status, "Ok.");
    EXPECT_EQ(document.parameter_list, ":b,26:a,27:z,28:m,29:k,30:p,31:q_int,32:c,33:");
    EXPECT_EQ(At(26).name, "b");
    EXPECT_EQ(At(26).caption, "Parameter: b");
    EXPECT_EQ(At(26).state, 0U);
    EXPECT_EQ(At(32).state, kIntegerState);
    EXPECT_EQ(Value("f(3)"), 4);
    EXPECT_EQ(document.FindParameter("p"), &document.parameters[Index(31)]);
    EXPECT_EQ(document.FindParameter(""), nullptr) << "free entries have no name";
}

TEST_F(ApplyPlotTest, AnXThatIsNotTheArgumentIsAParameter)
{
    EXPECT_EQ(Apply({"f(t)=x*t"}).status, "Ok.");
    EXPECT_EQ(document.parameter_list, ":x,26:");
}

TEST_F(ApplyPlotTest, CurvesAreLookedAtOverTheRangeOfTheirParameter)
{
    document.ranges.t_lower = "20";
    document.ranges.t_upper = "10*pi";
    EXPECT_EQ(Apply({"xa(t)=wenn(t<30;1/0;t)", "ya(t)=t", "f(x)=wenn(x<30;1/0;x)"}).notes,
              "f: Division durch 0; ");
}

TEST_F(ApplyPlotTest, RemembersParametersByName)
{
    Apply({"f(x)=a*x+b"});
    Parameter& b = document.parameters[Index(27)];
    b.value = 7;
    b.lower = 0;
    b.upper = 8;
    b.step = 0.5;
    b.mode = AnimationMode::Bounce;
    Apply({"f(x)=c*x"});
    EXPECT_EQ(document.parameter_list, ":c,26:");
    Apply({"f(x)=b*x"});
    EXPECT_EQ(At(26).name, "b");
    EXPECT_EQ(At(26).value, 7);
    EXPECT_EQ(At(26).lower, 0);
    EXPECT_EQ(At(26).upper, 8);
    EXPECT_EQ(At(26).step, 0.5);
    EXPECT_EQ(At(26).mode, AnimationMode::Bounce);
    EXPECT_EQ(Value("f(2)"), 14);
}

TEST_F(ApplyPlotTest, RefusesMoreParametersThanTheTableHolds)
{
    std::string sum = "f(x)=x";
    for (int k = 1; k <= 35; ++k) sum += "+p" + std::to_string(k);
    EXPECT_EQ(Apply({sum}).status, "Ok.");
    const PlotReport report = Apply({sum + "+q", "g(x)=r*x"});
    EXPECT_EQ(
        report.errors,
        "Fehler: mehr als 60 Parameter!; f: Undefined variable: q; g: Undefined variable: r; ");
    EXPECT_EQ(report.count, 3);
}

TEST_F(ApplyPlotTest, TheStripeWidthIsAnAngleWithoutASlider)
{
    document.attributes.angle_mode = term::TrigMode::Degrees;
    EXPECT_EQ(Apply({"f(x)=fill*x"}).status, "Ok.");
    EXPECT_EQ(document.parameter_list, ":dichte,26:");
    EXPECT_EQ(At(26).value, 10);
    EXPECT_DOUBLE_EQ(parser.VariableValue(At(26).handle), 10 * std::numbers::pi / 180);
    EXPECT_EQ(host.calls.back(), "UpdateMapping");
    document.attributes.angle_mode = term::TrigMode::Radians;
    Apply();
    EXPECT_EQ(parser.VariableValue(At(26).handle), 10);
}

TEST_F(ApplyPlotTest, SetsUpIntegralFunctions)
{
    EXPECT_EQ(Apply({"f(x)=x^2", "", "g(t)=F(2*t)"}).status, "Ok.");
    EXPECT_EQ(SlotAt(2).parser_term, "integral(f(2*_x))");
    EXPECT_EQ(SlotAt(2).integral_term, "(f(2*_x))");
    EXPECT_EQ(SlotAt(0).integral_term, "");
    EXPECT_EQ(At(2).name, "gu");
    EXPECT_EQ(At(2).caption, "gu = untere Grenze für Integralfunktion in g");
    EXPECT_EQ(At(2).value, 0);
    EXPECT_EQ(At(2).state, kIntegralBoundState);
    EXPECT_EQ(At(15).name, "ganz");
    EXPECT_EQ(At(15).caption, "Stützstellenanzahl für g");
    EXPECT_EQ(At(15).state, kSampleCountState);
    EXPECT_EQ(Value("gu"), 0);
    EXPECT_EQ(document.parameter_list, ":");
    EXPECT_EQ(document.rows[Slot(2)], "g(t) = F(2*t)");
}

TEST_F(ApplyPlotTest, WithoutDetectionAnUpperCaseCallIsAnOrdinaryOne)
{
    document.attributes.detect_integrals = false;
    EXPECT_EQ(Apply({"f(x)=x^2", "g(x)=2*F(x)"}).status, "Ok.");
    EXPECT_EQ(Value("g(3)"), 18);
    EXPECT_EQ(Apply({"g(x)=integral(x)"}).status, "Ok.");
    EXPECT_EQ(SlotAt(0).integral_term, "(_x)");
}

struct OutsideCase
{
    std::string_view behaviour;
    std::string lines, points, lower;
    std::string_view errors;
};

const OutsideCase kOutsideCases[] = {
    {"right ones", "y=2*_x:c=+3\r\nx=2,5:c=+0\r\ny=wenn(_x=2; 1; 0):c=+1", "(1)(2,5)", "-pi", ""},
    {"a wrong line", "y=2*_x:c=+3\r\ny=2*(:c=+0", "", "",
     "Geradenfenster: Fehlerhafte Klammersetzung; "},
    {"brackets left open in one and closed in the next", "y=(1:c=+3\r\ny=1):c=+0", "", "",
     "Geradenfenster: Fehlerhafte Klammersetzung; "},
    {"the derivative of no function in a line", "y=h'(2):c=+3", "", "",
     "Geradenfenster: Ungültiger Term; "},
    {"a wrong point", "", "(1)(2*)", "", "Punktefenster: Ungültiger Term; "},
    {"a wrong bound", "", "", "1/0", "Intervallfenster: Division durch 0; "},
    {"everything wrong", "y=)", "(", "2+",
     "Geradenfenster: Fehlerhafte Klammersetzung; Punktefenster: Fehlerhafte Klammersetzung; "
     "Intervallfenster: Ungültiger Term; "},
};

TEST_F(ApplyPlotTest, ChecksLinesPointsAndRanges)
{
    for (const OutsideCase& row : kOutsideCases) {
        SCOPED_TRACE(row.behaviour);
        document = {};
        document.lines_text = row.lines;
        document.points_text = row.points;
        document.slots[Slot(0)].lower_bound = row.lower;
        EXPECT_EQ(Apply({"f(x)=x"}).errors, row.errors);
    }
}

TEST_F(ApplyPlotTest, LongListsStayWithinTheParsersLimits)
{
    for (int k = 0; k < 2500; ++k) {
        document.lines_text += "y=" + std::to_string(k) + "*_x+a:c=+1\r\n";
        document.points_text += "(" + std::to_string(k) + ")(a)\r\n";
    }
    EXPECT_EQ(Apply({"x"}).status, "Ok.");
    EXPECT_EQ(document.parameter_list, ":a,26:");
}

TEST_F(ApplyPlotTest, EndsInAReportWhateverIsTyped)
{
    const std::string_view terms[] = {
        "'",          "''(",       "f'(",         "\"",  "§",          "((((",    "))))",
        "1e",         "&H",        ";",           "=",   "x=",         "==",      "f(=1",
        "f)=1",       ":::",       "!!!",         "² ³", "\xFF\xFE",   "x\xC2",   "a$b",
        "{[(",        "_x",        "sw(1)",       "0x",  "\\",         "f(x)=\\", "f(f(f",
        "F(F(F(x)))", "integral(", "und und und", "\t",  "f(x,y)=x*y", "1.2.3",
    };
    for (std::string_view term : terms) {
        document = {};
        const PlotReport report = Apply({term, "g(x)=" + std::string(term), "x"});
        EXPECT_NE(report.status, "") << term;
        EXPECT_EQ(report.status == "Ok.", report.count == 0) << term;
    }
}

}  // namespace
}  // namespace korvinth::document
