#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "document/list_text.h"
#include "document/storable_text.h"
#include "plot_fixture.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using term::ReplaceAll;

TEST(AdditionalLines, DeliberatelyATermWithoutEquationIsTheRightSideOfOne)
{
    EXPECT_EQ(LineEquation("  2*x+1 "), "y=2*x+1");
    EXPECT_EQ(LineEquation("x = 3"), "x = 3");
    EXPECT_EQ(LineEquation("  "), "");
}

struct TypeCase
{
    std::string_view field;
    int type;  // -1 when refused
};
constexpr TypeCase kTypeCases[] = {{"0", 0}, {"6", 6},   {" 3 Punkte", 3}, {"7", -1},    {"-1", -1},
                                   {"", 0},  {"2.5", 2}, {"1e30", -1},     {"-1e30", -1}};

TEST(AdditionalLines, LineTypesAreZeroToSix)
{
    for (const TypeCase& row : kTypeCases) {
        const std::optional<LineType> type = ReadLineType(row.field);
        EXPECT_EQ(type ? static_cast<int>(*type) : -1, row.type) << row.field;
    }
}

const std::vector<AdditionalLine> kLines{
    {"y=2*x+1", LineType::DashDot, {}, false},
    {"x=3", LineType::Solid, MakeColour(255, 255, 255), true},
    {"x=max(2;x)", LineType::SolidInside, Colour{0}, false},
    {"y=7\\n+wenn(x=2; 1:c=+3; 0)", LineType::Dot, {}, true},
};

TEST(AdditionalLines, TextAndListAgree)
{
    const std::string text = ReadList(kLines);
    EXPECT_TRUE(text.starts_with("y=2*x+1:c=+3\r\nx=3:c=+0:+16777215:-1\r\n")) << text;
    std::vector<AdditionalLine> expected = kLines;
    expected[3].equation = "y=7\\ n+wenn(x=2; 1:c=+3; 0)";
    EXPECT_EQ(Text2List(text), expected);
    EXPECT_EQ(Text2List(TakeLines(kLines)), expected);
    EXPECT_TRUE(Text2List("").empty());
    EXPECT_EQ(Text2List("y=x\r\n\r\nx=1:c=9:+99999999999:?:-1").at(1),
              (AdditionalLine{"x=1", LineType::Solid, {}, true}));
}

TEST(AdditionalLines, DeliberatelyEveryXBeforeAnEqualSignIsGuarded)
{
    EXPECT_EQ(TakeLines(std::vector<AdditionalLine>{{"x=2*x", {}, {}, {}},
                                                    {"y=x*(x=2)+exp(x)", {}, {}, {}}}),
              "x=2*_x:c=+0\r\ny=_x*(x=2)+exp(_x):c=+0");
}

TEST(AdditionalLines, TheTextIsASumInTheEnd)
{
    term::MathParser parser;
    PlotDocument document;
    DefineSystemVariables(parser, document);
    const std::vector<AdditionalLine> lines{{"y=2*x+1", LineType::DashDot, Colour{255}, true},
                                            {"x=3", LineType::Dash, Colour{7}, false}};
    std::string sum = TakeLines(lines);
    for (const auto& [from, to] :
         {std::pair{"\r\n", "+"}, {":", " "}, {"x=", ""}, {"y=", ""}, {"c=", ""}}) {
        sum = ReplaceAll(sum, from, to);
    }
    // 1 + 3 + 255 - 1 and 3 + 1 + 7 at x = 0
    EXPECT_EQ(parser.EvalText(sum), 269);
    EXPECT_EQ(parser.GetError(), term::Error::None) << sum;
}

