// Walks through a metafile as a reader of it would, and complains of whatever it could not draw.
#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "render/drawing_surface.h"
#include "render/metafile_records.h"

namespace korvinth::render {

class MetafileReader
{
public:
    struct Object
    {
        Record kind{};
        std::uint32_t style = 0;  // of a pen
        std::int32_t size = 0;    // width of a pen, height of a font
        std::uint32_t colour = 0;
        std::string face;
        bool operator==(const Object&) const = default;
    };
    struct Shape  // a polyline, a polygon or an ellipse
    {
        Record record{};
        std::vector<GridPoint> points;  // of an ellipse the corners of its box
        Object pen, brush;              // without a kind when it is none or the system's
    };
    struct Text
    {
        GridPoint at;
        std::u16string units;
        std::vector<std::uint32_t> widths;
        Object font;
        std::uint32_t colour = 0;
    };

    explicit MetafileReader(std::string bytes) : bytes_(std::move(bytes)) { Walk(); }

    std::string complaints;
    GridBox bounds, frame, clip;
    std::uint32_t device_width = 0, device_height = 0, width_mm = 0, height_mm = 0;
    std::vector<Shape> shapes;
    std::vector<Text> texts;

private:
    std::uint32_t U32(std::size_t at) const
    {
        std::uint32_t value = 0;
        if (at + 4 <= bytes_.size()) std::memcpy(&value, bytes_.data() + at, 4);
        return value;
    }
    std::int32_t I32(std::size_t at) const { return static_cast<std::int32_t>(U32(at)); }
    int I16(std::size_t at) const { return static_cast<std::int16_t>(U32(at) & 0xFFFFU); }
    GridBox Box(std::size_t at) const { return {I32(at), I32(at + 4), I32(at + 8), I32(at + 12)}; }
    void Expect(bool fulfilled, const std::string& what)
    {
        if (!fulfilled) complaints += what + "; ";
    }

    void Walk()
    {
        std::uint32_t count = 0;
        std::size_t at = 0;
        std::uint32_t size = 0;
        for (; at + 8 <= bytes_.size(); at += size) {
            size = U32(at + 4);
            Expect(size >= 8 && size % 4 == 0, "size of record " + std::to_string(count));
            if (size < 8) return;
            ++count;
            Expect(at != 0 || U32(0) == 1, "no header");
            Read(static_cast<Record>(U32(at)), at, size);
        }
        Expect(at == bytes_.size() && U32(48) == bytes_.size(), "bytes");
        Expect(U32(52) == count, "number of records");
        Expect(U32(at - size) == 14 && size == 20 && U32(at - 4) == 20, "end");
        Expect(objects_.empty(), "objects that are never deleted");
    }

    void Read(Record type, std::size_t at, std::uint32_t size)
    {
        switch (type) {
            case Record::Header: ReadHeader(); break;
            case Record::ExtCreatePen:
                Create(at, {type, U32(at + 28), I32(at + 32), U32(at + 40), ""});
                break;
            case Record::CreateBrushIndirect: Create(at, {type, 0, 0, U32(at + 16), ""}); break;
            case Record::ExtCreateFontIndirectW: {
                Object font{type, 0, I32(at + 12), 0, ""};
                for (std::size_t unit = at + 40; I16(unit) != 0; unit += 2) {
                    font.face += static_cast<char>(I16(unit));
                }
                Create(at, font);
                break;
            }
            case Record::SelectObject: Select(U32(at + 8)); break;
            case Record::DeleteObject: Delete(U32(at + 8)); break;
            case Record::IntersectClipRect: clip = Box(at + 8); break;
            case Record::SetTextColor: text_colour_ = U32(at + 8); break;
            case Record::Polyline:
            case Record::Polygon:
            case Record::Polyline16:
            case Record::Polygon16: ReadPoints(type, at, size); break;
            case Record::Ellipse: {
                const GridBox box = Box(at + 8);
                shapes.push_back({type,
                                  {{box.left, box.top}, {box.right, box.bottom}},
                                  selected_[Record::ExtCreatePen],
                                  selected_[Record::CreateBrushIndirect]});
                break;
            }
            case Record::ExtTextOutW: ReadText(at, size); break;
            case Record::SetMapMode: Expect(U32(at + 8) == 1, "map mode"); break;
            case Record::SetBkMode: Expect(U32(at + 8) == 1, "texts are not transparent"); break;
            case Record::SetTextAlign: Expect(U32(at + 8) == 0, "alignment"); break;
            case Record::SetPolyFillMode:
            case Record::Eof: break;
            default: Expect(false, "unknown record");
        }
    }

