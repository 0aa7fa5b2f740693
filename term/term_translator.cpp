#include "term/term_translator.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "term/words.h"

namespace korvinth::term {
namespace {

constexpr std::size_t kNone = std::string::npos;

// Derivatives of derivatives triple the text with every function. Expansion stops beyond this
// length; the text is then longer than any the parser accepts, so that it reports its limit.
constexpr std::size_t kLongestExpansion = 70'000;

struct LogicWord
{
    std::string_view word;
    std::string_view keyword;
};
constexpr LogicWord kLogicWords[] = {
    {"and", "and"}, {"und", "and"}, {"or", "or"},   {"oder", "or"},
    {"xor", "xor"}, {"eqv", "eqv"}, {"imp", "imp"},
};

constexpr std::string_view kRemovedCharacters[] = {"#", "~", "\"", "§", "$", "´", "`", "°", " "};

// Inside the brackets of these words alone, ";" separates arguments.
// Deliberate: case-sensitive, so "Wenn(1;2;3)" keeps its semicolons and fails in the parser.
constexpr std::string_view kArgumentListWords[] = {"iif(", "wenn(", "min(", "max(", "log(", "exp("};

std::string Concat(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (std::string_view part : parts) text += part;
    return text;
}

// Deliberate: a logic word needs a blank on both sides. The colons carry it through the removal of
// blanks; "nicht" has no such protection and must be written with brackets.
void MarkLogicWords(std::string& term)
{
    for (const LogicWord& logic : kLogicWords) {
        term = ReplaceAll(term, Concat({" ", logic.word, " "}), Concat({":", logic.word, ":"}));
    }
}

void UnmarkLogicWords(std::string& term)
{
    for (const LogicWord& logic : kLogicWords) {
        term = ReplaceAll(term, Concat({":", logic.word, ":"}), Concat({" ", logic.keyword, " "}));
    }
}

// Replaces every occurrence of `group` by itself with "$" as "." and ";" as ",".
void SeparateArguments(std::string& term, const std::string& group)
{
    std::string separated = group;
    for (char& c : separated) {
        if (c == '$') c = '.';
        if (c == ';') c = ',';
    }
    for (std::size_t at = term.find(group); at != kNone; at = term.find(group, at + group.size())) {
        term.replace(at, group.size(), separated);
    }
}

// Deliberate: a group is rewritten wherever its text occurs, outside of the six words too.
void SeparateArgumentLists(std::string& term)
{
    // Rewriting keeps lengths and brackets, so the matches hold throughout.
    const std::vector<std::size_t> matches = MatchingBrackets(term);
    for (std::string_view word : kArgumentListWords) {
        for (std::size_t at = term.find(word); at != kNone; at = term.find(word, at + 1)) {
            const std::size_t open = at + word.size() - 1;
            if (matches[open] == kNone) continue;
            const std::string group = term.substr(open, matches[open] - open + 1);
            if (group.find(';') != kNone || group.find('$') != kNone)
                SeparateArguments(term, group);
        }
    }
}

// Replaces every occurrence of `key` at or after the offset `from`, until the text is too long.
void ReplaceFrom(std::string& text, std::size_t from, const std::string& key,
                 const std::string& replacement)
{
    std::size_t found = text.find(key, from);
    if (found == kNone) return;
    std::string tail;
    std::size_t position = from;
    while (found != kNone && from + tail.size() <= kLongestExpansion) {
        tail.append(text, position, found - position).append(replacement);
        position = found + key.size();
        found = text.find(key, position);
    }
    tail.append(text, position);
    text.replace(from, kNone, tail);
}

// Expands `call`, such as "f'(", at every place of `original` into the template, which holds the
// free variable where the argument belongs. Deliberate: the places are those of the original, and
// a group is passed over as a whole; a derivative nested in one of the same kind is left.
void ExpandCalls(std::string& expanded, const std::string& original,
                 const std::vector<std::size_t>& matches, const std::string& call,
                 const std::string& quotient)
{
    std::size_t untouched = 0;  // nothing to expand is left in front of it
    std::size_t at = original.find(call);
    while (at != kNone && expanded.size() <= kLongestExpansion) {
        const std::size_t open = at + call.size() - 1;
        std::size_t group_length = 0;
        if (matches[open] != kNone) {
            group_length = matches[open] - open + 1;
            const std::string group = original.substr(open, group_length);
            untouched = expanded.find(call, untouched - std::min(untouched, call.size()));
            if (untouched == kNone) return;
            ReplaceFrom(expanded, untouched, call + group.substr(1),
                        ReplaceAll(quotient, kFreeVariable, group));
        }
        at = original.find(call, at + group_length + 2);
    }
}

// Second derivatives become central second differences, first ones forward difference quotients,
// both with the step `sw`.
void ExpandDerivatives(std::string& term, const std::string& function)
{
    const std::string original = term;
    if (original.find(function + "'") == kNone) return;
    const std::vector<std::size_t> matches = MatchingBrackets(original);
    const std::string open = Concat({function, "(", kFreeVariable});
    const std::string call = open + ")";
    ExpandCalls(term, original, matches, function + "''(",
                Concat({"((", open, "+sw)-2", call, "+", open, "-sw))/sw^2)"}));
    ExpandCalls(term, original, matches, function + "'(",
                Concat({"((", open, "+sw)-", call, ")/sw)"}));
}

}  // namespace

std::string TermTranslator::Translate(std::string_view term, Derivatives derivatives) const
{
    std::string result(term);
    MarkLogicWords(result);
    for (std::string_view removed : kRemovedCharacters) result = ReplaceAll(result, removed, "");
    if (result.empty()) return {};
    UnmarkLogicWords(result);

    result = ReplaceAll(result, ",", "$");  // decimal commas, told apart from argument commas
    for (char& c : result) {
        if (c == '[' || c == '{') c = '(';
        if (c == ']' || c == '}') c = ')';
    }
    result =
        ReplaceAll(result, "fill", Concat({"(abs(ceil(Sin(pi/dichte*", kFreeVariable, "/sw))))"}));
    SeparateArgumentLists(result);
    result = ReplaceAll(result, "$", ".");
    result = ReplaceAll(result, Concat({"!", kFreeVariable, "!"}), kFreeVariable);

    if (derivatives == Derivatives::Expand) {
        for (const std::string& function : function_names_) {
            if (!function.empty()) ExpandDerivatives(result, function);
            if (result.size() > kLongestExpansion) return result;
        }
    }
    // Deliberate: the derivative of what is no known function makes the whole term empty.
    if (result.find('\'') != kNone) return {};
    return result;
}

}  // namespace korvinth::term
