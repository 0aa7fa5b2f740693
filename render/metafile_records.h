// The records of an enhanced metafile as bytes; the names are those of the published format.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "render/drawing_surface.h"

namespace korvinth::render {

enum class Record : std::uint32_t {
    Header = 1,
    Polygon = 3,
    Polyline = 4,
    Eof = 14,
    SetMapMode = 17,
    SetBkMode = 18,
    SetPolyFillMode = 19,
    SetTextAlign = 22,
    SetTextColor = 24,
    IntersectClipRect = 30,
    SelectObject = 37,
    CreateBrushIndirect = 39,
    DeleteObject = 40,
    Ellipse = 42,
    ExtCreateFontIndirectW = 82,
    ExtTextOutW = 84,
    Polygon16 = 86,
    Polyline16 = 87,
    ExtCreatePen = 95,
};

// Little-endian numbers in records whose sizes are multiples of four.
class MetafileRecords
{
public:
    void Begin(Record type);
    void Put(std::uint32_t value);
    void Put(std::int32_t value) { Put(static_cast<std::uint32_t>(value)); }
    void Put(const GridBox& box);
    void PutFloat(float value);
    void Put16(std::uint16_t value);
    void PutByte(std::uint8_t value) { bytes_ += static_cast<char>(value); }
    void PutZeros(std::size_t count) { bytes_.append(count, '\0'); }
    // Fills the record up and writes its size into it.
    void End();

    // A record that holds one number.
    void Write(Record type, std::uint32_t value);
    // Points in 16 bits where all of them fit: `small` is the type of such a record.
    void WritePoints(Record small, Record large, std::span<const GridPoint> points);

    const std::string& Bytes() const { return bytes_; }
    std::uint32_t Count() const { return count_; }

private:
    std::string bytes_;
    std::size_t start_ = 0;  // of the record that is being written
    std::uint32_t count_ = 0;
};

}  // namespace korvinth::render
