// Writes what is drawn as a scalable vector graphic.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "render/drawing_surface.h"
#include "render/text_metrics.h"

namespace korvinth::render {

// One path a stroke on whole numbers of a grid of kVectorSteps to a pixel, texts as texts. The same
// drawing gives the same bytes.
class SvgSurface final : public DrawingSurface
{
public:
    // Without `mm_per_pixel` the picture's size is stated in pixels. `metrics` outlives the
    // surface.
    SvgSurface(int width_pixels, int height_pixels, std::optional<double> mm_per_pixel,
               const TextMetrics& metrics);

    // The whole file with everything drawn so far.
    std::string Bytes();

protected:
    void DoStroke(std::span<const GridPoint> points, const Pen& pen) override;
    void DoPolygon(std::span<const GridPoint> corners, const Pen* outline,
                   const Brush& fill) override;
    void DoEllipse(const GridBox& box, const Brush& brush, bool filled) override;
    void DoText(GridPoint top_left, std::string_view utf8, const Font& font,
                Colour colour) override;
    GridExtent DoMeasure(std::string_view utf8, const Font& font) override;
    void DoClear(Colour colour) override;
    void DoRefresh() override {}

private:
    struct Attribute
    {
        std::string name, value;
        bool operator==(const Attribute&) const = default;
    };
    using Style = std::vector<Attribute>;
    struct UsedStyle
    {
        Style style;
        int uses = 0;
    };
    struct Element
    {
        std::string name;
        std::size_t style;
        std::string rest;  // from behind the attributes of the style
    };

    void Add(std::string_view name, const Style& style, std::string rest);
    static std::string ClassName(const Style& style);
    std::string SizeText(int grid_steps) const;

    std::optional<double> mm_per_pixel_;
    const TextMetrics& metrics_;
    std::vector<UsedStyle> styles_;
    std::vector<Element> elements_;
};

}  // namespace korvinth::render
