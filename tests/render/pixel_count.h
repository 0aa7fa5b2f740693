// Counts pixels of an image, for tests of what is seen.
#pragma once

#include <QColor>
#include <QImage>

#include "document/display_attributes.h"

namespace korvinth::render {

// Those whose colour fulfils the condition.
template <class Condition>
int CountPixels(const QImage& image, Condition condition)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) count += condition(image.pixelColor(x, y)) ? 1 : 0;
    }
    return count;
}

inline int CountPixels(const QImage& image, document::Colour colour)
{
    const QColor wanted(document::Red(colour), document::Green(colour), document::Blue(colour));
    return CountPixels(image, [&wanted](const QColor& pixel) { return pixel == wanted; });
}

}  // namespace korvinth::render
