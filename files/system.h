// What the program asks of the system besides files. Texts are UTF-8 on every system.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/file_system.h"

namespace korvinth::files {

// What stands behind the program's name on the command line; takes what main was given.
std::vector<std::string> CommandLineArguments(int count, const char* const* arguments);

// Nothing when there is no such variable.
std::optional<std::string> EnvironmentVariable(const std::string& name);

// The user's folder for the data of programs, where the system itself names it; nothing where
// environment variables do.
std::optional<Path> UserDataDirectory();

// As long as it lives, std::cout and std::cerr reach the terminal that the program was started
// from, or what they are redirected to, byte by byte.
class StandardOutput
{
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

private:
    struct Terminal;
    std::unique_ptr<Terminal> terminal_;
};

// True when what goes to stderr is seen at once by a person.
bool StderrIsTerminal();

// Makes the libraries take names of files and texts of the system as UTF-8.
void UseUtf8();

}  // namespace korvinth::files
