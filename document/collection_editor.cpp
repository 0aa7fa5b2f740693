#include "document/collection_editor.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace korvinth::document {
namespace {

constexpr Column kSearched[] = {Column::ShortText, Column::LongText, Column::Functions,
                                Column::Lines, Column::Points};

// Second bytes of the letters whose small ones are 32 characters on: À to Þ without the sign ×,
// and the Greek capitals up to Ο; those from Π on have another first byte.
constexpr unsigned char kLatinLead = 0xC3, kGreekLead = 0xCE, kLateGreekLead = 0xCF;

constexpr std::array<char, 256> MakeSmallLetters()
{
    std::array<char, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        table[c] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    return table;
}
constexpr std::array<char, 256> kSmallLetters = MakeSmallLetters();

// In small letters, as far as German and the Greek of formulas go. The length stays.
void FoldCase(std::string_view text, std::string& folded)
{
    folded.resize(text.size());
    unsigned char lead = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        folded[i] = kSmallLetters[c];
        const bool latin_capital = lead == kLatinLead && c >= 0x80 && c <= 0x9E && c != 0x97;
        if (latin_capital || (lead == kGreekLead && c >= 0x91 && c <= 0x9F)) {
            folded[i] = static_cast<char>(c + 0x20);
        } else if (lead == kGreekLead && c >= 0xA0 && c <= 0xA9) {
            folded[i - 1] = static_cast<char>(kLateGreekLead);
            folded[i] = static_cast<char>(c - 0x20);
        }
        lead = c;
    }
}

}  // namespace

void CollectionEditor::SetModified(bool modified)
{
    if (modified) {
        saved_state_.reset();
    } else {
        saved_state_ = state_;
    }
    // What is typed on is a change of its own, so that undoing comes by the saved text.
    if (!earlier_.empty()) earlier_.back().typed_at.reset();
}

void CollectionEditor::Insert(std::size_t before, std::vector<CollectionEntry> entries)
{
    if (entries.empty()) return;
    Change change;
    for (CollectionEntry& entry : entries) change.put.push_back({before++, std::move(entry)});
    Do(std::move(change));
}

void CollectionEditor::Remove(std::span<const std::size_t> places)
{
    if (places.empty()) return;
    Change change;
    change.take.assign(places.begin(), places.end());
    Do(std::move(change));
}

std::size_t CollectionEditor::Move(std::span<const std::size_t> places, std::size_t before)
{
    const auto behind = std::ranges::lower_bound(places, before);
    const std::size_t first = before - static_cast<std::size_t>(behind - places.begin());
    if (places.empty()) return first;
    const bool in_place = places.front() == first && places.back() == first + places.size() - 1;
    if (in_place) return first;
    Change change;
    change.take.assign(places.begin(), places.end());
    std::size_t place = first;
    for (const std::size_t from : places) change.put.push_back({place++, Entries()[from]});
    Do(std::move(change));
    return first;
}

void CollectionEditor::Replace(std::size_t place, CollectionEntry entry)
{
    Change change;
    change.take.push_back(place);
    change.put.push_back({place, std::move(entry)});
    Do(std::move(change));
}

void CollectionEditor::SetText(std::size_t place, Column column, std::string text, Typing typing)
{
    if (Entries()[place][column] == text) return;
    const std::pair typed_at{place, column};
    if (typing == Typing::Continued && CanUndo() && earlier_.back().typed_at == typed_at) {
        collection_.entries[place].Set(column, std::move(text));
        state_ = ++last_state_;
        ++changes_;
        later_.clear();
        return;
    }
    CollectionEntry entry = Entries()[place];
    entry.Set(column, std::move(text));
    Replace(place, std::move(entry));
    earlier_.back().typed_at = typed_at;
}

void CollectionEditor::SetPlot(std::size_t place, const CollectionEntry& plot)
{
    const CollectionEntry& present = Entries()[place];
    CollectionEntry entry = plot;
    for (const Column own : {Column::ShortText, Column::LongText}) {
        entry.Set(own, std::string(present[own]));
    }
    entry.is_protected = present.is_protected;
    if (entry != present) Replace(place, std::move(entry));
}

void CollectionEditor::SetProtected(std::span<const std::size_t> places, bool is_protected)
{
    Change change;
    for (const std::size_t place : places) {
        if (Entries()[place].is_protected == is_protected) continue;
        change.take.push_back(place);
        change.put.push_back({place, Entries()[place]});
        change.put.back().entry.is_protected = is_protected;
    }
    if (!change.take.empty()) Do(std::move(change));
}

void CollectionEditor::Forget()
{
    const bool modified = Modified();
    earlier_.clear();
    later_.clear();
    state_ = ++last_state_;
    ++changes_;
    SetModified(modified);
}

CollectionEditor::Change CollectionEditor::Apply(Change change)
{
    std::vector<CollectionEntry>& entries = collection_.entries;
    Change back;
    back.state = state_;
    for (const std::size_t place : change.take) {
        back.put.push_back({place, std::move(entries[place])});
    }
    for (const Placed& placed : change.put) back.take.push_back(placed.place);
    state_ = change.state;
    ++changes_;
    if (back.take == change.take) {
        for (Placed& placed : change.put) entries[placed.place] = std::move(placed.entry);
        return back;
    }
    std::vector<CollectionEntry> result;
    result.reserve(entries.size() - change.take.size() + change.put.size());
    auto put = change.put.begin();
    const auto put_here = [&] {
        while (put != change.put.end() && put->place == result.size()) {
            result.push_back(std::move(put++->entry));
        }
    };
    auto taken = change.take.begin();
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (taken != change.take.end() && *taken == place) {
            ++taken;
            continue;
        }
        put_here();
        result.push_back(std::move(entries[place]));
    }
    put_here();
    entries = std::move(result);
    return back;
}

void CollectionEditor::Do(Change change)
{
    change.state = ++last_state_;
    later_.clear();
    earlier_.push_back(Apply(std::move(change)));
    if (earlier_.size() > kDepth) earlier_.pop_front();
}

std::optional<std::size_t> CollectionEditor::Step(std::deque<Change>& from, std::deque<Change>& to)
{
    if (from.empty()) return std::nullopt;
    Change change = std::move(from.back());
    from.pop_back();
    const std::size_t select = change.put.empty() ? change.take.front() : change.put.front().place;
    to.push_back(Apply(std::move(change)));
    if (!earlier_.empty()) earlier_.back().typed_at.reset();
    return select;
}

std::optional<std::size_t> CollectionEditor::Undo() { return Step(earlier_, later_); }

std::optional<std::size_t> CollectionEditor::Redo() { return Step(later_, earlier_); }

std::vector<std::size_t> CollectionEditor::Find(std::string_view text) const
{
    std::string wanted;
    FoldCase(text, wanted);
    std::string folded;
    std::vector<std::size_t> found;
    for (std::size_t place = 0; place < Entries().size(); ++place) {
        const bool contains = std::ranges::any_of(kSearched, [&](Column column) {
            FoldCase(Entries()[place][column], folded);
            return folded.find(wanted) != std::string::npos;
        });
        if (contains) found.push_back(place);
    }
    return found;
}

}  // namespace korvinth::document
