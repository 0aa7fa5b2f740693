// How the axes count, as the general settings and the angle mode have it.
#pragma once

#include "document/display_attributes.h"
#include "render/axis_marks.h"
#include "term/math_parser.h"

namespace korvinth::render {

struct AxisScale
{
    StepLadder ladder = StepLadder::Decimal;
    double fixed = 0;  // above 0: the only step
};

struct AxisScales
{
    AxisScale x;
    AxisScale y;
};

// Reads the terms of fixed steps, which may use parameters; one without a value above 0 leaves its
// axis to count automatically. The x-axis counts parts of a turn in degrees and grads.
AxisScales ReadAxisScales(const document::DisplayAttributes& attributes, term::MathParser& parser);

}  // namespace korvinth::render
