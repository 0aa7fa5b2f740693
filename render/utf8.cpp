#include "render/utf8.h"

#include <cstddef>

namespace korvinth::render {
namespace {

constexpr char32_t kContinuationBits = 0x3F;

struct Lead
{
    unsigned char mask, bits;
    std::size_t length;
    char32_t smallest;  // shorter forms exist for smaller characters
};
constexpr Lead kLeads[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

bool IsCharacter(char32_t c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

}  // namespace

char32_t TakeCharacter(std::string_view& utf8)
{
    const auto byte = [&utf8](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    for (const Lead& lead : kLeads) {
        if ((byte(0) & lead.mask) != lead.bits || utf8.size() < lead.length) continue;
        char32_t character = byte(0) & static_cast<unsigned char>(~lead.mask);
        bool whole = true;
        for (std::size_t i = 1; i < lead.length; ++i) {
            whole = whole && (byte(i) & 0xC0U) == 0x80U;
            character = character << 6U | (byte(i) & kContinuationBits);
        }
        if (!whole || character < lead.smallest || !IsCharacter(character)) break;
        utf8.remove_prefix(lead.length);
        return character;
    }
    utf8.remove_prefix(1);
    return kReplacement;
}

}  // namespace korvinth::render
