// Redraws of a whole picture at 1920 x 1080, smooth, beside the toolkit's painter drawing the same
// graphs. Reported per benchmark: frames a second and, for redraws, how many times as long the
// painter takes for the graphs alone.
//
//   QT_QPA_PLATFORM=offscreen build/release/bench/korvinth_redraw_bench

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <chrono>
#include <string_view>
#include <vector>

#include "document/apply_plot.h"
#include "render/qt/raster_surface.h"
#include "render/recording_surface.h"
#include "render/renderer.h"

namespace {

using namespace korvinth;
using render::RasterSurface;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// Thirteen terms; 1, 2, 6, 7 and 12 are steep.
constexpr std::string_view kTerms[document::kSlotCount] = {
    "a*sin(_x)",
    "1/_x",
    "tan(_x)",
    "sqrt(_x)",
    "_x^2",
    "exp(_x)",
    "9*sin(20*_x)",
    "500/96*sin(_x*96/8)",
    "exp(-_x^2/2)*cos(5*_x)",
    "0.5*_x-2",
    "abs(sin(_x))+abs(cos(_x))",
    "6-cosh(_x/3)",
    "_x^3-3*_x+1",
};

struct Scene
{
    Scene()
    {
        document::DefineSystemVariables(parser, document);
        view.area_width = kWidth * 15.0;
        view.area_height = kHeight * 15.0;
        render::SetStandardRange(view);
        render::UpdateMapping(view, parser, document.variables);
        document::Parameter& parameter = document.parameters[document::ParameterIndex{26}];
        parameter.name = "a";
        parameter.handle = parser.DefineVariable("a");
        parser.SetVariableValue(parameter.handle, 1.3);
        for (const document::SlotIndex index : document::AllSlots()) {
            document::FunctionSlot& slot = document.slots[index];
            slot.name = "f";
            slot.parser_term = kTerms[document::Number(index)];
            slot.colour_index = static_cast<std::int16_t>(index);
        }
    }

    void MakeFamilies(int further_members)
    {
        for (document::FunctionSlot& slot : document.slots) {
            slot.parser_term = "a/4*(" + slot.parser_term + ")";
            slot.family_allowed = true;
        }
        document.parameters[document::ParameterIndex{26}].family = true;
        document.attributes.family_count = further_members;
        document.attributes.family_step = 0.25;
    }

