// From a slot's term to the text that the parser gets, and the check of its syntax.
#pragma once

#include <string>
#include <string_view>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// x² and x³ as powers: "_x²+2_x³" gives "_x^2+2_x^3"; neighbouring superscripts make one exponent.
// Deliberate: a superscript with nothing in front of it turns the whole term into "//", which the
// parser rejects.
std::string RaiseSuperscripts(std::string_view term);

// Defines every function of the document with the value 1, so that terms that call it can be
// parsed, or removes these definitions again.
void DefinePlaceholders(const PlotDocument& document, term::MathParser& parser);
void ReleasePlaceholders(const PlotDocument& document, term::MathParser& parser);

// Fills the slot's parser_term from its term and checks the syntax; defines the placeholders for
// that. The German message of an error, "" when the term is right or empty. A name that the parser
// does not know is right: it may become a parameter.
// Deliberate: a derivative of something that is no function leaves parser_term empty without a
// message when the term is right without its apostrophes; the function is just not drawn.
std::string PrepareFunctionTerm(PlotDocument& document, term::MathParser& parser, SlotIndex slot);

}  // namespace korvinth::document
