#include "document/integral_term.h"

#include <gtest/gtest.h>

namespace korvinth::document {
namespace {

struct RewriteCase
{
    std::string_view behaviour, term, expected;
};

constexpr RewriteCase kRewriteCases[] = {
    {"the antiderivative of f", "F(_x)", "integral(f(_x))"},
    {"with a bracket in the argument", "F(2*(_x+1))", "integral(f(2*(_x+1)))"},
    {"the rest of the term stays", "1+F(_x)*2", "1+integral(f(_x))*2"},
    {"only the first one, deliberately", "F(_x)+G(_x)", "integral(f(_x))+G(_x)"},
    {"the last letter of a longer word is no function", "SIN(_x)+LOG(_x)", "SIN(_x)+LOG(_x)"},
    {"nor is the last letter of a name with digits", "a2F(_x)", "a2F(_x)"},
    {"nor the last letter of a name with an underscore", "a_F(_x)", "a_F(_x)"},
    {"a factor in front", "2F(_x)", "2integral(f(_x))"},
    {"a word in capitals is passed over", "SIN(F(_x))", "SIN(integral(f(_x)))"},
    {"an open bracket stays", "F(_x", "F(_x"},
    {"an upper-case name without bracket", "F+_x", "F+_x"},
    {"nothing", "", ""},
};

TEST(RewriteFirstIntegral, TurnsAnUpperCaseFunctionIntoAnIntegral)
{
    for (const RewriteCase& row : kRewriteCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(RewriteFirstIntegral(row.term), row.expected);
    }
}

struct IntegrandCase
{
    std::string_view behaviour, term;
    std::optional<std::string_view> integrand;
};

constexpr IntegrandCase kIntegrandCases[] = {
    {"an integral alone", "integral(f(_x))", "(f(_x))"},
    {"typed with a capital", "Integral(_x)", "(_x)"},
    {"no integral", "2*_x", ""},
    {"nothing", "", ""},
    {"a name that ends like it", "myintegral(_x)", ""},
    {"a factor in front", "2*integral(f(_x))", std::nullopt},
    {"a factor without sign in front", "2integral(f(_x))", std::nullopt},
    {"a summand behind", "integral(f(_x))+1", std::nullopt},
    {"two integrals", "integral(f(_x))+integral(_x)", std::nullopt},
    {"an integral in an integral", "integral(integral(_x))", std::nullopt},
    {"an open bracket", "integral(_x", std::nullopt},
};

TEST(IntegrandOf, AcceptsAnIntegralOnlyAsTheWholeTerm)
{
    for (const IntegrandCase& row : kIntegrandCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(IntegrandOf(row.term), row.integrand);
    }
}

TEST(CallsFunction, MatchesWholeNamesWithoutRegardToCase)
{
    EXPECT_TRUE(CallsFunction("2*f(_x)", "f"));
    EXPECT_TRUE(CallsFunction("2F(_x)", "f"));
    EXPECT_TRUE(CallsFunction("af(1)+f(2)", "f"));
    EXPECT_FALSE(CallsFunction("af(1)", "f"));
    EXPECT_FALSE(CallsFunction("_f(1)", "f"));
    EXPECT_FALSE(CallsFunction("f*(1)", "f"));
}

}  // namespace
}  // namespace korvinth::document
