#include "document/value_table.h"

#include <cmath>
#include <sstream>

#include "plot_fixture.h"

namespace korvinth::document {
namespace {

class ValueTableTest : public PlotTest
{
protected:
    // The table, or the message instead of it.
    std::string Table(std::string_view range)
    {
        RowGrid grid;
        std::string message = ReadTableRange(document, parser, range, grid);
        if (!message.empty()) return message;
        std::ostringstream out;
        message = WriteValueTable(document, parser, grid, out);
        return message.empty() ? out.str() : message;
    }
};

TEST_F(ValueTableTest, HasAColumnForEveryFunction)
{
    Apply({"f(x)=x^2", "", "g(t)=wurzel(t)", "h(x)=1,5"});
    EXPECT_EQ(Table("-1;1;0,5"),
              "x;f(x);g(t);h(x)\n"
              "-1;1;;1,5\n"
              "-0,5;0,25;;1,5\n"
              "0;0;0;1,5\n"
              "0,5;0,25;0,7071067811865476;1,5\n"
              "1;1;1;1,5\n");
}

TEST_F(ValueTableTest, LeavesCellsWithoutValueEmpty)
{
    Apply({"f(x)=1/x", "g(x)=(x"});
    EXPECT_EQ(Table("-1;1;1"), "x;f(x);g(x)\n-1;-1;\n0;;\n1;1;\n");
}

TEST_F(ValueTableTest, ASlotWithoutATermHasAnEmptyColumn)
{
    Apply({"f(x)=x'", "g(x)=x"});
    EXPECT_EQ(Table("1;2;1"), "x;f(x);g(x)\n1;;1\n2;;2\n");
}

TEST_F(ValueTableTest, HoldsBothEndsWhereTheyFallOnTheGrid)
{
    struct Row
    {
        std::string_view behaviour, range;
        std::size_t rows;
        double last;
    };
    constexpr Row kRows[] = {
        {"an end on the grid", "0;2;0,5", 5, 2},
        {"an end beside the grid", "0;1;0,3", 4, 0.9},
        {"an end on the grid but for rounding", "0;0,3;0,1", 4, 0.3},
        {"many small steps", "0;1;0,001", 1001, 1},
        {"a single row", "3;3;1", 1, 3},
        {"downwards", "2;0;-1", 3, 0},
        {"terms with brackets and semicolons", "min(1;2);2*[1+1];1", 4, 4},
        {"as many rows as there may be", "1;1000000;1", kMostTableRows, 1e6},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.behaviour);
        RowGrid grid;
        EXPECT_EQ(ReadTableRange(document, parser, row.range, grid), "");
        EXPECT_EQ(grid.rows, row.rows);
        EXPECT_NEAR(grid.At(grid.rows - 1), row.last, 1e-9);
    }
}

TEST_F(ValueTableTest, RefusesSenselessRanges)
{
    struct Row
    {
        std::string_view range, message;
    };
    constexpr Row kRows[] = {
        {"", "Tabelle: Anfang;Ende;Schrittweite erwartet!"},
        {"1;2", "Tabelle: Anfang;Ende;Schrittweite erwartet!"},
        {"1;2;3;4", "Tabelle: Anfang;Ende;Schrittweite erwartet!"},
        {"1; ;3", "Tabelle: Anfang;Ende;Schrittweite erwartet!"},
        {"1;2;0", "Tabelle: Schrittweite darf nicht 0 sein!"},
        {"1;2;-1", "Tabelle: Schrittweite hat das falsche Vorzeichen!"},
        {"2;1;1", "Tabelle: Schrittweite hat das falsche Vorzeichen!"},
        {"0;1000000;1", "Tabelle: mehr als 1000000 Zeilen!"},
        {"0;1;1E-300", "Tabelle: mehr als 1000000 Zeilen!"},
        {"0;10^400;1", "Tabelle: Bereich ist nicht endlich!"},
        {"0;(1;1", "Tabelle: Anfang;Ende;Schrittweite erwartet!"},
        {"0;1);1", "Tabelle: Fehlerhafte Klammersetzung"},
        {"0;1/0;1", "Tabelle: Division durch 0"},
        {"0;u';1", "Tabelle: Ungültiger Term"},
        {"0;u;1", "Tabelle: Undefined variable: u"},
    };
    for (const Row& row : kRows) EXPECT_EQ(Table(row.range), row.message) << row.range;
}

TEST_F(ValueTableTest, DerivativesUseASmallStepOfTheirOwn)
{
    Apply({"f(x)=x^2", "g(x)=f'(x)", "h(x)=sw"});
    parser.SetVariableValue(document.variables.sw, 5);
    const std::string table = Table("2;2;1");
    std::istringstream cells(table.substr(table.rfind("\n2;4;") + 5));
    std::string derivative;
    std::getline(cells, derivative, ';');
    EXPECT_NEAR(std::stod(derivative.replace(derivative.find(','), 1, ".")), 4.0001, 1e-6);
    EXPECT_NE(table.find(";0,0001\n"), std::string::npos);
    EXPECT_EQ(parser.VariableValue(document.variables.sw), 5);
}

TEST_F(ValueTableTest, SumsIntegralFunctionsFromTheirLowerBound)
{
    Apply({"f(x)=1", "g(x)=F(x)"});
    document.parameters[LowerBoundParameter(Slot(1))].value = 1;
    EXPECT_NE(Table("0;2;1").find("1;1;0\n"), std::string::npos);
    document.parameters[LowerBoundParameter(Slot(1))].value = 1e12;
    EXPECT_EQ(Table("0;2;1"), "Tabelle: Untere Grenze gu liegt zu weit entfernt!");
}

TEST_F(ValueTableTest, KeepsNoProgramsAlive)
{
    Apply({"f(x)=x^2", "g(x)=F(x)"});
    Table("0;2;1");
    const std::size_t programs = parser.LivePrograms();
    for (int k = 0; k < 10; ++k) Table("0;2;1");
    EXPECT_EQ(parser.LivePrograms(), programs);
}

class SumIntegralTest : public PlotTest
{
protected:
    void SetUp() override { Apply(); }
    std::vector<double> Sum(std::string_view integrand, double bound, const RowGrid& grid)
    {
        return SumIntegral(parser, document.variables.x, integrand, bound, grid, {});
    }
};

TEST_F(SumIntegralTest, AConstantGivesAStraightLineThroughTheBound)
{
    for (double bound : {0.0, 0.25, 0.2503217, -7.77777, 12.3}) {
        for (double step : {0.5, -0.5}) {
            const RowGrid grid{step > 0 ? -1.0 : 1.0, step, 5};
            const std::vector<double> sums = Sum("(2)", bound, grid);
            ASSERT_EQ(sums.size(), grid.rows);
            for (std::size_t k = 0; k < grid.rows; ++k) {
                EXPECT_NEAR(sums[k], 2 * (grid.At(k) - bound), 1e-9) << bound << " " << k;
            }
        }
    }
}

// By hand: with steps of h = 1/1000, the sum of k h * h for k = 0 to n - 1 is h^2 n (n - 1) / 2 to
// the right; to the left it is formed from the right ends.
TEST_F(SumIntegralTest, FollowsTheRectangleRule)
{
    const std::vector<double> sums = Sum("(_x)", 0, {-1, 1, 4});
    EXPECT_NEAR(sums[0], 0.4995, 1e-12);
    EXPECT_EQ(sums[1], 0);
    EXPECT_NEAR(sums[2], 0.4995, 1e-12);
    EXPECT_NEAR(sums[3], 1.999, 1e-12);
}

// The first step goes from 0.0004 to 0.001 with the height at 0.0004, and to 0 likewise.
TEST_F(SumIntegralTest, ShortensTheFirstStepToMeetTheRows)
{
    const std::vector<double> sums = Sum("(_x)", 0.0004, {0, 1, 2});
    EXPECT_NEAR(sums[0], -0.0004 * 0.0004, 1e-15);
    EXPECT_NEAR(sums[1], 0.0006 * 0.0004 + 1e-6 * 999.0 * 1000 / 2, 1e-12);
}

TEST_F(SumIntegralTest, ADirectionEndsWhereTheIntegrandHasNoValue)
{
    const std::vector<double> pole = Sum("(1/_x)", 1, {-1, 1, 4});
    EXPECT_TRUE(std::isnan(pole[0]));
    EXPECT_TRUE(std::isnan(pole[1]));
    EXPECT_EQ(pole[2], 0);
    EXPECT_NEAR(pole[3], std::log(2), 1e-3);
    const std::vector<double> outside = Sum("(sqrt(_x))", -1, {-1, 1, 3});
    for (double sum : outside) EXPECT_TRUE(std::isnan(sum));
    const std::vector<double> steep = Sum("(exp(100*_x))", 0, {-1, 1, 3});
    EXPECT_FALSE(std::isnan(steep[0]));
    EXPECT_TRUE(std::isnan(steep[2]));
}

}  // namespace
}  // namespace korvinth::document
