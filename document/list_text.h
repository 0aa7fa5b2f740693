// What the text forms of the additional lines and points have in common.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"

namespace korvinth::document {

inline constexpr std::string_view kListSeparator = "\r\n";
inline constexpr Colour kLastColour = MakeColour(0xFF, 0xFF, 0xFF);

// The parts between the separators; one empty part for an empty text.
std::vector<std::string_view> SplitText(std::string_view text, std::string_view separator);

// The term in signs that a collection file takes: without line breaks, with round brackets for
// curly ones, and a blank after each "\" that a letter follows. Its value stays the same.
std::string StorableTerm(std::string_view term);

}  // namespace korvinth::document
