#include "render/coverage_plane.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace korvinth::render {
namespace {

constexpr int kPixelsOfCell = 16;
constexpr int kFlagGroup = sizeof(std::uint64_t);  // cells whose flags are looked at together
constexpr std::size_t kFlaggedPixels = std::size_t{kPixelsOfCell} * kFlagGroup;
constexpr int kLanes = 8;  // pixels that are worked out together

using LaneBytes = std::uint8_t __attribute__((vector_size(kLanes)));

// The channels of two pixels; the arithmetic is that of Blend.
using Channels = std::uint16_t __attribute__((vector_size(sizeof(std::uint16_t) * kLanes)));

void BlendTwo(std::uint32_t* pixels, Channels colour, Channels coverage)
{
    LaneBytes bytes{};
    std::memcpy(&bytes, pixels, sizeof bytes);
    const Channels under = __builtin_convertvector(bytes, Channels);
    const Channels sum = under * (255 - coverage) + colour * coverage + 128;
    bytes = __builtin_convertvector((sum + (sum >> 8)) >> 8, LaneBytes);
    std::memcpy(pixels, &bytes, sizeof bytes);
}

// Eight pixels; all are written, those without coverage as they were.
void BlendEight(std::uint32_t* pixels, Channels colour, LaneBytes coverage)
{
    const Channels wide = __builtin_convertvector(coverage, Channels);
    BlendTwo(pixels, colour, __builtin_shufflevector(wide, wide, 0, 0, 0, 0, 1, 1, 1, 1));
    BlendTwo(pixels + 2, colour, __builtin_shufflevector(wide, wide, 2, 2, 2, 2, 3, 3, 3, 3));
    BlendTwo(pixels + 4, colour, __builtin_shufflevector(wide, wide, 4, 4, 4, 4, 5, 5, 5, 5));
    BlendTwo(pixels + 6, colour, __builtin_shufflevector(wide, wide, 6, 6, 6, 6, 7, 7, 7, 7));
}

void CompositeCell(std::uint8_t* coverage, std::uint32_t* pixels, Channels colour)
{
    for (int i = 0; i < kPixelsOfCell; i += kLanes) {
        std::uint64_t covered = 0;
        std::memcpy(&covered, coverage + i, sizeof covered);
        if (covered == 0) continue;
        LaneBytes bytes{};
        std::memcpy(&bytes, coverage + i, sizeof bytes);
        BlendEight(pixels + i, colour, bytes);
        std::memset(coverage + i, 0, sizeof covered);
    }
}

// The last cell of a row may reach beyond its end, where nothing is covered.
void CompositeLastCell(std::uint8_t* coverage, std::uint32_t* pixels, std::uint32_t colour)
{
    for (int i = 0; i < kPixelsOfCell; ++i) {
        if (coverage[i] != 0) pixels[i] = Blend(pixels[i], colour, coverage[i]);
    }
    std::memset(coverage, 0, kPixelsOfCell);
}

Channels TwoPixels(std::uint32_t colour)
{
    LaneBytes bytes{};
    const std::array both{colour, colour};
    std::memcpy(&bytes, both.data(), sizeof bytes);
    return __builtin_convertvector(bytes, Channels);
}

}  // namespace

CoveragePlane::CoveragePlane(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      stride_((static_cast<std::size_t>(width_) + kFlaggedPixels - 1) / kFlaggedPixels *
              kFlaggedPixels),
      cells_(stride_ / kCell),
      coverage_(stride_ * static_cast<std::size_t>(height_) + kOverhang),
      touched_(cells_ * static_cast<std::size_t>(height_)),
      first_row_(height_)
{
    static_assert(kCell == kPixelsOfCell);
}

void CoveragePlane::Composite(const PixelBuffer& target, std::uint32_t colour)
{
    for (int row = first_row_; row <= last_row_; ++row) CompositeRow(row, target, colour);
    first_row_ = height_;
    last_row_ = -1;
}

void CoveragePlane::CompositeRow(int row, const PixelBuffer& target, std::uint32_t colour)
{
    const Channels channels = TwoPixels(colour);
    const auto whole_cells = static_cast<std::size_t>(width_ / kCell);
    std::uint8_t* flags = touched_.data() + static_cast<std::size_t>(row) * cells_;
    for (std::size_t group = 0; group < cells_; group += kFlagGroup) {
        std::uint64_t flagged = 0;
        std::memcpy(&flagged, flags + group, sizeof flagged);
        if (flagged == 0) continue;
        for (std::size_t cell = group; cell < group + kFlagGroup; ++cell) {
            if (flags[cell] == 0) continue;
            std::uint8_t* coverage = Row(row) + cell * kCell;
            std::uint32_t* pixels =
                target.pixels + row * target.stride + static_cast<std::ptrdiff_t>(cell * kCell);
            if (cell < whole_cells) {
                CompositeCell(coverage, pixels, channels);
            } else {
                CompositeLastCell(coverage, pixels, colour);
            }
        }
        std::memset(flags + group, 0, sizeof flagged);
    }
}

}  // namespace korvinth::render
