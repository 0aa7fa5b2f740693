// The drawing target of the graph routines: keeps pen and position, hands complete strokes on.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/display_attributes.h"

namespace korvinth::render {

using document::Colour;
using document::LineType;

// A position in grid steps of the surface: origin top left, y downwards.
struct GridPoint
{
    int x = 0;
    int y = 0;
    bool operator==(const GridPoint&) const = default;
};

struct GridBox
{
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const GridBox&) const = default;
};

struct GridExtent
{
    int width = 0, height = 0;
    bool operator==(const GridExtent&) const = default;
};

struct Pen
{
    Colour colour{};
    double width = 1;  // screen pixels
    LineType type = LineType::Solid;
    bool operator==(const Pen&) const = default;
};

struct Brush
{
    Colour colour{};
    bool operator==(const Brush&) const = default;
};

struct Font
{
    std::string face = "Arial";
    double height = 12;  // screen pixels
    bool operator==(const Font&) const = default;
};

// A surface of width x height grid steps. A screen pixel is StepsPerPixel() steps wide and high: 1
// draws by the exact pixel rules, more gives the integer coordinates of the drawing routines room
// for curves without steps. Consecutive LineTo calls reach the back end as one stroke.
//
// Points of strokes and of Polygon are pixel centres: (0, 0) is the middle of the first pixel.
// Boxes and FillRegion go by edges: the box (0, 0, s, s) with s = StepsPerPixel() is just that
// pixel.
class DrawingSurface
{
public:
    DrawingSurface(int width, int height, int steps_per_pixel);
    virtual ~DrawingSurface() = default;
    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;

    int Width() const { return width_; }
    int Height() const { return height_; }
    int StepsPerPixel() const { return steps_per_pixel_; }

    Pen SelectPen(const Pen& pen);  // returns the previous pen
    Brush SelectBrush(const Brush& brush);
    Font SelectFont(const Font& font);
    Colour SetTextColour(Colour colour);
    const Pen& CurrentPen() const { return pen_; }

    void MoveTo(GridPoint to);
    void LineTo(GridPoint to);  // leaves the pixel at `to` unset when the stroke ends there
    void Polygon(std::span<const GridPoint> corners);  // filled with the brush, outlined by the pen
    void FillRegion(std::span<const GridPoint> corners, const Brush& brush);
    void PaintEllipse(const GridBox& box, const Brush& brush);
    void FrameEllipse(const GridBox& box, const Brush& brush);
    void TextOut(GridPoint top_left, std::string_view utf8);  // transparent background
    // Width and height of a text in the current font, in grid steps.
    GridExtent MeasureText(std::string_view utf8);
    void Clear(Colour colour);
    void Refresh();  // presents what was drawn since the last refresh

protected:
    // At least two points; the stroke's own style of ends is the back end's.
    virtual void DoStroke(std::span<const GridPoint> points, const Pen& pen) = 0;
    // Without an outline when `outline` is null.
    virtual void DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                           const Brush& fill) = 0;
    virtual void DoEllipse(const GridBox& box, const Brush& brush, bool filled) = 0;
    virtual void DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                        Colour colour) = 0;
    virtual GridExtent DoMeasure(std::string_view utf8, const Font& font) = 0;
    virtual void DoClear(Colour colour) = 0;
    virtual void DoRefresh() = 0;

    // Hands the stroke drawn so far on. Back ends call it before they show what they hold.
    void FlushStroke();

private:
    int width_;
    int height_;
    int steps_per_pixel_;
    Pen pen_;
    Brush brush_;
    Font font_;
    Colour text_colour_{};
    GridPoint position_;
    std::vector<GridPoint> stroke_;  // empty, or begins where the stroke began
};

}  // namespace korvinth::render