    // What the toolkit's painter needs, in seconds, to draw the graphs' points as antialiased
    // lines.
    double PainterSeconds(int repeats)
    {
        document::DisplayAttributes& look = document.attributes;
        const document::DisplayAttributes before = look;
        look.axes = look.x_numbers = look.y_numbers = look.help_lines = look.graph_names = false;
        render::RecordingSurface recording(kWidth * render::kSmoothSteps,
                                           kHeight * render::kSmoothSteps, render::kSmoothSteps);
        renderer.RedrawAll(recording);
        look = before;
        std::vector<std::vector<QLineF>> graphs;
        for (const render::StrokeCommand& stroke : recording.All<render::StrokeCommand>()) {
            std::vector<QLineF>& lines = graphs.emplace_back();
            const auto at = [](render::GridPoint p) {
                return QPointF(p.x / 5.0 + 0.5, p.y / 5.0 + 0.5);
            };
            for (std::size_t i = 1; i < stroke.points.size(); ++i) {
                lines.emplace_back(at(stroke.points[i - 1]), at(stroke.points[i]));
            }
        }
        std::vector<double> seconds;
        for (int i = 0; i < repeats; ++i) {
            const auto start = std::chrono::steady_clock::now();
            QImage image(kWidth, kHeight, QImage::Format_RGB32);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(Qt::blue, 2));
            for (const auto& lines : graphs) {
                painter.drawLines(lines.data(), static_cast<int>(lines.size()));
            }
            painter.end();
            seconds.push_back(
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        std::sort(seconds.begin(), seconds.end());
        return seconds[seconds.size() / 2];
    }

    document::PlotDocument document;
    term::MathParser parser;
    render::ViewRange view;
    render::RedrawGate gate;
    render::Renderer renderer{document, parser, view, gate};
    RasterSurface surface{kWidth, kHeight, render::kSmoothSteps};
};

// Runs `frame` as often as the benchmark asks; reports the median.
template <class Frame>
double MedianSeconds(benchmark::State& state, Frame frame)
{
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        frame();
        seconds.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(seconds.begin(), seconds.end());
    const double median = seconds[seconds.size() / 2];
    state.counters["median_ms"] = 1000 * median;
    state.counters["frames_a_second"] = 1 / median;
    return median;
}

void RedrawThirteenFunctions(benchmark::State& state)
{
    Scene scene;
    const double painter = scene.PainterSeconds(5);
    const double median = MedianSeconds(state, [&] { scene.renderer.RedrawAll(scene.surface); });
    state.counters["painter_ratio"] = painter / median;
}
BENCHMARK(RedrawThirteenFunctions)->Unit(benchmark::kMillisecond)->MinTime(2);

void RedrawThirteenFamiliesOf21(benchmark::State& state)
{
    Scene scene;
    scene.MakeFamilies(20);
    MedianSeconds(state, [&] { scene.renderer.RedrawAll(scene.surface); });
}
BENCHMARK(RedrawThirteenFamiliesOf21)->Unit(benchmark::kMillisecond)->MinTime(2);

void PanThirteenFunctions(benchmark::State& state)
{
    Scene scene;
    MedianSeconds(state, [&] {
        render::scrlr(scene.view, 1);
        render::UpdateMapping(scene.view, scene.parser, scene.document.variables);
        scene.renderer.RedrawAll(scene.surface);
    });
}
BENCHMARK(PanThirteenFunctions)->Unit(benchmark::kMillisecond)->Iterations(100);

void RedrawMarkers(benchmark::State& state)
{
    Scene scene;
    for (document::FunctionSlot& slot : scene.document.slots) slot.point_radius = 3;
    MedianSeconds(state, [&] { scene.renderer.RedrawAll(scene.surface); });
}
BENCHMARK(RedrawMarkers)->Unit(benchmark::kMillisecond)->MinTime(1);

void RedrawExactPixels(benchmark::State& state)
{
    Scene scene;
    RasterSurface exact(kWidth, kHeight, render::kExactSteps);
    MedianSeconds(state, [&] { scene.renderer.RedrawAll(exact); });
}
BENCHMARK(RedrawExactPixels)->Unit(benchmark::kMillisecond)->MinTime(1);

void RedrawThirteenIntegrals(benchmark::State& state)
{
    Scene scene;
    for (document::FunctionSlot& slot : scene.document.slots) {
        slot.integral_term = "(" + slot.parser_term + ")";
        slot.parser_term = "integral" + slot.integral_term;
    }
    MedianSeconds(state, [&] { scene.renderer.RedrawAll(scene.surface); });
}
BENCHMARK(RedrawThirteenIntegrals)->Unit(benchmark::kMillisecond)->MinTime(1);

void RedrawCurveOf20000Samples(benchmark::State& state)
{
    Scene scene;
    for (document::FunctionSlot& slot : scene.document.slots) slot = {};
    const document::SlotIndex x_part{0};
    const document::SlotIndex y_part{1};
    scene.document.slots[x_part].parser_term = "9*cos(7*_x)*cos(_x/5)";
    scene.document.slots[x_part].curve_link = 1;
    scene.document.slots[x_part].upper_bound = "100";
    scene.document.slots[y_part].parser_term = "5*sin(8*_x)";
    scene.document.slots[y_part].curve_link = document::kCurveYPart;
    scene.document.slots[x_part].support_points = render::kMostSamples + 1;
    MedianSeconds(state, [&] { scene.renderer.RedrawAll(scene.surface); });
}
BENCHMARK(RedrawCurveOf20000Samples)->Unit(benchmark::kMillisecond)->MinTime(1);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
