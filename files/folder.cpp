#include "files/folder.h"

#include <filesystem>

namespace korvinth::files {

std::vector<Path> ListFilesBeginningWith(const Path& beginning)
{
    const Path wanted = beginning.filename();
    const Path parent = beginning.parent_path();
    std::vector<Path> found;
    std::error_code fault;
    std::filesystem::directory_iterator entry(parent.empty() ? Path(".") : parent, fault);
    for (; !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
        const Path name = entry->path().filename();
        if (name.native().starts_with(wanted.native())) found.push_back(entry->path());
    }
    return found;
}

std::error_code MakeFoldersOf(const Path& folder)
{
    std::error_code fault;
    std::filesystem::create_directories(folder, fault);
    return fault;
}

}  // namespace korvinth::files
