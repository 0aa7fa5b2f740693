#include "document/plot_document.h"

#include "document/parameter_use.h"
#include "document/prepare_term.h"
#include "plot_fixture.h"

namespace korvinth::document {
namespace {

TEST_F(PlotTest, TakesOneLetterNamesAndBlanksFromThePool)
{
    document.free_names = "f g h";
    document.TakeName("fg");
    EXPECT_EQ(document.free_names, "f g h");
    document.TakeName("");
    EXPECT_EQ(document.free_names, "f g h");
    document.TakeName("g");
    EXPECT_EQ(document.free_names, "fh");
}

TEST_F(PlotTest, PutsBoundsInBrackets)
{
    document.slots[Slot(0)].name = "f";
    document.slots[Slot(0)].lower_bound = "0";
    document.slots[Slot(0)].upper_bound = "2*pi";
    document.slots[Slot(1)].lower_bound = "9";  // a free slot
    document.slots[Slot(5)].name = "g";
    document.slots[Slot(5)].upper_bound = "a";
    document.ranges = {"-1", "1", "", "b", "", "t"};
    const std::vector<std::string> expected{"(0)", "(2*pi)", "(a)", "(-1)", "(1)", "(b)", "(t)"};
    EXPECT_EQ(document.BracketedBounds(), expected);
}

TEST_F(PlotTest, PreparesAFunctionTerm)
{
    struct Row
    {
        std::string_view behaviour, term, parser_term, message;
    };
    constexpr Row kRows[] = {
        {"superscripts", "_x²+2_x³", "_x^2+2_x^3", ""},
        {"a colon divides", "_x:2", "_x/2", ""},
        {"a superscript of two digits", "_x²³", "_x^23", ""},
        {"a superscript behind a bracket", "(_x+1)²*3", "(_x+1)^2*3", ""},
        {"nothing to raise", "²_x", "//", "Ungültiger Term"},
        {"nothing at all to raise", "³", "//", "Ungültiger Term"},
        {"an unknown name may become a parameter", "a*_x", "a*_x", ""},
        {"another function of the document", "2g(_x)", "2g(_x)", ""},
        {"a derivative", "g'(_x)", "((g((_x)+sw)-g((_x)))/sw)", ""},
        {"a derivative of an unknown function", "h'(_x)", "", "Nicht definierte Funktion: h"},
        {"a derivative of no function, deliberately without message", "_x'", "", ""},
        {"an open bracket behind a derivative", "g'(_x", "", "Fehlerhafte Klammersetzung"},
        {"blanks", "  ", "", ""},
        {"a wrong number of arguments", "sin(1,2;3)", "sin(1.2;3)", "Ungültiger Term"},
    };
    Apply({"f(x)=1", "g(x)=1"});
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.behaviour);
        document.slots[Slot(0)].term = row.term;
        EXPECT_EQ(PrepareFunctionTerm(document, parser, Slot(0)), row.message);
        EXPECT_EQ(document.slots[Slot(0)].parser_term, row.parser_term);
        EXPECT_EQ(parser.GetError(), term::Error::None);
    }
}

TEST_F(PlotTest, PlaceholdersMakeFunctionsCallable)
{
    document.slots[Slot(3)].name = "k";
    DefinePlaceholders(document, parser);
    EXPECT_EQ(Value("k(7)"), 1);
    ReleasePlaceholders(document, parser);
    parser.EvalText("k(7)");
    EXPECT_EQ(parser.GetError(), term::Error::UndefinedFunction);
}

TEST_F(PlotTest, TellsWhetherATermUsesAParameter)
{
    struct Row
    {
        std::string_view behaviour, term;
        bool uses;
    };
    constexpr Row kRows[] = {
        {"in the term", "2*a+1", true},
        {"not in the term", "2*b+1", false},
        {"in a longer name", "2*ab", true},  // ab is unknown: the term needs some name
        {"through a function", "f(2)", true},
        {"as a function's name", "a(1)", false},
        {"in a term with a wrong bracket", "(a", false},
        {"in nothing", "", false},
    };
    Apply({"f(x)=a*x+b"});
    SetParameterValue(document, parser, Index(26), 5);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(TermUsesParameter(document, parser, Index(26), row.term), row.uses);
        EXPECT_EQ(parser.GetError(), term::Error::None);
        EXPECT_EQ(Value("f(2)"), 11);
    }
}

}  // namespace
}  // namespace korvinth::document
