#include "document/attributes_text.h"


#include "document/list_text.h"
#include "document/number_text.h"

namespace korvinth::document {
namespace {

template <class Get>
std::string TableText(const DisplayAttributes& attributes, Get get)
{
    std::string text;
    for (const SlotAttributes& slot : attributes.slots) {
        text += std::to_string(static_cast<std::int64_t>(get(slot))) + ":";
    }
    return text;
}

template <class Set>
void TakeTable(std::string_view text, DisplayAttributes& attributes, Set set)
{
    std::size_t place = 0;
    for (const std::string_view piece : SplitText(text, ":")) {
        if (place >= static_cast<std::size_t>(kSlotCount)) break;
        set(attributes.slots[SlotIndex{static_cast<std::int16_t>(place++)}],
            RoundHalfEven(LeadingNumber(piece)));
    }
}

}  // namespace

std::string AttributesText(const DisplayAttributes& attributes)
{
    return "family=" + std::to_string(attributes.family_count);
}

void TakeAttributesText(std::string_view text, AttributeScope, DisplayAttributes& attributes)
{
    if (text.starts_with("family=")) {
        attributes.family_count = static_cast<int>(LeadingNumber(text.substr(7)));
    }
}

std::string ColourTableText(const DisplayAttributes& attributes)
{
    return TableText(attributes, [](const SlotAttributes& slot) { return slot.colour; });
}

std::string LineWidthsText(const DisplayAttributes& attributes)
{
    return TableText(attributes, [](const SlotAttributes& slot) { return slot.width; });
}

std::string LineTypesText(const DisplayAttributes& attributes)
{
    return TableText(attributes, [](const SlotAttributes& slot) { return slot.type; });
}

void TakeColourTable(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::int64_t number) {
        slot.colour = Colour{static_cast<std::int32_t>(number)};
    });
}

void TakeLineWidths(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::int64_t number) {
        slot.width = static_cast<std::int16_t>(number);
    });
}

void TakeLineTypes(std::string_view text, DisplayAttributes& attributes)
{
    TakeTable(text, attributes, [](SlotAttributes& slot, std::int64_t number) {
        slot.type = LineType{static_cast<std::int16_t>(number)};
    });
}

}  // namespace korvinth::document
