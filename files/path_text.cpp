#include "files/path_text.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace korvinth::files {

std::string Utf8(const Path& path)
{
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

Path PathOf(std::string_view utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

bool StderrIsTerminal()
{
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) == 1;
#endif
}

}  // namespace korvinth::files
