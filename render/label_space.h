// Keeps texts in a picture apart from one another and inside the area.
#pragma once

#include <algorithm>
#include <vector>

#include "render/drawing_surface.h"

namespace korvinth::render {

class LabelSpace
{
public:
    // Width, height and the least gap between texts in grid steps.
    LabelSpace(int width, int height, int gap) : width_(width), height_(height), gap_(gap) {}

    bool Free(const GridBox& box) const
    {
        if (box.left < 0 || box.top < 0 || box.right > width_ || box.bottom > height_) return false;
        return std::none_of(taken_.begin(), taken_.end(), [&](const GridBox& other) {
            return box.left < other.right + gap_ && other.left < box.right + gap_ &&
                   box.top < other.bottom + gap_ && other.top < box.bottom + gap_;
        });
    }

    // False, and nothing taken, when the box is not free.
    bool Take(const GridBox& box)
    {
        if (!Free(box)) return false;
        taken_.push_back(box);
        return true;
    }

private:
    int width_;
    int height_;
    int gap_;
    std::vector<GridBox> taken_;
};

}  // namespace korvinth::render
