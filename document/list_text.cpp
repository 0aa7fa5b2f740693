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

std::string StorableTerm(std::string_view term)
{
    std::string text;
    text.reserve(term.size());
    for (const char c : term) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (letter && text.ends_with('\\')) text += ' ';
        switch (c) {
            case '{': text += '('; break;
            case '}': text += ')'; break;
            case '\r':
            case '\n': text += ' '; break;
            default: text += c;
        }
    }
    return text;
}

}  // namespace korvinth::document
