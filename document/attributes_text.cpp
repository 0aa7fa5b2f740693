#include "document/attributes_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <concepts>
#include <iterator>
#include <limits>
#include <vector>

#include "document/calculator.h"
#include "document/escaped_signs.h"
#include "document/general_settings.h"
#include "document/list_text.h"
#include "document/number_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using Attributes = DisplayAttributes;

// The text form: items joined by ";", each a letter, "=" and a value.
constexpr std::string_view kItemSeparator = ";";
constexpr std::string_view kNumberSeparator = ",";

// Files hold one digit for each; a new one goes to the end.
constexpr bool Attributes::*kSwitches[] = {
    &Attributes::x_numbers,      &Attributes::y_numbers,
    &Attributes::help_lines,     &Attributes::extra_help_lines,
    &Attributes::axes,           &Attributes::axis_names,
    &Attributes::lines,          &Attributes::points,
    &Attributes::graph_names,    &Attributes::detect_integrals,
    &Attributes::smooth_drawing, &Attributes::constant_sample_count,
};

constexpr Colour Attributes::*kColours[] = {
    &Attributes::background,       &Attributes::axis_colour, &Attributes::number_colour,
    &Attributes::help_line_colour, &Attributes::line_colour, &Attributes::extra_help_line_colour,
};

// The whole text as a number between two bounds; false, and nothing changed, for any other.
template <class Number>
bool ReadNumber(std::string_view text, Number lowest, Number highest, Number& value)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end) return false;
    if (!(number >= lowest && number <= highest)) return false;
    value = number;
    return true;
}

template <class Enum>
void ReadEnum(std::string_view text, Enum first, Enum last, Enum& value)
{
    int number = 0;
    if (ReadNumber(text, static_cast<int>(first), static_cast<int>(last), number)) {
        value = static_cast<Enum>(number);
    }
}

std::string_view Part(std::string_view text, std::size_t index)
{
    const std::vector<std::string_view> parts = SplitText(text, kNumberSeparator);
    return index < parts.size() ? parts[index] : std::string_view();
}

std::string SwitchesText(const Attributes& attributes)
{
    std::string text;
    for (const auto flag : kSwitches) text += attributes.*flag ? '1' : '0';
    return text;
}

void TakeSwitches(std::string_view text, Attributes& attributes)
{
    const std::size_t count = std::min(text.size(), std::size(kSwitches));
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] == '0' || text[i] == '1') attributes.*kSwitches[i] = text[i] == '1';
    }
}

std::string ColoursText(const Attributes& attributes)
{
    std::string text;
    for (const auto colour : kColours) {
        if (!text.empty()) text += kNumberSeparator;
        text += std::to_string(static_cast<int>(attributes.*colour));
    }
    return text;
}

void TakeColours(std::string_view text, Attributes& attributes)
{
    for (std::size_t i = 0; i < std::size(kColours); ++i) {
        ReadEnum(Part(text, i), Colour{}, kLastColour, attributes.*kColours[i]);
    }
}

template <Setting kSetting>
std::string SettingItemText(const Attributes& attributes)
{
    return EscapeSigns(StoredSetting(attributes, kSetting), kSignsOfItems);
}

template <Setting kSetting>
void TakeSettingItem(std::string_view text, Attributes& attributes)
{
    TakeStoredSetting(attributes, kSetting, UnescapeSigns(text));
}

// A digit for the mode, then the term.
template <AxisStep Attributes::*kStep, Setting kSetting>
std::string StepText(const Attributes& attributes)
{
    return std::to_string(static_cast<int>((attributes.*kStep).mode)) +
           SettingItemText<kSetting>(attributes);
}

template <AxisStep Attributes::*kStep, Setting kSetting>
void TakeStepText(std::string_view text, Attributes& attributes)
{
    ReadEnum(text.substr(0, 1), StepMode::Automatic, StepMode::MultiplesOfPi,
             (attributes.*kStep).mode);
    if (!text.empty()) TakeSettingItem<kSetting>(text.substr(1), attributes);
}

std::string AngleModeText(const Attributes& attributes)
{
    return std::to_string(static_cast<int>(attributes.angle_mode));
}

