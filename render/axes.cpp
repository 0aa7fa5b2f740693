#include "render/axes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "render/grid_rounding.h"

namespace korvinth::render {
namespace {

// All lengths in screen pixels.
constexpr double kAxisWidth = 1.25;
constexpr int kArrowLength = 7;
constexpr int kArrowHalfWidth = 2;
constexpr int kTick = 3;        // to each side of the axis
constexpr int kBelowAxis = 5;   // from the x-axis to its numbers
constexpr int kBesideAxis = 7;  // from the y-axis to its numbers
constexpr int kBorder = 2;      // from the edge of the area to numbers that stick to it
constexpr int kGapBetweenNumbers = 8;
constexpr int kFewestPixelsPerMark = 48;
constexpr int kSmallestArea = 64;  // less shows neither arrow heads nor ticks

// The step that divides the marks' distance into four or five parts.
MarkStep Subdivision(MarkStep step)
{
    switch (step.digit) {
        case 1: return {2, step.exponent - 1};
        case 2: return {5, step.exponent - 1};
        default: return {1, step.exponent};
    }
}

// Where numbers lie across their axis.
struct NumberBand
{
    int anchor = 0;
    bool before = false;  // they end at the anchor, else they begin there
};

class CoordinateSystem
{
public:
    CoordinateSystem(DrawingSurface& surface, const ViewRange& view,
                     const document::DisplayAttributes& attributes, LabelSpace& labels);

    void DrawHelpLines();
    void DrawAxes();
    void DrawNames();
    void DrawNumbers();

private:
    int PixelX(double x) const { return RoundToGrid(view_.AreaX(x) / view_.twips_per_pixel_x); }
    int PixelY(double y) const { return RoundToGrid(view_.AreaY(y) / view_.twips_per_pixel_y); }
    GridPoint At(int x, int y) const { return {x * steps_, y * steps_}; }

    void Line(int x0, int y0, int x1, int y1);
    void VerticalLines(const AxisMarks& marks);
    void HorizontalLines(const AxisMarks& marks);
    void ArrowHead(int tip_x, int tip_y, int back_x, int back_y);
    void DrawTicks();

    int TextWidth(const std::string& text);
    int WidestNumber(const AxisMarks& marks);
    bool NumbersFit(const AxisMarks& marks, bool horizontal);
    std::int64_t Stride(const AxisMarks& marks, bool horizontal);
    AxisMarks ChooseMarks(double lower, double upper, int pixels, bool horizontal);
    NumberBand BandOfX() const;
    NumberBand BandOfY();
    void DrawNumber(const std::string& text, int left, int top);
    void DrawZero();
    void DrawXNumbers();
    void DrawYNumbers();

    DrawingSurface& surface_;
    const ViewRange& view_;
    const document::DisplayAttributes& attributes_;
    LabelSpace& labels_;
    int steps_;
    int width_;
    int height_;
    int text_height_;
    int axis_x_;  // pixel column of the y-axis
    int axis_y_;  // pixel row of the x-axis
    bool y_axis_in_view_;
    bool x_axis_in_view_;
    bool numbers_;
    AxisMarks x_marks_;
    AxisMarks y_marks_;
};

CoordinateSystem::CoordinateSystem(DrawingSurface& surface, const ViewRange& view,
                                   const document::DisplayAttributes& attributes,
                                   LabelSpace& labels)
    : surface_(surface),
      view_(view),
      attributes_(attributes),
      labels_(labels),
      steps_(surface.StepsPerPixel()),
      width_(surface.Width() / steps_),
      height_(surface.Height() / steps_),
      text_height_((surface.MeasureText("0").height + steps_ - 1) / steps_),
      axis_x_(PixelX(0)),
      axis_y_(PixelY(0)),
      y_axis_in_view_(view.x_min <= 0 && view.x_max >= 0 && axis_x_ >= 0 && axis_x_ < width_),
      x_axis_in_view_(view.y_min <= 0 && view.y_max >= 0 && axis_y_ >= 0 && axis_y_ < height_),
      numbers_(width_ >= 8 * text_height_ && height_ >= 5 * text_height_),
      x_marks_(ChooseMarks(view.x_min, view.x_max, width_, true)),
      y_marks_(ChooseMarks(view.y_min, view.y_max, height_, false))
{
}

void CoordinateSystem::Line(int x0, int y0, int x1, int y1)
{
    surface_.MoveTo(At(x0, y0));
    surface_.LineTo(At(x1, y1));
}

void CoordinateSystem::VerticalLines(const AxisMarks& marks)
{
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        const int x = PixelX(marks.Position(mark));
        Line(x, 0, x, height_);
    }
}

void CoordinateSystem::HorizontalLines(const AxisMarks& marks)
{
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        const int y = PixelY(marks.Position(mark));
        Line(0, y, width_, y);
    }
}

