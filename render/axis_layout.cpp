#include "render/axis_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "render/grid_rounding.h"

namespace korvinth::render {
namespace {

constexpr int kBelowAxis = 5;
constexpr int kBesideAxis = 7;
constexpr int kGapBetweenNumbers = 8;
constexpr int kFewestPixelsPerMark = 48;
constexpr int kFewestPixelsPerLine = 8;  // of steps that the user has fixed
constexpr int kMostFixedMarks = 200;
constexpr int kSmallestArea = 64;  // less shows neither arrow heads nor ticks
constexpr double kUsualAxisWidth = 1.25;

// What a wider axis takes of the room beside it.
int Widening(double axis_width)
{
    return std::max(0, static_cast<int>(std::lround((axis_width - kUsualAxisWidth) / 2)));
}

}  // namespace

ArrowSize ArrowOf(double axis_width)
{
    constexpr double kLengthToWidth = 1.75;
    ArrowSize arrow;
    const double wider = std::max(0.0, axis_width - kUsualAxisWidth);
    arrow.half_width += static_cast<int>(std::lround(wider));
    arrow.length += static_cast<int>(std::lround(2 * kLengthToWidth * wider));
    return arrow;
}

AxisLayout::AxisLayout(DrawingSurface& surface, const ViewRange& view,
                       const document::DisplayAttributes& attributes, const AxisScales& scales)
    : surface_(surface),
      view_(view),
      steps_(surface.StepsPerPixel()),
      width_(surface.Width() / steps_),
      height_(surface.Height() / steps_),
      text_height_((surface.MeasureText("0").height + steps_ - 1) / steps_),
      // An axis on the very edge of the view, as at y from 0 to 10, keeps to the last pixels.
      axis_x_(std::clamp(PixelX(0), 0, std::max(width_ - 1, 0))),
      axis_y_(std::clamp(PixelY(0), 0, std::max(height_ - 1, 0))),
      y_axis_in_view_(view.x_min <= 0 && view.x_max >= 0),
      x_axis_in_view_(view.y_min <= 0 && view.y_max >= 0),
      arrows_(width_ >= kSmallestArea && height_ >= kSmallestArea),
      numbers_(width_ >= 8 * text_height_ && height_ >= 5 * text_height_),
      arrow_(ArrowOf(attributes.axis_width)),
      below_axis_(kBelowAxis + Widening(attributes.axis_width)),
      beside_axis_(kBesideAxis + Widening(attributes.axis_width)),
      x_marks_(ChooseMarks(scales.x, view.x_min, view.x_max, true)),
      y_marks_(ChooseMarks(scales.y, view.y_min, view.y_max, false))
{
}

int AxisLayout::PixelX(double x) const
{
    return RoundToGrid(view_.AreaX(x) / view_.twips_per_pixel_x);
}

int AxisLayout::PixelY(double y) const
{
    return RoundToGrid(view_.AreaY(y) / view_.twips_per_pixel_y);
}

double AxisLayout::Spacing(const MarkStep& step, bool horizontal) const
{
    return step.Value() *
           (horizontal ? view_.xmu / view_.twips_per_pixel_x : view_.ymu / view_.twips_per_pixel_y);
}

int AxisLayout::TextWidth(const std::string& text) const
{
    return (surface_.MeasureText(text).width + steps_ - 1) / steps_;
}

int AxisLayout::WidestNumber(const AxisMarks& marks) const
{
    int widest = 0;
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        widest = std::max(widest, TextWidth(marks.Label(mark)));
    }
    return widest;
}

bool AxisLayout::Apart(const AxisMarks& marks, std::int64_t stride, double spacing,
                       bool horizontal) const
{
    if (!horizontal) return spacing >= text_height_ + 2;
    int before = -1;  // width of the number before, if there is one
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        if ((mark - marks.base) % stride != 0) continue;
        const int width = TextWidth(marks.Label(mark));
        const int needed = (before + width + 1) / 2 + kGapBetweenNumbers;
        if (before >= 0 && needed > spacing) return false;
        before = width;
    }
    return true;
}

std::int64_t AxisLayout::Stride(const AxisMarks& marks, bool horizontal) const
{
    const double spacing = Spacing(marks.step, horizontal);
    // Halves, quarters and so on of pi go together by twos.
    const bool by_twos = marks.step.parts > 1;
    constexpr std::int64_t kTens = 10;
    for (std::int64_t decade = 1; decade <= marks.Count(); decade *= kTens) {
        for (const std::int64_t stride : {decade, 2 * decade, by_twos ? 4 * decade : 5 * decade}) {
            if (Apart(marks, stride, spacing * static_cast<double>(stride), horizontal)) {
                return stride;
            }
        }
    }
    return std::numeric_limits<std::int64_t>::max();
}

AxisMarks AxisLayout::ChooseMarks(const AxisScale& scale, double lower, double upper,
                                  bool horizontal) const
{
    const int pixels = horizontal ? width_ : height_;
    if (scale.fixed > 0) {
        const int most = std::clamp(pixels / kFewestPixelsPerLine, 2, kMostFixedMarks);
        return FixedMarks(scale.fixed, lower, upper, most);
    }
    const auto numbers_fit = [&](const AxisMarks& marks) { return Stride(marks, horizontal) == 1; };
    const AxisMarks fine = FineMarks(lower, upper, scale.ladder);
    if (fine.Count() * kFewestPixelsPerMark <= pixels && numbers_fit(fine)) return fine;
    const AxisMarks coarse = CoarseMarks(lower, upper, scale.ladder);
    if (numbers_fit(coarse)) return coarse;
    // Long numbers: where the view happens to hold enough marks of the next step, all of them fit.
    const AxisMarks coarser = MarksOnRung(scale.ladder, coarse.rung + 1, lower, upper);
    return coarser.Count() >= kFewestMarks ? coarser : coarse;
}

NumberBand AxisLayout::BandOfX() const
{
    if (!x_axis_in_view_) {
        return view_.y_min > 0 ? NumberBand{height_ - kTextBorder, true}
                               : NumberBand{kTextBorder, false};
    }
    const bool room_below = axis_y_ + below_axis_ + text_height_ < height_;
    return room_below ? NumberBand{axis_y_ + below_axis_, false}
                      : NumberBand{axis_y_ - below_axis_, true};
}

NumberBand AxisLayout::BandOfY() const
{
    if (!y_axis_in_view_) {
        return view_.x_min > 0 ? NumberBand{kTextBorder, false}
                               : NumberBand{width_ - kTextBorder, true};
    }
    const bool room_on_the_left = axis_x_ - beside_axis_ - WidestNumber(y_marks_) > 0;
    return room_on_the_left ? NumberBand{axis_x_ - beside_axis_, true}
                            : NumberBand{axis_x_ + beside_axis_, false};
}

}  // namespace korvinth::render
