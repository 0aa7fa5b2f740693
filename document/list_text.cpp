#include "document/list_text.h"

namespace korvinth::document {

std::vector<std::string_view> SplitText(std::string_view text, std::string_view separator)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + separator.size());
    }
}

}  // namespace korvinth::document
