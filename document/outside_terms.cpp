#include "document/outside_terms.h"

#include "term/words.h"

namespace korvinth::document {
namespace {

std::vector<std::string_view> SplitLines(std::string_view text)
{
    std::vector<std::string_view> items;
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        items.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    return items;
}

// The right side of "y=TERM:c=+3" or "x=TERM:c=+3", without the line type.
std::string_view LineTerm(std::string_view item)
{
    item = term::TrimBlanks(item.substr(0, item.rfind(":c=")));
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos) return item;
    const std::string_view left = term::TrimBlanks(item.substr(0, equals));
    return left == "x" || left == "y" || left == term::kFreeVariable ? item.substr(equals + 1)
                                                                     : item;
}

void AppendTranslated(const PlotDocument& document, std::string_view item,
                      std::vector<std::string>& terms)
{
    if (term::TrimBlanks(item).empty()) return;
    std::string translated = document.Translate(item);
    terms.push_back(translated.empty() ? std::string(item) : std::move(translated));
}

}  // namespace

std::array<OutsideTerms, 3> TermsOutsideSlots(const PlotDocument& document)
{
    std::array<OutsideTerms, 3> outside{
        {{"Geradenfenster", {}}, {"Punktefenster", {}}, {"Intervallfenster", {}}}};
    for (std::string_view item : SplitLines(document.lines_text)) {
        AppendTranslated(document, LineTerm(item), outside[0].terms);
    }
    for (std::string_view item : SplitLines(document.points_text)) {
        AppendTranslated(document, item, outside[1].terms);
    }
    for (const std::string& item : document.BracketedBounds()) {
        AppendTranslated(document, item, outside[2].terms);
    }
    return outside;
}

}  // namespace korvinth::document
