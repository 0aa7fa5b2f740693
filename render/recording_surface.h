// A surface that keeps what is drawn as a list of plain commands, to be looked at or replayed.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "render/drawing_surface.h"

namespace korvinth::render {

struct StrokeCommand
{
    std::vector<GridPoint> points;
    Pen pen;
    bool operator==(const StrokeCommand&) const = default;
};

struct PolygonCommand
{
    std::vector<GridPoint> corners;
    bool outlined = false;
    Pen outline;  // default-constructed when not outlined
    Brush fill;
    bool operator==(const PolygonCommand&) const = default;
};

struct EllipseCommand
{
    GridBox box;
    Brush brush;
    bool filled = true;
    bool operator==(const EllipseCommand&) const = default;
};

struct TextCommand
{
    GridPoint top_left;
    std::string text;
    Font font;
    Colour colour{};
    GridExtent extent;
    bool operator==(const TextCommand&) const = default;
};

struct ClearCommand
{
    Colour colour{};
    bool operator==(const ClearCommand&) const = default;
};

struct RefreshCommand
{
    bool operator==(const RefreshCommand&) const = default;
};

using DrawingCommand = std::variant<StrokeCommand, PolygonCommand, EllipseCommand, TextCommand,
                                    ClearCommand, RefreshCommand>;

// Texts measure by a fixed rule, whatever fonts a machine has: every character is half as wide as
// the font is high, and a line is a fifth higher than the font.
class RecordingSurface final : public DrawingSurface
{
public:
    RecordingSurface(int width, int height, int steps_per_pixel);

    // Everything drawn since the start or the last Forget, an unfinished stroke included.
    const std::vector<DrawingCommand>& Commands();
    void Forget();

    // The commands of one kind, in order.
    template <class Command>
    std::vector<Command> All()
    {
        std::vector<Command> found;
        for (const DrawingCommand& command : Commands()) {
            if (const auto* match = std::get_if<Command>(&command)) found.push_back(*match);
        }
        return found;
    }

protected:
    void DoStroke(std::span<const GridPoint> points, const Pen& pen) override;
    void DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                   const Brush& fill) override;
    void DoEllipse(const GridBox& box, const Brush& brush, bool filled) override;
    void DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                Colour colour) override;
    GridExtent DoMeasure(std::string_view utf8, const Font& font) override;
    void DoClear(Colour colour) override;
    void DoRefresh() override;

private:
    std::vector<DrawingCommand> commands_;
};

}  // namespace korvinth::render