TEST(AdditionalPoints, TextAndListAgree)
{
    std::vector<AdditionalPoint> points(4);
    points[0].x = "f(a)";
    points[0].y = "wenn(a>1 und a<2; 1,5; 2\\n)";
    points[1] = {"-2,5", "(", PointShape::Square, 10, MakeColour(1, 2, 3), "Ä}:\r\n\\end\\%1'",
                 true,   true};
    points[2] = {"1)(2", "3:4%29", PointShape::Circle, 1, MakeColour(255, 255, 255), "",
                 false,  false};
    points[3].x = "kein Punkt";
    const std::string text = ReadPoints(points);
    EXPECT_EQ(text.find('}'), std::string::npos);
    EXPECT_EQ(text.find("\\n"), std::string::npos);
    EXPECT_EQ(text.find("\\e"), std::string::npos);
    EXPECT_EQ(SplitText(text, "\n").size(), points.size());
    points[0].y = "wenn(a>1 und a<2; 1,5; 2\\ n)";
    EXPECT_EQ(Text2Points(text), points);
    EXPECT_EQ(ReadPoints(std::vector{
                  AdditionalPoint{"1", "2", {}, 4, AdditionalPoint{}.colour, "", {}, {}}}),
              "(1)(2)");
    EXPECT_EQ(Text2Points("(1)(2):s=4:r=11:r=0:c=-1:x:q=1:n=A").at(0).name, "A");
    EXPECT_EQ(Text2Points("(1)(2):s=4:r=11:c=-1").at(0).radius, 4);
}

struct PointCase
{
    std::string_view typed, name, x, y;
};
constexpr PointCase kPointCases[] = {
    {"(2|3)", "", "2", "3"},
    {" ( a | f(a) ) ", "", "a", "f(a)"},
    {"P(2|4)", "P", "2", "4"},
    {"P_1'(2,5;4)", "P_1'", "2,5", "4"},
    {"2|3", "", "2", "3"},
    {"f(2)|f(3)", "", "f(2)", "f(3)"},
    {"(f(2)|(1+a)*2)", "", "f(2)", "(1+a)*2"},
    {"Ä(max(1;2);3)", "Ä", "max(1;2)", "3"},
    {"f(2|3", "", "f(2", "3"},
    {"2*(1|3)", "", "2*(1", "3)"},
    {"hallo", "", "hallo", ""},
    {"(1)", "", "(1)", ""},
};

TEST(AdditionalPoints, AreReadAsTyped)
{
    for (const PointCase& row : kPointCases) {
        SCOPED_TRACE(row.typed);
        AdditionalPoint point;
        point.name = "old";
        point.radius = 7;
        ReadPointText(row.typed, point);
        EXPECT_EQ(point.name, row.name);
        EXPECT_EQ(point.x, row.x);
        EXPECT_EQ(point.y, row.y);
        EXPECT_EQ(point.radius, 7);
        AdditionalPoint again;
        ReadPointText(PointText(point), again);
        EXPECT_EQ(again.x + "|" + again.y + "|" + again.name,
                  point.x + "|" + point.y + "|" + point.name);
    }
}

struct MoveCase
{
    std::string_view behaviour, before, after;
    std::vector<ParameterChange> changes;
};
constexpr ParameterIndex kA{26};
constexpr ParameterIndex kNumber{27};
const MoveCase kMoveCases[] = {
    {"numbers", "(1)(-2,5):r=3", "(3,142)(-1,2):r=3", {}},
    {"number and parameter", "(1)( a )", "(3,142)( a )", {{kA, -1.2}}},
    {"a whole-number parameter", "(n_int)(a)", "(n_int)(a)", {{kNumber, 3}, {kA, -1.2}}},
    {"along the diagonal", "(a)(a)", "(a)(a)", {{kA, 0.971}}},
    {"a term", "(1)(2*a)", "", {}},
    {"an unknown name", "(1)(b)", "", {}},
    {"half a point", "(1)()", "", {}},
    {"no point at all", "", "", {}},
};

TEST_F(PlotTest, DraggingAPointChangesNumbersOrParameters)
{
    document.parameters[kA].name = "a";
    document.parameters[kNumber].name = "n_int";
    document.parameters[kNumber].state = kIntegerState;
    for (const MoveCase& row : kMoveCases) {
        SCOPED_TRACE(row.behaviour);
        document.points_text = row.before;
        const auto move = MovePoint(document, 0, {3.14159, -1.2, 0.002, 0.1});
        ASSERT_EQ(move.has_value(), !row.after.empty());
        if (!move) continue;
        EXPECT_EQ(move->points_text, row.after);
        EXPECT_EQ(move->parameters, row.changes);
    }
    document.points_text = "(1)(1)";
    EXPECT_EQ(MovePoint(document, 0, {12346, -0.001, 30, 0.5})->points_text, "(12350)(0)");
}

}  // namespace
}  // namespace korvinth::document
