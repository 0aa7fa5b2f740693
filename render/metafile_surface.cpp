#include "render/metafile_surface.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "render/utf8.h"

namespace korvinth::render {
namespace {

// Handles of objects that every system has.
constexpr std::uint32_t kWhiteBrush = 0x80000000;
constexpr std::uint32_t kNoBrush = 0x80000005;
constexpr std::uint32_t kBlackPen = 0x80000007;
constexpr std::uint32_t kNoPen = 0x80000008;
constexpr std::uint32_t kSystemFont = 0x8000000D;

constexpr std::uint32_t kDevicePixels = 1;  // map mode: no mapping
constexpr std::uint32_t kTransparent = 1;
constexpr std::uint32_t kAlternate = 1;
constexpr std::uint32_t kTopLeft = 0;
constexpr std::uint32_t kHeaderSize = 108;

std::uint32_t ColourNumber(Colour colour) { return static_cast<std::uint32_t>(colour); }

struct WideText
{
    std::u16string units;
    std::vector<std::uint32_t> widths;  // of each unit, in grid steps
};

// The widths end where the text ends, however they are rounded.
WideText Widen(std::string_view utf8, const TextMetrics& metrics, const Font& font)
{
    WideText wide;
    std::string_view rest = utf8;
    long before = 0;
    while (!rest.empty()) {
        const char32_t character = TakeCharacter(rest);
        const std::string_view done = utf8.substr(0, utf8.size() - rest.size());
        const long after = std::lround(metrics.Advance(done, font) * kVectorSteps);
        constexpr char32_t kFirstPair = 0x10000;
        if (character < kFirstPair) {
            wide.units += static_cast<char16_t>(character);
        } else {
            wide.units += static_cast<char16_t>(0xD800 + ((character - kFirstPair) >> 10U));
            wide.units += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
        }
        wide.widths.push_back(static_cast<std::uint32_t>(std::max(after - before, 0L)));
        wide.widths.resize(wide.units.size(), 0);
        before = after;
    }
    return wide;
}

}  // namespace

GridBox MetafileFrame(int width_pixels, int height_pixels, const ScreenSize& screen)
{
    const auto hundredths = [](int pixels, int mm, int screen_pixels) {
        return static_cast<int>(std::lrint(100.0 * pixels * mm / screen_pixels));
    };
    return {0, 0, hundredths(width_pixels, screen.width_mm, screen.width_pixels),
            hundredths(height_pixels, screen.height_mm, screen.height_pixels)};
}

MetafileSurface::MetafileSurface(int width_pixels, int height_pixels, const ScreenSize& screen,
                                 const TextMetrics& metrics)
    : DrawingSurface(width_pixels * kVectorSteps, height_pixels * kVectorSteps, kVectorSteps),
      screen_(screen),
      frame_(MetafileFrame(width_pixels, height_pixels, screen)),
      metrics_(metrics)
{
    records_.Write(Record::SetMapMode, kDevicePixels);
    records_.Write(Record::SetBkMode, kTransparent);
    records_.Write(Record::SetPolyFillMode, kAlternate);
    records_.Write(Record::SetTextAlign, kTopLeft);
    records_.Begin(Record::IntersectClipRect);
    records_.Put(GridBox{0, 0, Width(), Height()});
    records_.End();
}

template <class Look, class Create>
void MetafileSurface::Use(Tool<Look>& tool, const Look& look, Create create)
{
    if (tool.look == look) return;
    const auto free = std::ranges::find(taken_, false);
    *free = true;
    const auto handle = static_cast<std::uint32_t>(free - taken_.begin());
    create(handle);
    records_.Write(Record::SelectObject, handle);
    // Only what is no longer selected may go.
    if (tool.handle != 0) Delete(tool.handle);
    tool = {look, handle};
}

void MetafileSurface::Delete(std::uint32_t handle)
{
    records_.Write(Record::DeleteObject, handle);
    taken_[handle] = false;
}

void MetafileSurface::UsePen(const Pen& pen)
{
    constexpr std::uint32_t kGeometric = 0x10000;
    constexpr std::uint32_t kFlatEnds = 0x200;  // round ones would close the gaps of dashes
    if (pen.type == LineType::Invisible) {
        if (pen_.look == pen) return;
        records_.Write(Record::SelectObject, kNoPen);
        if (pen_.handle != 0) Delete(pen_.handle);
        pen_ = {pen, 0};
        return;
    }
    Use(pen_, pen, [&](std::uint32_t handle) {
        // Deliberate: the format's own line types, whose dashes are the reader's. Dashes of our own
        // are drawn as unbroken lines by some readers.
        const bool solid = pen.type == LineType::Solid || pen.type == LineType::SolidInside;
        const auto style = solid ? 0U : static_cast<std::uint32_t>(pen.type) | kFlatEnds;
        const auto width =
            static_cast<std::uint32_t>(std::max(std::lround(pen.width * kVectorSteps), 1L));
        records_.Begin(Record::ExtCreatePen);
        records_.Put(handle);
        records_.PutZeros(16);  // no bitmap
        records_.Put(kGeometric | style);
        records_.Put(width);
        records_.Put(0U);  // a solid brush
        records_.Put(ColourNumber(pen.colour));
        records_.PutZeros(8);  // no hatch, no dashes of its own
        records_.End();
    });
}

// Nothing: areas stay open.
void MetafileSurface::UseBrush(std::optional<Brush> brush)
{
    if (!brush) {
        if (brush_.look == brush) return;
        records_.Write(Record::SelectObject, kNoBrush);
        if (brush_.handle != 0) Delete(brush_.handle);
        brush_ = {brush, 0};
        return;
    }
    Use(brush_, brush, [&](std::uint32_t handle) {
        records_.Begin(Record::CreateBrushIndirect);
        records_.Put(handle);
        records_.Put(0U);  // solid
        records_.Put(ColourNumber(brush->colour));
        records_.Put(0U);
        records_.End();
    });
}

void MetafileSurface::UseFont(const Font& font)
{
    Use(font_, font, [&](std::uint32_t handle) {
        constexpr std::int32_t kNormalWeight = 400;
        constexpr std::size_t kFaceUnits = 32;
        constexpr std::size_t kFurtherNames = 228;  // full name, style and form: none
        std::string_view face = font.face;
        records_.Begin(Record::ExtCreateFontIndirectW);
        records_.Put(handle);
        // A negative height is that of the letters, without the leading between lines.
        records_.Put(-static_cast<std::int32_t>(std::lround(font.height * kVectorSteps)));
        records_.PutZeros(12);  // width, escapement and orientation
        records_.Put(kNormalWeight);
        records_.PutZeros(3);  // neither italic nor underlined nor struck out
        records_.PutByte(1);   // the usual character set
        records_.PutZeros(4);  // precision, quality, pitch: the reader's
        for (std::size_t unit = 0; unit < kFaceUnits; ++unit) {
            const bool inside = unit + 1 < kFaceUnits && !face.empty();
            records_.Put16(inside ? static_cast<std::uint16_t>(TakeCharacter(face)) : 0);
        }
        records_.PutZeros(kFurtherNames);
        records_.End();
    });
}

void MetafileSurface::UseTextColour(Colour colour)
{
    if (text_colour_ == colour) return;
    text_colour_ = colour;
    records_.Write(Record::SetTextColor, ColourNumber(colour));
}

void MetafileSurface::DoStroke(std::span<const GridPoint> points, const Pen& pen)
{
    if (pen.type == LineType::Invisible) return;
    UsePen(pen);
    std::vector<GridPoint> centres;
    for (const GridPoint& point : points) {
        centres.push_back({point.x + kVectorSteps / 2, point.y + kVectorSteps / 2});
    }
    // Some readers take no more points at once. The parts share the point where they meet.
    constexpr std::size_t kMostPoints = 16384;
    for (std::size_t first = 0; first + 1 < centres.size(); first += kMostPoints - 1) {
        const std::size_t count = std::min(kMostPoints, centres.size() - first);
        records_.WritePoints(Record::Polyline16, Record::Polyline,
                             std::span(centres).subspan(first, count));
    }
}

void MetafileSurface::DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                                const Brush& fill)
{
    UsePen(outline != nullptr ? *outline : Pen{{}, 1, LineType::Invisible});
    UseBrush(fill);
    const int shift = outline != nullptr ? kVectorSteps / 2 : 0;
    std::vector<GridPoint> places;
    for (const GridPoint& corner : corners) places.push_back({corner.x + shift, corner.y + shift});
    records_.WritePoints(Record::Polygon16, Record::Polygon, places);
}

