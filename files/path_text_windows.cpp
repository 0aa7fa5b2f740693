// Names where they are UTF-16. The conversions of the standard library throw at a name that is no
// text; these put U+FFFD where it is none.
#include "files/path_text.h"

#include <windows.h>

#include <string>

namespace korvinth::files {

std::string Utf8(const Path& path)
{
    const std::wstring& wide = path.native();
    const int length = static_cast<int>(wide.size());
    const auto convert = [&](char* bytes, int room) {
        return ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, bytes, room, nullptr,
                                     nullptr);
    };
    std::string utf8(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(utf8.data(), static_cast<int>(utf8.size()));
    return utf8;
}

Path PathOf(std::string_view utf8)
{
    const int length = static_cast<int>(utf8.size());
    const auto convert = [&](wchar_t* units, int room) {
        return ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, units, room);
    };
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(wide.data(), static_cast<int>(wide.size()));
    return Path(std::move(wide));
}

}  // namespace korvinth::files
