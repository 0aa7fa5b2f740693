#include "document/calculator.h"

#include <limits>
#include <optional>

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

struct LineCase
{
    std::string_view behaviour, term;
    int places;
    std::string_view line;
};

constexpr LineCase kLineCases[] = {
    {"German notation", "1,5*wurzel(2)", 3, "2.121"},
    {"a user's function", "f(2)", 3, "4"},
    {"its derivative", "f'(1,5)", 3, "3"},
    {"a parameter", "a+1", 3, "2"},
    {"an empty term", "", 3, "0"},
    {"blanks alone", "  ", 3, "0"},
    {"an unknown name", "x", 3, "Error: Syntax"},
    {"a derivative of no function", "x'", 3, "Error: Syntax"},
    {"characters that are removed", "#", 3, "Error: Syntax"},
    {"a German message behind an English word, deliberately", "1/0", 3, "Error: Division durch 0"},
    {"an unknown function", "q(1)", 3, "Error: Nicht definierte Funktion: q"},
    {"colons and superscripts are left to function terms", "6:2", 3, "Error: Ungültiger Term"},
    {"an infinite value", "10^400", 3, "Error: Overflow"},
    {"an integral function has no value here", "g(2)", 3,
     "Error: Integralfunktion muss allein stehen!"},
    {"a half goes by its exact value", "2,675", 2, "2.67"},
    {"a half goes to the even neighbour below", "0,125", 2, "0.12"},
    {"a half goes to the even neighbour above", "0,375", 2, "0.38"},
    {"no places", "2,5", 0, "2"},
    {"negative zero", "-0,0001", 3, "0"},
    {"22 places leave the value", "1/3", 22, "0.333333333333333"},
    {"22 places leave a tiny value", "1E-30", 22, "1E-30"},
    {"15 significant digits", "12345678901234,56789", 5, "12345678901234.6"},
    {"the last value without exponent", "999999999999999", 3, "999999999999999"},
    {"large values have an exponent", "10^15", 3, "1E+15"},
    {"digits and exponent", "1,25*10^300", 3, "1.25E+300"},
    {"small values have an exponent", "0,000001", 22, "1E-06"},
    {"the smallest value without exponent", "0,00001", 22, "0.00001"},
    {"a zero in front of the point", "-1/2", 3, "-0.5"},
};

class CalculatorTest : public PlotTest
{
protected:
    void SetUp() override
    {
        Apply({"f(x)=a*x^2", "g(x)=F(x)"});
        parser.SetVariableValue(document.variables.sw, 0.0001);
    }
};

TEST_F(CalculatorTest, ShowsTheRoundedValueOrTheError)
{
    for (const LineCase& row : kLineCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(CalculatorLine(parser, document, row.term, row.places), row.line);
    }
}

// Deliberate: a text without a value asks for no places.
TEST_F(CalculatorTest, ANumberOfPlacesIsATermFrom0To22)
{
    struct Case
    {
        std::string_view text;
        std::optional<int> places;
    };
    constexpr Case kCases[] = {
        {"0", 0},
        {"22", 22},
        {"2*3", 6},
        {"1,5", 2},
        {"2,5", 2},
        {"-0,5", 0},
        {"22,5", 22},
        {"a+1", 2},
        {"", 0},
        {"drei", 0},
        {"1/0", 0},
        {"23", std::nullopt},
        {"-1", std::nullopt},
        {"1E300", std::nullopt},
        {"10^400", std::nullopt},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(DecimalPlacesOf(parser, row.text), row.places);
    }
}

TEST(RoundToPlaces, KeepsWhatItCannotRound)
{
    EXPECT_EQ(RoundToPlaces(1e308, 21), 1e308);
    EXPECT_EQ(RoundToPlaces(std::numeric_limits<double>::infinity(), 3),
              std::numeric_limits<double>::infinity());
    EXPECT_EQ(RoundToPlaces(1.5, 1000), 1.5);
}

}  // namespace
}  // namespace korvinth::document
