// Names where they are bytes, of which nearly all are UTF-8.
#include "files/path_text.h"

namespace korvinth::files {

std::string Utf8(const Path& path)
{
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

Path PathOf(std::string_view utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

}  // namespace korvinth::files
