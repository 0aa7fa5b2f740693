// Turns strokes into coverage.
#pragma once

#include <cstdint>
#include <span>

#include "render/coverage_plane.h"
#include "render/dash_pattern.h"

namespace korvinth::render {

// Fractional pixels: the pixel (i, j) covers i..i+1 and j..j+1.
struct PixelPoint
{
    double x = 0;
    double y = 0;
};

// A pixel's number, its upper left corner.
struct PixelIndex
{
    int x = 0;
    int y = 0;
};

// Add* raise the coverage, so that a stroke that crosses itself is of one strength, and so are all
// strokes up to the next Composite, which lays their colour on.
class StrokeRaster
{
public:
    StrokeRaster(int width, int height) : plane_(width, height) {}

    // A smooth line with round joins and ends. Points that are no numbers break it.
    void AddSmooth(std::span<const PixelPoint> points, double width, const DashPattern& dashes);
    // Whole pixels, `width` of them across the line's longer direction, without the last one. Lines
    // wider than 2 have round joins and dashes.
    void AddHard(std::span<const PixelIndex> points, int width, const DashPattern& dashes);

    // `colour` is opaque: 0xFFRRGGBB.
    void Composite(const PixelBuffer& target, std::uint32_t colour)
    {
        plane_.Composite(target, colour);
    }

    std::uint8_t CoverageAt(int x, int y) const { return plane_.At(x, y); }

private:
    struct Segment;

    void AddDashed(std::span<const PixelPoint> points, double width, const DashPattern& dashes);
    void AddSegment(PixelPoint from, PixelPoint to, double width, bool with_start_cap);
    void AddSteepRows(const Segment& segment, int first_row, int last_row);
    void AddRow(const Segment& segment, int row);
    void AddSpan(const Segment& segment, int row, int first, int last);
    void AddEndPixels(const Segment& segment, int row, int first, int last);
    void AddDisc(PixelIndex at, int width);
    void AddHardSegment(PixelIndex from, PixelIndex to, int width, const DashPattern& dashes,
                        double phase);

    CoveragePlane plane_;
};

}  // namespace korvinth::render