void TakeAngleMode(std::string_view text, Attributes& attributes)
{
    ReadEnum(text, term::TrigMode::Radians, term::TrigMode::Grads, attributes.angle_mode);
}

std::string RatioText(const Attributes& attributes)
{
    return std::to_string(static_cast<int>(attributes.kept_ratio));
}

void TakeRatio(std::string_view text, Attributes& attributes)
{
    ReadEnum(text, KeptRatio::None, KeptRatio::Y, attributes.kept_ratio);
}

std::string ZoomText(const Attributes& attributes)
{
    return ShortestText(attributes.zoom_factor_x) + std::string(kNumberSeparator) +
           ShortestText(attributes.zoom_factor_y);
}

void TakeZoom(std::string_view text, Attributes& attributes)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    ReadNumber(Part(text, 0), kSmallestZoomFactor, kLargest, attributes.zoom_factor_x);
    ReadNumber(Part(text, 1), kSmallestZoomFactor, kLargest, attributes.zoom_factor_y);
}

std::string PlacesText(const Attributes& attributes)
{
    return std::to_string(attributes.calculator_places);
}

void TakePlaces(std::string_view text, Attributes& attributes)
{
    ReadNumber(text, 0, kMostDecimalPlaces, attributes.calculator_places);
}

std::string DescriptionText(const Attributes& attributes)
{
    return std::to_string(attributes.description_points) + std::string(kNumberSeparator) +
           (attributes.description_follows_window ? "1" : "0");
}

void TakeDescription(std::string_view text, Attributes& attributes)
{
    ReadNumber(Part(text, 0), kSmallestDescription, kLargestDescription,
               attributes.description_points);
    const std::string_view follows = Part(text, 1);
    if (follows == "0" || follows == "1") attributes.description_follows_window = follows == "1";
}

struct Item
{
    char key;
    AttributeScope scope;  // Picture: it belongs to a plot
    std::string (*text)(const Attributes&);
    void (*take)(std::string_view, Attributes&);
};

template <Setting kSetting>
constexpr Item SettingItem(char key, AttributeScope scope = AttributeScope::Picture)
{
    return {key, scope, SettingItemText<kSetting>, TakeSettingItem<kSetting>};
}

// In the order of the text, which neither begins nor ends with a name.
constexpr Item kItems[] = {
    {'s', AttributeScope::Picture, SwitchesText, TakeSwitches},
    {'c', AttributeScope::Picture, ColoursText, TakeColours},
    {'w', AttributeScope::Picture, AngleModeText, TakeAngleMode},
    {'r', AttributeScope::Picture, RatioText, TakeRatio},
    SettingItem<Setting::FontPoints>('f'),
    SettingItem<Setting::AxisWidth>('a'),
    SettingItem<Setting::HelpLineWidth>('h'),
    SettingItem<Setting::XAxisName>('x'),
    SettingItem<Setting::YAxisName>('y'),
    {'X', AttributeScope::Picture, StepText<&Attributes::x_step, Setting::XStep>,
     TakeStepText<&Attributes::x_step, Setting::XStep>},
    {'Y', AttributeScope::Picture, StepText<&Attributes::y_step, Setting::YStep>,
     TakeStepText<&Attributes::y_step, Setting::YStep>},
    SettingItem<Setting::SampleCount>('n'),
    SettingItem<Setting::NumericLimit>('l'),
    SettingItem<Setting::FamilyStep>('S'),
    SettingItem<Setting::FamilyCount>('N'),
    {'z', AttributeScope::Everything, ZoomText, TakeZoom},
    {'k', AttributeScope::Everything, PlacesText, TakePlaces},
    SettingItem<Setting::TimerInterval>('t', AttributeScope::Everything),
    {'d', AttributeScope::Everything, DescriptionText, TakeDescription},
};

// The known item that a text is, a damaged one included.
const Item* FindItem(std::string_view text)
{
    if (text.size() > 1 && text[1] != '=') return nullptr;
    const auto* const found = std::ranges::find(kItems, text.front(), &Item::key);
    return found == std::end(kItems) ? nullptr : found;
}

bool IsStorable(std::string_view item)
{
    return std::ranges::none_of(
        item, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '}'; });
}

