#include "document/prepare_term.h"

#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::string_view kSquare = "²";
constexpr std::string_view kCube = "³";

std::string SlashesForColons(std::string_view term) { return term::ReplaceAll(term, ":", "/"); }

std::string CheckSyntax(const PlotDocument& document, term::MathParser& parser,
                        std::string_view term)
{
    DefinePlaceholders(document, parser);
    parser.ReleaseExpr(parser.Parse(term));
    std::string message;
    if (parser.GetError() != term::Error::UndefinedVariable) message = parser.ErrorText();
    parser.EvalText("");
    return message;
}

}  // namespace

std::string RaiseSuperscripts(std::string_view term)
{
    std::string result;
    bool in_exponent = false;
    while (!term.empty()) {
        const bool square = term.starts_with(kSquare);
        if (square || term.starts_with(kCube)) {
            if (result.empty()) return "//";
            if (!in_exponent) result += '^';
            result += square ? '2' : '3';
            in_exponent = true;
            term.remove_prefix(kSquare.size());
        } else {
            result += term.front();
            in_exponent = false;
            term.remove_prefix(1);
        }
    }
    return result;
}

void DefinePlaceholders(const PlotDocument& document, term::MathParser& parser)
{
    for (const FunctionSlot& slot : document.slots) {
        if (slot.name.empty()) continue;
        parser.DefineFunction(slot.name + "(" + std::string(term::kFreeVariable) + ")=1");
    }
}

void ReleasePlaceholders(const PlotDocument& document, term::MathParser& parser)
{
    for (const FunctionSlot& slot : document.slots) {
        if (!slot.name.empty()) parser.ReleaseFunction(slot.name);
    }
}

std::string PrepareFunctionTerm(PlotDocument& document, term::MathParser& parser, SlotIndex slot)
{
    FunctionSlot& function = document.slots[slot];
    const std::string term = RaiseSuperscripts(function.term);
    function.parser_term = SlashesForColons(document.Translate(term));
    const std::string without_apostrophes = term::ReplaceAll(term, "'", "");
    const std::string check =
        SlashesForColons(document.Translate(without_apostrophes, term::Derivatives::Keep));
    return check.empty() ? "" : CheckSyntax(document, parser, check);
}

}  // namespace korvinth::document
