#include "app/page_layout.h"

#include <algorithm>
#include <cmath>

#include "document/number_text.h"
#include "render/picture_options.h"

namespace korvinth::app {
namespace {

using render::ViewRange;

constexpr int kTwipsPerPixel = 15;
constexpr double kPixel = 0.25;  // mm
constexpr double kFewestPixels = 20;
constexpr double kPaperSquare = 5;  // mm
constexpr double kAlmost = 1e-6;    // pixels; bounds that are off a pixel by rounding only

// The part of an axis that is shown, in pixels from the world's origin, and where it lies.
struct Span
{
    double first = 0;
    double last = 0;
    double start = 0;  // mm on the page

    double Length() const { return last - first; }
};

double PixelsPerUnit(double scale)
{
    constexpr double kMmPerCm = 10;
    const double pixels = scale * kMmPerCm / kPixel;
    return pixels >= 1 ? std::round(pixels) : 1 / std::round(1 / pixels);
}

Span WholePixels(double lower, double upper, double pixels_per_unit)
{
    return {std::floor(lower * pixels_per_unit + kAlmost),
            std::ceil(upper * pixels_per_unit - kAlmost), 0};
}

// Cuts a span to the room about its middle; true when something is left out.
bool Cut(Span& span, double room_pixels)
{
    const double most = std::floor(room_pixels + kAlmost);
    if (span.Length() <= most) return false;
    span.first = std::round((span.first + span.last - most) / 2);
    span.last = span.first + most;
    return true;
}

// Puts the span into the room, with the origin on a line of squared paper when it can be there.
// `towards_last`: mm grow with the pixels' numbers, as they do from left to right; else the page
// begins at the last pixel, as from top to bottom.
void Place(Span& span, double room_start, double room_length, double wanted_start, double mm,
           bool towards_last, bool may_cut)
{
    const auto origin = [&] { return (towards_last ? -span.first : span.last) * mm; };
    const double squares = (wanted_start + origin()) / kPaperSquare;
    const double room_end = room_start + room_length;
    span.start = wanted_start;
    for (const double square : {std::round(squares), std::floor(squares), std::ceil(squares)}) {
        const double start = square * kPaperSquare - origin();
        if (start < room_start - kAlmost || start + span.Length() * mm > room_end + kAlmost) {
            continue;
        }
        span.start = start;
        return;
    }
    if (!may_cut) return;
    // What has been cut anyway gives way to the lines.
    const double start = std::round(squares) * kPaperSquare - origin();
    const double before = std::max(0.0, std::ceil((room_start - start) / mm - kAlmost));
    const double behind =
        std::max(0.0, std::ceil((start + span.Length() * mm - room_end) / mm - kAlmost));
    (towards_last ? span.first : span.last) += towards_last ? before : -before;
    (towards_last ? span.last : span.first) += towards_last ? -behind : behind;
    span.start = start + before * mm;
}

std::string RangeText(const char* name, double lower, double upper)
{
    return std::string(name) + " von " + document::ShortestGermanText(lower) + " bis " +
           document::ShortestGermanText(upper);
}

PlacedPicture Assemble(const ViewRange& screen, const Span& x, const Span& y, double scale)
{
    constexpr double kMmPerCm = 10;
    PlacedPicture picture;
    const double pixels_per_unit = PixelsPerUnit(scale);
    picture.mm_per_pixel = scale * kMmPerCm / pixels_per_unit;
    if (std::max(x.Length(), y.Length()) >= render::kLongestSide) {
        picture.fault = "Bei diesem Maßstab wäre das Bild zu groß";
        return picture;
    }
    if (std::min(x.Length(), y.Length()) < kFewestPixels) {
        picture.fault = "Bei diesem Maßstab wäre das Bild zu klein";
        return picture;
    }
    // One more pixel for the lines at the far ends.
    picture.width = static_cast<int>(x.Length()) + 1;
    picture.height = static_cast<int>(y.Length()) + 1;
    picture.left = x.start;
    picture.top = y.start;
    picture.view = screen;
    picture.view.twips_per_pixel_x = kTwipsPerPixel;
    picture.view.twips_per_pixel_y = kTwipsPerPixel;
    picture.view.x_min = x.first / pixels_per_unit;
    picture.view.x_max = x.last / pixels_per_unit;
    picture.view.y_min = y.first / pixels_per_unit;
    picture.view.y_max = y.last / pixels_per_unit;
    picture.view.area_width = x.Length() * kTwipsPerPixel;
    picture.view.area_height = y.Length() * kTwipsPerPixel;
    render::UpdateDerived(picture.view);
    return picture;
}

}  // namespace

PlacedPicture FitPicture(const ViewRange& screen, const Room& room)
{
    PlacedPicture picture;
    picture.view = screen;
    picture.width = static_cast<int>(std::lround(screen.WidthInPixels()));
    picture.height = static_cast<int>(std::lround(screen.HeightInPixels()));
    picture.mm_per_pixel = std::min(room.width / picture.width, room.height / picture.height);
    const double half_pixel = picture.mm_per_pixel / 2;
    picture.left = room.left + (room.width - picture.width * picture.mm_per_pixel) / 2 + half_pixel;
    picture.top = room.top + half_pixel;
    if (!(picture.mm_per_pixel > 0)) picture.fault = "Die Ränder lassen keinen Platz für das Bild";
    return picture;
}

PlacedPicture ScalePicture(const ViewRange& screen, double scale)
{
    const double pixels_per_unit = PixelsPerUnit(scale);
    return Assemble(screen, WholePixels(screen.x_min, screen.x_max, pixels_per_unit),
                    WholePixels(screen.y_min, screen.y_max, pixels_per_unit), scale);
}

PlacedPicture ScalePictureOnPage(const ViewRange& screen, double scale, const Room& room)
{
    constexpr double kMmPerCm = 10;
    const double pixels_per_unit = PixelsPerUnit(scale);
    const double mm = scale * kMmPerCm / pixels_per_unit;
    Span x = WholePixels(screen.x_min, screen.x_max, pixels_per_unit);
    Span y = WholePixels(screen.y_min, screen.y_max, pixels_per_unit);
    const bool x_cut = Cut(x, room.width / mm);
    const bool y_cut = Cut(y, room.height / mm);
    const double middle = room.left + (room.width - x.Length() * mm) / 2;
    Place(x, room.left, room.width, middle, mm, true, x_cut);
    Place(y, room.top, room.height, room.top, mm, false, y_cut);
    PlacedPicture picture = Assemble(screen, x, y, scale);
    if (!picture.fault.empty() || !(x_cut || y_cut)) return picture;
    picture.note =
        "Bei diesem Maßstab passt nicht der ganze Bereich auf die Seite; dargestellt ist ";
    if (x_cut) picture.note += RangeText("x", picture.view.x_min, picture.view.x_max);
    if (x_cut && y_cut) picture.note += ", ";
    if (y_cut) picture.note += RangeText("y", picture.view.y_min, picture.view.y_max);
    return picture;
}

}  // namespace korvinth::app
