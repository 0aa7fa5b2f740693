#include "render/metafile_records.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace korvinth::render {
namespace {

constexpr std::size_t kAlignment = 4;
constexpr std::size_t kSizeOffset = 4;  // of a record's size within the record

void StoreNumber(std::string& bytes, std::size_t at, std::uint32_t value)
{
    for (std::size_t i = 0; i < sizeof value; ++i) {
        bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }
}

bool Fits16(int value)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return value >= Limits::min() && value <= Limits::max();
}

GridBox BoundsOf(std::span<const GridPoint> points)
{
    const auto [left, right] = std::ranges::minmax(points, {}, &GridPoint::x);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &GridPoint::y);
    return {left.x, top.y, right.x, bottom.y};
}

}  // namespace

void MetafileRecords::Begin(Record type)
{
    start_ = bytes_.size();
    Put(static_cast<std::uint32_t>(type));
    Put(std::uint32_t{0});
}

void MetafileRecords::Put(std::uint32_t value)
{
    bytes_.append(sizeof value, '\0');
    StoreNumber(bytes_, bytes_.size() - sizeof value, value);
}

void MetafileRecords::Put(const GridBox& box)
{
    for (const int side : {box.left, box.top, box.right, box.bottom}) Put(side);
}

void MetafileRecords::PutFloat(float value) { Put(std::bit_cast<std::uint32_t>(value)); }

void MetafileRecords::Put16(std::uint16_t value)
{
    PutByte(static_cast<std::uint8_t>(value & 0xFFU));
    PutByte(static_cast<std::uint8_t>(value >> 8U));
}

void MetafileRecords::End()
{
    while ((bytes_.size() - start_) % kAlignment != 0) PutByte(0);
    StoreNumber(bytes_, start_ + kSizeOffset, static_cast<std::uint32_t>(bytes_.size() - start_));
    ++count_;
}

void MetafileRecords::Write(Record type, std::uint32_t value)
{
    Begin(type);
    Put(value);
    End();
}

void MetafileRecords::WritePoints(Record small, Record large, std::span<const GridPoint> points)
{
    const bool fit = std::ranges::all_of(
        points, [](const GridPoint& point) { return Fits16(point.x) && Fits16(point.y); });
    Begin(fit ? small : large);
    Put(BoundsOf(points));
    Put(static_cast<std::uint32_t>(points.size()));
    for (const GridPoint& point : points) {
        for (const int coordinate : {point.x, point.y}) {
            if (fit) {
                Put16(static_cast<std::uint16_t>(coordinate));
            } else {
                Put(coordinate);
            }
        }
    }
    End();
}

}  // namespace korvinth::render
