#include "app/entry_preview.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "app/application.h"
#include "document/plot_entry.h"
#include "render/qt/raster_surface.h"
#include "render/renderer.h"

namespace korvinth::app {
namespace {

using document::PlotDocument;

constexpr int kReduction = 3;    // the picture is drawn as one of this many times its size
constexpr int kSamples = 150;    // of a graph
constexpr int kMostMembers = 4;  // of a family
constexpr int kLineWidth = 3;    // before the reduction
constexpr std::size_t kLongestList = 2000;  // lines and points, in characters
constexpr std::size_t kLongestTerms = 5000;
// What the drawing of one picture may take, as far as it can be told before.
constexpr std::chrono::milliseconds kMostTime{60};

void CutList(std::string& list)
{
    if (list.size() <= kLongestList) return;
    const std::size_t end = list.rfind(document::kLineBreak, kLongestList);
    list.resize(end == std::string::npos ? 0 : end);
}

// What would not be seen in a small picture, or takes long, is left out.
void Simplify(PlotDocument& plot)
{
    document::DisplayAttributes& attributes = plot.attributes;
    attributes.x_numbers = attributes.y_numbers = attributes.axis_names = false;
    attributes.help_lines = attributes.extra_help_lines = attributes.graph_names = false;
    attributes.axis_width = 2;
    attributes.x_step = attributes.y_step = {document::StepMode::Fixed, "10^9"};  // no marks
    for (document::SlotAttributes& slot : attributes.slots) slot.width = kLineWidth;
    attributes.constant_sample_count = true;
    attributes.sample_count = kSamples;
    attributes.family_count = std::min(attributes.family_count, kMostMembers);
    CutList(plot.lines_text);
    CutList(plot.points_text);
}

// The counts that graphs have of their own: set by hand, or the parameter of an integral.
void LimitSamples(PlotDocument& plot)
{
    for (document::FunctionSlot& slot : plot.slots) slot.support_points = 0;
    for (const document::SlotIndex slot : document::AllSlots()) {
        document::Parameter& count = plot.parameters[document::SampleCountParameter(slot)];
        count.value = std::min<double>(count.value, kSamples);
    }
}

// An estimate from one value of each graph. An integral function is summed up from its lower bound,
// wherever that is; its share is that of the displayed range.
bool TakesLong(Application& application)
{
    const PlotDocument& plot = application.Document();
    term::MathParser& parser = application.Parser();
    using Clock = std::chrono::steady_clock;
    Clock::duration time{};
    for (const document::FunctionSlot& slot : plot.slots) {
        if (!slot.visible || slot.parser_term.empty()) continue;
        const std::string& term =
            slot.integral_term.empty() ? slot.parser_term : slot.integral_term;
        const term::ExprHandle value = parser.Parse(term);
        const Clock::time_point start = Clock::now();
        parser.Evaluate(value);
        time += (Clock::now() - start) * kSamples * (1 + plot.attributes.family_count);
        parser.ReleaseExpr(value);
        if (time > kMostTime) return true;
    }
    return false;
}

}  // namespace

QImage DrawPreview(const document::CollectionEntry& entry, QSize size)
{
    QImage paper(size, QImage::Format_RGB32);
    paper.fill(Qt::white);
    if (entry[document::Column::Functions].size() > kLongestTerms) return paper;
    // One of its own: the plot that is being worked on stays as it is.
    Application application;
    document::FillPlot(entry, application.Document());
    Simplify(application.Document());
    const QSize drawn = size * kReduction;
    application.SetAreaSize(drawn.width(), drawn.height());
    application.Apply();
    LimitSamples(application.Document());
    if (TakesLong(application)) return paper;
    render::RasterSurface surface(drawn.width(), drawn.height(), render::kSmoothSteps,
                                  1.0 / kReduction);
    application.Draw(surface);
    surface.Refresh();
    return surface.Image().copy();
}

}  // namespace korvinth::app
