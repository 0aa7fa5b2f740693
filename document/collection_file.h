// The text of a collection file: reading and writing.
#pragma once

#include <string>
#include <string_view>

#include "document/collection.h"
#include "document/storable_text.h"
#include "document/text_encoding.h"

namespace korvinth::document {

enum class ReadMode { Open, Append };

// Reads the bytes of a file; the rows go behind those that are there, or replace them. Returns "",
// or the German message of the stage in which reading ended; the rows read so far stay, and the
// buffer entry is then not looked for. Time grows in proportion to the text.
std::string ReadCollection(std::string_view bytes, ReadMode mode, Collection& collection);

// The bytes of a file: the buffer entry, then all rows.
std::string WriteCollection(const Collection& collection);

// An empty collection file.
inline constexpr std::string_view kEmptyCollection = "[Korvinth]\r\n\r\n[Funktionenplotter]\r\n";

}  // namespace korvinth::document