// The items of a text without blanks around them, the empty ones left out.
std::vector<std::string_view> ItemsOf(std::string_view text)
{
    std::vector<std::string_view> items = SplitText(text, kItemSeparator);
    for (std::string_view& item : items) item = term::TrimBlanks(item);
    std::erase(items, std::string_view());
    return items;
}

void AppendItem(std::string& text, std::string_view item)
{
    const std::size_t separator = text.empty() ? 0 : kItemSeparator.size();
    if (text.size() + separator + item.size() > kLongestProfileValue) return;
    if (separator > 0) text += kItemSeparator;
    text += item;
}

std::string_view KeyOf(std::string_view item) { return item.substr(0, item.find('=')); }

// The new items take the place of those of their keys; of the others the last are dropped when all
// together are too long.
std::string MergedItems(const std::vector<std::string_view>& items, std::string_view earlier)
{
    std::string merged;
    for (const std::string_view item : items) AppendItem(merged, item);
    for (const std::string_view item : ItemsOf(earlier)) {
        const bool replaced = std::ranges::find(items, KeyOf(item), KeyOf) != items.end();
        if (!replaced) AppendItem(merged, item);
    }
    return merged;
}

template <std::integral Number>
Number ReadTableNumber(std::string_view piece)
{
    const std::int64_t number = RoundHalfEven(LeadingNumber(piece));
    return static_cast<Number>(std::clamp<std::int64_t>(number, std::numeric_limits<Number>::min(),
                                                        std::numeric_limits<Number>::max()));
}

// Deliberate: the empty piece behind the last colon counts, as 0, unless its slot is beyond the
// end.
template <class Store>
void TakeTable(std::string_view text, Attributes& attributes, Store store)
{
    if (text.empty()) return;
    for (const SlotIndex slot : AllSlots()) {
        const std::size_t end = text.find(':');
        store(attributes.slots[slot], text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

template <class Number>
std::string TableText(const Attributes& attributes, Number number)
{
    std::string text;
    for (const SlotAttributes& slot : attributes.slots) {
        text += std::to_string(number(slot)) + ":";
    }
    return text;
}

}  // namespace

std::string AttributesText(const DisplayAttributes& attributes)
{
    std::string text;
    for (const Item& item : kItems) {
        if (!text.empty()) text += kItemSeparator;
        text += item.key;
        text += '=';
        text += item.text(attributes);
    }
    for (const std::string_view item : ItemsOf(attributes.unknown_items)) AppendItem(text, item);
    return text;
}

void TakeAttributesText(std::string_view text, AttributeScope scope, DisplayAttributes& attributes)
{
    std::vector<std::string_view> unknown;
    for (const std::string_view piece : ItemsOf(text)) {
        const Item* const item = FindItem(piece);
        if (item == nullptr) {
            if (IsStorable(piece)) unknown.push_back(piece);
        } else if (piece.size() > 1 &&
                   (scope == AttributeScope::Everything || item->scope == scope)) {
            item->take(piece.substr(2), attributes);
        }
    }
    if (!unknown.empty()) {
        attributes.unknown_items = MergedItems(unknown, attributes.unknown_items);
    }
}

std::string ColourTableText(const DisplayAttributes& attributes)
{
    return TableText(attributes,
                     [](const SlotAttributes& slot) { return static_cast<int>(slot.colour); });
}

std::string LineWidthsText(const DisplayAttributes& attributes)
{
    return TableText(attributes, [](const SlotAttributes& slot) { return slot.width; });
}

std::string LineTypesText(const DisplayAttributes& attributes)
{
    return TableText(attributes,
                     [](const SlotAttributes& slot) { return static_cast<int>(slot.type); });
}

void TakeColourTable(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::string_view piece) {
        slot.colour = Colour{ReadTableNumber<std::int32_t>(piece)};
    });
}

void TakeLineWidths(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::string_view piece) {
        slot.width = ReadTableNumber<std::int16_t>(piece);
    });
}

void TakeLineTypes(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::string_view piece) {
        slot.type = LineType{ReadTableNumber<std::int16_t>(piece)};
    });
}

}  // namespace korvinth::document
