// Keeps the samples of hatched graphs off the places where the hatching pattern turns.
#pragma once

namespace korvinth::render {

// The pattern turns at the zeros of sin(pi/dichte*_x/sw): where _x/sw is a multiple of the stripes'
// width. With samples on these places, as there are in every view whose left end is a whole number
// of samples from 0, rounding alone would tell a stripe from a gap. This is the least distance, in
// samples and below a quarter of one, by which samples at first_x + k * step must move so that they
// keep clear of the turns of stripes of whole and half widths.
double HatchShift(double first_x, double step);

}  // namespace korvinth::render
