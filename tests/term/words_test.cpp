#include "term/words.h"

#include <gtest/gtest.h>

namespace korvinth::term {
namespace {

struct ReplaceCase
{
    std::string_view behaviour, text, word, replacement;
    unsigned mask;
    std::string_view expected;
};

constexpr ReplaceCase kReplaceCases[] = {
    {"only whole words become the free variable", "exp(x)+2x+x'+x2", "x", "_x", kWholeWord,
     "exp(_x)+2_x+x'+x2"},
    {"a letter and digits in front belong to a name", "a2x+22x", "x", "_x", kWholeWord, "a2x+22_x"},
    {"upper-case neighbours are letters too", "Xx+xX+x", "x", "_x", kWholeWord, "Xx+xX+_x"},
    {"the word itself matches with regard to case", "X+x", "x", "_x", kWholeWord, "X+_x"},
    {"a call of a function of that name stays", "x(1)+x", "x", "_x", kWholeWord, "x(1)+_x"},
    {"umlauts are no letters", "äx+xä", "x", "_x", kWholeWord, "ä_x+_xä"},
    {"blanks at both ends are removed", "  x + 1 ", "x", "_x", kWholeWord, "_x + 1"},
    {"mask 1 looks to the left alone", "ax+x2", "x", "_x", kContinuedOnTheLeft, "ax+_x2"},
    {"mask 2 looks to the right alone", "ax+x2", "x", "_x", kContinuedOnTheRight, "a_x+x2"},
    {"mask 0 replaces everywhere", "ax+x2", "x", "_x", 0, "a_x+_x2"},
    {"a long argument name", "time^2+times", "time", "_x", kWholeWord, "_x^2+times"},
    {"the replacement is a neighbour of what follows it", "ää", "ä", "_x", kWholeWord, "_xä"},
    {"an empty word replaces nothing", " a ", "", "_x", kWholeWord, "a"},
    {"an empty text stays empty", "   ", "x", "_x", kWholeWord, ""},
};

TEST(ReplaceWord, ReplacesWhatIsNoPartOfALongerName)
{
    for (const ReplaceCase& row : kReplaceCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(ReplaceWord(row.text, row.word, row.replacement, row.mask), row.expected);
    }
}

// Deliberate: "_" is no letter, so a second replacement finds the word again.
TEST(ReplaceWord, IsNotIdempotent)
{
    const std::string once = ReplaceWord("x", "x", "_x", kWholeWord);
    EXPECT_EQ(ReplaceWord(once, "x", "_x", kWholeWord), "__x");
}

TEST(MatchingGroup, FindsTheBracketThatCloses)
{
    EXPECT_EQ(MatchingGroup("f(a(b)c)+d", 0), "(a(b)c)");
    EXPECT_EQ(MatchingGroup("f(a(b)c)+d", 2), "(b)");
    EXPECT_EQ(MatchingGroup(")(a)", 0), "(a)");
    EXPECT_EQ(MatchingGroup("f((a)", 0), "");
    EXPECT_EQ(MatchingGroup("no bracket", 0), "");
    EXPECT_EQ(MatchingGroup("(a)", 7), "");
}

}  // namespace
}  // namespace korvinth::term
