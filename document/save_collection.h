// Puts a collection under its name so that, whatever happens, a complete file of it remains.
#pragma once

#include <string>
#include <string_view>

#include "files/file_system.h"

namespace korvinth::document {

// What is under the name before. Damaged: reading it ended with a message, and not all of it is in
// the list; it is kept under the name with ".defekt" appended (".defekt2" and so on when there is
// one).
enum class EarlierFile { Complete, Damaged };

// Saves the bytes of a collection under `name`. An existing file is renamed to the name with ".tmp"
// appended, the working collection is copied to the name and the bytes are written there through
// another ".tmp" copy. That copy is deleted only when a complete file bears the name; a working
// collection that is behind the bytes is brought up to date before. Returns "", or the German
// message; it names the ".tmp" copy when that remains. Refused, with nothing touched: names under
// which the working collection would be overwritten.
std::string SaveCollection(files::FileSystem& disk, const files::Path& name,
                           const files::Path& working, std::string_view bytes,
                           EarlierFile earlier = EarlierFile::Complete);

// Makes a collection file without entries. Returns "", or the German message.
std::string CreateEmptyCollection(files::FileSystem& disk, const files::Path& name);

}  // namespace korvinth::document
