#include "document/storable_text.h"

#include <algorithm>

#include "document/collection.h"
#include "document/collection_format.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::string_view kNoBreakSpace = "\xC2\xA0";

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// What begins at a place of a text: a control character of one, two or three bytes, or none.
struct Control
{
    std::size_t length = 0;
    bool breaks_line = false;
};

Control ControlAt(std::string_view text, std::size_t place)
{
    const std::string_view rest = text.substr(place);
    const auto first = static_cast<unsigned char>(rest.front());
    if (rest.starts_with("\r\n")) return {2, true};
    if (first == '\r' || first == '\n') return {1, true};
    if (first < 0x20U || first == 0x7FU) return {1, false};
    if (first == 0xC2U && rest.size() > 1 && static_cast<unsigned char>(rest[1]) < 0xA0U) {
        return {2, rest[1] == '\x85'};
    }
    if (rest.starts_with("\xE2\x80\xA8") || rest.starts_with("\xE2\x80\xA9")) return {3, true};
    return {};
}

// Without control characters; tabulators become blanks.
std::string WithoutControls(std::string_view text, std::string_view line_break)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const Control control = ControlAt(text, i);
        if (control.breaks_line) {
            plain += line_break;
        } else if (control.length == 0) {
            plain += text[i];
        } else if (text[i] == '\t') {
            plain += ' ';
        }
        i += control.length == 0 ? 1 : control.length;
    }
    return plain;
}

char RoundBracket(char c)
{
    if (c == '{') return '(';
    return c == '}' ? ')' : c;
}

// "\n" would become a line break and "\end\" the end of the text, which is followed by one.
bool NeedsSpaceBehind(std::string_view text, std::size_t backslash)
{
    constexpr std::string_view kEnd = "end";
    const std::string_view behind = text.substr(backslash + 1);
    return behind.starts_with('n') || behind == kEnd || behind.starts_with("end\\");
}

std::string StorableLine(std::string_view line, bool is_first, bool is_last)
{
    while (line.ends_with(' ')) line.remove_suffix(1);
    std::string text;
    text.reserve(line.size());
    while (line.starts_with(' ')) {
        text += kNoBreakSpace;
        line.remove_prefix(1);
    }
    if (!is_first && line == kSecondSection) text += kNoBreakSpace;
    for (std::size_t i = 0; i < line.size(); ++i) {
        text += line[i];
        if (line[i] == '\\' && NeedsSpaceBehind(line, i)) text += kNoBreakSpace;
    }
    if (!is_last && text.ends_with('}')) text += kNoBreakSpace;
    return text;
}

}  // namespace

std::string StorableShortText(std::string_view typed)
{
    std::string text(term::TrimBlanks(WithoutControls(typed, " ")));
    for (char& c : text) c = RoundBracket(c);
    if (text == kBufferName) text += kNoBreakSpace;
    return text;
}

std::string StorableLongText(std::string_view typed)
{
    const std::string plain = WithoutControls(typed, kLineBreak);
    std::string text;
    text.reserve(plain.size());
    for (std::size_t begin = 0; begin <= plain.size();) {
        const std::size_t end = std::min(plain.find(kLineBreak, begin), plain.size());
        if (begin > 0) text += kLineBreak;
        text += StorableLine(std::string_view(plain).substr(begin, end - begin), begin == 0,
                             end == plain.size());
        begin = end + kLineBreak.size();
    }
    return text;
}

std::string StorableTerm(std::string_view term)
{
    const std::string plain = WithoutControls(term, " ");
    std::string text;
    text.reserve(plain.size());
    for (const char c : plain) {
        if (IsLetter(c) && text.ends_with('\\')) text += ' ';
        text += RoundBracket(c);
    }
    return text;
}

}  // namespace korvinth::document
