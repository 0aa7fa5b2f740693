// How the number at a mark is written.
#pragma once

#include <cstdint>
#include <string>

#include "render/axis_marks.h"

namespace korvinth::render {

// "⁻¹²"
std::string Superscript(int exponent);

// So many steps as a number in the German way: "−0,5", "1 500", "2·10⁷", "3π/2".
std::string MarkLabel(const MarkStep& step, std::int64_t count);

// The significant digits in it.
int LabelDigits(const MarkStep& step, std::int64_t count);

}  // namespace korvinth::render
