// The text of a collection file: reading, writing, encoding.
#pragma once

#include <string>
#include <string_view>

#include "document/collection.h"

namespace korvinth::document {

// Windows-1252, or UTF-8 behind a byte order mark; bytes that are neither stay readable signs.
std::string DecodeText(std::string_view bytes);
// Windows-1252; UTF-8 with a byte order mark when a character is none of that.
std::string EncodeText(std::string_view utf8);

enum class ReadMode { Open, Append };

// Reads the bytes of a file; the rows go behind those that are there, or replace them. Returns "",
// or the German message of the stage in which reading ended; the rows read so far stay, and the
// buffer entry is then not looked for. Time grows in proportion to the text.
std::string ReadCollection(std::string_view bytes, ReadMode mode, Collection& collection);

// The bytes of a file: the buffer entry, then all rows.
std::string WriteCollection(const Collection& collection);

// An empty collection file.
inline constexpr std::string_view kEmptyCollection = "[Korvinth]\r\n\r\n[Funktionenplotter]\r\n";

// What the text of a field becomes while it is typed, so that it comes back from a file as it is:
// the nearest text that reads the same. Both leave their own results as they are.
std::string StorableShortText(std::string_view typed);
std::string StorableLongText(std::string_view typed);  // lines may end in LF, CR or CR LF

}  // namespace korvinth::document
