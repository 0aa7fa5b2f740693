#include "document/escaped_signs.h"

#include <charconv>

namespace korvinth::document {

std::string EscapeSigns(std::string_view text, std::string_view signs)
{
    constexpr std::string_view kHexDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && signs.find(c) == std::string_view::npos) {
            escaped += c;
        } else {
            escaped += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 15U]};
        }
    }
    return escaped;
}

std::string UnescapeSigns(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned byte = 0;
        const std::string_view digits = text.substr(i + 1, 2);
        const char* const end = digits.data() + digits.size();
        if (text[i] == '%' && digits.size() == 2 &&
            std::from_chars(digits.data(), end, byte, 16).ptr == end) {
            plain += static_cast<char>(byte);
            i += 2;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

}  // namespace korvinth::document
