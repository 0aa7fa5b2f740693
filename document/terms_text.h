// The functions of the plot as a text for other programs.
#pragma once

#include <string>

#include "document/plot_document.h"

namespace korvinth::document {

enum class TermsTextMode { AsTyped = 0, WithParameterValues = 1 };

// A line "name(argument)=term" for every function up to the last slot in use; CR LF after every
// line but that of the last slot. (paracopy)
std::string TermsText(const PlotDocument& document, TermsTextMode mode);

}  // namespace korvinth::document
