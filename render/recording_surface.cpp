#include "render/recording_surface.h"

#include <algorithm>
#include <cmath>

namespace korvinth::render {

RecordingSurface::RecordingSurface(int width, int height, int steps_per_pixel)
    : DrawingSurface(width, height, steps_per_pixel)
{
}

const std::vector<DrawingCommand>& RecordingSurface::Commands()
{
    FlushStroke();
    return commands_;
}

void RecordingSurface::Forget()
{
    FlushStroke();
    commands_.clear();
}

void RecordingSurface::DoStroke(std::span<const GridPoint> points, const Pen& pen)
{
    commands_.emplace_back(StrokeCommand{{points.begin(), points.end()}, pen});
}

void RecordingSurface::DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                                 const Brush& fill)
{
    commands_.emplace_back(PolygonCommand{{corners.begin(), corners.end()},
                                          outline != nullptr,
                                          outline != nullptr ? *outline : Pen{},
                                          fill});
}

void RecordingSurface::DoEllipse(const GridBox& box, const Brush& brush, bool filled)
{
    commands_.emplace_back(EllipseCommand{box, brush, filled});
}

void RecordingSurface::DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                              Colour colour)
{
    commands_.emplace_back(
        TextCommand{top_left, std::string(utf8), font, colour, DoMeasure(utf8, font)});
}

GridExtent RecordingSurface::DoMeasure(std::string_view utf8, const Font& font)
{
    const auto characters = std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    });
    const double step = font.height * StepsPerPixel();
    return {static_cast<int>(std::lround(static_cast<double>(characters) * step / 2)),
            static_cast<int>(std::lround(step * 1.2))};
}

void RecordingSurface::DoClear(Colour colour) { commands_.emplace_back(ClearCommand{colour}); }

void RecordingSurface::DoRefresh() { commands_.emplace_back(RefreshCommand{}); }

}  // namespace korvinth::render
