// Sizes of texts, for surfaces that write a file of their own.
#pragma once

#include <cmath>
#include <string_view>

#include "render/drawing_surface.h"

namespace korvinth::render {

// All sizes in screen pixels, unrounded; they grow in proportion to the font's height.
class TextMetrics
{
public:
    virtual ~TextMetrics() = default;
    virtual double Advance(std::string_view utf8, const Font& font) const = 0;
    virtual double Ascent(const Font& font) const = 0;  // from the top of a line to its base line
    virtual double LineHeight(const Font& font) const = 0;
};

inline GridExtent MeasuredExtent(const TextMetrics& metrics, std::string_view utf8,
                                 const Font& font, int steps_per_pixel)
{
    return {static_cast<int>(std::ceil(metrics.Advance(utf8, font) * steps_per_pixel)),
            static_cast<int>(std::ceil(metrics.LineHeight(font) * steps_per_pixel))};
}

// Grid steps to a pixel of files that are scaled later.
inline constexpr int kVectorSteps = 16;

}  // namespace korvinth::render
