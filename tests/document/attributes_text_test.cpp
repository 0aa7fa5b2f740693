#include "document/attributes_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "document/general_settings.h"
#include "document/list_text.h"

namespace korvinth::document {
namespace {

// Puts into a field whatever its window takes that makes the text longest.
void FillWorst(DisplayAttributes& attributes, Setting setting)
{
    term::MathParser parser;
    parser.DefineVariable("pi=3.141592653589793");
    std::vector<std::string> inputs = {"-2,2250738585072014e-308",
                                       "-1,2345678901234567e-5",
                                       "0,30000000000000004",
                                       "1,2345678901234567",
                                       "20000",
                                       "1000"};
    for (std::size_t count = 0; count < 60; ++count) {
        std::string name, sum = "1", product = "0,1", constants = "1";
        for (std::size_t i = 0; i < count; ++i) {
            sum += "+1";
            product += "*1";
            constants += "*π";
        }
        inputs.insert(inputs.end(),
                      {sum, product, constants, "0," + std::string(count, '0') + "1"});
        for (const std::string_view sign : {"a", "%", ";", "ä", "€", "😀"}) {
            name.clear();
            for (std::size_t i = 0; i < count; ++i) name += sign;
            inputs.push_back(name);
        }
    }
    DisplayAttributes worst = attributes;
    for (const std::string& input : inputs) {
        DisplayAttributes tried = attributes;
        TakeSetting(tried, setting, input, parser);
        if (AttributesText(tried).size() > AttributesText(worst).size()) worst = tried;
    }
    attributes = worst;
}

DisplayAttributes WorstAttributes()
{
    DisplayAttributes attributes;
    for (std::size_t i = 0; i < kSettingCount; ++i) FillWorst(attributes, static_cast<Setting>(i));
    for (const auto colour :
         {&DisplayAttributes::background, &DisplayAttributes::axis_colour,
          &DisplayAttributes::number_colour, &DisplayAttributes::help_line_colour,
          &DisplayAttributes::extra_help_line_colour, &DisplayAttributes::line_colour}) {
        attributes.*colour = MakeColour(255, 255, 255);
    }
    attributes.zoom_factor_x = std::numeric_limits<double>::max();
    attributes.zoom_factor_y = std::numeric_limits<double>::max();
    attributes.calculator_places = 22;
    attributes.description_points = 36;
    return attributes;
}

TEST(AttributesText, FitsForAnyValuesOfTheWindowsAndComesBack)
{
    const DisplayAttributes worst = WorstAttributes();
    EXPECT_EQ(worst.x_axis_name.size() + worst.x_step.fixed.size(), 40 + 40U) << "or hardly worst";
    const std::string text = AttributesText(worst);
    EXPECT_LE(text.size(), kLongestProfileValue);
    DisplayAttributes read;
    TakeAttributesText(text, AttributeScope::Everything, read);
    EXPECT_EQ(read, worst);

    DisplayAttributes with_unknown = worst;
    with_unknown.unknown_items = "q=1;" + std::string(400, 'z');
    EXPECT_EQ(AttributesText(with_unknown), text + ";q=1") << "unknown items are dropped first";
}

TEST(AttributesText, HoldsEveryValue)
{
    DisplayAttributes all;
    for (const auto flag :
         {&DisplayAttributes::x_numbers, &DisplayAttributes::y_numbers,
          &DisplayAttributes::help_lines, &DisplayAttributes::extra_help_lines,
          &DisplayAttributes::axes, &DisplayAttributes::axis_names, &DisplayAttributes::lines,
          &DisplayAttributes::points, &DisplayAttributes::graph_names,
          &DisplayAttributes::detect_integrals, &DisplayAttributes::constant_sample_count,
          &DisplayAttributes::smooth_drawing, &DisplayAttributes::description_follows_window}) {
        all.*flag = !(all.*flag);
    }
    all.angle_mode = term::TrigMode::Grads;
    all.background = MakeColour(1, 2, 3);
    all.axis_colour = MakeColour(4, 5, 6);
    all.number_colour = MakeColour(7, 8, 9);
    all.help_line_colour = MakeColour(10, 11, 12);
    all.extra_help_line_colour = MakeColour(13, 14, 15);
    all.line_colour = MakeColour(16, 17, 18);
    all.axis_width = 0.3;
    all.help_line_width = 1e-5 + 0.25;
    all.font_points = 36;
    all.x_axis_name = "t; in %3B=s";
    all.y_axis_name = "";
    all.x_step = {StepMode::Fixed, "a/2"};
    all.y_step = {StepMode::MultiplesOfPi, "0,5"};
    all.sample_count = 20000;
    all.family_step = -1.0 / 3;
    all.family_count = 21;
    all.integrand_limit = "10^-a";
    all.zoom_factor_x = 1;
    all.zoom_factor_y = 1.5;
    all.calculator_places = 22;
    all.timer_milliseconds = 10;
    all.kept_ratio = KeptRatio::Y;
    all.description_points = 8;
    all.unknown_items = "neu=ja;1:0:1";
    DisplayAttributes read;
    TakeAttributesText(AttributesText(all), AttributeScope::Everything, read);
    EXPECT_EQ(read, all);

    DisplayAttributes picture = all;
    const DisplayAttributes plain;
    picture.calculator_places = plain.calculator_places;
    picture.timer_milliseconds = plain.timer_milliseconds;
    picture.zoom_factor_x = plain.zoom_factor_x;
    picture.zoom_factor_y = plain.zoom_factor_y;
    picture.description_points = plain.description_points;
    picture.description_follows_window = plain.description_follows_window;
    DisplayAttributes read_picture;
    TakeAttributesText(AttributesText(all), AttributeScope::Picture, read_picture);
    EXPECT_EQ(read_picture, picture);
}

TEST(AttributesText, LeavesOutWhatTheWindowsWouldNotAllow)
{
    constexpr std::string_view kTexts =
        "|;;;|f|f=|f=1000000000|f=9.5|f=12x|n=-3|n=1e300|a=nan|a=inf|a=0|h=9|S=inf|S=nan|N=22|"
        "z=0.5,nan|z=inf|k=23|k=-1|t=5|d=7,2|w=0|w=4|r=3|r=-1|c=-1,16777216,x|s=2?x|x=%7D|"
        "x=a%0Ab|x=123456789012345678901|X=3|X=|Y=00|Y=0-1|Y=0nan|Y=0(|Y=0%7B1|l=1|l=0,5|l=nan|"
        "l=0.1)+(0.1|l=|l=0.1*1*1*1*1*1*1*1*1*1*1*1*1*1*1*1*1*1*1*1|q=a}b|q=a\nb";
    for (const std::string_view text : SplitText(kTexts, "|")) {
        SCOPED_TRACE(text);
        DisplayAttributes attributes;
        TakeAttributesText(text, AttributeScope::Everything, attributes);
        EXPECT_EQ(attributes, DisplayAttributes());
    }
}

TEST(AttributesText, TakesWhatADamagedTextStillStates)
{
    DisplayAttributes attributes;
    TakeAttributesText("s=0?1;c=1,x,3; f=12 ;n=;a=0.3", AttributeScope::Everything, attributes);
    DisplayAttributes expected;
    expected.x_numbers = false;
    expected.background = Colour{1};
    expected.number_colour = Colour{3};
    expected.font_points = 12;
    expected.axis_width = 0.3;
    EXPECT_EQ(attributes, expected);
}

TEST(AttributesText, KeepsUnknownItemsByTheirKeys)
{
    DisplayAttributes attributes;
    const auto take = [&](std::string_view text) {
        TakeAttributesText(text, AttributeScope::Picture, attributes);
        return attributes.unknown_items;
    };
    EXPECT_EQ(take("f=12;neu=1; alt=2 ;ganz allein"), "neu=1;alt=2;ganz allein");
    EXPECT_EQ(take("f=13"), "neu=1;alt=2;ganz allein");
    EXPECT_EQ(take("alt=3;mehr=4"), "alt=3;mehr=4;neu=1;ganz allein");
    take(std::string(1000, 'x') + ";" + std::string(480, 'y') + "=1");
    EXPECT_LE(attributes.unknown_items.size(), kLongestProfileValue);
    EXPECT_TRUE(attributes.unknown_items.ends_with("=1;alt=3;mehr=4")) << "as far as they fit";
}

// Written as such they would not come back.
TEST(AttributesText, TakesNoBlanksAroundAValue)
{
    DisplayAttributes attributes;
    TakeAttributesText("x=u%20%20;y=%20v;Y=01%20;l=0.%20", AttributeScope::Picture, attributes);
    EXPECT_EQ(attributes.x_axis_name, "u");
    EXPECT_EQ(attributes.y_axis_name, "v");
    EXPECT_EQ(attributes.y_step.fixed, "1");
    EXPECT_EQ(attributes.integrand_limit, DisplayAttributes().integrand_limit);
}

TEST(AttributesText, SurvivesAnyText)
{
    std::mt19937 random(20240229);
    const std::string model = AttributesText(WorstAttributes()) + ";neu=1";
    for (int round = 0; round < 2000; ++round) {
        std::string text = model;
        for (int i = 0; i < 20; ++i) text[random() % text.size()] = static_cast<char>(random());
        DisplayAttributes attributes;
        TakeAttributesText(text, AttributeScope::Everything, attributes);
        const std::string written = AttributesText(attributes);
        ASSERT_LE(written.size(), kLongestProfileValue);
        ASSERT_EQ(written.find_first_of("}\r\n"), std::string::npos);
        ASSERT_FALSE(written.front() == ' ' || written.back() == ' ');
        DisplayAttributes again;
        TakeAttributesText(written, AttributeScope::Everything, again);
        ASSERT_EQ(AttributesText(again), written) << text;
    }
}

struct TableCase
{
    std::string_view text;
    std::string_view after;  // as it is written
};

TEST(LookTables, AreReadPieceByPiece)
{
    // Written by default: 2 in each slot.
    constexpr TableCase kCases[] = {
        {"1:1:1:1:1:", "1:1:1:1:1:0:2:2:2:2:2:2:2:"},  // the piece behind the last colon is 0
        {"1:1:1:1:1", "1:1:1:1:1:2:2:2:2:2:2:2:2:"},
        {"1:2:3:4:5:6:7:8:9:10:11:12:13:", "1:2:3:4:5:6:7:8:9:10:11:12:13:"},
        {"1:2:3:4:5:6:7:8:9:10:11:12:13:14:15:", "1:2:3:4:5:6:7:8:9:10:11:12:13:"},
        {"3.5:2.5:-2.5", "4:2:-2:2:2:2:2:2:2:2:2:2:2:"},
        {"x: 7y:+8::1e9", "0:7:8:0:32767:2:2:2:2:2:2:2:2:"},
        {"", "2:2:2:2:2:2:2:2:2:2:2:2:2:"},
        {":", "0:0:2:2:2:2:2:2:2:2:2:2:2:"},
    };
    for (const TableCase& row : kCases) {
        SCOPED_TRACE(row.text);
        DisplayAttributes attributes;
        TakeLineWidths(row.text, attributes);
        EXPECT_EQ(LineWidthsText(attributes), row.after);
        TakeLineTypes("2:2:2:2:2:2:2:2:2:2:2:2:2:", attributes);
        TakeLineTypes(row.text, attributes);
        EXPECT_EQ(LineTypesText(attributes), row.after);
        EXPECT_EQ(ColourTableText(attributes), ColourTableText(DisplayAttributes()));
    }
    DisplayAttributes attributes;
    TakeColourTable("16777215:-2147483648:1e99:0:1:2:3:4:5:6:7:8:9:", attributes);
    EXPECT_EQ(ColourTableText(attributes), "16777215:-2147483648:2147483647:0:1:2:3:4:5:6:7:8:9:");
}

TEST(LookTables, AreDrawnWithWhatCanBeDrawn)
{
    constexpr LineType kFirst{-1};
    constexpr LineType kLast{7};
    EXPECT_EQ(Drawable({Colour{1}, 0, kFirst}), (SlotAttributes{Colour{1}, 1, LineType::Solid}));
    EXPECT_EQ(Drawable({Colour{}, 32767, kLast}), (SlotAttributes{Colour{}, 20, LineType::Solid}));
    const SlotAttributes usual{Colour{2}, 20, LineType::SolidInside};
    EXPECT_EQ(Drawable(usual), usual);
}

}  // namespace
}  // namespace korvinth::document
