// The settings file. Input: section, key and value, each a line, then the text of the file.
#include "document/settings_file.h"

#include <algorithm>

#include "document/attributes_text.h"
#include "fuzz/fuzzing.h"
#include "term/words.h"
#include "tests/files/failing_disk.h"

namespace {

using namespace korvinth;
using namespace korvinth::document;

// What a program may ask for: a name with something in it, without the signs that end it.
bool IsSetting(std::string_view name, std::string_view forbidden)
{
    return !name.empty() && name.find_first_of(forbidden) == name.npos &&
           std::ranges::none_of(name, [](char c) { return static_cast<unsigned char>(c) <= ' '; });
}

void CheckValues(const std::vector<std::string>& lines)
{
    const std::string& section = lines[0];
    const std::string& key = lines[1];
    std::string value = lines[2];
    if (!IsSetting(section, "[]") || !IsSetting(key, "=;[")) return;
    // A value has no blanks around it and is one line.
    const auto is_blank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    if (std::ranges::any_of(value, [](char c) { return c == '\r' || c == '\0'; })) return;
    if (!value.empty() && (is_blank(value.front()) || is_blank(value.back()))) return;
    std::string profile = lines[3];
    const std::string other = ProfileValue(profile, section, key + "2");
    SetProfileValue(profile, section, key, value);
    value.resize(std::min(value.size(), kLongestProfileValue));
    const std::string read = ProfileValue(profile, section, key);
    fuzzing::Require(read == value, "a value comes back", profile, read);
    fuzzing::Require(ProfileValue(profile, section, key + "2") == other, "others stay", profile);
    std::string again = profile;
    SetProfileValue(again, section, key, value);
    fuzzing::Require(ProfileValue(again, section, key) == value, "once more", profile, again);
}

void CheckFile(std::string_view bytes)
{
    files::FailingDisk disk;
    disk.Put("home/Korvinth.ini", bytes);
    SettingsFile settings(disk, "home");
    DisplayAttributes first;
    settings.ReadSettings(first);
    fuzzing::Require(!settings.WriteSettings(first), "the settings can be written");
    DisplayAttributes second;
    settings.ReadSettings(second);
    fuzzing::Require(AttributesText(second) == AttributesText(first), "the text comes back",
                     AttributesText(first), AttributesText(second));
    // Of those that the program does not know, only as many are written as fit.
    first.unknown_items.clear();
    second.unknown_items.clear();
    fuzzing::Require(second == first, "the settings come back", AttributesText(first),
                     AttributesText(second));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = fuzzing::Input(data, size);
    const std::vector<std::string> lines = fuzzing::Lines(input, 4);
    if (lines.size() == 4) {
        CheckValues(lines);
        CheckFile(lines[3]);
    }
    return 0;
}
