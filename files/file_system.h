// Every operation by which the program touches files, and what is built from them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace korvinth::files {

using Path = std::filesystem::path;

// What is no file with bytes of its own: a device or a pipe; folders have a fault of their own.
inline constexpr std::errc kNoOrdinaryFile = std::errc::invalid_seek;
// What Read takes at most; larger files are std::errc::file_too_large.
inline constexpr std::size_t kLargestFile = std::size_t{512} << 20U;

// The single steps. Each returns what went wrong, or the empty code. A test puts in a disk that
// fails, or stops the program, at any of them. What has a body here is the same on every system.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    // False also when it cannot be found out; `fault` tells.
    virtual bool Exists(const Path& file, std::error_code& fault) = 0;
    // Whether both names lead to one file, or would when it is made.
    virtual bool SameFile(const Path& first, const Path& second) = 0;
    // The file that a name leads to through symbolic links, the name itself when there is none yet.
    // A fault when it is no ordinary file or must not be written.
    virtual Path WriteTarget(const Path& file, std::error_code& fault) = 0;
    // All bytes of an ordinary file; none after a fault.
    virtual std::error_code Read(const Path& file, std::string& bytes) = 0;
    // Creates the file or empties it and writes all bytes.
    virtual std::error_code Write(const Path& file, std::string_view bytes) = 0;
    // The file's bytes and its name are on the disk afterwards.
    virtual std::error_code Sync(const Path& file) = 0;
    // `to` is overwritten, or created with the permissions of `from`; it is on the disk afterwards.
    virtual std::error_code Copy(const Path& from, const Path& to) = 0;
    // Gives `to` the permissions of `from`.
    virtual std::error_code CopyPermissions(const Path& from, const Path& to) = 0;
    // Replaces `to` in one step.
    virtual std::error_code Rename(const Path& from, const Path& to) = 0;
    // No fault when there is no such file.
    virtual std::error_code Remove(const Path& file) = 0;
    // The files whose names begin with that of `beginning`, beside it; none when the folder cannot
    // be read.
    virtual std::vector<Path> FilesBeginningWith(const Path& beginning);
    // Makes the folder and those above it that are missing.
    virtual std::error_code MakeFolders(const Path& folder);
};

// The system's files.
FileSystem& Disk();

// The name with an ending appended: "a.txt" and ".tmp" give "a.txt.tmp".
Path WithEnding(const Path& file, std::string_view ending);

// Writes beside the file and renames: whatever happens, either the old or the new content bears the
// name. What was written beside it is removed after a fault. The file keeps its permissions, a
// symbolic link its target.
std::error_code ReplaceFile(FileSystem& disk, const Path& file, std::string_view bytes);

// Removes what stopped replacements of the file have left beside it. Nobody replaces it meanwhile.
void RemoveLeftovers(FileSystem& disk, const Path& file);

// What went wrong, in German where the system's own text is not, without a full stop: "Auf dem
// Datenträger ist kein Platz mehr".
std::string ErrorText(std::error_code fault);

// A file that one process at a time holds; it lets go of it when it ends, however it ends.
class FileLock
{
public:
    // Nothing when another process holds the file, or when it cannot be made. The file stays,
    // empty, when nobody holds it any more.
    static std::optional<FileLock> Take(const Path& file);

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    FileLock(FileLock&&) noexcept;
    FileLock& operator=(FileLock&&) noexcept;
    ~FileLock();

private:
    struct Held;
    explicit FileLock(std::unique_ptr<Held> held);
    std::unique_ptr<Held> held_;
};

}  // namespace korvinth::files
