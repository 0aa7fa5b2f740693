// Integral functions in terms: F(x) for the antiderivative of f, and "integral(...)".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvinth::document {

// Turns the first upper-case function, as F in "F(2*_x)", into "integral(f(2*_x))".
// Deliberate: only the first one is rewritten. A letter that ends a longer name (SIN, a2F) is no
// function of its own, and one whose bracket is left open stays for the parser to complain about.
std::string RewriteFirstIntegral(std::string_view term);

// The bracketed integrand of a term in parser syntax: "(f(_x))" for "integral(f(_x))", "" when the
// term has no integral; nothing when an integral is only a part of the term, which cannot be drawn.
std::optional<std::string> IntegrandOf(std::string_view parser_term);

// Whether a term in parser syntax calls the function, whose name matches without regard to case.
bool CallsFunction(std::string_view parser_term, std::string_view name);

}  // namespace korvinth::document
