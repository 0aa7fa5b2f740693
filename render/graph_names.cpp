#include "render/graph_names.h"

#include <algorithm>
#include <array>

namespace korvinth::render {
namespace {

// In screen pixels.
constexpr int kFromGraph = 3;
constexpr int kFromEdge = 4;
constexpr int kBetweenTries = 10;
constexpr int kTries = 12;

bool Crosses(const std::vector<GridPoint>& trace, const GridBox& box)
{
    const auto by_x = [](const GridPoint& point, int x) { return point.x < x; };
    auto point = std::lower_bound(trace.begin(), trace.end(), box.left, by_x);
    if (point != trace.begin()) --point;
    for (; point != trace.end() && point + 1 != trace.end() && point->x <= box.right; ++point) {
        const auto [high, low] = std::minmax(point->y, (point + 1)->y);
        if ((point + 1)->x >= box.left && high <= box.bottom && low >= box.top) return true;
    }
    return false;
}

GridBox Widened(const GridBox& box, int margin)
{
    return {box.left - margin, box.top - margin, box.right + margin, box.bottom + margin};
}

}  // namespace

std::optional<GridBox> PlaceGraphName(const GraphTraces& traces, document::SlotIndex slot,
                                      GridExtent extent, const DrawingSurface& surface,
                                      const LabelSpace& labels)
{
    const std::vector<GridPoint>& own = traces[slot];
    const int gap = kFromGraph * surface.StepsPerPixel();
    const int margin = gap / 2;
    std::optional<GridBox> second_best;
    int next_x = surface.Width() - kFromEdge * surface.StepsPerPixel();
    int tries = 0;
    for (auto point = own.rbegin(); point != own.rend() && tries < kTries; ++point) {
        const bool inside = point->x >= 0 && point->x <= surface.Width() && point->y >= 0 &&
                            point->y <= surface.Height();
        if (!inside || point->x > next_x) continue;
        ++tries;
        next_x = point->x - kBetweenTries * surface.StepsPerPixel();
        const int left = point->x - extent.width;
        const int above = point->y - gap - extent.height;
        const int below = point->y + gap;
        const std::array corners{GridPoint{left, above}, GridPoint{left, below},
                                 GridPoint{point->x + gap, below},
                                 GridPoint{point->x + gap, above}};
        for (const GridPoint& corner : corners) {
            const GridBox box{corner.x, corner.y, corner.x + extent.width,
                              corner.y + extent.height};
            const GridBox clear = Widened(box, margin);
            if (!labels.Free(box) || Crosses(own, clear)) continue;
            const bool clear_of_all = std::none_of(
                traces.begin(), traces.end(),
                [&](const std::vector<GridPoint>& trace) { return Crosses(trace, clear); });
            if (clear_of_all) return box;
            if (!second_best) second_best = box;
        }
    }
    return second_best;
}

}  // namespace korvinth::render
