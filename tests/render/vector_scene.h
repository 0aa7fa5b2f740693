// Something of everything that is drawn, for the surfaces that write files.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "render/drawing_surface.h"
#include "render/text_metrics.h"

namespace korvinth::render {

// Texts measure as those of the recording surface.
class FixedMetrics final : public TextMetrics
{
public:
    double Advance(std::string_view utf8, const Font& font) const override
    {
        const auto characters = std::count_if(utf8.begin(), utf8.end(), [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
        });
        return static_cast<double>(characters) * font.height / 2;
    }
    double Ascent(const Font& font) const override { return font.height; }
    double LineHeight(const Font& font) const override { return font.height * 1.2; }
};

// Where the middle of a pixel lies, which strokes go through.
inline std::vector<GridPoint> Shifted(std::vector<GridPoint> points)
{
    for (GridPoint& point : points) {
        point = {point.x + kVectorSteps / 2, point.y + kVectorSteps / 2};
    }
    return points;
}

inline constexpr std::string_view kSceneText = "−2,5·10⁷ <&> 𝑥";
inline constexpr int kSceneWidth = 200;  // pixels
inline constexpr int kSceneHeight = 100;

// Strokes of every line type and of several widths, one of them longer than a record takes and one
// far outside; areas, markers, texts.
inline void DrawScene(DrawingSurface& surface)
{
    const int s = surface.StepsPerPixel();
    surface.Clear(document::MakeColour(255, 255, 250));
    for (int type = 0; type <= 6; ++type) {
        surface.SelectPen({document::MakeColour(10 * type, 0xAB, 3), 0.75 + 3 * type,
                           static_cast<LineType>(type)});
        surface.MoveTo({0, 7 * s * type});
        surface.LineTo({199 * s, 7 * s * type});
        surface.LineTo({150 * s + type, 3 + s * type});
        surface.LineTo({150 * s + type, 90 * s});
    }
    surface.SelectPen({document::MakeColour(1, 2, 3), 2, LineType::Solid});
    surface.MoveTo({0, 0});
    for (int i = 1; i <= 40'000; ++i) surface.LineTo({i % (200 * s), (i * 7) % (100 * s)});
    surface.MoveTo({0, 0});
    surface.LineTo({40'000, -70'000});
    surface.LineTo({12, 8});
    const std::array triangle{GridPoint{5 * s, 5 * s}, GridPoint{9 * s, 5 * s},
                              GridPoint{5 * s, 40'000}};
    surface.SelectBrush({document::MakeColour(200, 100, 0)});
    surface.Polygon(triangle);
    surface.FillRegion(triangle, {document::MakeColour(0, 100, 200)});
    surface.PaintEllipse({10 * s, 10 * s, 16 * s, 16 * s}, {document::MakeColour(200, 0, 0)});
    surface.FrameEllipse({20 * s, 10 * s, 30 * s, 16 * s}, {document::MakeColour(200, 0, 0)});
    surface.SetTextColour(document::MakeColour(0, 0, 0x80));
    surface.SelectFont({"Arial", 13.5});
    surface.TextOut({50 * s, 50 * s}, kSceneText);
    surface.SelectFont({"Arial", 12});
    surface.TextOut({50 * s, 80 * s}, "x");
    surface.TextOut({60 * s, 80 * s}, "y");
    surface.Refresh();
}

}  // namespace korvinth::render
