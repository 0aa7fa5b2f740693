// Where axes, marks and numbers lie in a picture.
#pragma once

#include <string>

#include "document/display_attributes.h"
#include "render/axis_marks.h"
#include "render/axis_scale.h"
#include "render/drawing_surface.h"
#include "render/view_range.h"

namespace korvinth::render {

// Of an arrow head, in pixels; it grows with the axis.
struct ArrowSize
{
    int length = 7;
    int half_width = 2;
};
ArrowSize ArrowOf(double axis_width);

// Where numbers lie across their axis.
struct NumberBand
{
    int anchor = 0;
    bool before = false;  // they end at the anchor, else they begin there
};

// All lengths in screen pixels. Texts are measured in the font that the surface has.
class AxisLayout
{
public:
    AxisLayout(DrawingSurface& surface, const ViewRange& view,
               const document::DisplayAttributes& attributes, const AxisScales& scales);

    int Width() const { return width_; }
    int Height() const { return height_; }
    int AxisX() const { return axis_x_; }  // column of the y-axis
    int AxisY() const { return axis_y_; }  // row of the x-axis
    bool YAxisInView() const { return y_axis_in_view_; }
    bool XAxisInView() const { return x_axis_in_view_; }
    bool ArrowsFit() const { return arrows_; }
    bool NumbersFit() const { return numbers_; }
    const ArrowSize& Arrow() const { return arrow_; }
    const AxisMarks& XMarks() const { return x_marks_; }
    const AxisMarks& YMarks() const { return y_marks_; }

    int PixelX(double x) const;
    int PixelY(double y) const;
    GridPoint At(int x, int y) const { return {x * steps_, y * steps_}; }

    // From one multiple of a step to the next.
    double Spacing(const MarkStep& step, bool horizontal) const;

    int TextHeight() const { return text_height_; }
    int TextWidth(const std::string& text) const;
    // Every how manieth mark has a number, so that neighbours keep apart; more than all marks when
    // there is room for one only.
    std::int64_t Stride(const AxisMarks& marks, bool horizontal) const;
    NumberBand BandOfX() const;
    NumberBand BandOfY() const;

private:
    int WidestNumber(const AxisMarks& marks) const;
    bool Apart(const AxisMarks& marks, std::int64_t stride, double spacing, bool horizontal) const;
    AxisMarks ChooseMarks(const AxisScale& scale, double lower, double upper,
                          bool horizontal) const;

    DrawingSurface& surface_;
    const ViewRange& view_;
    int steps_;
    int width_;
    int height_;
    int text_height_;
    int axis_x_;
    int axis_y_;
    bool y_axis_in_view_;
    bool x_axis_in_view_;
    bool arrows_;
    bool numbers_;
    ArrowSize arrow_;
    int below_axis_;   // from the x-axis to its numbers
    int beside_axis_;  // from the y-axis to its numbers
    AxisMarks x_marks_;
    AxisMarks y_marks_;
};

// From the edge of the area to texts that stick to it.
inline constexpr int kTextBorder = 2;

}  // namespace korvinth::render
