#include "document/display_attributes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace korvinth::document {
namespace {

// Told apart on white, by people with red or green blindness too; the first six are the farthest
// apart from each other, since few plots have more rows.
constexpr Colour kPalette[] = {
    MakeColour(0x0B, 0x43, 0xD4),  // blue
    MakeColour(0xE4, 0x66, 0x12),  // vermilion
    MakeColour(0x19, 0x80, 0x54),  // green
    MakeColour(0x79, 0x2E, 0x91),  // purple
    MakeColour(0x91, 0x4F, 0x18),  // orange-brown
    MakeColour(0x0C, 0x6E, 0x6C),  // dark cyan
    MakeColour(0xF1, 0x09, 0x92),  // magenta
    MakeColour(0x31, 0x8D, 0xE6),  // sky blue
    MakeColour(0x12, 0xA6, 0x5F),  // light green
    MakeColour(0x87, 0x0F, 0xFF),  // violet
    MakeColour(0x2E, 0x52, 0x6B),  // slate
    MakeColour(0x8B, 0x06, 0xAA),  // red-violet
    MakeColour(0x13, 0x4D, 0x3A),  // dark green
};
static_assert(std::size(kPalette) == static_cast<std::size_t>(kSlotCount));

}  // namespace

SlotAttributes Drawable(const SlotAttributes& stored)
{
    SlotAttributes look = stored;
    look.width = std::clamp<std::int16_t>(stored.width, 1, kWidestLine);
    const int type = static_cast<int>(stored.type);
    if (type < 0 || type >= kLineTypeCount) look.type = LineType::Solid;
    return look;
}

DisplayAttributes::DisplayAttributes()
{
    for (SlotIndex slot : AllSlots()) {
        slots[slot].colour = kPalette[static_cast<std::size_t>(slot)];
    }
}

}  // namespace korvinth::document
