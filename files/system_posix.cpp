#include <langinfo.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <string_view>

#include "files/system.h"

namespace korvinth::files {

std::vector<std::string> CommandLineArguments(int count, const char* const* arguments)
{
    return {arguments + 1, arguments + count};
}

std::optional<std::string> EnvironmentVariable(const std::string& name)
{
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return value;
}

std::optional<Path> UserDataDirectory() { return std::nullopt; }

// They do so without help.
struct StandardOutput::Terminal
{
};
StandardOutput::StandardOutput() = default;
StandardOutput::~StandardOutput() = default;

bool StderrIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

void UseUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::string_view(::nl_langinfo(CODESET)) == "UTF-8") return;
    ::setenv("LC_ALL", "C.UTF-8", 1);
    std::setlocale(LC_ALL, "");
}

}  // namespace korvinth::files
