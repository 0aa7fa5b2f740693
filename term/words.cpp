#include "term/words.h"

namespace korvinth::term {
namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A letter in front, or digits that a letter begins: x in a2x is part of a name, x in 2x is not.
bool ContinuesOnTheLeft(std::string_view before)
{
    std::size_t end = before.size();
    while (end > 0 && IsDigit(before[end - 1])) --end;
    return end > 0 && IsLetter(before[end - 1]);
}

bool ContinuesOnTheRight(std::string_view after)
{
    if (after.empty()) return false;
    const char next = after.front();
    return IsLetter(next) || IsDigit(next) || next == '\'' || next == '(';
}

}  // namespace

std::string_view TrimBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to)
{
    if (from.empty()) return std::string(text);
    std::string result;
    result.reserve(text.size());
    std::size_t position = 0;
    for (std::size_t found = text.find(from); found != std::string_view::npos;
         found = text.find(from, position)) {
        result.append(text, position, found - position).append(to);
        position = found + from.size();
    }
    return result.append(text, position);
}

unsigned NeighbourKind(std::string_view text, std::size_t offset, std::size_t length)
{
    return (ContinuesOnTheLeft(text.substr(0, offset)) ? kContinuedOnTheLeft : 0U) |
           (ContinuesOnTheRight(text.substr(offset + length)) ? kContinuedOnTheRight : 0U);
}

std::string ReplaceWord(std::string_view text, std::string_view word, std::string_view replacement,
                        unsigned mask)
{
    const std::string_view rest = TrimBlanks(text);
    if (word.empty()) return std::string(rest);
    // What lies to the left of an occurrence is the text as replaced so far.
    std::string result;
    result.reserve(rest.size());
    std::size_t position = 0;
    for (std::size_t found = rest.find(word); found != std::string_view::npos;
         found = rest.find(word, position)) {
        result.append(rest, position, found - position);
        position = found + word.size();
        const bool continued =
            ((mask & kContinuedOnTheRight) != 0 && ContinuesOnTheRight(rest.substr(position))) ||
            ((mask & kContinuedOnTheLeft) != 0 && ContinuesOnTheLeft(result));
        result.append(continued ? word : replacement);
    }
    result.append(rest, position);
    return std::string(TrimBlanks(result));
}

std::string_view MatchingGroup(std::string_view text, std::size_t start)
{
    const std::size_t open = text.find('(', start);
    if (open == std::string_view::npos) return {};
    std::size_t depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')' && --depth == 0) return text.substr(open, i - open + 1);
    }
    return {};
}

std::vector<std::size_t> MatchingBrackets(std::string_view text)
{
    std::vector<std::size_t> matches(text.size(), std::string_view::npos);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') {
            open.push_back(i);
        } else if (text[i] == ')' && !open.empty()) {
            matches[open.back()] = i;
            open.pop_back();
        }
    }
    return matches;
}

}  // namespace korvinth::term
