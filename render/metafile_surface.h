// Writes what is drawn as an enhanced metafile, after the published record format.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "render/drawing_surface.h"
#include "render/metafile_records.h"
#include "render/text_metrics.h"

namespace korvinth::render {

// The screen that a metafile refers to: it tells how large a pixel is.
struct ScreenSize
{
    int width_pixels = 1280;
    int height_pixels = 1024;
    int width_mm = 320;
    int height_mm = 240;
};

// The frame of a picture of so many pixels on the screen, in 0.01 mm; halves go to even.
GridBox MetafileFrame(int width_pixels, int height_pixels, const ScreenSize& screen);

// The metafile's device has kVectorSteps units to a pixel of the screen, so that a grid step is a
// device unit and nothing has to be mapped: not every reader scales pens with a mapping.
class MetafileSurface final : public DrawingSurface
{
public:
    // `metrics` outlives the surface.
    MetafileSurface(int width_pixels, int height_pixels, const ScreenSize& screen,
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
    // A pen, brush or font that the file has selected; handle 0 is an object of the system.
    template <class Look>
    struct Tool
    {
        std::optional<Look> look;
        std::uint32_t handle = 0;
    };
    static constexpr std::size_t kHandles = 5;  // three tools, one being replaced, and number 0

    template <class Look, class Create>
    void Use(Tool<Look>& tool, const Look& look, Create create);
    void SelectSystemObject(std::uint32_t handle);
    void Delete(std::uint32_t handle);
    void UsePen(const Pen& pen);
    void UseBrush(std::optional<Brush> brush);
    void UseFont(const Font& font);
    void UseTextColour(Colour colour);
    void PutText(GridPoint top_left, std::string_view utf8, const Font& font);
    std::string Header(const MetafileRecords& records) const;
    void DeleteTools(MetafileRecords& records) const;

    ScreenSize screen_;
    GridBox frame_;
    const TextMetrics& metrics_;
    MetafileRecords records_;
    std::array<bool, kHandles> taken_{true};
    Tool<Pen> pen_;
    Tool<std::optional<Brush>> brush_;
    Tool<Font> font_;
    std::optional<Colour> text_colour_;
};

}  // namespace korvinth::render
