#include "render/sampling.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "document/number_text.h"
#include "term/words.h"

namespace korvinth::render {
namespace {

double BoundIndex(const document::PlotDocument& document, std::string_view bound, double otherwise,
                  const Sampling& sampling, const ViewRange& view, term::MathParser& parser)
{
    if (bound.empty()) return otherwise;
    const std::string term = term::ReplaceAll(document.Translate(bound), " ", "");
    if (term.empty()) return otherwise;
    const double value = parser.EvalText(term);
    const bool failed = parser.GetError() != term::Error::None;
    parser.EvalText("");
    const double index = (value - view.x_min) / sampling.dx;
    if (failed || std::isnan(index)) return otherwise;
    return std::clamp(index, 0.0, static_cast<double>(sampling.sample_count));
}

}  // namespace

double BoundOr(const document::PlotDocument& document, std::string_view bound, double otherwise,
               term::MathParser& parser)
{
    const std::string term = term::ReplaceAll(document.Translate(bound), " ", "");
    if (term.empty()) return otherwise;
    const double value = parser.EvalText(term);
    const bool usable = parser.GetError() == term::Error::None && std::isfinite(value);
    parser.EvalText("");
    return usable ? value : otherwise;
}

int DefaultSampleCount(const ViewRange& view)
{
    const double pixels = view.WidthInPixels();
    if (std::isnan(pixels)) return kFewestSamples;
    return static_cast<int>(
        document::RoundHalfEven(std::clamp<double>(pixels, kFewestSamples, kMostSamples)));
}

Sampling checkdef(const document::PlotDocument& document, const document::FunctionSlot& slot,
                  int sample_count, const ViewRange& view, term::MathParser& parser)
{
    Sampling sampling;
    sampling.sample_count = std::clamp(sample_count, kFewestSamples, kMostSamples);
    const double count = sampling.sample_count;
    sampling.dx = view.width / count;
    sampling.first_index = BoundIndex(document, slot.lower_bound, 0, sampling, view, parser);
    sampling.last_index = BoundIndex(document, slot.upper_bound, count, sampling, view, parser);
    if (sampling.first_index > sampling.last_index) {
        std::swap(sampling.first_index, sampling.last_index);
    }
    sampling.first_x = view.x_min + sampling.first_index * sampling.dx;
    sampling.last_x = view.x_min + sampling.last_index * sampling.dx;
    sampling.pixels_per_sample = view.area_width / count / view.twips_per_pixel_x;
    return sampling;
}

}  // namespace korvinth::render
