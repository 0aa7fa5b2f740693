// German names of colours.
#pragma once

#include <string_view>

#include "document/display_attributes.h"

namespace korvinth::document {

// The name of the colour in a short list that looks most like this one: "blau", "dunkelgrün".
std::string_view ColourName(Colour colour);

}  // namespace korvinth::document
