// Signs that would disturb a text form, written as "%" and two hexadecimal digits.
#pragma once

#include <string>
#include <string_view>

namespace korvinth::document {

// Escapes `signs`, among which "%" has to be, and control characters.
std::string EscapeSigns(std::string_view text, std::string_view signs);
// A "%" without two hexadecimal digits stands for itself.
std::string UnescapeSigns(std::string_view text);

}  // namespace korvinth::document
