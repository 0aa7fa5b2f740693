// Names of files as the UTF-8 texts that the rest of the program speaks.
#pragma once

#include <string>
#include <string_view>

#include "files/file_system.h"

namespace korvinth::files {

std::string Utf8(const Path& path);
Path PathOf(std::string_view utf8);

// True when what goes to stderr is seen at once by a person.
bool StderrIsTerminal();

}  // namespace korvinth::files
