#include "render/axes.h"

#include <array>
#include <cstdint>

#include "render/axis_layout.h"
#include "render/axis_numbers.h"

namespace korvinth::render {
namespace {

constexpr int kTick = 3;                    // pixels to each side of the axis
constexpr double kFewestPixelsPerLine = 4;  // closer additional help lines would be an even grey

class CoordinateLines
{
public:
    CoordinateLines(DrawingSurface& surface, const ViewRange& view,
                    const document::DisplayAttributes& attributes, const AxisLayout& layout)
        : surface_(surface), view_(view), attributes_(attributes), layout_(layout)
    {
    }

    void DrawHelpLines();
    void DrawAxes();

private:
    void Line(int x0, int y0, int x1, int y1);
    void VerticalLines(const AxisMarks& marks);
    void HorizontalLines(const AxisMarks& marks);
    void ArrowHead(int tip_x, int tip_y, int back_x, int back_y);
    void DrawTicks();

    DrawingSurface& surface_;
    const ViewRange& view_;
    const document::DisplayAttributes& attributes_;
    const AxisLayout& layout_;
};

void CoordinateLines::Line(int x0, int y0, int x1, int y1)
{
    surface_.MoveTo(layout_.At(x0, y0));
    surface_.LineTo(layout_.At(x1, y1));
}

void CoordinateLines::VerticalLines(const AxisMarks& marks)
{
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        const int x = layout_.PixelX(marks.Position(mark));
        Line(x, 0, x, layout_.Height());
    }
}

void CoordinateLines::HorizontalLines(const AxisMarks& marks)
{
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        const int y = layout_.PixelY(marks.Position(mark));
        Line(0, y, layout_.Width(), y);
    }
}

void CoordinateLines::DrawHelpLines()
{
    const double width = attributes_.help_line_width;
    const AxisMarks& x_marks = layout_.XMarks();
    const AxisMarks& y_marks = layout_.YMarks();
    if (attributes_.extra_help_lines) {
        surface_.SelectPen({attributes_.extra_help_line_colour, width, LineType::Solid});
        const MarkStep x_step = Subdivision(x_marks.step);
        const MarkStep y_step = Subdivision(y_marks.step);
        if (layout_.Spacing(x_step, true) >= kFewestPixelsPerLine) {
            VerticalLines(MarksAt(x_step, view_.x_min, view_.x_max));
        }
        if (layout_.Spacing(y_step, false) >= kFewestPixelsPerLine) {
            HorizontalLines(MarksAt(y_step, view_.y_min, view_.y_max));
        }
    }
    if (attributes_.help_lines) {
        surface_.SelectPen({attributes_.help_line_colour, width, LineType::Solid});
        VerticalLines(x_marks);
        HorizontalLines(y_marks);
    }
}

// `back_x` and `back_y` are half the width of the arrow head's back.
void CoordinateLines::ArrowHead(int tip_x, int tip_y, int back_x, int back_y)
{
    const int length = layout_.Arrow().length;
    const int middle_x = back_y != 0 ? tip_x - length : tip_x;
    const int middle_y = back_x != 0 ? tip_y + length : tip_y;
    const std::array corners{layout_.At(tip_x, tip_y),
                             layout_.At(middle_x - back_x, middle_y - back_y),
                             layout_.At(middle_x + back_x, middle_y + back_y)};
    const Pen line = surface_.SelectPen({attributes_.axis_colour, 1, LineType::Invisible});
    surface_.Polygon(corners);
    surface_.SelectPen(line);
}

void CoordinateLines::DrawAxes()
{
    if (!attributes_.axes) return;
    surface_.SelectPen({attributes_.axis_colour, attributes_.axis_width, LineType::Solid});
    surface_.SelectBrush({attributes_.axis_colour});
    const bool arrows = layout_.ArrowsFit();
    const ArrowSize& arrow = layout_.Arrow();
    const int shortened = arrows ? arrow.length : 0;
    if (layout_.XAxisInView()) {
        Line(0, layout_.AxisY(), layout_.Width() - shortened, layout_.AxisY());
        if (arrows) ArrowHead(layout_.Width() - 1, layout_.AxisY(), 0, arrow.half_width);
    }
    if (layout_.YAxisInView()) {
        Line(layout_.AxisX(), layout_.Height(), layout_.AxisX(), shortened);
        if (arrows) ArrowHead(layout_.AxisX(), 0, arrow.half_width, 0);
    }
    if (arrows) DrawTicks();
}

void CoordinateLines::DrawTicks()
{
    constexpr int kBehindArrow = 3;
    const int from_tip = layout_.Arrow().length + kBehindArrow;
    const AxisMarks& x_marks = layout_.XMarks();
    const AxisMarks& y_marks = layout_.YMarks();
    const int axis_x = layout_.AxisX();
    const int axis_y = layout_.AxisY();
    surface_.SelectPen({attributes_.axis_colour, 1, LineType::Solid});
    for (std::int64_t mark = x_marks.first; layout_.XAxisInView() && mark <= x_marks.last; ++mark) {
        const int x = layout_.PixelX(x_marks.Position(mark));
        if (mark != 0 && x < layout_.Width() - from_tip) Line(x, axis_y - kTick, x, axis_y + kTick);
    }
    for (std::int64_t mark = y_marks.first; layout_.YAxisInView() && mark <= y_marks.last; ++mark) {
        const int y = layout_.PixelY(y_marks.Position(mark));
        if (mark != 0 && y > from_tip) Line(axis_x - kTick, y, axis_x + kTick, y);
    }
}

}  // namespace

void helpline(DrawingSurface& surface, const ViewRange& view,
              const document::DisplayAttributes& attributes, const AxisScales& scales,
              LabelSpace& labels)
{
    surface.Clear(attributes.background);
    const Font font = surface.SelectFont({"Arial", FontPixels(attributes.font_points)});
    const Pen pen = surface.CurrentPen();
    const AxisLayout layout(surface, view, attributes, scales);
    CoordinateLines lines(surface, view, attributes, layout);
    lines.DrawHelpLines();
    lines.DrawAxes();
    DrawAxisTexts(surface, layout, attributes, labels);
    surface.SelectPen(pen);
    surface.SelectFont(font);
}

}  // namespace korvinth::render
