#include "render/picture_options.h"

#include <algorithm>
#include <string>
#include <utility>

namespace korvinth::render {

std::optional<PictureFormat> FormatOf(std::string_view file)
{
    constexpr std::pair<std::string_view, PictureFormat> kEndings[] = {
        {".png", PictureFormat::Png},
        {".svg", PictureFormat::Svg},
        {".pdf", PictureFormat::Pdf},
        {".emf", PictureFormat::Emf}};
    std::string ending(file.substr(std::min(file.rfind('.'), file.size())));
    for (char& c : ending) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    for (const auto& [known, format] : kEndings) {
        if (ending == known) return format;
    }
    return std::nullopt;
}

}  // namespace korvinth::render
