// Names of files as the UTF-8 texts that the rest of the program speaks.
#pragma once

#include <string>
#include <string_view>

#include "files/file_system.h"

namespace korvinth::files {

std::string Utf8(const Path& path);
Path PathOf(std::string_view utf8);

}  // namespace korvinth::files
