#include "document/parameters_of.h"

#include <functional>
#include <string>
#include <string_view>

#include "term/words.h"

namespace korvinth::document {
namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Behind the number that begins at `i`; its exponent is no name.
std::size_t EndOfNumber(std::string_view term, std::size_t i)
{
    const auto digit_at = [&term](std::size_t at) { return at < term.size() && IsDigit(term[at]); };
    while (digit_at(i) || (i < term.size() && term[i] == '.')) ++i;
    if (i >= term.size() || (term[i] != 'e' && term[i] != 'E')) return i;
    const bool sign = i + 1 < term.size() && (term[i + 1] == '+' || term[i + 1] == '-');
    std::size_t exponent = i + (sign ? 2 : 1);
    if (!digit_at(exponent)) return i;
    while (digit_at(exponent)) ++exponent;
    return exponent;
}

// The names in a term in parser syntax, in lower case, as the parser tells them apart.
std::set<std::string> NamesIn(std::string_view term)
{
    std::set<std::string> names;
    for (std::size_t i = 0; i < term.size();) {
        if (IsDigit(term[i])) {
            i = EndOfNumber(term, i);
            continue;
        }
        if (!IsLetter(term[i])) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < term.size() && (IsLetter(term[end]) || IsDigit(term[end]))) ++end;
        names.insert(term::LowerCase(term.substr(i, end - i)));
        i = end;
    }
    return names;
}

class Search
{
public:
    explicit Search(const PlotDocument& document) : document_(document) {}

    void Visit(SlotIndex index)
    {
        const FunctionSlot& slot = document_.slots[index];
        if (slot.name.empty() || !visited_.insert(index).second) return;
        if (slot.curve_link >= 0) Visit(SlotIndex{slot.curve_link});
        for (const ParameterIndex own : {LowerBoundParameter(index), SampleCountParameter(index)}) {
            if (!document_.parameters[own].name.empty()) found_.insert(own);
        }
        for (const std::string& text : {slot.parser_term, document_.Translate(slot.lower_bound),
                                        document_.Translate(slot.upper_bound)}) {
            for (const std::string& name : NamesIn(text)) Follow(name);
        }
    }

    std::set<ParameterIndex> Take() { return std::move(found_); }

private:
    void Follow(const std::string& name)
    {
        for (const ParameterIndex index : AllParameters()) {
            if (term::LowerCase(document_.parameters[index].name) == name) found_.insert(index);
        }
        for (const SlotIndex index : AllSlots()) {
            if (term::LowerCase(document_.slots[index].name) == name) Visit(index);
        }
    }

    const PlotDocument& document_;
    std::set<SlotIndex> visited_;
    std::set<ParameterIndex> found_;
};

}  // namespace

std::set<ParameterIndex> ParametersOf(const PlotDocument& document, SlotIndex slot)
{
    Search search(document);
    search.Visit(slot);
    return search.Take();
}

}  // namespace korvinth::document
