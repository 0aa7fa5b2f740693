// The text forms of the display attributes, in the settings file and in entries of a collection.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "document/display_attributes.h"

namespace korvinth::document {

// What the settings file reads of one value, in bytes.
inline constexpr std::size_t kLongestProfileValue = 499;

// Switches and general settings in one line of at most kLongestProfileValue bytes, without "}",
// without blanks at its ends. Items that this program does not know come last, as far as they fit.
std::string AttributesText(const DisplayAttributes& attributes);

// Picture leaves out what belongs to the user and not to a plot: places of the calculator, timer
// interval, zoom factors, font of the description.
enum class AttributeScope { Everything, Picture };

// Sets what the text states and keeps the items that are not known. What is missing or damaged
// stays as it was.
void TakeAttributesText(std::string_view text, AttributeScope scope, DisplayAttributes& attributes);

// Thirteen numbers, one a slot, each followed by ":".
std::string ColourTableText(const DisplayAttributes& attributes);
std::string LineWidthsText(const DisplayAttributes& attributes);
std::string LineTypesText(const DisplayAttributes& attributes);

// Pieces between colons from slot 0 on; their leading numbers count, rounded half to even. Slots
// beyond the pieces stay as they were.
void TakeColourTable(std::string_view text, DisplayAttributes& attributes);
void TakeLineWidths(std::string_view text, DisplayAttributes& attributes);
void TakeLineTypes(std::string_view text, DisplayAttributes& attributes);

}  // namespace korvinth::document
