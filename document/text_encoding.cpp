#include "document/text_encoding.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

namespace korvinth::document {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr unsigned kFirstDifferent = 0x80;  // from here on Windows-1252 is not Latin-1
constexpr unsigned kFirstLatin = 0xA0;      // from here on it is again

// Code points of the bytes 0x80 to 0x9F.
constexpr std::array<char16_t, 32> kWindowsSigns = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned Byte(char c) { return static_cast<unsigned char>(c); }

// Bytes below 0x80 at the beginning of a text.
std::size_t PlainLength(std::string_view text)
{
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t length = 0;
    std::uint64_t eight = 0;
    while (length + sizeof eight <= text.size()) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & kHighBits) != 0) break;
        length += sizeof eight;
    }
    while (length < text.size() && Byte(text[length]) < kFirstDifferent) ++length;
    return length;
}

// Of a byte from 0x80 on.
void AppendWindowsSign(unsigned byte, std::string& utf8)
{
    const unsigned code = byte < kFirstLatin ? kWindowsSigns[byte - kFirstDifferent] : byte;
    if (code < 0x800U) {
        utf8 += {static_cast<char>(0xC0U | code >> 6U), static_cast<char>(0x80U | (code & 0x3FU))};
    } else {
        utf8 += {static_cast<char>(0xE0U | code >> 12U),
                 static_cast<char>(0x80U | (code >> 6U & 0x3FU)),
                 static_cast<char>(0x80U | (code & 0x3FU))};
    }
}

struct Sign
{
    unsigned code = 0;
    std::size_t length = 0;  // bytes; 0 when the text does not begin with UTF-8
};

// The character beyond the plain ones that a text begins with.
Sign ReadSign(std::string_view text)
{
    const unsigned lead = Byte(text.front());
    Sign sign;
    unsigned lowest = 0;
    if (lead >= 0xC2U && lead < 0xE0U) {
        sign = {lead & 0x1FU, 2};
        lowest = 0x80;
    } else if (lead >= 0xE0U && lead < 0xF0U) {
        sign = {lead & 0x0FU, 3};
        lowest = 0x800;
    } else if (lead >= 0xF0U && lead < 0xF5U) {
        sign = {lead & 0x07U, 4};
        lowest = 0x10000;
    }
    if (sign.length == 0 || sign.length > text.size()) return {};
    for (const char c : text.substr(1, sign.length - 1)) {
        if ((Byte(c) & 0xC0U) != 0x80U) return {};
        sign.code = sign.code << 6U | (Byte(c) & 0x3FU);
    }
    const bool surrogate = sign.code >= 0xD800U && sign.code < 0xE000U;
    if (sign.code < lowest || sign.code > 0x10FFFFU || surrogate) return {};
    return sign;
}

std::optional<char> WindowsByte(unsigned code)
{
    if (code >= kFirstLatin && code <= 0xFFU) return static_cast<char>(code);
    for (unsigned i = 0; i < kWindowsSigns.size(); ++i) {
        if (kWindowsSigns[i] == code) return static_cast<char>(i + kFirstDifferent);
    }
    return {};
}

// Hands over plain pieces and, between them, rests that begin with another byte; `take` says how
// many bytes of the rest it has used, 0 ends the walk.
template <class Take>
bool Walk(std::string_view text, std::string& result, Take take)
{
    while (!text.empty()) {
        const std::size_t plain = PlainLength(text);
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const std::size_t used = take(text);
        if (used == 0) return false;
        text.remove_prefix(used);
    }
    return true;
}

}  // namespace

std::string DecodeText(std::string_view bytes)
{
    const bool is_utf8 = bytes.starts_with(kByteOrderMark);
    if (is_utf8) bytes.remove_prefix(kByteOrderMark.size());
    std::string utf8;
    utf8.reserve(bytes.size() + bytes.size() / 16);
    Walk(bytes, utf8, [&](std::string_view rest) -> std::size_t {
        const std::size_t length = is_utf8 ? ReadSign(rest).length : 0;
        if (length > 0) {
            utf8 += rest.substr(0, length);
            return length;
        }
        AppendWindowsSign(Byte(rest.front()), utf8);
        return 1;
    });
    return utf8;
}

std::string EncodeText(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    const bool fits = Walk(utf8, bytes, [&bytes](std::string_view rest) -> std::size_t {
        const Sign sign = ReadSign(rest);
        const std::optional<char> byte =
            sign.length == 0 ? std::optional<char>(rest.front()) : WindowsByte(sign.code);
        if (!byte) return 0;
        bytes += *byte;
        return sign.length == 0 ? 1 : sign.length;
    });
    if (fits && !bytes.starts_with(kByteOrderMark)) return bytes;
    bytes = kByteOrderMark;
    bytes += utf8;
    return bytes;
}

}  // namespace korvinth::document
