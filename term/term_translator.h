// Rewrites a term from classroom notation into the parser's syntax, by text replacement alone.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace korvinth::term {

// The parser variable that stands for the argument of every function term.
inline constexpr std::string_view kFreeVariable = "_x";

enum class Derivatives { Expand, Keep };

class TermTranslator
{
public:
    // `function_names`: the names of the function slots in slot order, "" for a free one. The view
    // must outlive the translator.
    explicit TermTranslator(std::span<const std::string> function_names)
        : function_names_(function_names)
    {
    }

    // The term in parser syntax. Empty when nothing is left of the term, or when an apostrophe is
    // left after the derivatives of the known functions were expanded into difference quotients.
    std::string Translate(std::string_view term,
                          Derivatives derivatives = Derivatives::Expand) const;

private:
    std::span<const std::string> function_names_;
};

}  // namespace korvinth::term
