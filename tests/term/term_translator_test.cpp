#include "term/term_translator.h"

#include <array>

#include <gtest/gtest.h>

#include "term/words.h"

namespace korvinth::term {
namespace {

std::string Translated(std::string_view term, Derivatives derivatives = Derivatives::Expand)
{
    static const std::array<std::string, 13> kNames{"f", "g", "", "xa"};
    return TermTranslator(kNames).Translate(term, derivatives);
}

struct TranslateCase
{
    std::string_view behaviour, term, expected;
};

constexpr TranslateCase kNotationCases[] = {
    {"a condition in German", "wenn(_x > 0 und _x < 1; 1,5; 0)", "wenn(_x>0 and _x<1,1.5,0)"},
    {"decimal commas and other brackets", "2,5*[_x+1]", "2.5*(_x+1)"},
    {"curly brackets", "{_x+1}*2", "(_x+1)*2"},
    {"semicolons separate arguments", "min(1,5;_x)", "min(1.5,_x)"},
    {"logic words and negation", "_x oder nicht(_x)", "_x or nicht(_x)"},
    {"all logic words", "a and b und c or d oder e xor f eqv g imp h",
     "a and b and c or d or e xor f eqv g imp h"},
    {"all six words take argument lists",
     "iif(1;2;3)+wenn(1;2;3)+min(1;2)+max(1;2)+log(8;2)+exp(2;3)",
     "iif(1,2,3)+wenn(1,2,3)+min(1,2)+max(1,2)+log(8,2)+exp(2,3)"},
    {"argument lists in argument lists", "max(min(1;2);log(8;2))", "max(min(1,2),log(8,2))"},
    {"the characters that are removed, each", "1#~\"§$´`° 2", "12"},
    {"the backslash stays", "7\\2", "7\\2"},
    {"hatching", "2fill", "2(abs(ceil(Sin(pi/dichte*_x/sw))))"},
    {"a free variable between exclamation marks", "2!_x!", "2_x"},
    {"a factorial stays", "3!", "3!"},
    {"a colon stays", "6:2", "6:2"},
    {"superscripts stay", "_x²", "_x²"},
    {"blanks alone", "   ", ""},
    {"nothing", "", ""},
    {"removed characters alone", "# $ §", ""},
};

TEST(TermTranslator, RewritesClassroomNotation)
{
    for (const TranslateCase& row : kNotationCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Translated(row.term), row.expected);
    }
}

constexpr TranslateCase kDeliberateCases[] = {
    {"nicht loses its blank and becomes another name", "nicht _x", "nicht_x"},
    {"a logic word at the start is none", "und _x", "und_x"},
    {"a logic word next to a bracket is none", "(_x)und (_x)", "(_x)und(_x)"},
    {"a logic word in capitals is none", "_x UND _x", "_xUND_x"},
    {"a capital letter keeps the semicolons", "Wenn(1;2;3)", "Wenn(1;2;3)"},
    {"a semicolon outside of the six words stays", "sin(1;2)", "sin(1;2)"},
    {"a group is rewritten wherever it occurs", "min(1;2)+min(1;2)+a(1;2)",
     "min(1,2)+min(1,2)+a(1,2)"},
    {"an argument list that is not closed stays", "min(1;2+max(1;2)", "min(1;2+max(1,2)"},
};

TEST(TermTranslator, KeepsItsDeliberateOddities)
{
    for (const TranslateCase& row : kDeliberateCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Translated(row.term), row.expected);
    }
}

constexpr TranslateCase kDerivativeCases[] = {
    {"second and first derivative", "f''(_x)-f'(_x)",
     "((f((_x)+sw)-2f((_x))+f((_x)-sw))/sw^2)-((f((_x)+sw)-f((_x)))/sw)"},
    {"of an inner function", "g'(2*_x)", "((g((2*_x)+sw)-g((2*_x)))/sw)"},
    {"the same derivative twice", "f'(1)+f'(1)", "((f((1)+sw)-f((1)))/sw)+((f((1)+sw)-f((1)))/sw)"},
    {"of two functions", "f'(1)+g'(1)", "((f((1)+sw)-f((1)))/sw)+((g((1)+sw)-g((1)))/sw)"},
    {"first within second", "f''(f'(1))",
     "((f((((f((1)+sw)-f((1)))/sw))+sw)-2f((((f((1)+sw)-f((1)))/sw)))+f((((f((1)+sw)-f((1)))/sw))"
     "-sw))/sw^2)"},
    {"of a longer name", "xa'(2)", "((xa((2)+sw)-xa((2)))/sw)"},
    {"of an unknown function: nothing is left", "h'(_x)", ""},
    {"of a variable: nothing is left", "_x'+1", ""},
    {"with an open bracket: nothing is left", "f'(_x", ""},
    {"an open bracket does not stop the next one", "f'(1+f'(2)", ""},
    {"in one of the same kind: nothing is left, as a group is passed over", "f'(f'(1))", ""},
    {"a second one in a first one: nothing is left", "f'(f''(1))", ""},
};

TEST(TermTranslator, ExpandsDerivativesIntoDifferenceQuotients)
{
    for (const TranslateCase& row : kDerivativeCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Translated(row.term), row.expected);
    }
}

TEST(TermTranslator, KeptDerivativesLeaveNothingButAnApostropheEmpty)
{
    EXPECT_EQ(Translated("f(_x) + 2,5", Derivatives::Keep), "f(_x)+2.5");
    EXPECT_EQ(Translated("f'(_x)", Derivatives::Keep), "");
}

std::string Repeated(std::string_view part, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

std::string NumberedDerivatives(std::string_view open, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) text += std::string(open) + std::to_string(i) + ")+";
    return text;
}

TEST(TermTranslator, BoundsTheExpansionOfNastyTexts)
{
    const std::array<std::string, 13> names{"f", "g", "h", "i", "j", "k", "l",
                                            "m", "n", "o", "p", "q", "r"};
    std::string nested;
    for (const std::string& name : names) nested += name + "''(";
    nested += "_x" + Repeated(")", 13);
    const std::string texts[] = {
        Repeated("min(", 2500),
        Repeated("min(", 1600) + "1" + Repeated(";1)", 1200),
        Repeated("min(", 1400) + "1" + Repeated(";1)", 1400),
        NumberedDerivatives("min(1;", 900),
        NumberedDerivatives("f'(", 1200),
        NumberedDerivatives("f''(g'(", 700) + Repeated(")", 700),
        NumberedDerivatives("f'(f''(", 700),
        Repeated("f'(", 3300),
        Repeated("f'(", 2500) + Repeated(")", 2500),
        Repeated("f''(g'(", 800) + Repeated(")", 1600),
        Repeated("fill", 2500),
        Repeated(" und", 2500),
        Repeated("x", 10'000),
        nested,
        Repeated(nested, 100),
    };
    const TermTranslator translator{names};
    for (const std::string& text : texts) {
        const std::string result = translator.Translate(text);  // comes back at all
        EXPECT_LT(result.size(), 1'000'000U) << text.substr(0, 40);
    }
    // An overlong expansion is handed on for the parser to refuse.
    EXPECT_GT(translator.Translate(nested).size(), 35'000U);
}

}  // namespace
}  // namespace korvinth::term
