// Sizes of texts by the toolkit's fonts, as they are without fitting them to the pixels.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <vector>

#include "render/text_metrics.h"

namespace korvinth::render {

// A font whose letters keep their proportions at any size; `pixels` of the painter's units.
QFont UnhintedFont(const Font& font, int pixels);

class ToolkitTextMetrics final : public TextMetrics
{
public:
    double Advance(std::string_view utf8, const Font& font) const override;
    double Ascent(const Font& font) const override;
    double LineHeight(const Font& font) const override;

private:
    struct Face
    {
        std::string name;
        QFontMetricsF metrics;  // at a large size
    };
    const QFontMetricsF& Of(const Font& font) const;

    mutable std::vector<Face> faces_;
};

}  // namespace korvinth::render
