// Foreign bytes in messages: what a terminal may be shown of an argument.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvinth::app {

// True for well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view bytes);

// The text with every control character and every byte that is no UTF-8 replaced by "?", cut after
// `limit` bytes at a character's end, with "..." for the rest. Line feeds are control characters.
std::string Printable(std::string_view bytes, std::size_t limit = std::string::npos);

// The same in German quotation marks and short enough for one line.
std::string Quoted(std::string_view bytes);

}  // namespace korvinth::app
