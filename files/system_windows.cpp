#include "files/system.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "files/path_text.h"

namespace korvinth::files {
namespace {

bool LeadsSomewhere(DWORD which)
{
    const HANDLE handle = ::GetStdHandle(which);
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

// Line ends stay as they are written.
void SetBinary(std::FILE* stream)
{
    // A negative number belongs to a stream that leads nowhere.
    if (const int number = ::_fileno(stream); number >= 0) ::_setmode(number, _O_BINARY);
}

// Hands on to a terminal at once. The library cannot open a stream again that led nowhere.
class TerminalBuffer final : public std::streambuf
{
public:
    TerminalBuffer(HANDLE terminal, std::ostream& stream)
        : terminal_(terminal), stream_(stream), before_(stream.rdbuf(this))
    {
    }
    ~TerminalBuffer() override { stream_.rdbuf(before_); }
    TerminalBuffer(const TerminalBuffer&) = delete;
    TerminalBuffer& operator=(const TerminalBuffer&) = delete;

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override
    {
        DWORD done = 0;
        ::WriteFile(terminal_, bytes, static_cast<DWORD>(count), &done, nullptr);
        return static_cast<std::streamsize>(done);
    }
    int_type overflow(int_type byte) override
    {
        const char one = traits_type::to_char_type(byte);
        return xsputn(&one, 1) == 1 ? byte : traits_type::eof();
    }

private:
    HANDLE terminal_;
    std::ostream& stream_;
    std::streambuf* before_;
};

}  // namespace

// The bytes that main gets are of a code page that lacks most signs of a term.
std::vector<std::string> CommandLineArguments(int, const char* const*)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> wide(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; wide && i < count; ++i) arguments.push_back(Utf8(wide.get()[i]));
    return arguments;
}

std::optional<std::string> EnvironmentVariable(const std::string& name)
{
    const wchar_t* value = ::_wgetenv(PathOf(name).c_str());
    if (value == nullptr) return std::nullopt;
    return Utf8(value);
}

std::optional<Path> UserDataDirectory()
{
    PWSTR found = nullptr;
    // "Roaming" follows the user from machine to machine of a school.
    const HRESULT result = ::SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &found);
    const std::unique_ptr<wchar_t, decltype(&::CoTaskMemFree)> folder(found, &::CoTaskMemFree);
    if (FAILED(result)) return std::nullopt;
    return Path(folder.get());
}

struct StandardOutput::Terminal
{
    // A program with windows gets no terminal; what is not redirected goes to the one of its
    // parent.
    void Attach()
    {
        const bool has_output = LeadsSomewhere(STD_OUTPUT_HANDLE);
        const bool has_errors = LeadsSomewhere(STD_ERROR_HANDLE);
        if ((has_output && has_errors) || ::AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
        const HANDLE terminal =
            ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        if (terminal == INVALID_HANDLE_VALUE) return;
        if (!has_output) output.emplace(terminal, std::cout);
        if (!has_errors) errors.emplace(terminal, std::cerr);
    }

    std::optional<TerminalBuffer> output;
    std::optional<TerminalBuffer> errors;
    UINT code_page = 0;  // of the terminal before; 0 when there is none
};

StandardOutput::StandardOutput() : terminal_(std::make_unique<Terminal>())
{
    terminal_->Attach();
    SetBinary(stdout);
    SetBinary(stderr);
    terminal_->code_page = ::GetConsoleOutputCP();
    if (terminal_->code_page != 0) ::SetConsoleOutputCP(CP_UTF8);
}

StandardOutput::~StandardOutput()
{
    std::cout.flush();
    if (terminal_->code_page != 0) ::SetConsoleOutputCP(terminal_->code_page);
}

bool StderrIsTerminal()
{
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

void UseUtf8() {}  // names and texts of the system are UTF-16 there

}  // namespace korvinth::files
