#include "render/qt/text_metrics.h"

#include <QString>
#include <algorithm>

#include "render/qt/conversions.h"

namespace korvinth::render {
namespace {

constexpr int kMeasuredPixels = 1000;

}  // namespace

QFont UnhintedFont(const Font& font, int pixels)
{
    QFont face(ToQt(font.face));
    face.setStyleHint(QFont::SansSerif);
    face.setHintingPreference(QFont::PreferNoHinting);
    face.setPixelSize(std::max(pixels, 1));
    return face;
}

const QFontMetricsF& ToolkitTextMetrics::Of(const Font& font) const
{
    const auto found = std::ranges::find(faces_, font.face, &Face::name);
    if (found != faces_.end()) return found->metrics;
    return faces_.emplace_back(Face{font.face, QFontMetricsF(UnhintedFont(font, kMeasuredPixels))})
        .metrics;
}

double ToolkitTextMetrics::Advance(std::string_view utf8, const Font& font) const
{
    return Of(font).horizontalAdvance(ToQt(utf8)) * font.height / kMeasuredPixels;
}

double ToolkitTextMetrics::Ascent(const Font& font) const
{
    return Of(font).ascent() * font.height / kMeasuredPixels;
}

double ToolkitTextMetrics::LineHeight(const Font& font) const
{
    return Of(font).height() * font.height / kMeasuredPixels;
}

}  // namespace korvinth::render
