// Where the samples of a function slot lie.
#pragma once

#include <string_view>

#include "document/plot_document.h"
#include "document/slots.h"
#include "render/view_range.h"
#include "term/math_parser.h"

namespace korvinth::render {

inline constexpr int kFewestSamples = 2;
inline constexpr int kMostSamples = 20000;

// Sample k lies at world x = x_min + k * dx and at pixel k * pixels_per_sample.
struct Sampling
{
    int sample_count = kFewestSamples;
    double dx = 0;
    double first_index = 0;  // of the slot's interval, not above last_index
    double last_index = 0;
    double first_x = 0;  // world x of both
    double last_x = 0;
    double pixels_per_sample = 1;
    double shift = 0;  // world x between a sample's place and where a hatched term is evaluated
};

// The value of an interval's bound as typed; `otherwise` when it is empty or has none. Clears the
// parser's error state.
double BoundOr(const document::PlotDocument& document, std::string_view bound, double otherwise,
               term::MathParser& parser);

// One sample for each column of pixels.
int DefaultSampleCount(const ViewRange& view);

// The sampling of a slot whose interval has these bounds, as typed. A bound that is empty or has no
// value is the end of the view. Deliberate: the indices are not rounded, an interval may begin
// between two pixels. Clears the parser's error state.
Sampling checkdef(const document::PlotDocument& document, const document::FunctionSlot& slot,
                  int sample_count, const ViewRange& view, term::MathParser& parser);

}  // namespace korvinth::render
