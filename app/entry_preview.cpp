#include "app/entry_preview.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

#include "app/application.h"
#include "document/plot_entry.h"
#include "render/qt/raster_surface.h"
#include "render/renderer.h"
#include "term/words.h"

namespace korvinth::app {
namespace {

using document::PlotDocument;

constexpr int kReduction = 3;    // the picture is drawn as one of this many times its size
constexpr int kSamples = 150;    // of a graph
constexpr int kMostMembers = 4;  // of a family
constexpr int kLineWidth = 3;    // before the reduction
constexpr std::size_t kLongestList = 2000;  // lines and points, in characters
constexpr double kMostCost = 5000;          // of all functions, in characters of terms

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

// Of the row "name(argument)=term": what one value costs, in characters of term. Functions that it
// calls count each time; a derivative takes the values of several places.
using Costs = std::map<std::string, double, std::less<>>;

double CostOf(std::string_view term, const Costs& costs)
{
    constexpr double kPlacesOfDerivative = 3;
    auto cost = static_cast<double>(term.size());
    for (std::size_t i = 0; i < term.size(); ++i) {
        for (const auto& [name, called] : costs) {
            if (name.empty() || !term.substr(i).starts_with(name)) continue;
            std::size_t end = i + name.size();
            double of_call = called;
            for (; end < term.size() && term[end] == '\''; ++end) of_call *= kPlacesOfDerivative;
            if (end < term.size() && term[end] == '(') cost += of_call;
        }
    }
    return cost;
}

// Few characters can call for millions of operations: f(x)=x+1, g(x)=f(f(f(x))), h(x)=g(g(g(x)))...
// Told from the text, since the plot's rebuild evaluates it already.
bool TakesLong(const PlotDocument& plot)
{
    Costs costs;
    for (int round = 0; round < document::kSlotCount; ++round) {
        double total = 0;
        for (const std::string& typed : plot.rows) {
            const std::string row = term::LowerCase(term::ReplaceAll(typed, " ", ""));
            const std::size_t equals = std::min(row.find('='), row.size());
            const std::string_view term =
                std::string_view(row).substr(equals < row.size() ? equals : 0);
            const double cost = CostOf(term, costs);
            costs[row.substr(0, std::min(row.find('('), equals))] = cost;
            total += cost;
        }
        if (total > kMostCost) return true;
    }
    return false;
}

// An integral function is summed up from its lower bound, wherever that is.
bool SumsFromAfar(Application& application)
{
    constexpr double kMostWidths = 5;
    const render::ViewRange& view = application.View();
    return std::ranges::any_of(
        application.Document().parameters, [&](const document::Parameter& parameter) {
            return (parameter.state & document::kIntegralBoundState) != 0 &&
                   !parameter.name.empty() &&
                   std::abs(parameter.value - view.x_min) > kMostWidths * view.width;
        });
}

}  // namespace

QImage DrawPreview(const document::CollectionEntry& entry, QSize size)
{
    QImage paper(size, QImage::Format_RGB32);
    paper.fill(Qt::white);
    // One of its own: the plot that is being worked on stays as it is.
    Application application;
    const QSize drawn = size * kReduction;
    application.SetAreaSize(drawn.width(), drawn.height());
    application.TakeEntry(entry);
    if (TakesLong(application.Document())) return paper;
    Simplify(application.Document());
    application.Apply();
    LimitSamples(application.Document());
    if (SumsFromAfar(application)) return paper;
    render::RasterSurface surface(drawn.width(), drawn.height(), render::kSmoothSteps,
                                  1.0 / kReduction);
    application.Draw(surface);
    surface.Refresh();
    return surface.Image().copy();
}

}  // namespace korvinth::app
