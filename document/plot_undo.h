// Earlier and later states of the plot, for "Rückgängig" and "Wiederherstellen".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "document/plot_document.h"

namespace korvinth::document {

// All that makes a plot what it is and is not computed by ApplyPlot.
struct PlotSnapshot
{
    struct Slot
    {
        std::string name;  // of the function in this row, whose interval this is
        std::string lower_bound, upper_bound, interval;
        std::int16_t colour_index = 0;
        bool visible = true;
        bool family_allowed = false;
        std::int16_t point_radius = 0;
        int support_points = 0;
        SlotAttributes look;
        bool operator==(const Slot&) const = default;
    };
    struct ParameterState
    {
        std::string name;
        double value = 0, lower = 0, upper = 0, step = 0;
        AnimationMode mode = AnimationMode::Wrap;
        Coupling coupling = Coupling::None;
        bool family = false;
        bool operator==(const ParameterState&) const = default;
    };

    SlotTable<std::string> rows;
    SlotTable<Slot> slots;
    std::vector<ParameterState> parameters;  // in use or dormant, by name
    // x, y, t: lower, upper each. Empty when a step has not changed them: it leaves them alone.
    std::vector<std::string> ranges;
    std::string lines_text, points_text, unknown_lines;
    term::TrigMode angle_mode = term::TrigMode::Radians;
    bool detect_integrals = true;
    double family_step = 1;
    int family_count = 0;
    // The other settings that belong to the picture. Empty like `ranges`.
    std::optional<DisplayAttributes> settings;

    // Parameters do not count here: moving a slider is no step of its own.
    bool SamePlot(const PlotSnapshot& other) const;
    void TakeRanges(const RangeTexts& texts);
};

PlotSnapshot TakeSnapshot(const PlotDocument& document);
// The document holds what ApplyPlot needs to make that plot again.
void RestoreSnapshot(PlotDocument& document, const PlotSnapshot& snapshot);

class PlotUndo
{
public:
    static constexpr std::size_t kDepth = 50;

    // The plot as it stood before a change that ApplyPlot has carried out. Nothing is kept when
    // `before` and `after` are the same plot.
    void Push(PlotSnapshot before, const PlotSnapshot& after);
    // Each takes the present plot and gives the one to go to.
    std::optional<PlotSnapshot> Undo(PlotSnapshot present);
    std::optional<PlotSnapshot> Redo(PlotSnapshot present);

    bool CanUndo() const { return !earlier_.empty(); }
    bool CanRedo() const { return !later_.empty(); }

private:
    std::vector<PlotSnapshot> earlier_;  // oldest first
    std::vector<PlotSnapshot> later_;    // farthest first
};

}  // namespace korvinth::document
