#include "document/substitute_parameters.h"

#include <map>

#include "document/number_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNamePart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || IsDigit(c);
}

std::size_t EndOfName(std::string_view text, std::size_t from)
{
    while (from < text.size() && IsNamePart(text[from])) ++from;
    return from;
}

std::size_t EndOfDigits(std::string_view text, std::size_t from)
{
    while (from < text.size() && IsDigit(text[from])) ++from;
    return from;
}

// Digits and an exponent: the e of "2e3" is no name, that of "2e" is one.
std::size_t EndOfNumber(std::string_view text, std::size_t from)
{
    const std::size_t end = EndOfDigits(text, from);
    if (end == text.size() || (text[end] != 'e' && text[end] != 'E')) return end;
    std::size_t exponent = end + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t exponent_end = EndOfDigits(text, exponent);
    return exponent_end == exponent ? end : exponent_end;
}

// What is called is a function, also with blanks or the marks of a derivative before the bracket.
bool IsCalled(std::string_view text, std::size_t end_of_name)
{
    const std::size_t next = text.find_first_not_of(" '", end_of_name);
    return next != std::string_view::npos && text[next] == '(';
}

// Blanks at the end do not count, superscripts do.
bool EndsWithDigit(std::string_view text)
{
    text = term::TrimBlanks(text);
    return text.ends_with("²") || text.ends_with("³") || (!text.empty() && IsDigit(text.back()));
}

std::string ValueText(double value)
{
    const std::string text = ShortestGermanText(value);
    return text.starts_with('-') ? "(" + text + ")" : text;
}

// To the parser, upper and lower case letters are the same.
std::map<std::string, std::string, std::less<>> ValuesByName(const PlotDocument& document,
                                                             std::string_view argument)
{
    std::map<std::string, std::string, std::less<>> values;
    for (const Parameter& parameter : document.parameters) {
        if (parameter.name.empty()) continue;
        values.insert_or_assign(term::LowerCase(parameter.name), ValueText(parameter.value));
    }
    if (const auto found = values.find(term::LowerCase(argument)); found != values.end()) {
        values.erase(found);
    }
    return values;
}

}  // namespace

std::string SubstituteParameters(const PlotDocument& document, std::string_view term,
                                 std::string_view argument)
{
    const auto values = ValuesByName(document, argument);
    std::string result;
    std::size_t position = 0;
    const auto copy_until = [&](std::size_t end) {
        result += term.substr(position, end - position);
        position = end;
    };
    while (position < term.size()) {
        const char c = term[position];
        if (IsDigit(c)) {
            copy_until(EndOfNumber(term, position));
        } else if (c == '&') {  // a number of base 2, 8 or 16
            copy_until(EndOfName(term, position + 1));
        } else if (IsNamePart(c)) {
            const std::size_t end = EndOfName(term, position);
            const auto value = values.find(term::LowerCase(term.substr(position, end - position)));
            if (value == values.end() || IsCalled(term, end)) {
                copy_until(end);
                continue;
            }
            if (EndsWithDigit(result)) result += '*';
            result += value->second;
            position = end;
        } else {
            copy_until(position + 1);
        }
    }
    return result;
}

}  // namespace korvinth::document
