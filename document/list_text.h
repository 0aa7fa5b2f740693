// What the text forms of the additional lines and points have in common.
#pragma once

#include <string_view>
#include <vector>

#include "document/display_attributes.h"

namespace korvinth::document {

inline constexpr std::string_view kListSeparator = "\r\n";
inline constexpr Colour kLastColour = MakeColour(0xFF, 0xFF, 0xFF);

// The parts between the separators; one empty part for an empty text.
std::vector<std::string_view> SplitText(std::string_view text, std::string_view separator);

}  // namespace korvinth::document
