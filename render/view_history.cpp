#include "render/view_history.h"

#include <cstddef>
#include <string_view>

#include "document/number_text.h"

namespace korvinth::render {
namespace {

constexpr std::int16_t kFullCount = 50;

std::string BoundsText(const ViewRange& view)
{
    return document::ShortestText(view.x_min) + ";" + document::ShortestText(view.y_min) + ";" +
           document::ShortestText(view.x_max) + ";" + document::ShortestText(view.y_max);
}

}  // namespace

void ViewHistory::PushView(const ViewRange& view)
{
    const std::string entry = BoundsText(view);
    if (!text_.empty() && text_.substr(0, text_.find(' ')) == entry) return;
    if (count_ == kFullCount) {
        // Deliberate: the text ends with a blank, so the first cut takes that blank alone and 51
        // views stay from then on; the oldest of them has no blank after it.
        text_.erase(text_.rfind(' '));
    } else {
        ++count_;
    }
    text_ = entry + " " + text_;
}

bool ViewHistory::PopView(ViewRange& view)
{
    if (text_.empty()) return false;
    const std::size_t blank = text_.find(' ');
    std::string_view entry = std::string_view(text_).substr(0, blank);
    for (double* bound : {&view.x_min, &view.y_min, &view.x_max, &view.y_max}) {
        const std::size_t end = entry.find(';');
        *bound = document::LeadingNumber(entry.substr(0, end));
        entry.remove_prefix(end == std::string_view::npos ? entry.size() : end + 1);
    }
    // The last of 51 views has no blank after it and is the whole text.
    text_.erase(0, blank == std::string::npos ? text_.size() : blank + 1);
    --count_;
    if (text_.empty()) ClearViewHistory();
    UpdateDerived(view);
    return true;
}

void ViewHistory::ClearViewHistory()
{
    text_.clear();
    count_ = 0;
}

}  // namespace korvinth::render
