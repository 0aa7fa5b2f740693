// The characters of a text in UTF-8.
#pragma once

#include <string_view>

namespace korvinth::render {

inline constexpr char32_t kReplacement = 0xFFFD;

// Takes the first character off; bytes that are no UTF-8 come one by one as kReplacement.
// `utf8` is not empty.
char32_t TakeCharacter(std::string_view& utf8);

}  // namespace korvinth::render
