// Builds the syntax tree of a term.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "term/error.h"
#include "term/limits.h"
#include "term/syntax_tree.h"
#include "term/token.h"

namespace korvinth::term {

struct ParseFault
{
    Error error = Error::None;
    std::string_view data;  // the function with wrong arguments, refers to the text
};

// Precedence climbing over the tokens that Lex made. Operators from loose to tight: imp, eqv, xor,
// or, and, not, comparisons, sums, products (with or without sign), prefix signs, ^ (to the right),
// factorial. Error::ArgumentCount is reported here only for "not"; names are looked up later.
ParseFault ParseTokens(const std::vector<Token>& tokens, const Limits& limits, SyntaxTree& tree);

}  // namespace korvinth::term
