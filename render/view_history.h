// The list of earlier views that zooming back walks through.
#pragma once

#include <cstdint>
#include <string>

#include "render/view_range.h"

namespace korvinth::render {

// One text, newest view first: "xmin;ymin;xmax;ymax " with one blank after each view.
class ViewHistory
{
public:
    // Puts the present bounds in front, unless they are the newest entry already.
    void PushView(const ViewRange& view);
    // Takes the newest entry off and applies it to the bounds; false when there is none. The caller
    // updates the mapping.
    bool PopView(ViewRange& view);
    void ClearViewHistory();

    bool Empty() const { return text_.empty(); }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
    std::int16_t count_ = 0;  // pushes since the last clearing, less the pops
};

}  // namespace korvinth::render
