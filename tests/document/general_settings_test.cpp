#include "document/general_settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

namespace korvinth::document {
namespace {

struct SettingCase
{
    Setting setting;
    std::string_view typed;
    std::string_view shown;  // afterwards; "" when the field refuses what was typed
};
constexpr SettingCase kSettingCases[] = {
    {Setting::SampleCount, "2", "2"},
    {Setting::SampleCount, "20000", "20000"},
    {Setting::SampleCount, "1", ""},
    {Setting::SampleCount, "20001", ""},
    {Setting::SampleCount, "10^3/4", "250"},
    {Setting::SampleCount, "100,5", "100"},  // half to even
    {Setting::SampleCount, "101,5", "102"},
    {Setting::SampleCount, "1e300", ""},
    {Setting::FamilyCount, "0", "0"},
    {Setting::FamilyCount, "21", "21"},
    {Setting::FamilyCount, "22", ""},
    {Setting::FamilyCount, "-1", ""},
    {Setting::FamilyStep, "-0,5", "-0,5"},
    {Setting::FamilyStep, "0", "0"},
    {Setting::FamilyStep, "1/0", ""},
    {Setting::FamilyStep, "1e308*10", ""},
    {Setting::NumericLimit, "0,001", "0,001"},
    {Setting::NumericLimit, "10^-4", "10^-4"},
    {Setting::NumericLimit, "0", ""},
    {Setting::NumericLimit, "1", ""},
    {Setting::NumericLimit, "-0,1", ""},
    {Setting::NumericLimit, "0,1)+(0,1", ""},
    {Setting::NumericLimit, "", ""},
    {Setting::TimerInterval, "10", "10"},
    {Setting::TimerInterval, "1000", "1000"},
    {Setting::TimerInterval, "9", ""},
    {Setting::TimerInterval, "1001", ""},
    {Setting::FontPoints, "6", "6"},
    {Setting::FontPoints, "36", "36"},
    {Setting::FontPoints, "37", ""},
    {Setting::AxisWidth, "2,5", "2,5"},
    {Setting::AxisWidth, "0", ""},
    {Setting::HelpLineWidth, "9", ""},
    {Setting::XStep, " pi/3 ", "pi/3"},
    {Setting::XStep, "2*{π/3}", "2*(pi/3)"},
    {Setting::XStep, "0", ""},
    {Setting::XStep, "1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1", ""},
    {Setting::XStep, "-1", ""},
    {Setting::YStep, "1e-300", "1e-300"},
    {Setting::YStep, "unbekannt", ""},
    {Setting::YStep, "", ""},
    {Setting::XAxisName, "", ""},  // an axis may be without a name
    {Setting::XAxisName, " Zeit in s ", "Zeit in s"},
    {Setting::XAxisName, "αβγδεζηθικλμνξοπρστυ", "αβγδεζηθικλμνξοπρστυ"},
    {Setting::XAxisName, "123456789012345678901", ""},
    {Setting::XAxisName, "%;%;%;%;%;%;%", "%;%;%;%;%;%;%"},
    {Setting::XAxisName, "%;%;%;%;%;%;%;", ""},  // 42 bytes in a file
    {Setting::YAxisName, "f{x}", ""},
    {Setting::YAxisName, "a\nb", ""},
};

TEST(GeneralSettings, AreTakenWithinTheirBoundsAndRefusedBeyond)
{
    for (const SettingCase& row : kSettingCases) {
        SCOPED_TRACE(std::string(SettingName(row.setting)) + " = " + std::string(row.typed));
        term::MathParser parser;
        parser.DefineVariable("pi=3.141592653589793");
        DisplayAttributes attributes;
        const std::string refusal = TakeSetting(attributes, row.setting, row.typed, parser);
        EXPECT_EQ(parser.GetError(), term::Error::None);
        if (row.setting == Setting::XAxisName && row.typed.empty()) {
            EXPECT_EQ(refusal + attributes.x_axis_name, "");
        } else if (row.shown.empty()) {
            EXPECT_TRUE(refusal.starts_with(std::string(SettingName(row.setting)) + ": "));
            EXPECT_EQ(attributes, DisplayAttributes()) << "the old value stays";
        } else {
            EXPECT_EQ(refusal, "");
            EXPECT_EQ(SettingText(attributes, row.setting), row.shown);
        }
    }
}

TEST(GeneralSettings, ShowWhatTheyTakeBack)
{
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        const auto setting = static_cast<Setting>(i);
        SCOPED_TRACE(SettingName(setting));
        term::MathParser parser;
        DisplayAttributes attributes;
        EXPECT_EQ(TakeSetting(attributes, setting, SettingText(attributes, setting), parser), "");
        EXPECT_EQ(attributes, DisplayAttributes());
    }
}

TEST(GeneralSettings, AreCopiedWithoutTheSwitchesOfTheMenus)
{
    DisplayAttributes from;
    term::MathParser parser;
    for (const SettingCase& row : kSettingCases) {
        TakeSetting(from, row.setting, row.typed, parser);
    }
    from.background = MakeColour(1, 2, 3);
    from.line_colour = MakeColour(4, 5, 6);
    from.x_step.mode = StepMode::MultiplesOfPi;
    from.smooth_drawing = false;
    from.constant_sample_count = true;
    DisplayAttributes to = from;
    CopyGeneralSettings(DisplayAttributes(), to);
    EXPECT_EQ(to, DisplayAttributes());

    from.help_lines = false;
    from.slots[SlotIndex{0}].width = 9;
    CopyGeneralSettings(from, to);
    EXPECT_TRUE(to.help_lines);
    EXPECT_EQ(to.slots, DisplayAttributes().slots);
    EXPECT_EQ(to.x_step, from.x_step);
}

TEST(GeneralSettings, AStepIsAFiniteNumberAboveZeroOrNone)
{
    term::MathParser parser;
    EXPECT_DOUBLE_EQ(StepValue("0,25", parser), 0.25);
    for (const std::string_view text : {"", "0", "-2", "1/0", "gibt es nicht", "1e308*1e308"}) {
        EXPECT_TRUE(std::isnan(StepValue(text, parser))) << text;
        EXPECT_EQ(parser.GetError(), term::Error::None);
    }
}

}  // namespace
}  // namespace korvinth::document
