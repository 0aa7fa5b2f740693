#include "document/outside_terms.h"

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

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
    for (const AdditionalLine& line : Text2List(document.lines_text)) {
        LineTerm term = TranslateLine(document, line.equation);
        if (term.direction != LineDirection::None) outside[0].terms.push_back(std::move(term.term));
    }
    for (const AdditionalPoint& point : Text2Points(document.points_text)) {
        outside[1].terms.push_back(TranslateCoordinate(document, point.x));
        outside[1].terms.push_back(TranslateCoordinate(document, point.y));
    }
    for (const std::string& item : document.BracketedBounds()) {
        AppendTranslated(document, item, outside[2].terms);
    }
    return outside;
}

}  // namespace korvinth::document
