// What is asked of a picture in a file or on paper.
#pragma once

#include <optional>
#include <string_view>

#include "render/metafile_surface.h"

namespace korvinth::render {

inline constexpr int kLongestSide = 30'000;          // pixels of a picture
inline constexpr int kLargestPicture = 100'000'000;  // pixels; 4 bytes each while it is drawn
inline constexpr double kUsualResolution = 96;       // dots per inch: a dot is a screen pixel
inline constexpr double kLeastResolution = 10;
inline constexpr double kMostResolution = 2400;
// Centimetres of a world unit.
inline constexpr double kSmallestScale = 0.001;
inline constexpr double kLargestScale = 1000;

enum class PictureFormat { Png, Svg, Pdf, Emf };

// By the ending of a file name, in capitals or not; nothing for other endings.
std::optional<PictureFormat> FormatOf(std::string_view file);

struct PageMargins  // mm
{
    double left = 10, top = 10, right = 10, bottom = 10;
};

struct PageOptions
{
    // Centimetres of a world unit, the same in both directions; without it the picture is made as
    // large as the page has room.
    std::optional<double> scale;
    bool landscape = false;
    PageMargins margins;
    bool legend = false;  // functions and parameter values below the picture
};

struct PictureSize  // pixels
{
    int width = 0;
    int height = 0;
};

struct PictureOptions
{
    // Of an image, a vector graphic or a metafile; that of the drawing area unless it is given.
    std::optional<PictureSize> size;
    double resolution = kUsualResolution;  // dots per inch of an image
    PageOptions page;                      // its scale counts for SVG, too
    // The screen that a metafile refers to; as it stands one of 96 pixels an inch.
    ScreenSize screen{1920, 1440, 508, 381};
};

}  // namespace korvinth::render
