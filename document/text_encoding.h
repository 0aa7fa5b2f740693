// The encodings of a collection file.
#pragma once

#include <string>
#include <string_view>

namespace korvinth::document {

// Windows-1252, or UTF-8 behind a byte order mark, to UTF-8. The five bytes that Windows-1252 does
// not define become the control characters of their numbers; bytes that are no UTF-8 behind the
// mark are read as Windows-1252.
std::string DecodeText(std::string_view bytes);

// Windows-1252; UTF-8 with a byte order mark when a character is none of that.
std::string EncodeText(std::string_view utf8);

}  // namespace korvinth::document
