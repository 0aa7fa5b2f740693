// Every operation by which the program touches files, and what is built from them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace korvinth::files {

using Path = std::filesystem::path;

// The single steps. Each returns what went wrong, or the empty code. A test puts in a disk that
// fails, or stops the program, at any of them.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    // False also when it cannot be found out; `fault` tells.
    virtual bool Exists(const Path& file, std::error_code& fault) = 0;
    virtual std::error_code Read(const Path& file, std::string& bytes) = 0;
    // Creates the file or empties it and writes all bytes.
    virtual std::error_code Write(const Path& file, std::string_view bytes) = 0;
    // The file's bytes are on the disk afterwards.
    virtual std::error_code Sync(const Path& file) = 0;
    // `to` is created or overwritten.
    virtual std::error_code Copy(const Path& from, const Path& to) = 0;
    // Replaces `to` in one step.
    virtual std::error_code Rename(const Path& from, const Path& to) = 0;
    // No fault when there is no such file.
    virtual std::error_code Remove(const Path& file) = 0;
};

// The system's files.
FileSystem& Disk();

// The name with an ending appended: "a.txt" and ".tmp" give "a.txt.tmp".
Path WithEnding(const Path& file, std::string_view ending);

// Writes beside the file and renames: whatever happens, either the old or the new content bears the
// name. What was written beside it is removed after a fault.
std::error_code ReplaceFile(FileSystem& disk, const Path& file, std::string_view bytes);

// What went wrong, in German where the system's own text is not: "Auf dem Datenträger ist kein
// Platz mehr".
std::string ErrorText(std::error_code fault);

// A file that one process at a time holds; it lets go of it when it ends, however it ends.
class FileLock
{
public:
    // Nothing when another process holds the file, or when it cannot be made.
    static std::optional<FileLock> Take(const Path& file);

    FileLock(FileLock&&) noexcept;
    FileLock& operator=(FileLock&&) noexcept;
    ~FileLock();

private:
    struct Held;
    explicit FileLock(std::unique_ptr<Held> held);
    std::unique_ptr<Held> held_;
};

}  // namespace korvinth::files
