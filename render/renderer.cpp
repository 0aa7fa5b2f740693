#include "render/renderer.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "document/hatched_term.h"
#include "render/axes.h"
#include "render/hatching.h"
#include "render/variable_scope.h"
#include "term/words.h"

namespace korvinth::render {
namespace {

using document::FunctionSlot;
using document::Parameter;
using document::SlotIndex;

bool Drawn(const FunctionSlot& slot) { return slot.visible && !slot.parser_term.empty(); }

const Parameter* FamilyParameter(const document::PlotDocument& document)
{
    const auto found = std::find_if(
        document.parameters.begin(), document.parameters.end(),
        [](const Parameter& parameter) { return parameter.family && !parameter.name.empty(); });
    return found != document.parameters.end() ? &*found : nullptr;
}

// Whether some term looks at the running sum of the integral functions.
bool UsesRunningSum(const document::PlotDocument& document)
{
    return std::any_of(document.slots.begin(), document.slots.end(), [](const FunctionSlot& slot) {
        return term::ReplaceWord(slot.parser_term, "qq", "", term::kWholeWord) !=
               term::TrimBlanks(slot.parser_term);
    });
}

}  // namespace

GraphKind KindOf(const FunctionSlot& slot)
{
    if (slot.curve_link >= 0) return GraphKind::CurveXPart;
    if (slot.curve_link == document::kCurveYPart) return GraphKind::CurveYPart;
    return slot.integral_term.empty() ? GraphKind::Function : GraphKind::Integral;
}

bool HasInk(const document::PlotDocument& document, SlotIndex slot)
{
    return document.attributes.slots[slot].type != LineType::Invisible ||
           document.slots[slot].point_radius > 0;
}

Renderer::Renderer(const document::PlotDocument& document, term::MathParser& parser,
                   const ViewRange& view, const RedrawGate& gate)
    : document_(document),
      parser_(parser),
      view_(view),
      gate_(gate),
      function_graph_(parser, document.variables),
      integral_graph_(parser, document.variables),
      curve_graph_(parser, document),
      line_graph_(parser, document),
      point_graph_(parser, document)
{
}

int Renderer::SampleCount(SlotIndex slot) const
{
    const auto steps_between = [](int support_points) {
        return std::clamp(support_points - 1, kFewestSamples, kMostSamples);
    };
    const Parameter& integral = document_.parameters[document::SampleCountParameter(slot)];
    if (!integral.name.empty()) return steps_between(static_cast<int>(integral.value));
    if (const int by_hand = document_.slots[slot].support_points; by_hand > 0) {
        return steps_between(by_hand);
    }
    const document::DisplayAttributes& attributes = document_.attributes;
    return attributes.constant_sample_count
               ? std::clamp(attributes.sample_count, kFewestSamples, kMostSamples)
               : DefaultSampleCount(view_);
}

document::SlotAttributes Renderer::LookOf(SlotIndex slot) const
{
    document::SlotAttributes look = document::Drawable(document_.attributes.slots[slot]);
    const std::int16_t colour = document_.slots[slot].colour_index;
    if (colour >= 0 && colour < document::kSlotCount) {
        look.colour = document_.attributes.slots[SlotIndex{colour}].colour;
    }
    return look;
}

void Renderer::RedrawAll(DrawingSurface& surface)
{
    if (!gate_.Open()) return;
    constexpr int kBetweenLabels = 2;  // pixels
    LabelSpace labels(surface.Width(), surface.Height(), kBetweenLabels * surface.StepsPerPixel());
    const document::DisplayAttributes& attributes = document_.attributes;
    helpline(surface, view_, attributes, ReadAxisScales(attributes, parser_), labels);

    problems_.clear();
    const Pen pen = surface.CurrentPen();
    for (const SlotIndex slot : document::AllSlots()) {
        traces_[slot].clear();
        if (Drawn(document_.slots[slot])) DrawSlot(surface, slot);
    }
    parser_.SetVariableValue(document_.variables.sw, view_.width / DefaultSampleCount(view_));
    DrawLinesAndPoints(surface, labels);
    DrawNames(surface, labels);
    surface.Refresh();
    surface.SelectPen(pen);
}

void Renderer::DrawSlot(DrawingSurface& surface, SlotIndex index)
{
    const FunctionSlot& slot = document_.slots[index];
    const document::SlotAttributes look = LookOf(index);
    surface.SelectPen({look.colour, static_cast<double>(look.width), look.type});
    const GraphStyle style{slot.point_radius, look.colour};
    DrawMember(surface, index, style, true);
    DrawFamily(surface, index, style);
}

// The slot's interval may use the parameter of the family.
void Renderer::DrawMember(DrawingSurface& surface, SlotIndex index, const GraphStyle& style,
                          bool first_member)
{
    const FunctionSlot& slot = document_.slots[index];
    Sampling sampling = checkdef(document_, slot, SampleCount(index), view_, parser_);
    if (document::IsHatched(document_, index)) {
        sampling.shift = HatchShift(sampling.first_x, sampling.dx) * sampling.dx;
    }
    parser_.SetVariableValue(document_.variables.sw, sampling.dx);
    switch (KindOf(slot)) {
        case GraphKind::Function:
            function_graph_.drawf(surface, slot.parser_term, view_, sampling, style,
                                  first_member ? &traces_[index] : nullptr);
            break;
        case GraphKind::Integral:
            DrawIntegral(surface, index, sampling, style, first_member ? &traces_[index] : nullptr);
            break;
        case GraphKind::CurveXPart: DrawCurve(surface, index, style); break;
        case GraphKind::CurveYPart: break;  // its partner draws it
    }
}

void Renderer::DrawIntegral(DrawingSurface& surface, SlotIndex index, const Sampling& sampling,
                            const GraphStyle& style, std::vector<GridPoint>* trace)
{
    // As the parser knows it: a family may change it.
    const double lower_bound =
        parser_.VariableValue(document_.parameters[document::LowerBoundParameter(index)].handle);
    const VariableScope running_sum(parser_, document_.variables.qq);
    integral_graph_.stammf(surface, document_.slots[index].integral_term, lower_bound,
                           document_.attributes.integrand_limit, UsesRunningSum(document_), view_,
                           sampling, style, trace);
}

void Renderer::DrawCurve(DrawingSurface& surface, SlotIndex x_part, const GraphStyle& style)
{
    const FunctionSlot& slot = document_.slots[x_part];
    const SlotIndex y_part{slot.curve_link};
    const FunctionSlot& partner = document_.slots[y_part];
    const int count = SampleCount(document_.SampledSlot(x_part));
    CurveSampling sampling = SampleCurve(document_, slot, count, view_, parser_);
    if (document::IsHatched(document_, x_part) || document::IsHatched(document_, y_part)) {
        sampling.shift = HatchShift(sampling.first, sampling.step) * sampling.step;
    }
    parser_.SetVariableValue(document_.variables.sw, sampling.step);
    if (slot.integral_term.empty() && partner.integral_term.empty()) {
        if (partner.parser_term.empty()) return;  // it has an error, which was told when applied
        curve_graph_.drawk(surface, x_part, y_part, view_, sampling, style);
    } else if (!curve_graph_.stammk(surface, x_part, y_part, view_, sampling, style)) {
        // Deliberate: the trailing blank.
        AddProblem("Fehler", "Bei Integralfkt im Kurvenmodus unmöglicher Fehler ");
    }
}

void Renderer::DrawFamily(DrawingSurface& surface, SlotIndex index, const GraphStyle& style)
{
    const Parameter* parameter = FamilyParameter(document_);
    if (!document_.slots[index].family_allowed || parameter == nullptr) return;
    const VariableScope scope(parser_, parameter->handle);
    for (int k = 1; k <= document_.attributes.family_count; ++k) {
        parser_.SetVariableValue(parameter->handle,
                                 scope.Value() + k * document_.attributes.family_step);
        DrawMember(surface, index, style, false);
    }
}

void Renderer::DrawLinesAndPoints(DrawingSurface& surface, LabelSpace& labels)
{
    const document::DisplayAttributes& attributes = document_.attributes;
    if (attributes.lines && !document_.lines_text.empty()) {
        AddProblem(kLineProblems, line_graph_.interprete(surface, view_));
    }
    point_graph_.Forget();
    if (attributes.points && !document_.points_text.empty()) {
        AddProblem(kPointProblems, point_graph_.Draw(surface, view_, traces_, labels));
    }
}

// The members of a family share a problem.
void Renderer::AddProblem(std::string_view title, const std::string& text)
{
    Problem problem{std::string(title), text};
    if (text.empty() || std::ranges::find(problems_, problem) != problems_.end()) return;
    problems_.push_back(std::move(problem));
}

void Renderer::DrawNames(DrawingSurface& surface, LabelSpace& labels) const
{
    if (!document_.attributes.graph_names) return;
    constexpr double kPointsAboveNumbers = 1;
    const Font font = surface.SelectFont(
        {"Arial", FontPixels(document_.attributes.font_points + kPointsAboveNumbers)});
    for (const SlotIndex slot : document::AllSlots()) {
        const std::string& name = document_.slots[slot].name;
        if (traces_[slot].empty() || name.empty() || !HasInk(document_, slot)) continue;
        const std::optional<GridBox> place =
            PlaceGraphName(traces_, slot, surface.MeasureText(name), surface, labels);
        if (!place) continue;
        labels.Take(*place);
        surface.SetTextColour(LookOf(slot).colour);
        surface.TextOut({place->left, place->top}, name);
    }
    surface.SelectFont(font);
}

}  // namespace korvinth::render
