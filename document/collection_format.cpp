#include "document/collection_format.h"

namespace korvinth::document {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

}  // namespace

Keyword KeywordOf(std::string_view line)
{
    constexpr std::string_view kFirstSigns = "}[slCLxytA(aP$";
    if (line.empty() || kFirstSigns.find(line.front()) == kNone) return Keyword::None;
    for (std::size_t place = 1; place < kKeywords.size(); ++place) {
        if (line.starts_with(kKeywords[place])) return Keyword{static_cast<int>(place)};
    }
    return Keyword::None;
}

std::optional<Column> ColumnOfWholeLine(std::string_view line)
{
    const Keyword keyword = KeywordOf(line);
    if (keyword == Keyword::Invisible) return Column::Functions;
    if (keyword >= Keyword::FirstRange && keyword <= Keyword::LastRange) return Column::Ranges;
    if (keyword != Keyword::None) return {};
    const std::size_t equals = line.find('=');
    if (equals != kNone) {
        const std::string_view left = line.substr(0, equals);
        if (left.find('(') != kNone && left.find(')') != kNone) return Column::Functions;
        return line.starts_with('u') ? Column::Integrals : Column::Parameters;
    }
    if (line.find('[') == kNone) return {};
    return line.starts_with('D') ? Column::Ranges : Column::Details;
}

}  // namespace korvinth::document
