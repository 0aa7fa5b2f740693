// What ties parameters to parser variables: their values, and whether a term uses one.
#pragma once

#include <string_view>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// The value of a parameter's parser variable: its value, but for "dichte", the width of a hatching
// stripe in samples. That one is an angle to the parser, so that the stripes keep their width in
// degree and grad mode.
double ParserValue(const Parameter& parameter, term::TrigMode mode);

// Stores a value in the parameter and in its parser variable.
void SetParameterValue(PlotDocument& document, term::MathParser& parser, ParameterIndex index,
                       double value);

// Whether `term`, in parser syntax, needs the parameter: found by evaluating it while the parser
// does not know the name. The parameter's handle is a new one afterwards. Deliberate: a term with
// an error that comes before an unknown name (a wrong bracket) uses no parameter.
bool TermUsesParameter(PlotDocument& document, term::MathParser& parser, ParameterIndex index,
                       std::string_view term);

}  // namespace korvinth::document
