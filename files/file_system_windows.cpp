// The system's files where it offers the calls of Windows.
#include "files/file_system.h"

#include <windows.h>

#include <aclapi.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "files/byte_stream.h"
#include "files/windows_fault.h"

namespace korvinth::files {
namespace {

constexpr DWORD kLook = 0;  // neither its bytes nor its rights are touched
// As on other systems, an open file can be written, renamed and removed by others.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// The attributes that are a user's wish.
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

std::error_code LastFault() { return WindowsFault(::GetLastError()); }

// One call takes at most so much.
DWORD Portion(std::size_t size)
{
    return static_cast<DWORD>(std::min(size, std::size_t{1} << 24U));
}

// An open file or folder; closes itself.
class Handle final : public ByteStream
{
public:
    Handle(const Path& file, DWORD access, DWORD creation = OPEN_EXISTING)
        // Without that flag a folder could not be told from a file that must not be opened.
        : handle_(::CreateFileW(file.c_str(), access, kShared, nullptr, creation,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
          number_(::GetLastError())
    {
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() override
    {
        if (IsOpen()) ::CloseHandle(handle_);
    }

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    // With OPEN_ALWAYS.
    bool IsNew() const { return IsOpen() && number_ != ERROR_ALREADY_EXISTS; }
    HANDLE Get() const { return handle_; }
    // Of opening.
    std::error_code Fault() const { return IsOpen() ? std::error_code() : WindowsFault(number_); }

    std::error_code ReadSome(std::span<char> room, std::size_t& count) const override
    {
        DWORD done = 0;
        if (::ReadFile(handle_, room.data(), Portion(room.size()), &done, nullptr) == 0) {
            return LastFault();
        }
        count = done;
        return {};
    }
    std::error_code WriteSome(std::string_view bytes, std::size_t& count) const override
    {
        DWORD done = 0;
        if (::WriteFile(handle_, bytes.data(), Portion(bytes.size()), &done, nullptr) == 0) {
            return LastFault();
        }
        count = done;
        return {};
    }

private:
    HANDLE handle_;
    DWORD number_;
};

// The fault of an opened file, of one that is no ordinary file as well.
std::error_code Inspect(const Handle& file, BY_HANDLE_FILE_INFORMATION& state)
{
    if (!file.IsOpen()) return file.Fault();
    if (::GetFileType(file.Get()) != FILE_TYPE_DISK) return std::make_error_code(kNoOrdinaryFile);
    if (::GetFileInformationByHandle(file.Get(), &state) == 0) return LastFault();
    if ((state.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    return {};
}

std::size_t SizeOf(const BY_HANDLE_FILE_INFORMATION& state)
{
    return (std::size_t{state.nFileSizeHigh} << 32U) | state.nFileSizeLow;
}

bool SameEntry(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b)
{
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

bool SameEntry(const Handle& a, const Handle& b)
{
    BY_HANDLE_FILE_INFORMATION first = {};
    BY_HANDLE_FILE_INFORMATION second = {};
    return ::GetFileInformationByHandle(a.Get(), &first) != 0 &&
           ::GetFileInformationByHandle(b.Get(), &second) != 0 && SameEntry(first, second);
}

Path DirectoryOf(const Path& file)
{
    const Path parent = file.parent_path();
    return parent.empty() ? Path(".") : parent;
}

bool SameName(const Path& a, const Path& b)
{
    const std::wstring first = a.filename().native();
    const std::wstring second = b.filename().native();
    return ::CompareStringOrdinal(first.data(), static_cast<int>(first.size()), second.data(),
                                  static_cast<int>(second.size()), TRUE) == CSTR_EQUAL;
}

// The place of an opened file, all links followed; the given name when the system does not tell.
Path FinalName(const Handle& opened, const Path& name)
{
    const auto ask = [&](wchar_t* room, std::size_t size) {
        return ::GetFinalPathNameByHandleW(opened.Get(), room, static_cast<DWORD>(size),
                                           FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    };
    std::wstring final_name(ask(nullptr, 0), L'\0');  // with the zero at the end
    const std::size_t length = ask(final_name.data(), final_name.size());
    if (length == 0 || length >= final_name.size()) return name;
    final_name.resize(length);
    return final_name;
}

// Who may do what with a file, as far as it is not inherited from the folder.
std::error_code CopyAccessList(const Path& from, const Path& to)
{
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR found = nullptr;
    DWORD number = ::GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                           nullptr, nullptr, &list, nullptr, &found);
    const std::unique_ptr<void, decltype(&::LocalFree)> owner(found, &::LocalFree);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (number == ERROR_SUCCESS &&
        ::GetSecurityDescriptorControl(found, &control, &revision) != 0) {
        const SECURITY_INFORMATION inherits = (control & SE_DACL_PROTECTED) != 0
                                                  ? PROTECTED_DACL_SECURITY_INFORMATION
                                                  : UNPROTECTED_DACL_SECURITY_INFORMATION;
        std::wstring name = to.native();  // the call wants one that it might write
        number = ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                                         DACL_SECURITY_INFORMATION | inherits, nullptr, nullptr,
                                         list, nullptr);
    }
    // File systems without permissions refuse to tell or to change them.
    const bool has_none = number == ERROR_NOT_SUPPORTED || number == ERROR_INVALID_FUNCTION;
    return number == ERROR_SUCCESS || has_none ? std::error_code() : WindowsFault(number);
}

class WindowsDisk final : public FileSystem
{
public:
    bool Exists(const Path& file, std::error_code& fault) override
    {
        const Handle look(file, kLook);
        fault = look.Fault();
        if (fault == std::errc::no_such_file_or_directory) fault.clear();
        return look.IsOpen();
    }

    bool SameFile(const Path& first, const Path& second) override
    {
        const Handle a(first, kLook);
        const Handle b(second, kLook);
        if (a.IsOpen() && b.IsOpen()) return SameEntry(a, b);
        if (a.IsOpen() || b.IsOpen()) return false;
        return SameName(first, second) &&
               SameEntry(Handle(DirectoryOf(first), kLook), Handle(DirectoryOf(second), kLook));
    }

    Path WriteTarget(const Path& file, std::error_code& fault) override
    {
        const Handle opened(file, GENERIC_WRITE);
        BY_HANDLE_FILE_INFORMATION state = {};
        fault = Inspect(opened, state);
        if (fault == std::errc::no_such_file_or_directory) fault.clear();
        // The administrator of a server may write into such a file all the same.
        const bool read_only = (state.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
        if (!fault && read_only) fault = std::make_error_code(std::errc::permission_denied);
        const DWORD attributes = ::GetFileAttributesW(file.c_str());
        const bool is_link = attributes != INVALID_FILE_ATTRIBUTES &&
                             (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        return opened.IsOpen() && is_link ? FinalName(opened, file) : file;
    }

    std::error_code Read(const Path& path, std::string& bytes) override
    {
        bytes.clear();
        const Handle file(path, GENERIC_READ);
        BY_HANDLE_FILE_INFORMATION state = {};
        if (const std::error_code fault = Inspect(file, state)) return fault;
        return ReadAll(file, SizeOf(state), bytes);
    }

    std::error_code Write(const Path& path, std::string_view bytes) override
    {
        const Handle file(path, GENERIC_WRITE, OPEN_ALWAYS);
        BY_HANDLE_FILE_INFORMATION state = {};
        if (const std::error_code fault = Inspect(file, state)) return fault;
        if (::SetEndOfFile(file.Get()) == 0) return LastFault();
        return WriteAll(file, bytes);
    }

    // The system keeps a journal of names.
    std::error_code Sync(const Path& path) override
    {
        const Handle file(path, GENERIC_WRITE);
        if (!file.IsOpen()) return file.Fault();
        return ::FlushFileBuffers(file.Get()) == 0 ? LastFault() : std::error_code();
    }

    std::error_code Copy(const Path& from, const Path& to) override
    {
        const Handle source(from, GENERIC_READ);
        BY_HANDLE_FILE_INFORMATION source_state = {};
        if (const std::error_code fault = Inspect(source, source_state)) return fault;
        const Handle target(to, GENERIC_WRITE, OPEN_ALWAYS);
        BY_HANDLE_FILE_INFORMATION target_state = {};
        if (const std::error_code fault = Inspect(target, target_state)) return fault;
        if (SameEntry(source_state, target_state)) {
            return std::make_error_code(std::errc::file_exists);
        }
        if (::SetEndOfFile(target.Get()) == 0) return LastFault();
        if (target.IsNew()) (void)CopyPermissions(from, to);
        if (const std::error_code fault = CopyAll(source, target)) return fault;
        return ::FlushFileBuffers(target.Get()) == 0 ? LastFault() : std::error_code();
    }

    std::error_code CopyPermissions(const Path& from, const Path& to) override
    {
        const DWORD wanted = ::GetFileAttributesW(from.c_str());
        const DWORD present = ::GetFileAttributesW(to.c_str());
        if (wanted == INVALID_FILE_ATTRIBUTES || present == INVALID_FILE_ATTRIBUTES) {
            return LastFault();
        }
        if (const std::error_code fault = CopyAccessList(from, to)) return fault;
        const DWORD merged = (present & ~kKeptAttributes) | (wanted & kKeptAttributes);
        if (merged == present || ::SetFileAttributesW(to.c_str(), merged) != 0) return {};
        return LastFault();
    }

    std::error_code Rename(const Path& from, const Path& to) override
    {
        // A scanner for viruses may look into a new file just now; it soon lets go of it.
        constexpr int kMostTries = 20;
        constexpr DWORD kPauseInMilliseconds = 25;
        std::error_code fault;
        for (int i = 0; i < kMostTries; ++i) {
            const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
            if (::MoveFileExW(from.c_str(), to.c_str(), how) != 0) return {};
            fault = LastFault();
            if (fault != std::errc::device_or_resource_busy) break;
            ::Sleep(kPauseInMilliseconds);
        }
        return fault;
    }

    std::error_code Remove(const Path& file) override
    {
        if (::DeleteFileW(file.c_str()) != 0) return {};
        const std::error_code fault = LastFault();
        return fault == std::errc::no_such_file_or_directory ? std::error_code() : fault;
    }
};

}  // namespace

FileSystem& Disk()
{
    static WindowsDisk disk;
    return disk;
}

struct FileLock::Held
{
    explicit Held(const Path& path) : file(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS) {}
    Handle file;
};

std::optional<FileLock> FileLock::Take(const Path& file)
{
    auto held = std::make_unique<Held>(file);
    BY_HANDLE_FILE_INFORMATION state = {};
    if (Inspect(held->file, state)) return std::nullopt;
    // The system takes it back from a process that ended, however it did.
    OVERLAPPED first_byte = {};
    const DWORD how = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (::LockFileEx(held->file.Get(), how, 0, 1, 0, &first_byte) == 0) return std::nullopt;
    return FileLock(std::move(held));
}

FileLock::FileLock(std::unique_ptr<Held> held) : held_(std::move(held)) {}
FileLock::FileLock(FileLock&&) noexcept = default;
FileLock& FileLock::operator=(FileLock&&) noexcept = default;
FileLock::~FileLock() = default;

}  // namespace korvinth::files
