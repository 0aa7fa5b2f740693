// What the range window asks for, free of the toolkit.
#pragma once

#include <string>
#include <vector>

#include "document/plot_document.h"
#include "render/view_zoom.h"

namespace korvinth::ui {

enum class RangeAxis { X, Y, T };
enum class RangeBound { Lower, Upper, Both };

struct RangeFault
{
    RangeAxis axis = RangeAxis::X;
    RangeBound bound = RangeBound::Both;
    std::string text;  // German, names the field
};

class RangeActions
{
public:
    virtual ~RangeActions() = default;

    // Takes the texts of each range that can be displayed; the others stay as they are and their
    // faults come back.
    virtual std::vector<RangeFault> TakeRanges(const document::RangeTexts& typed) = 0;
    virtual void UseStandardRange() = 0;
    virtual void einszueins(render::ClickButton button) = 0;
};

}  // namespace korvinth::ui
