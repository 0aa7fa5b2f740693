// What a disk does with folders, the same on every system.
#pragma once

#include <system_error>
#include <vector>

#include "files/file_system.h"

namespace korvinth::files {

// As FileSystem::FilesBeginningWith and FileSystem::MakeFolders.
std::vector<Path> ListFilesBeginningWith(const Path& beginning);
std::error_code MakeFoldersOf(const Path& folder);

}  // namespace korvinth::files
