#include "document/plot_undo.h"

#include <tuple>
#include <utility>

namespace korvinth::document {
namespace {

PlotSnapshot::ParameterState StateOf(const Parameter& parameter)
{
    return {parameter.name, parameter.value, parameter.lower,    parameter.upper,
            parameter.step, parameter.mode,  parameter.coupling, parameter.family};
}

void PutBack(Parameter& parameter, const PlotSnapshot::ParameterState& state)
{
    parameter.name = state.name;
    parameter.value = state.value;
    parameter.lower = state.lower;
    parameter.upper = state.upper;
    parameter.step = state.step;
    parameter.mode = state.mode;
    parameter.coupling = state.coupling;
    parameter.family = state.family;
}

void PutBack(RangeTexts& ranges, const std::vector<std::string>& kept)
{
    ranges = {kept[0], kept[1], kept[2], kept[3], kept[4], kept[5]};
}

// Everything of the picture's settings that a snapshot does not hold by itself; the user's own,
// such as the places of the calculator, stay.
void PutBack(DisplayAttributes& attributes, const DisplayAttributes& kept)
{
    DisplayAttributes all = kept;
    all.slots = attributes.slots;
    all.angle_mode = attributes.angle_mode;
    all.detect_integrals = attributes.detect_integrals;
    all.family_step = attributes.family_step;
    all.family_count = attributes.family_count;
    all.zoom_factor_x = attributes.zoom_factor_x;
    all.zoom_factor_y = attributes.zoom_factor_y;
    all.calculator_places = attributes.calculator_places;
    all.timer_milliseconds = attributes.timer_milliseconds;
    all.description_points = attributes.description_points;
    all.description_follows_window = attributes.description_follows_window;
    attributes = all;
}

// Moves the last of one list out, and `present` to the end of the other.
std::optional<PlotSnapshot> Exchange(std::vector<PlotSnapshot>& from, std::vector<PlotSnapshot>& to,
                                     PlotSnapshot present)
{
    if (from.empty()) return std::nullopt;
    PlotSnapshot snapshot = std::move(from.back());
    from.pop_back();
    if (snapshot.ranges.empty()) present.ranges.clear();
    if (!snapshot.settings) present.settings.reset();
    to.push_back(std::move(present));
    return snapshot;
}

}  // namespace

bool PlotSnapshot::SamePlot(const PlotSnapshot& other) const
{
    const auto plot = [](const PlotSnapshot& s) {
        return std::tie(s.rows, s.slots, s.ranges, s.lines_text, s.points_text, s.angle_mode,
                        s.detect_integrals, s.family_step, s.family_count, s.settings,
                        s.unknown_lines);
    };
    return plot(*this) == plot(other);
}

void PlotSnapshot::TakeRanges(const RangeTexts& texts)
{
    ranges = {texts.x_lower, texts.x_upper, texts.y_lower,
              texts.y_upper, texts.t_lower, texts.t_upper};
}

PlotSnapshot TakeSnapshot(const PlotDocument& document)
{
    PlotSnapshot snapshot;
    snapshot.rows = document.rows;
    for (const SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        snapshot.slots[index] = {slot.name,           slot.lower_bound,
                                 slot.upper_bound,    slot.interval,
                                 slot.colour_index,   slot.visible,
                                 slot.family_allowed, slot.point_radius,
                                 slot.support_points, document.attributes.slots[index]};
    }
    for (const auto& [name, parameter] : document.dormant_parameters) {
        snapshot.parameters.push_back(StateOf(parameter));
    }
    for (const Parameter& parameter : document.parameters) {
        if (!parameter.name.empty()) snapshot.parameters.push_back(StateOf(parameter));
    }
    snapshot.TakeRanges(document.ranges);
    snapshot.lines_text = document.lines_text;
    snapshot.points_text = document.points_text;
    snapshot.unknown_lines = document.unknown_lines;
    snapshot.angle_mode = document.attributes.angle_mode;
    snapshot.detect_integrals = document.attributes.detect_integrals;
    snapshot.family_step = document.attributes.family_step;
    snapshot.family_count = document.attributes.family_count;
    snapshot.settings = DisplayAttributes();
    PutBack(*snapshot.settings, document.attributes);
    return snapshot;
}

void RestoreSnapshot(PlotDocument& document, const PlotSnapshot& snapshot)
{
    document.rows = snapshot.rows;
    for (const SlotIndex index : AllSlots()) {
        FunctionSlot& slot = document.slots[index];
        const PlotSnapshot::Slot& kept = snapshot.slots[index];
        slot.name = kept.name;
        slot.lower_bound = kept.lower_bound;
        slot.upper_bound = kept.upper_bound;
        slot.interval = kept.interval;
        slot.colour_index = kept.colour_index;
        slot.visible = kept.visible;
        slot.family_allowed = kept.family_allowed;
        slot.point_radius = kept.point_radius;
        slot.support_points = kept.support_points;
        document.attributes.slots[index] = kept.look;
    }
    // ApplyPlot takes the values of the names that it meets from the dormant ones.
    for (Parameter& parameter : document.parameters) parameter = {};
    for (const PlotSnapshot::ParameterState& state : snapshot.parameters) {
        PutBack(document.dormant_parameters[state.name], state);
    }
    if (!snapshot.ranges.empty()) PutBack(document.ranges, snapshot.ranges);
    document.lines_text = snapshot.lines_text;
    document.points_text = snapshot.points_text;
    document.unknown_lines = snapshot.unknown_lines;
    document.attributes.angle_mode = snapshot.angle_mode;
    document.attributes.detect_integrals = snapshot.detect_integrals;
    document.attributes.family_step = snapshot.family_step;
    document.attributes.family_count = snapshot.family_count;
    if (snapshot.settings) PutBack(document.attributes, *snapshot.settings);
}

void PlotUndo::Push(PlotSnapshot before, const PlotSnapshot& after)
{
    if (before.SamePlot(after)) return;
    // Panning between two steps is no part of either; undoing must not make the view jump.
    if (before.ranges == after.ranges) before.ranges.clear();
    if (before.settings == after.settings) before.settings.reset();
    later_.clear();
    earlier_.push_back(std::move(before));
    if (earlier_.size() > kDepth) earlier_.erase(earlier_.begin());
}

std::optional<PlotSnapshot> PlotUndo::Undo(PlotSnapshot present)
{
    return Exchange(earlier_, later_, std::move(present));
}

std::optional<PlotSnapshot> PlotUndo::Redo(PlotSnapshot present)
{
    return Exchange(later_, earlier_, std::move(present));
}

}  // namespace korvinth::document
