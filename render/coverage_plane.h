// How much of each pixel a stroke covers, and how its colour is laid onto a picture by that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace korvinth::render {

// Rows of 32-bit pixels 0xAARRGGBB; the stride counts pixels.
struct PixelBuffer
{
    std::uint32_t* pixels = nullptr;
    std::ptrdiff_t stride = 0;
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

// Rows of 8-bit coverage, all zero at first. Whoever raises it touches the pixels, so that
// compositing looks at these only.
class CoveragePlane
{
public:
    // Writing may reach so many pixels beyond the end of the last row.
    static constexpr int kOverhang = 8;

    CoveragePlane(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    std::ptrdiff_t Stride() const { return static_cast<std::ptrdiff_t>(stride_); }
    std::uint8_t* Row(int row) { return coverage_.data() + Offset(0, row); }
    std::uint8_t At(int x, int y) const { return coverage_[Offset(x, y)]; }

    void Touch(int row, int first_x, int last_x)
    {
        for (int cell = first_x >> kCellBits; cell <= last_x >> kCellBits; ++cell) {
            TouchCell(row, cell);
        }
        TouchRows(row, row);
    }
    // The parts of Touch, for whoever goes through many rows.
    static int CellOf(int x) { return x >> kCellBits; }
    void TouchCell(int row, int cell)
    {
        touched_[static_cast<std::size_t>(row) * cells_ + static_cast<std::size_t>(cell)] = 1;
    }
    void TouchRows(int first_row, int last_row)
    {
        first_row_ = first_row < first_row_ ? first_row : first_row_;
        last_row_ = last_row > last_row_ ? last_row : last_row_;
    }

    // Lays the colour on and zeroes the coverage again. `colour` is opaque: 0xFFRRGGBB.
    void Composite(const PixelBuffer& target, std::uint32_t colour);

private:
    static constexpr int kCellBits = 4;
    static constexpr int kCell = 1 << kCellBits;

    std::size_t Offset(int x, int y) const
    {
        return static_cast<std::size_t>(y) * stride_ + static_cast<std::size_t>(x);
    }
    void CompositeRow(int row, const PixelBuffer& target, std::uint32_t colour);

    int width_;
    int height_;
    std::size_t stride_;  // bytes a row of coverage
    std::size_t cells_;   // flags a row; a cell is some pixels of a row
    std::vector<std::uint8_t> coverage_;
    std::vector<std::uint8_t> touched_;  // a flag for each cell of a row
    int first_row_;                      // touched rows, first > last when there are none
    int last_row_ = -1;
};

}  // namespace korvinth::render
