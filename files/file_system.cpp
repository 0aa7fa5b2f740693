#include "files/file_system.h"

#include <random>

#include "files/path_text.h"

namespace korvinth::files {
namespace {

constexpr std::string_view kNeighbourEnding = ".neu";  // and a number

// No other process writes under this name, not even one that replaces the same file now.
Path NeighbourOf(const Path& file)
{
    return WithEnding(file, std::string(kNeighbourEnding) + std::to_string(std::random_device()()));
}

bool EndsLikeNeighbour(const Path& path)
{
    const std::string name = Utf8(path.filename());
    const std::size_t last = name.find_last_not_of("0123456789");
    return last + 1 < name.size() && name.substr(0, last + 1).ends_with(kNeighbourEnding);
}

}  // namespace

std::vector<Path> FileSystem::FilesBeginningWith(const Path& beginning)
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

std::error_code FileSystem::MakeFolders(const Path& folder)
{
    std::error_code fault;
    std::filesystem::create_directories(folder, fault);
    return fault;
}

Path WithEnding(const Path& file, std::string_view ending)
{
    Path path = file;
    path += ending;
    return path;
}

std::error_code ReplaceFile(FileSystem& disk, const Path& file, std::string_view bytes)
{
    std::error_code fault;
    const Path target = disk.WriteTarget(file, fault);
    if (fault) return fault;
    const bool existed = disk.Exists(target, fault);
    if (fault) return fault;
    const Path neighbour = NeighbourOf(target);
    fault = disk.Write(neighbour, bytes);
    if (!fault && existed) fault = disk.CopyPermissions(target, neighbour);
    if (!fault) fault = disk.Sync(neighbour);
    if (!fault) fault = disk.Rename(neighbour, target);
    if (fault) disk.Remove(neighbour);
    return fault;
}

void RemoveLeftovers(FileSystem& disk, const Path& file)
{
    for (const Path& path : disk.FilesBeginningWith(WithEnding(file, kNeighbourEnding))) {
        if (EndsLikeNeighbour(path)) disk.Remove(path);
    }
}

}  // namespace korvinth::files
