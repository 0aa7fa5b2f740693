// Draws through a painter of the toolkit, for what is printed and for page files.
#pragma once

#include <QPainter>

#include "render/drawing_surface.h"
#include "render/qt/text_metrics.h"

namespace korvinth::render {

// Lines stay lines and texts texts. The painter's unit is a grid step, kVectorSteps to a pixel; its
// origin is the upper left corner of the picture, beyond which nothing is drawn. The painter is as
// it was when the surface is gone.
class PainterSurface final : public DrawingSurface
{
public:
    PainterSurface(QPainter& painter, int width_pixels, int height_pixels);
    ~PainterSurface() override;
    Q_DISABLE_COPY_MOVE(PainterSurface)

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
    QPainter& painter_;
    ToolkitTextMetrics metrics_;
};

}  // namespace korvinth::render
