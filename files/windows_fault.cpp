#include "files/windows_fault.h"

#include <windows.h>

#include <array>

#include "files/path_text.h"

namespace korvinth::files {
namespace {

struct Meaning
{
    DWORD number;
    std::errc fault;
};

constexpr Meaning kMeanings[] = {
    {ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_DRIVE, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NET_NAME, std::errc::no_such_file_or_directory},
    {ERROR_DIRECTORY, std::errc::not_a_directory},
    {ERROR_FILE_EXISTS, std::errc::file_exists},
    {ERROR_ALREADY_EXISTS, std::errc::file_exists},
    {ERROR_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_NETWORK_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_PRIVILEGE_NOT_HELD, std::errc::operation_not_permitted},
    {ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    {ERROR_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_FILE_TOO_LARGE, std::errc::file_too_large},
    {ERROR_NOT_ENOUGH_MEMORY, std::errc::not_enough_memory},
    {ERROR_OUTOFMEMORY, std::errc::not_enough_memory},
    {ERROR_CRC, std::errc::io_error},
    {ERROR_SEEK, std::errc::io_error},
    {ERROR_SECTOR_NOT_FOUND, std::errc::io_error},
    {ERROR_WRITE_FAULT, std::errc::io_error},
    {ERROR_READ_FAULT, std::errc::io_error},
    {ERROR_GEN_FAILURE, std::errc::io_error},
    {ERROR_IO_DEVICE, std::errc::io_error},
    {ERROR_FILE_CORRUPT, std::errc::io_error},
    {ERROR_DISK_CORRUPT, std::errc::io_error},
    {ERROR_SHARING_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_LOCK_VIOLATION, std::errc::device_or_resource_busy},
    {ERROR_USER_MAPPED_FILE, std::errc::device_or_resource_busy},
    {ERROR_BUSY, std::errc::device_or_resource_busy},
    {ERROR_NOT_READY, std::errc::no_such_device},
    {ERROR_BAD_UNIT, std::errc::no_such_device},
    {ERROR_DEV_NOT_EXIST, std::errc::no_such_device},
    {ERROR_DEVICE_NOT_CONNECTED, std::errc::no_such_device},
    {ERROR_BAD_NETPATH, std::errc::no_such_device},
    {ERROR_NETNAME_DELETED, std::errc::no_such_device},
    {ERROR_SEM_TIMEOUT, std::errc::timed_out},
    {ERROR_FILENAME_EXCED_RANGE, std::errc::filename_too_long},
    {ERROR_BUFFER_OVERFLOW, std::errc::filename_too_long},
    {ERROR_INVALID_NAME, std::errc::invalid_argument},
    {ERROR_BAD_PATHNAME, std::errc::invalid_argument},
    {ERROR_CANT_RESOLVE_FILENAME, std::errc::too_many_symbolic_link_levels},
    {ERROR_TOO_MANY_OPEN_FILES, std::errc::too_many_files_open},
    {ERROR_NOT_SAME_DEVICE, std::errc::cross_device_link},
};

class WindowsFaults final : public std::error_category
{
public:
    const char* name() const noexcept override { return "Windows"; }

    std::error_condition default_error_condition(int number) const noexcept override
    {
        for (const Meaning& row : kMeanings) {
            if (row.number == static_cast<DWORD>(number)) return row.fault;
        }
        return {number, *this};
    }

    std::string message(int number) const override
    {
        std::array<wchar_t, 500> room = {};
        const DWORD length = ::FormatMessageW(
            FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
            static_cast<DWORD>(number), 0, room.data(), static_cast<DWORD>(room.size()), nullptr);
        std::string text = Utf8(std::wstring(room.data(), length));
        text.erase(text.find_last_not_of(" .\r\n") + 1);
        return text.empty() ? "Fehler " + std::to_string(number) : text;
    }
};

}  // namespace

std::error_code WindowsFault(unsigned long number)
{
    static const WindowsFaults kFaults;
    return {static_cast<int>(number), kFaults};
}

}  // namespace korvinth::files
