// Splits a term into tokens.
#pragma once

#include <string_view>
#include <vector>

#include "term/definitions.h"
#include "term/error.h"
#include "term/token.h"

namespace korvinth::term {

// Fills `tokens`, ending with TokenKind::End. Of several faults the most telling one is returned:
// a limit exceeded, then brackets that do not match, then what is found first from the left. The
// tokens refer to `text`.
Error Lex(std::string_view text, const Definitions& definitions, std::vector<Token>& tokens);

}  // namespace korvinth::term