void CoordinateSystem::DrawHelpLines()
{
    if (attributes_.extra_help_lines) {
        surface_.SelectPen({attributes_.extra_help_line_colour, 1, LineType::Solid});
        VerticalLines(MarksAt(Subdivision(x_marks_.step), view_.x_min, view_.x_max));
        HorizontalLines(MarksAt(Subdivision(y_marks_.step), view_.y_min, view_.y_max));
    }
    if (attributes_.help_lines) {
        surface_.SelectPen({attributes_.help_line_colour, 1, LineType::Solid});
        VerticalLines(x_marks_);
        HorizontalLines(y_marks_);
    }
}

// `back_x` and `back_y` are half the width of the arrow head's back.
void CoordinateSystem::ArrowHead(int tip_x, int tip_y, int back_x, int back_y)
{
    const int middle_x = back_y != 0 ? tip_x - kArrowLength : tip_x;
    const int middle_y = back_x != 0 ? tip_y + kArrowLength : tip_y;
    const std::array corners{At(tip_x, tip_y), At(middle_x - back_x, middle_y - back_y),
                             At(middle_x + back_x, middle_y + back_y)};
    const Pen line = surface_.SelectPen({attributes_.axis_colour, 1, LineType::Invisible});
    surface_.Polygon(corners);
    surface_.SelectPen(line);
}

void CoordinateSystem::DrawAxes()
{
    if (!attributes_.axes) return;
    surface_.SelectPen({attributes_.axis_colour, kAxisWidth, LineType::Solid});
    surface_.SelectBrush({attributes_.axis_colour});
    const bool arrows = width_ >= kSmallestArea && height_ >= kSmallestArea;
    const int shortened = arrows ? kArrowLength : 0;
    if (x_axis_in_view_) {
        Line(0, axis_y_, width_ - shortened, axis_y_);
        if (arrows) ArrowHead(width_ - 1, axis_y_, 0, kArrowHalfWidth);
    }
    if (y_axis_in_view_) {
        Line(axis_x_, height_, axis_x_, shortened);
        if (arrows) ArrowHead(axis_x_, 0, kArrowHalfWidth, 0);
    }
    if (arrows) DrawTicks();
}

void CoordinateSystem::DrawTicks()
{
    constexpr int kFromTip = kArrowLength + 3;
    surface_.SelectPen({attributes_.axis_colour, 1, LineType::Solid});
    for (std::int64_t mark = x_marks_.first; x_axis_in_view_ && mark <= x_marks_.last; ++mark) {
        const int x = PixelX(x_marks_.Position(mark));
        if (mark != 0 && x < width_ - kFromTip) Line(x, axis_y_ - kTick, x, axis_y_ + kTick);
    }
    for (std::int64_t mark = y_marks_.first; y_axis_in_view_ && mark <= y_marks_.last; ++mark) {
        const int y = PixelY(y_marks_.Position(mark));
        if (mark != 0 && y > kFromTip) Line(axis_x_ - kTick, y, axis_x_ + kTick, y);
    }
}

int CoordinateSystem::TextWidth(const std::string& text)
{
    return (surface_.MeasureText(text).width + steps_ - 1) / steps_;
}

void CoordinateSystem::DrawNumber(const std::string& text, int left, int top)
{
    const GridPoint corner = At(left, top);
    const GridPoint end = At(left + TextWidth(text), top + text_height_);
    if (!labels_.Take({corner.x, corner.y, end.x, end.y})) return;
    // Help lines stop short of a number.
    const std::array ground{corner, GridPoint{end.x, corner.y}, end, GridPoint{corner.x, end.y}};
    surface_.FillRegion(ground, {attributes_.background});
    surface_.TextOut(corner, text);
}

void CoordinateSystem::DrawNames()
{
    if (!attributes_.axes || !attributes_.axis_names || !numbers_) return;
    constexpr int kFromLine = 4;
    surface_.SetTextColour(attributes_.axis_colour);
    if (x_axis_in_view_ && !attributes_.x_axis_name.empty()) {
        const int above = axis_y_ - kFromLine - text_height_;
        DrawNumber(attributes_.x_axis_name, width_ - kBorder - TextWidth(attributes_.x_axis_name),
                   above >= 0 ? above : axis_y_ + kFromLine);
    }
    if (y_axis_in_view_ && !attributes_.y_axis_name.empty()) {
        const int name_width = TextWidth(attributes_.y_axis_name);
        const int right = axis_x_ + kFromLine + kArrowHalfWidth;
        DrawNumber(attributes_.y_axis_name,
                   right + name_width <= width_
                       ? right
                       : axis_x_ - kFromLine - kArrowHalfWidth - name_width,
                   0);
    }
}

int CoordinateSystem::WidestNumber(const AxisMarks& marks)
{
    int widest = 0;
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        widest = std::max(widest, TextWidth(marks.Label(mark)));
    }
    return widest;
}

