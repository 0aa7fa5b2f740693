#include "document/integral_term.h"

#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::string_view kIntegral = "integral";

bool IsUpperCase(char c) { return c >= 'A' && c <= 'Z'; }

// Whether the character at `offset` continues a name: 2F(x) is a product, a2F(x) a call of a2F.
bool ContinuesName(std::string_view text, std::size_t offset)
{
    return (offset > 0 && text[offset - 1] == '_') ||
           (term::NeighbourKind(text, offset, 1) & term::kContinuedOnTheLeft) != 0;
}

std::size_t FindCall(std::string_view lower_case_term, std::string_view call, std::size_t start)
{
    std::size_t at = lower_case_term.find(call, start);
    while (at != std::string_view::npos && ContinuesName(lower_case_term, at)) {
        at = lower_case_term.find(call, at + 1);
    }
    return at;
}

}  // namespace

std::string RewriteFirstIntegral(std::string_view term)
{
    for (std::size_t at = 0; at + 1 < term.size(); ++at) {
        if (!IsUpperCase(term[at]) || term[at + 1] != '(' || ContinuesName(term, at)) continue;
        const std::string_view argument = term::MatchingGroup(term, at);
        if (argument.empty()) return std::string(term);
        std::string result(term.substr(0, at));
        result.append(kIntegral).append("(").append(term::LowerCase(term.substr(at, 1)));
        result.append(argument).append(")").append(term.substr(at + 1 + argument.size()));
        return result;
    }
    return std::string(term);
}

std::optional<std::string> IntegrandOf(std::string_view parser_term)
{
    const std::string term = term::LowerCase(parser_term);
    const std::string call = std::string(kIntegral) + "(";
    const std::size_t first = FindCall(term, call, 0);
    if (first == std::string::npos) return "";
    const std::string_view group = term::MatchingGroup(parser_term, kIntegral.size());
    const bool whole = first == 0 && kIntegral.size() + group.size() == term.size() &&
                       FindCall(term, call, 1) == std::string::npos;
    if (!whole) return std::nullopt;
    return std::string(group);
}

bool CallsFunction(std::string_view parser_term, std::string_view name)
{
    return FindCall(term::LowerCase(parser_term), term::LowerCase(name) + "(", 0) !=
           std::string_view::npos;
}

}  // namespace korvinth::document
