#include "document/definition_lines.h"

#include <algorithm>

#include "term/words.h"

namespace korvinth::document {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

// The first semicolon in no bracket, npos when there is none.
std::size_t FindSeparator(std::string_view text)
{
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '(' || c == '[') ++depth;
        if ((c == ')' || c == ']') && depth > 0) --depth;
        if (c == ';' && depth == 0) return i;
    }
    return std::string_view::npos;
}

}  // namespace

bool IsName(std::string_view text)
{
    return !text.empty() && IsLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) { return IsLetter(c) || IsDigit(c); });
}

std::optional<BracketedLine> ReadBracketed(std::string_view line)
{
    const std::size_t open = line.find('[');
    if (open == line.npos || !line.ends_with(']')) return {};
    return BracketedLine{line.substr(0, open), line.substr(open + 1, line.size() - open - 2)};
}

std::vector<std::string_view> SplitItems(std::string_view inner)
{
    std::vector<std::string_view> items;
    for (;;) {
        const std::size_t separator = FindSeparator(inner);
        items.push_back(inner.substr(0, separator));
        if (separator == inner.npos) return items;
        inner.remove_prefix(separator + 1);
    }
}

std::optional<std::pair<std::string_view, std::string_view>> SplitBounds(std::string_view inner)
{
    std::size_t separator = FindSeparator(inner);
    if (separator == inner.npos) separator = inner.find(';');
    if (separator == inner.npos) return {};
    return std::pair(inner.substr(0, separator), inner.substr(separator + 1));
}

std::string NameOfRow(std::string_view row)
{
    const std::size_t equals = row.find('=');
    if (equals == row.npos) return {};
    const std::string left = term::ReplaceAll(row.substr(0, equals), " ", "");
    std::string name = left.substr(0, left.find_first_of("()"));
    return IsName(name) ? name : std::string();
}

std::set<std::string, std::less<>> NamesIn(std::string_view text)
{
    std::set<std::string, std::less<>> names;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        while (end < text.size() && (IsLetter(text[end]) || (end > i && IsDigit(text[end])))) ++end;
        if (end > i) names.emplace(text.substr(i, end - i));
        i = std::max(end, i + 1);
    }
    return names;
}

SlotIndex ColourPlace(const FunctionSlot& slot)
{
    return SlotIndex{std::clamp<std::int16_t>(slot.colour_index, 0, kSlotCount - 1)};
}

}  // namespace korvinth::document