// Every how manieth mark has a number, so that neighbours keep apart.
std::int64_t CoordinateSystem::Stride(const AxisMarks& marks, bool horizontal)
{
    const double pixels_per_unit =
        horizontal ? view_.xmu / view_.twips_per_pixel_x : view_.ymu / view_.twips_per_pixel_y;
    const double spacing = marks.step.Value() * pixels_per_unit;
    const int needed = horizontal ? WidestNumber(marks) + kGapBetweenNumbers : text_height_ + 2;
    for (const std::int64_t stride : {1, 2, 5, 10}) {
        if (spacing * static_cast<double>(stride) >= needed) return stride;
    }
    return kMostMarks + 1;
}

bool CoordinateSystem::NumbersFit(const AxisMarks& marks, bool horizontal)
{
    return Stride(marks, horizontal) == 1;
}

AxisMarks CoordinateSystem::ChooseMarks(double lower, double upper, int pixels, bool horizontal)
{
    const AxisMarks fine = FineMarks(lower, upper);
    if (fine.Count() * kFewestPixelsPerMark <= pixels && NumbersFit(fine, horizontal)) return fine;
    const AxisMarks coarse = CoarseMarks(lower, upper);
    if (NumbersFit(coarse, horizontal)) return coarse;
    // Long numbers: where the view happens to hold enough marks of the next step, all of them fit.
    const AxisMarks coarser = MarksAt(Coarser(coarse.step), lower, upper);
    return coarser.Count() >= kFewestMarks ? coarser : coarse;
}

NumberBand CoordinateSystem::BandOfX() const
{
    if (!x_axis_in_view_) {
        return view_.y_min > 0 ? NumberBand{height_ - kBorder, true} : NumberBand{kBorder, false};
    }
    const bool room_below = axis_y_ + kBelowAxis + text_height_ <= height_;
    return room_below ? NumberBand{axis_y_ + kBelowAxis, false}
                      : NumberBand{axis_y_ - kBelowAxis, true};
}

NumberBand CoordinateSystem::BandOfY()
{
    if (!y_axis_in_view_) {
        return view_.x_min > 0 ? NumberBand{kBorder, false} : NumberBand{width_ - kBorder, true};
    }
    const bool room_on_the_left = axis_x_ - kBesideAxis - WidestNumber(y_marks_) >= 0;
    return room_on_the_left ? NumberBand{axis_x_ - kBesideAxis, true}
                            : NumberBand{axis_x_ + kBesideAxis, false};
}

// Once for both axes, in the corner beside the lines that meet there.
void CoordinateSystem::DrawZero()
{
    const bool on_x = attributes_.x_numbers && x_marks_.first <= 0 && x_marks_.last >= 0;
    const bool on_y = attributes_.y_numbers && y_marks_.first <= 0 && y_marks_.last >= 0;
    if (!on_x && !on_y) return;
    const std::string zero = "0";
    const NumberBand row = BandOfX();
    const NumberBand column = BandOfY();
    DrawNumber(zero, column.before ? column.anchor - TextWidth(zero) : column.anchor,
               row.before ? row.anchor - text_height_ : row.anchor);
}

void CoordinateSystem::DrawXNumbers()
{
    const NumberBand band = BandOfX();
    const int top = band.before ? band.anchor - text_height_ : band.anchor;
    const std::int64_t stride = Stride(x_marks_, true);
    for (std::int64_t mark = x_marks_.first; mark <= x_marks_.last; ++mark) {
        if (mark == 0 || mark % stride != 0) continue;
        const std::string text = x_marks_.Label(mark);
        DrawNumber(text, PixelX(x_marks_.Position(mark)) - TextWidth(text) / 2, top);
    }
}

void CoordinateSystem::DrawYNumbers()
{
    const NumberBand band = BandOfY();
    const std::int64_t stride = Stride(y_marks_, false);
    for (std::int64_t mark = y_marks_.first; mark <= y_marks_.last; ++mark) {
        if (mark == 0 || mark % stride != 0) continue;
        const std::string text = y_marks_.Label(mark);
        DrawNumber(text, band.before ? band.anchor - TextWidth(text) : band.anchor,
                   PixelY(y_marks_.Position(mark)) - text_height_ / 2);
    }
}

void CoordinateSystem::DrawNumbers()
{
    if (!numbers_) return;
    surface_.SetTextColour(attributes_.number_colour);
    DrawZero();
    if (attributes_.x_numbers) DrawXNumbers();
    if (attributes_.y_numbers) DrawYNumbers();
}

}  // namespace

void helpline(DrawingSurface& surface, const ViewRange& view,
              const document::DisplayAttributes& attributes, LabelSpace& labels)
{
    surface.Clear(attributes.background);
    const Font font = surface.SelectFont({"Arial", FontPixels(attributes.font_points)});
    const Pen pen = surface.CurrentPen();
    CoordinateSystem system(surface, view, attributes, labels);
    system.DrawHelpLines();
    system.DrawAxes();
    system.DrawNames();
    system.DrawNumbers();
    surface.SelectPen(pen);
    surface.SelectFont(font);
}

}  // namespace korvinth::render
