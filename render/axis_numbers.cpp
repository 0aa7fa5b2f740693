#include "render/axis_numbers.h"

#include <array>
#include <cstdint>
#include <string>

namespace korvinth::render {
namespace {

class AxisTexts
{
public:
    AxisTexts(DrawingSurface& surface, const AxisLayout& layout,
              const document::DisplayAttributes& attributes, LabelSpace& labels)
        : surface_(surface), layout_(layout), attributes_(attributes), labels_(labels)
    {
    }

    void KeepArrowsFree();
    void DrawNames();
    void DrawNumbers();

private:
    bool DrawText(const std::string& text, int left, int top);
    void DrawZero();
    template <class DrawNumber>
    void DrawMarks(const AxisMarks& marks, bool horizontal, DrawNumber draw_number);
    void DrawXNumbers();
    void DrawYNumbers();

    DrawingSurface& surface_;
    const AxisLayout& layout_;
    const document::DisplayAttributes& attributes_;
    LabelSpace& labels_;
};

// False when there is no room; texts do not touch the border of the area either.
bool AxisTexts::DrawText(const std::string& text, int left, int top)
{
    const int right = left + layout_.TextWidth(text);
    const int bottom = top + layout_.TextHeight();
    if (left < 1 || top < 1 || right >= layout_.Width() || bottom >= layout_.Height()) return false;
    const GridPoint corner = layout_.At(left, top);
    const GridPoint end = layout_.At(right, bottom);
    if (!labels_.Take({corner.x, corner.y, end.x, end.y})) return false;
    // Help lines stop short of a number.
    const std::array ground{corner, GridPoint{end.x, corner.y}, end, GridPoint{corner.x, end.y}};
    surface_.FillRegion(ground, {attributes_.background});
    surface_.TextOut(corner, text);
    return true;
}

void AxisTexts::KeepArrowsFree()
{
    if (!attributes_.axes || !layout_.ArrowsFit()) return;
    const ArrowSize& arrow = layout_.Arrow();
    const auto take = [&](int left, int top, int right, int bottom) {
        const GridPoint corner = layout_.At(left, top);
        const GridPoint end = layout_.At(right, bottom);
        labels_.Take({corner.x, corner.y, end.x, end.y});
    };
    if (layout_.XAxisInView()) {
        take(layout_.Width() - 1 - arrow.length, layout_.AxisY() - arrow.half_width,
             layout_.Width() - 1, layout_.AxisY() + arrow.half_width);
    }
    if (layout_.YAxisInView()) {
        take(layout_.AxisX() - arrow.half_width, 0, layout_.AxisX() + arrow.half_width,
             arrow.length);
    }
}

void AxisTexts::DrawNames()
{
    if (!attributes_.axes || !attributes_.axis_names || !layout_.NumbersFit()) return;
    constexpr int kFromArrow = 3;
    const int from_axis = kFromArrow + layout_.Arrow().half_width;
    surface_.SetTextColour(attributes_.axis_colour);
    const std::string& x_name = attributes_.x_axis_name;
    if (layout_.XAxisInView() && !x_name.empty()) {
        const int above = layout_.AxisY() - from_axis - layout_.TextHeight();
        DrawText(x_name, layout_.Width() - kTextBorder - layout_.TextWidth(x_name),
                 above >= 1 ? above : layout_.AxisY() + from_axis);
    }
    const std::string& y_name = attributes_.y_axis_name;
    if (layout_.YAxisInView() && !y_name.empty()) {
        const int width = layout_.TextWidth(y_name);
        const int right = layout_.AxisX() + from_axis;
        DrawText(y_name,
                 right + width < layout_.Width() ? right : layout_.AxisX() - from_axis - width, 1);
    }
}

// Once for both axes, in the corner beside the lines that meet there. A zero of one axis alone lies
// on the other side of the line, not in the row of the other axis' numbers.
void AxisTexts::DrawZero()
{
    const auto shows_zero = [](const AxisMarks& marks) {
        return marks.first <= 0 && marks.last >= 0;
    };
    const bool x_zero = shows_zero(layout_.XMarks());
    const bool y_zero = shows_zero(layout_.YMarks());
    if (!(attributes_.x_numbers && x_zero) && !(attributes_.y_numbers && y_zero)) return;
    const auto beyond = [](NumberBand band, int line) {
        return NumberBand{2 * line - band.anchor, !band.before};
    };
    NumberBand row = layout_.BandOfX();
    NumberBand column = layout_.BandOfY();
    if (!x_zero && layout_.XAxisInView()) row = beyond(row, layout_.AxisY());
    if (!y_zero && layout_.YAxisInView()) column = beyond(column, layout_.AxisX());
    const std::string zero = "0";
    DrawText(zero, column.before ? column.anchor - layout_.TextWidth(zero) : column.anchor,
             row.before ? row.anchor - layout_.TextHeight() : row.anchor);
}

// The number that the others refer to comes first: without it they would mean nothing.
template <class DrawNumber>
void AxisTexts::DrawMarks(const AxisMarks& marks, bool horizontal, DrawNumber draw_number)
{
    if (marks.base != 0 && !draw_number(marks.base)) return;
    const std::int64_t stride = layout_.Stride(marks, horizontal);
    for (std::int64_t mark = marks.first; mark <= marks.last; ++mark) {
        if (mark == 0 || mark == marks.base || (mark - marks.base) % stride != 0) continue;
        draw_number(mark);
    }
}

void AxisTexts::DrawXNumbers()
{
    const NumberBand band = layout_.BandOfX();
    const int top = band.before ? band.anchor - layout_.TextHeight() : band.anchor;
    const AxisMarks& marks = layout_.XMarks();
    DrawMarks(marks, true, [&](std::int64_t mark) {
        const std::string text = marks.Label(mark);
        return DrawText(text, layout_.PixelX(marks.Position(mark)) - layout_.TextWidth(text) / 2,
                        top);
    });
}

void AxisTexts::DrawYNumbers()
{
    const NumberBand band = layout_.BandOfY();
    const AxisMarks& marks = layout_.YMarks();
    DrawMarks(marks, false, [&](std::int64_t mark) {
        const std::string text = marks.Label(mark);
        return DrawText(text, band.before ? band.anchor - layout_.TextWidth(text) : band.anchor,
                        layout_.PixelY(marks.Position(mark)) - layout_.TextHeight() / 2);
    });
}

void AxisTexts::DrawNumbers()
{
    if (!layout_.NumbersFit()) return;
    surface_.SetTextColour(attributes_.number_colour);
    DrawZero();
    if (attributes_.x_numbers) DrawXNumbers();
    if (attributes_.y_numbers) DrawYNumbers();
}

}  // namespace

void DrawAxisTexts(DrawingSurface& surface, const AxisLayout& layout,
                   const document::DisplayAttributes& attributes, LabelSpace& labels)
{
    AxisTexts texts(surface, layout, attributes, labels);
    texts.KeepArrowsFree();
    texts.DrawNames();
    texts.DrawNumbers();
}

}  // namespace korvinth::render
