// The general settings as their window edits them: fields of text that are checked one by one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "document/display_attributes.h"
#include "term/math_parser.h"

namespace korvinth::document {

// The settings that are typed, in the order of their window.
enum class Setting {
    XAxisName,
    YAxisName,
    FontPoints,
    AxisWidth,
    HelpLineWidth,
    XStep,
    YStep,
    SampleCount,
    NumericLimit,
    FamilyStep,
    FamilyCount,
    TimerInterval,
};
inline constexpr std::size_t kSettingCount = 12;

// What the program's windows and files allow.
inline constexpr int kFewestSettableSamples = 2;
inline constexpr int kMostSettableSamples = 20000;
inline constexpr int kMostFamilyMembers = 21;
inline constexpr std::size_t kLongestAxisName = 20;  // characters
// Bytes of a name or a term in a file, where kSignsOfItems are escaped.
inline constexpr std::size_t kLongestStoredText = 40;
inline constexpr std::string_view kSignsOfItems = "%;{}";

// The German name that messages give a field, and the label beside it.
std::string_view SettingName(Setting setting);

// What the field shows: numbers with a decimal comma, terms as they were typed.
std::string SettingText(const DisplayAttributes& attributes, Setting setting);

// Takes what was typed into a field; numbers may be terms and have decimal commas. Returns "", or
// the German refusal, which names the field; then the attributes stay as they were. Leaves no error
// in the parser.
std::string TakeSetting(DisplayAttributes& attributes, Setting setting, std::string_view text,
                        term::MathParser& parser);

// The form in files: terms as they are kept, numbers with shortest digits and decimal point.
std::string StoredSetting(const DisplayAttributes& attributes, Setting setting);

// Takes that form. A text beyond the bounds of the window is not taken. Terms need not have a value
// here: names in them may get theirs later.
void TakeStoredSetting(DisplayAttributes& attributes, Setting setting, std::string_view text);

// Copies what the window of the general settings edits and nothing else: visibility switches, the
// slots' looks, angle mode, zoom factors stay those of `to`.
void CopyGeneralSettings(const DisplayAttributes& from, DisplayAttributes& to);

// The value of a step term; NaN unless it is a finite number above 0. Leaves no error.
double StepValue(std::string_view text, term::MathParser& parser);

}  // namespace korvinth::document
