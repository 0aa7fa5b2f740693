#include "document/settings_file.h"

#include <gtest/gtest.h>

#include <random>

#include "document/attributes_text.h"
#include "tests/files/failing_disk.h"

namespace korvinth::document {
namespace {

using files::FailingDisk;

struct ValueCase
{
    std::string_view behaviour, profile, value;
};

TEST(Profile, FindsValues)
{
    constexpr ValueCase kCases[] = {
        {"plain", "[Korvinth]\r\nLArt=1:\r\n", "1:"},
        {"case and blanks", " [ KORVINTH ] \n\t lart\t = 1: \n", "1:"},
        {"no break at the end", "[Korvinth]\nLArt=1:", "1:"},
        {"behind a byte order mark", "\xEF\xBB\xBF[Korvinth]\nLArt=1:", "1:"},
        {"the first key counts", "[Korvinth]\nLArt=1:\nLArt=2:\n", "1:"},
        {"the first section counts", "[Korvinth]\nx=1\n[b]\n[Korvinth]\nLArt=2:\n", ""},
        {"other sections", "LArt=0\n[a]\nLArt=3\n[Korvinth]\n[b]\nLArt=4\n", ""},
        {"comments", "[Korvinth]\n;LArt=3\nLArt2=5\nLArt\n", ""},
        {"more signs of equality", "[Korvinth]\nLArt==a=b\n", "=a=b"},
        {"nothing", "", ""},
    };
    for (const ValueCase& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(ProfileValue(row.profile, "Korvinth", "LArt"), row.value);
    }
    const std::string long_one = "[Korvinth]\nLArt=" + std::string(600, 'x');
    EXPECT_EQ(ProfileValue(long_one, "Korvinth", "LArt"), std::string(499, 'x'));
}

struct WriteCase
{
    std::string_view behaviour, before, after;
};

TEST(Profile, ChangesNothingButTheValue)
{
    constexpr WriteCase kCases[] = {
        {"a new file", "", "[Korvinth]\r\nLArt=7:\r\n"},
        {"the value alone", "; mine\n[korvinth]\n x = 1 \nlart = 3 \nLArt=4\n\n[b]\nLArt=5",
         "; mine\n[korvinth]\n x = 1 \nlart =7:\nLArt=4\n\n[b]\nLArt=5"},
        {"a new key", "[Korvinth]\r\nx=1\r\n; mine\r\n\r\n[b]\r\n",
         "[Korvinth]\r\nx=1\r\n; mine\r\nLArt=7:\r\n\r\n[b]\r\n"},
        {"a new key at the end", "[Korvinth]\nx=1", "[Korvinth]\nx=1\nLArt=7:"},
        {"a new section", "[b]\nLArt=1", "[b]\nLArt=1\n[Korvinth]\nLArt=7:\n"},
        {"behind a byte order mark", "\xEF\xBB\xBF", "\xEF\xBB\xBF[Korvinth]\r\nLArt=7:\r\n"},
    };
    for (const WriteCase& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        std::string profile(row.before);
        SetProfileValue(profile, "Korvinth", "LArt", "7:");
        EXPECT_EQ(profile, row.after);
        EXPECT_EQ(ProfileValue(profile, "Korvinth", "LArt"), "7:");
    }
}

TEST(SettingsFile, IsReadAsItWasWritten)
{
    FailingDisk disk;
    SettingsFile settings(disk, "home");
    DisplayAttributes attributes;
    settings.ReadSettings(attributes);
    EXPECT_EQ(attributes, DisplayAttributes()) << "without a file";

    attributes.font_points = 20;
    attributes.timer_milliseconds = 100;
    attributes.slots[SlotIndex{3}] = {Colour{77}, 9, LineType::Dot};
    EXPECT_FALSE(settings.WriteSettings(attributes));
    const std::string bytes = disk.Bytes("home/Korvinth.ini");
    EXPECT_TRUE(bytes.starts_with("[Korvinth]\r\nAttribs="));
    EXPECT_LT(bytes.find("Coltab="), bytes.find("LDicke=2:2:2:9:2:"));
    EXPECT_LT(bytes.find("LDicke="), bytes.find("LArt=0:0:0:2:0:"));
    DisplayAttributes read;
    settings.ReadSettings(read);
    EXPECT_EQ(read, attributes);

    disk.Put("home/Korvinth.ini", "[Korvinth]\nLDicke=1:");
    settings.ReadSettings(read);
    attributes.slots[SlotIndex{0}].width = 1;
    attributes.slots[SlotIndex{1}].width = 0;
    EXPECT_EQ(read, attributes) << "missing keys leave their values";
}

TEST(SettingsFile, AnyBytesAreHarmless)
{
    std::mt19937 random(20240229);
    constexpr std::string_view kPieces[] = {"[Korvinth]", "Attribs=", "\n",          "\r\n",
                                            "Coltab=",    ":",        "]",           "=",
                                            ";",          "9e99",     "\xEF\xBB\xBF"};
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (int i = 0; i < 40; ++i) {
            bytes += kPieces[random() % std::size(kPieces)];
            bytes += static_cast<char>(random());
        }
        FailingDisk disk;
        disk.Put("Korvinth.ini", bytes);
        SettingsFile settings(disk, "");
        DisplayAttributes attributes;
        settings.ReadSettings(attributes);
        ASSERT_FALSE(settings.WriteSettings(attributes));
        DisplayAttributes read;
        settings.ReadSettings(read);
        ASSERT_EQ(read, attributes) << bytes;
    }
}

}  // namespace
}  // namespace korvinth::document
