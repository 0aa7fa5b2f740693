// The text of a collection file: reading and writing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

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

// The same in two steps: the blocks of the rows, as UTF-8, and the file around them. Who keeps the
// first has the second at little cost while the rows stay as they are.
std::string RowsText(const std::vector<CollectionEntry>& rows);
std::string WriteCollection(const CollectionEntry& buffer, std::string_view rows_text);

// An empty collection file.
inline constexpr std::string_view kEmptyCollection = "[Korvinth]\r\n\r\n[Funktionenplotter]\r\n";

}  // namespace korvinth::document
