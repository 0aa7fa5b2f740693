#include "document/collection.h"

#include <algorithm>
#include <utility>

namespace korvinth::document {

std::string_view CollectionEntry::operator[](Column column) const
{
    const auto found = std::ranges::find(texts_, column, &ColumnText::column);
    return found == texts_.end() ? std::string_view{} : found->text;
}

void CollectionEntry::Set(Column column, std::string text)
{
    const auto place = std::ranges::lower_bound(texts_, column, {}, &ColumnText::column);
    const bool present = place != texts_.end() && place->column == column;
    if (text.empty()) {
        if (present) texts_.erase(place);
    } else if (present) {
        place->text = std::move(text);
    } else {
        texts_.insert(place, {column, std::move(text)});
    }
}

void CollectionEntry::Append(Column column, std::string_view line)
{
    const auto found = std::ranges::find(texts_, column, &ColumnText::column);
    if (found == texts_.end()) {
        Set(column, std::string(line));
    } else {
        found->text.append(kLineBreak).append(line);
    }
}

std::string_view LineCursor::Next()
{
    if (position_ >= text_.size()) return "end";
    const std::size_t end = std::min(text_.find(kLineBreak, position_), text_.size());
    const std::string_view line = text_.substr(position_, end - position_);
    position_ = end + kLineBreak.size();
    return line;
}

std::string_view LineCursor::NextFull()
{
    std::string_view line = Next();
    while (line.empty()) line = Next();
    return line;
}

std::string_view CutLineBreak(std::string_view text)
{
    if (text.ends_with(kLineBreak)) text.remove_suffix(kLineBreak.size());
    return text;
}

}  // namespace korvinth::document
