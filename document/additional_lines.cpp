#include "document/additional_lines.h"

#include <algorithm>

#include "document/list_text.h"
#include "document/number_text.h"
#include "document/storable_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::string_view kTypeMark = ":c=";
constexpr std::string_view kArgument = "x";
constexpr std::string_view kGuard = "°=";

std::string WithArgument(std::string_view text)
{
    return term::ReplaceWord(text, term::kFreeVariable, kArgument, term::kWholeWord);
}

std::string WithFreeVariable(std::string_view text)
{
    return term::ReplaceWord(text, kArgument, term::kFreeVariable, term::kWholeWord);
}

std::string Signed(int number) { return (number < 0 ? "" : "+") + std::to_string(number); }

std::string ItemText(const AdditionalLine& line)
{
    std::string text = StorableTerm(line.equation);
    text.append(kTypeMark).append(Signed(static_cast<int>(line.type)));
    if (line.colour) text += ":" + Signed(static_cast<int>(*line.colour));
    if (line.hidden) text += ":-1";
    return text;
}

void ReadField(std::string_view field, AdditionalLine& line)
{
    const double number = LeadingNumber(field);
    if (field.starts_with('-')) {
        line.hidden = true;
    } else if (field.starts_with('+') && number <= static_cast<int>(kLastColour)) {
        line.colour = Colour{static_cast<std::int32_t>(number)};
    }
}

AdditionalLine ReadItem(std::string_view item)
{
    AdditionalLine line;
    const std::size_t mark = item.rfind(kTypeMark);
    line.equation = WithArgument(item.substr(0, mark));
    if (mark == std::string_view::npos) return line;
    const std::vector<std::string_view> fields =
        SplitText(item.substr(mark + kTypeMark.size()), ":");
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i == 0) {
            line.type = ReadLineType(fields[0]).value_or(LineType::Solid);
        } else {
            ReadField(fields[i], line);
        }
    }
    return line;
}

}  // namespace

std::string LineEquation(std::string_view input)
{
    const std::string_view equation = term::TrimBlanks(input);
    if (equation.empty() || equation.find('=') != std::string_view::npos)
        return std::string(equation);
    return "y=" + std::string(equation);
}

std::optional<LineType> ReadLineType(std::string_view field)
{
    const std::int64_t number = RoundHalfEven(LeadingNumber(field));
    if (number < 0 || number >= kLineTypeCount) return std::nullopt;
    return LineType{static_cast<std::int16_t>(number)};
}

std::optional<std::size_t> FindInList(std::span<const AdditionalLine> lines,
                                      std::string_view equation)
{
    const auto found = std::ranges::find(lines, equation, &AdditionalLine::equation);
    if (found == lines.end()) return std::nullopt;
    return static_cast<std::size_t>(found - lines.begin());
}

std::string ReadList(std::span<const AdditionalLine> lines)
{
    std::string text;
    for (const AdditionalLine& line : lines) {
        if (!text.empty()) text += kListSeparator;
        text += ItemText(line);
    }
    return text;
}

std::vector<AdditionalLine> Text2List(std::string_view lines_text)
{
    std::vector<AdditionalLine> lines;
    for (const std::string_view item : SplitText(lines_text, kListSeparator)) {
        if (!term::TrimBlanks(item).empty()) lines.push_back(ReadItem(item));
    }
    return lines;
}

std::string TakeLines(std::span<const AdditionalLine> lines)
{
    const std::string text = term::ReplaceAll(ReadList(lines), "x=", kGuard);
    return term::ReplaceAll(WithFreeVariable(text), kGuard, "x=");
}

LineDirection DirectionOf(std::string_view equation)
{
    const std::size_t equals = equation.find('=');
    if (equals == std::string_view::npos) return LineDirection::None;
    if (term::TrimBlanks(equation.substr(equals + 1)).empty()) return LineDirection::None;
    const std::string_view left = term::TrimBlanks(equation.substr(0, equals));
    if (left == "y") return LineDirection::Rising;
    return left == kArgument ? LineDirection::Vertical : LineDirection::None;
}

LineTerm TranslateLine(const PlotDocument& document, std::string_view equation)
{
    const std::string whole = WithArgument(equation);
    LineTerm line{DirectionOf(whole), {}};
    std::string_view right = whole;
    if (line.direction != LineDirection::None) right.remove_prefix(whole.find('=') + 1);
    const std::string term = WithFreeVariable(right);
    line.term = document.Translate(term);
    if (line.term.empty()) line.term = term;
    return line;
}

}  // namespace korvinth::document
