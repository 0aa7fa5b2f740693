// Turns strokes into coverage and lays them, one colour a stroke, onto 32-bit pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

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

// Rows of 32-bit pixels 0xAARRGGBB; the stride counts pixels.
struct PixelBuffer
{
    std::uint32_t* pixels = nullptr;
    std::ptrdiff_t stride = 0;
};

// A picture's worth of 8-bit coverage, zero between strokes. Add* raise it, so that a stroke that
// crosses itself is of one strength; Composite lays the colour on and zeroes it again.
class StrokeRaster
{
public:
    StrokeRaster(int width, int height);

    // A smooth line with round joins and ends. Points that are no numbers break it.
    void AddSmooth(std::span<const PixelPoint> points, double width, const DashPattern& dashes);
    // Whole pixels, `width` of them across the line's longer direction, without the last one.
    void AddHard(std::span<const PixelIndex> points, int width, const DashPattern& dashes);

    // `colour` is opaque: 0xFFRRGGBB.
    void Composite(const PixelBuffer& target, std::uint32_t colour);

    std::uint8_t CoverageAt(int x, int y) const { return coverage_[Offset(x, y)]; }

private:
    struct Segment;

    std::size_t Offset(int x, int y) const
    {
        return static_cast<std::size_t>(y) * stride_ + static_cast<std::size_t>(x);
    }
    void AddDashed(std::span<const PixelPoint> points, double width, const DashPattern& dashes);
    void AddSegment(PixelPoint from, PixelPoint to, double width, bool with_start_cap);
    void AddSteepRows(const Segment& segment, int first_row, int last_row);
    void AddRow(const Segment& segment, int row);
    void AddSpan(const Segment& segment, int row, int first, int last);
    void AddEndPixels(const Segment& segment, int row, int first, int last);
    void AddHardSegment(PixelIndex from, PixelIndex to, int width, const DashPattern& dashes,
                        double phase);
    void Touch(int row, int first_x, int last_x);

    int width_;
    int height_;
    std::size_t stride_;  // bytes a row of coverage
    std::size_t cells_;   // flags a row; a cell is some pixels of a row
    std::vector<std::uint8_t> coverage_;
    std::vector<std::uint8_t> touched_;  // a flag for each cell of a row
    int first_row_;                      // touched rows, first > last when there are none
    int last_row_ = -1;
};

// Mixes an opaque colour in; coverage 255 replaces the pixel.
inline std::uint32_t Blend(std::uint32_t under, std::uint32_t colour, std::uint32_t coverage)
{
    constexpr std::uint32_t kMask = 0x00FF00FFU;
    constexpr std::uint32_t kHalf = 0x00800080U;
    const std::uint32_t rest = 255U - coverage;
    std::uint32_t even = (under & kMask) * rest + (colour & kMask) * coverage + kHalf;
    std::uint32_t odd =
        ((under >> 8U) & kMask) * rest + ((colour >> 8U) & kMask) * coverage + kHalf;
    even = ((even + ((even >> 8U) & kMask)) >> 8U) & kMask;
    odd = (odd + ((odd >> 8U) & kMask)) & ~kMask;
    return even | odd;
}

}  // namespace korvinth::render
