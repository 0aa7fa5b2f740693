#include "files/file_system.h"

#include <random>

namespace korvinth::files {
namespace {

// No other process writes under this name, not even one that replaces the same file now.
Path NeighbourOf(const Path& file)
{
    return WithEnding(file, ".neu" + std::to_string(std::random_device()()));
}

}  // namespace

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

}  // namespace korvinth::files
