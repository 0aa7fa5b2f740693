#include "app/message_text.h"

namespace korvinth::app {
namespace {

// Length of the well-formed character at the front, 0 when there is none.
std::size_t CharacterLength(std::string_view bytes)
{
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    const auto continues = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    if (bytes.empty()) return 0;
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool overlong = first == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = first == 0xED && byte(1) > 0x9F;
        return !overlong && !surrogate && continues(1) && continues(2) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool overlong = first == 0xF0 && byte(1) < 0x90;
        const bool too_large = first == 0xF4 && byte(1) > 0x8F;
        return !overlong && !too_large && continues(1) && continues(2) && continues(3) ? 4 : 0;
    }
    return 0;
}

// C0 and C1 control characters, which would steer a terminal.
bool IsControl(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1) return first < 0x20 || first == 0x7F;
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

}  // namespace

bool IsUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string Printable(std::string_view bytes, std::size_t limit)
{
    std::string text;
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        const bool shown = length > 0 && !IsControl(bytes.substr(0, length));
        const std::string_view next = shown ? bytes.substr(0, length) : std::string_view("?");
        if (text.size() + next.size() > limit) return text + "...";
        text += next;
        bytes.remove_prefix(length > 0 ? length : 1);
    }
    return text;
}

std::string Quoted(std::string_view bytes)
{
    constexpr std::size_t kLongestQuotation = 60;
    return "„" + Printable(bytes, kLongestQuotation) + "“";
}

}  // namespace korvinth::app
