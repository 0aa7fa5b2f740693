#include "document/number_text.h"

#include <limits>

#include <gtest/gtest.h>

namespace korvinth::document {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(ShortestText, ReadsBackToTheSameDouble)
{
    struct Row
    {
        double value;
        std::string_view text;
    };
    constexpr Row kRows[] = {
        {0, "0"},
        {-2.5, "-2.5"},
        {0.1, "0.1"},
        {100000, "100000"},
        {1e14, "100000000000000"},
        {1e15, "1e+15"},
        {0.00001, "0.00001"},
        {0.000001, "1e-06"},
        {-1.5e-7, "-1.5e-07"},
        {0.1 + 0.2, "0.30000000000000004"},
        {1.0 / 3, "0.3333333333333333"},
        {123456.75, "123456.75"},
        {5e-324, "5e-324"},
        {kLargest, "1.7976931348623157e+308"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(ShortestText(row.value), row.text);
        EXPECT_EQ(LeadingNumber(row.text), row.value) << row.text;
    }
    EXPECT_EQ(ShortestGermanText(-0.25), "-0,25");
    EXPECT_EQ(ShortestGermanText(1.5e-7), "1,5e-07");
}

TEST(LeadingNumber, TakesTheNumericPrefix)
{
    struct Row
    {
        std::string_view behaviour, text;
        double value;
    };
    constexpr Row kRows[] = {
        {"nothing", "", 0},
        {"no number", "abc", 0},
        {"a sign alone", "-", 0},
        {"a point alone", ".", 0},
        {"text after the number", "12 pixels", 12},
        {"blanks and a plus sign", "  +3.5", 3.5},
        {"no digits in front of the point", "-.5x", -0.5},
        {"no digits behind the point", "7.", 7},
        {"a comma ends the number", "1,5", 1},
        {"an exponent", "2e3", 2000},
        {"an exponent without digits is text", "2e+", 2},
        {"names of special values are no numbers", "inf", 0},
        {"neither is nan", "nan", 0},
        {"too large", "-1e999", -kLargest},
        {"too small", "1e-999", 0},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(LeadingNumber(row.text), row.value);
    }
    EXPECT_EQ(LeadingNumber(std::string(400, '9')), kLargest);
}

TEST(RoundHalfEven, StaysInRange)
{
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(-0.5), 0);
    EXPECT_EQ(RoundHalfEven(1e300), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(RoundHalfEven(-1e300), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(RoundHalfEven(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(EvalNumberField, AcceptsTermsWithDecimalComma)
{
    term::MathParser parser;
    EXPECT_EQ(EvalNumberField(parser, "1,5*2"), 3);
    EXPECT_EQ(EvalNumberField(parser, ""), 0);
    EXPECT_EQ(EvalNumberField(parser, "1+"), 0);
    EXPECT_NE(parser.GetError(), term::Error::None);
}

}  // namespace
}  // namespace korvinth::document
