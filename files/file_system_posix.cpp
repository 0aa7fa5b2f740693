// The system's files where it offers the calls of POSIX. No other source makes such calls.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "files/byte_stream.h"
#include "files/file_system.h"

namespace korvinth::files {
namespace {

constexpr mode_t kPermissionsOfNewFiles = 0666;  // less what the user's mask takes away
constexpr mode_t kPermissionBits = 07777;

std::error_code LastFault() { return {errno, std::generic_category()}; }

// Calls until no signal interrupts it.
template <class Call>
auto Insist(Call call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

// An open file; closes itself.
class Descriptor final : public ByteStream
{
public:
    Descriptor(const Path& file, int flags)
        // A pipe or a device must not hold the program up.
        : number_(Insist([&] {
              // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's own function
              return ::open(file.c_str(), flags | O_CLOEXEC | O_NONBLOCK, kPermissionsOfNewFiles);
          }))
    {
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() override { Close(); }

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

    // Some disks tell a failed write only now.
    std::error_code Close()
    {
        const int number = std::exchange(number_, -1);
        // After a signal the number is closed as well.
        if (number >= 0 && ::close(number) != 0 && errno != EINTR) return LastFault();
        return {};
    }

    std::error_code ReadSome(std::span<char> room, std::size_t& count) const override
    {
        return Count(Insist([&] { return ::read(number_, room.data(), room.size()); }), count);
    }
    std::error_code WriteSome(std::string_view bytes, std::size_t& count) const override
    {
        return Count(Insist([&] { return ::write(number_, bytes.data(), bytes.size()); }), count);
    }

private:
    static std::error_code Count(ssize_t result, std::size_t& count)
    {
        if (result < 0) return LastFault();
        count = static_cast<std::size_t>(result);
        return {};
    }

    int number_ = -1;
};

std::error_code Judge(const struct stat& state)
{
    if (S_ISDIR(state.st_mode)) return std::make_error_code(std::errc::is_a_directory);
    if (!S_ISREG(state.st_mode)) return std::make_error_code(kNoOrdinaryFile);
    return {};
}

// The fault of an opened file, of one that is no ordinary file as well.
std::error_code Inspect(const Descriptor& file, struct stat& state)
{
    if (!file.IsOpen() || ::fstat(file.Number(), &state) != 0) return LastFault();
    return Judge(state);
}

std::error_code SyncOpened(const Descriptor& file)
{
    if (Insist([&] { return ::fsync(file.Number()); }) != 0) return LastFault();
    return {};
}

Path DirectoryOf(const Path& file)
{
    const Path parent = file.parent_path();
    return parent.empty() ? Path(".") : parent;
}

// Puts the names of a file's directory onto the disk. A directory that cannot be opened, and a file
// system that has no such call, leave it at what they promise themselves.
void SyncDirectoryOf(const Path& file)
{
    const Descriptor directory(DirectoryOf(file), O_RDONLY | O_DIRECTORY);
    if (directory.IsOpen()) (void)SyncOpened(directory);
}

bool SameEntry(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Where a symbolic link points to; the file need not be there.
std::error_code FollowLinks(Path& file)
{
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code fault;
        const Path target = std::filesystem::read_symlink(file, fault);
        if (fault) return {};  // no link
        file = target.is_absolute() ? target : DirectoryOf(file) / target;
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

class PosixDisk final : public FileSystem
{
public:
    bool Exists(const Path& file, std::error_code& fault) override
    {
        return std::filesystem::exists(file, fault);
    }

    bool SameFile(const Path& first, const Path& second) override
    {
        struct stat a = {};
        struct stat b = {};
        const bool first_exists = ::stat(first.c_str(), &a) == 0;
        const bool second_exists = ::stat(second.c_str(), &b) == 0;
        if (first_exists && second_exists) return SameEntry(a, b);
        if (first_exists || second_exists) return false;
        return first.filename() == second.filename() &&
               ::stat(DirectoryOf(first).c_str(), &a) == 0 &&
               ::stat(DirectoryOf(second).c_str(), &b) == 0 && SameEntry(a, b);
    }

    Path WriteTarget(const Path& file, std::error_code& fault) override
    {
        Path target = file;
        fault = FollowLinks(target);
        struct stat state = {};
        if (fault || ::stat(target.c_str(), &state) != 0) return target;
        fault = Judge(state);
        if (!fault && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
            fault = LastFault();
        }
        return target;
    }

    std::error_code Read(const Path& path, std::string& bytes) override
    {
        bytes.clear();
        const Descriptor file(path, O_RDONLY);
        struct stat state = {};
        if (const std::error_code fault = Inspect(file, state)) return fault;
        return ReadAll(file, static_cast<std::size_t>(std::max<off_t>(state.st_size, 0)), bytes);
    }

    std::error_code Write(const Path& path, std::string_view bytes) override
    {
        Descriptor file(path, O_WRONLY | O_CREAT);
        struct stat state = {};
        if (const std::error_code fault = Inspect(file, state)) return fault;
        if (::ftruncate(file.Number(), 0) != 0) return LastFault();
        if (const std::error_code fault = WriteAll(file, bytes)) return fault;
        return file.Close();
    }

    std::error_code Sync(const Path& path) override
    {
        const Descriptor file(path, O_RDONLY);
        if (!file.IsOpen()) return LastFault();
        const std::error_code fault = SyncOpened(file);
        SyncDirectoryOf(path);
        return fault;
    }

    std::error_code Copy(const Path& from, const Path& to) override
    {
        const Descriptor source(from, O_RDONLY);
        struct stat source_state = {};
        if (const std::error_code fault = Inspect(source, source_state)) return fault;
        const bool is_new = ::access(to.c_str(), F_OK) != 0;
        Descriptor target(to, O_WRONLY | O_CREAT);
        struct stat target_state = {};
        if (const std::error_code fault = Inspect(target, target_state)) return fault;
        if (SameEntry(source_state, target_state)) {
            return std::make_error_code(std::errc::file_exists);
        }
        if (::ftruncate(target.Number(), 0) != 0) return LastFault();
        if (is_new) (void)::fchmod(target.Number(), source_state.st_mode & kPermissionBits);
        if (const std::error_code fault = CopyAll(source, target)) return fault;
        if (const std::error_code fault = SyncOpened(target)) return fault;
        SyncDirectoryOf(to);
        return target.Close();
    }

    std::error_code CopyPermissions(const Path& from, const Path& to) override
    {
        struct stat wanted = {};
        struct stat present = {};
        if (::stat(from.c_str(), &wanted) != 0 || ::stat(to.c_str(), &present) != 0) {
            return LastFault();
        }
        // File systems without permissions refuse to change them.
        if (((wanted.st_mode ^ present.st_mode) & kPermissionBits) == 0) return {};
        if (::chmod(to.c_str(), wanted.st_mode & kPermissionBits) != 0) return LastFault();
        return {};
    }

    std::error_code Rename(const Path& from, const Path& to) override
    {
        if (::rename(from.c_str(), to.c_str()) != 0) return LastFault();
        SyncDirectoryOf(to);
        return {};
    }

    std::error_code Remove(const Path& file) override
    {
        if (::unlink(file.c_str()) != 0) return errno == ENOENT ? std::error_code() : LastFault();
        SyncDirectoryOf(file);
        return {};
    }
};

}  // namespace

FileSystem& Disk()
{
    static PosixDisk disk;
    return disk;
}

struct FileLock::Held
{
    explicit Held(const Path& path) : file(path, O_RDWR | O_CREAT) {}
    Descriptor file;
};

std::optional<FileLock> FileLock::Take(const Path& file)
{
    auto held = std::make_unique<Held>(file);
    struct stat state = {};
    if (Inspect(held->file, state)) return std::nullopt;
    // The system takes it back from a process that ended, however it did.
    if (Insist([&] { return ::flock(held->file.Number(), LOCK_EX | LOCK_NB); }) != 0) {
        return std::nullopt;
    }
    return FileLock(std::move(held));
}

FileLock::FileLock(std::unique_ptr<Held> held) : held_(std::move(held)) {}
FileLock::FileLock(FileLock&&) noexcept = default;
FileLock& FileLock::operator=(FileLock&&) noexcept = default;
FileLock::~FileLock() = default;

}  // namespace korvinth::files