void MetafileSurface::DoEllipse(const GridBox& box, const Brush& brush, bool filled)
{
    if (box.right <= box.left || box.bottom <= box.top) return;
    // A frame is a pixel wide and lies inside the box.
    const int inset = filled ? 0 : kVectorSteps / 2;
    if (filled) {
        UsePen({{}, 1, LineType::Invisible});
        UseBrush(brush);
    } else {
        UsePen({brush.colour, 1, LineType::Solid});
        UseBrush(std::nullopt);
    }
    records_.Begin(Record::Ellipse);
    records_.Put(GridBox{box.left + inset, box.top + inset, box.right - inset, box.bottom - inset});
    records_.End();
}

void MetafileSurface::DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                             Colour colour)
{
    UseFont(font);
    UseTextColour(colour);
    PutText(top_left, utf8, font);
}

void MetafileSurface::PutText(GridPoint top_left, std::string_view utf8, const Font& font)
{
    constexpr std::uint32_t kTextOffset = 76;  // from the record's start
    constexpr std::uint32_t kCompatible = 1;   // graphics mode
    const WideText wide = Widen(utf8, metrics_, font);
    const auto count = static_cast<std::uint32_t>(wide.units.size());
    const std::uint32_t text_bytes = (2 * count + 3) / 4 * 4;
    const GridExtent extent = DoMeasure(utf8, font);
    records_.Begin(Record::ExtTextOutW);
    records_.Put(
        GridBox{top_left.x, top_left.y, top_left.x + extent.width, top_left.y + extent.height});
    records_.Put(kCompatible);
    records_.PutFloat(static_cast<float>(frame_.right) / static_cast<float>(Width()));
    records_.PutFloat(static_cast<float>(frame_.bottom) / static_cast<float>(Height()));
    records_.Put(top_left.x);
    records_.Put(top_left.y);
    records_.Put(count);
    records_.Put(kTextOffset);
    records_.PutZeros(20);  // no options, no box
    records_.Put(kTextOffset + text_bytes);
    for (const char16_t unit : wide.units) records_.Put16(unit);
    records_.PutZeros(text_bytes - 2 * count);
    for (const std::uint32_t width : wide.widths) records_.Put(width);
    records_.End();
}