    void ReadHeader()
    {
        bounds = Box(8);
        frame = Box(24);
        Expect(U32(40) == 0x464D4520 && U32(44) == 0x10000, "signature");
        handles_ = U32(56) & 0xFFFFU;
        Expect(U32(60) == 0, "description");
        device_width = U32(72);
        device_height = U32(76);
        width_mm = U32(80);
        height_mm = U32(84);
        Expect(U32(100) == 1000 * width_mm && U32(104) == 1000 * height_mm, "micrometres");
    }

    void Create(std::size_t at, const Object& object)
    {
        const std::uint32_t handle = U32(at + 8);
        Expect(handle > 0 && handle < handles_ && !objects_.contains(handle), "created handle");
        objects_[handle] = object;
    }

    void Select(std::uint32_t handle)
    {
        const std::map<std::uint32_t, Record> system{{0x80000000, Record::CreateBrushIndirect},
                                                     {0x80000005, Record::CreateBrushIndirect},
                                                     {0x80000007, Record::ExtCreatePen},
                                                     {0x80000008, Record::ExtCreatePen},
                                                     {0x8000000D, Record::ExtCreateFontIndirectW}};
        if (const auto found = system.find(handle); found != system.end()) {
            selected_[found->second] = {};
            return;
        }
        Expect(objects_.contains(handle), "selected handle");
        const Object& object = objects_[handle];
        selected_[object.kind] = object;
    }

    void Delete(std::uint32_t handle)
    {
        Expect(objects_.contains(handle), "deleted handle");
        Expect(selected_[objects_[handle].kind] != objects_[handle], "deleted what is selected");
        objects_.erase(handle);
    }

    void ReadPoints(Record type, std::size_t at, std::uint32_t size)
    {
        const bool small = type == Record::Polyline16 || type == Record::Polygon16;
        const std::uint32_t count = U32(at + 24);
        Expect(size == 28 + count * (small ? 4 : 8), "points fill their record");
        Shape shape{
            type, {}, selected_[Record::ExtCreatePen], selected_[Record::CreateBrushIndirect]};
        const GridBox box = Box(at + 8);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::size_t place = at + 28 + i * (small ? 4 : 8);
            const GridPoint point = small ? GridPoint{I16(place), I16(place + 2)}
                                          : GridPoint{I32(place), I32(place + 4)};
            Expect(point.x >= box.left && point.x <= box.right && point.y >= box.top &&
                       point.y <= box.bottom,
                   "bounds of a record");
            shape.points.push_back(point);
        }
        shapes.push_back(shape);
    }

    void ReadText(std::size_t at, std::uint32_t size)
    {
        Text text{{I32(at + 36), I32(at + 40)},
                  {},
                  {},
                  selected_[Record::ExtCreateFontIndirectW],
                  text_colour_};
        const std::uint32_t count = U32(at + 44);
        const std::size_t units = at + U32(at + 48);
        const std::size_t widths = at + U32(at + 72);
        Expect(units + 2 * count <= widths && widths + 4 * count == at + size, "text record");
        for (std::uint32_t i = 0; i < count; ++i) {
            text.units += static_cast<char16_t>(I16(units + 2 * i));
            text.widths.push_back(U32(widths + 4 * i));
        }
        texts.push_back(text);
    }

    std::string bytes_;
    std::uint32_t handles_ = 0;
    std::uint32_t text_colour_ = 0;
    std::map<std::uint32_t, Object> objects_;
    std::map<Record, Object> selected_;
};

}  // namespace korvinth::render
