// Where a picture lies on paper and which part of the plane it shows.
#pragma once

#include <string>

#include "render/view_range.h"

namespace korvinth::app {

struct Room  // mm, origin at the upper left corner of the page
{
    double left = 0, top = 0, width = 0, height = 0;
};

struct PlacedPicture
{
    render::ViewRange view;
    int width = 0;  // pixels of the drawing surface
    int height = 0;
    double mm_per_pixel = 0;
    // Of the middle of the first pixel; that is where x_min and y_max are.
    double left = 0, top = 0;  // mm on the page
    std::string fault;         // German, "" when there is a picture
    std::string note;          // what the picture leaves out
};

// The picture of the screen, as large as fits; in the middle at the top.
PlacedPicture FitPicture(const render::ViewRange& screen, const Room& room);

// A world unit is `scale` centimetres in both directions. A pixel is about a quarter of a
// millimetre, such that a unit is a whole number of pixels or a pixel a whole number of units: so
// whole numbers lie exactly where they should although the axes' marks go by pixels. Deliberate:
// shows the ranges of the screen widened to whole pixels.
PlacedPicture ScalePicture(const render::ViewRange& screen, double scale);

// The same on a page: a range that the room does not hold is cut about its middle, with a note.
// Where the room allows it, the world's origin lies on a multiple of 5 mm from the page's upper
// left corner, as the lines of squared paper do.
PlacedPicture ScalePictureOnPage(const render::ViewRange& screen, double scale, const Room& room);

}  // namespace korvinth::app