GridExtent MetafileSurface::DoMeasure(std::string_view utf8, const Font& font)
{
    return MeasuredExtent(metrics_, utf8, font, kVectorSteps);
}

void MetafileSurface::DoClear(Colour colour)
{
    const std::array corners{GridPoint{0, 0}, GridPoint{Width(), 0}, GridPoint{Width(), Height()},
                             GridPoint{0, Height()}};
    DoPolygon(corners, nullptr, {colour});
}

void MetafileSurface::DeleteTools(MetafileRecords& records) const
{
    const std::array<std::pair<std::uint32_t, std::uint32_t>, 3> tools{
        {{pen_.handle, kBlackPen}, {brush_.handle, kWhiteBrush}, {font_.handle, kSystemFont}}};
    for (const auto& [handle, instead] : tools) {
        if (handle == 0) continue;
        records.Write(Record::SelectObject, instead);
        records.Write(Record::DeleteObject, handle);
    }
}

std::string MetafileSurface::Header(const MetafileRecords& records) const
{
    constexpr std::uint32_t kSignature = 0x464D4520;  // " EMF"
    constexpr std::uint32_t kVersion = 0x10000;
    constexpr int kMicrometres = 1000;
    MetafileRecords header;
    header.Begin(Record::Header);
    header.Put(GridBox{0, 0, Width() - 1, Height() - 1});  // the last units are inside
    header.Put(frame_);
    header.Put(kSignature);
    header.Put(kVersion);
    header.Put(kHeaderSize + static_cast<std::uint32_t>(records.Bytes().size()));
    header.Put(records.Count() + 1);
    header.Put16(kHandles);
    header.Put16(0);
    header.PutZeros(12);  // neither description nor palette
    header.Put(screen_.width_pixels * kVectorSteps);
    header.Put(screen_.height_pixels * kVectorSteps);
    header.Put(screen_.width_mm);
    header.Put(screen_.height_mm);
    header.PutZeros(12);  // no pixel format
    header.Put(screen_.width_mm * kMicrometres);
    header.Put(screen_.height_mm * kMicrometres);
    header.End();
    return header.Bytes();
}

std::string MetafileSurface::Bytes()
{
    FlushStroke();
    constexpr std::uint32_t kEofSize = 20;
    MetafileRecords whole = records_;
    DeleteTools(whole);
    whole.Begin(Record::Eof);
    whole.PutZeros(8);  // no palette
    whole.Put(kEofSize);
    whole.End();
    return Header(whole) + whole.Bytes();
}

}  // namespace korvinth::render
