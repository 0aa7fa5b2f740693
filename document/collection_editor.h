// The list of a collection as its windows change it: every change of entries goes through here.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/collection.h"

namespace korvinth::document {

// Whether a text goes on with what was typed before: both are one change then.
enum class Typing { Anew, Continued };

// Knows whether the entries were changed since they were saved, and takes changes back.
class CollectionEditor
{
public:
    static constexpr std::size_t kDepth = 100;  // changes that can be taken back

    // Outlives the editor.
    explicit CollectionEditor(Collection& collection) : collection_(collection) {}

    const std::vector<CollectionEntry>& Entries() const { return collection_.entries; }

    // Entries that were taken back to what was saved count as not modified.
    bool Modified() const { return saved_state_ != state_; }
    void SetModified(bool modified);
    // Counts the changes; who wrote at count n has everything up to it.
    std::size_t Changes() const { return changes_; }

    // Places are from 0; several are in ascending order. `before` up to the number of entries.
    void Insert(std::size_t before, std::vector<CollectionEntry> entries);
    void Remove(std::span<const std::size_t> places);
    // The entries at `places`, in their order, in front of the entry at `before`. Returns where
    // the first of them stands now.
    std::size_t Move(std::span<const std::size_t> places, std::size_t before);
    // Nothing happens when the entry has this text.
    void SetText(std::size_t place, Column column, std::string text, Typing typing = Typing::Anew);
    // All columns but the descriptions; its protection stays too.
    void SetPlot(std::size_t place, const CollectionEntry& plot);
    void SetProtected(std::span<const std::size_t> places, bool is_protected);

    // The entries are others (another file was read): nothing of before can be taken back. Whether
    // they count as modified is the caller's to say.
    void Forget();

    // Takes back the last change, or does it again; the place to select, which may be behind the
    // last entry.
    bool CanUndo() const { return !earlier_.empty(); }
    bool CanRedo() const { return !later_.empty(); }
    std::optional<std::size_t> Undo();
    std::optional<std::size_t> Redo();

    // Places of the entries whose short or long description, terms, lines or points contain the
    // text, without regard to case; of all for "".
    std::vector<std::size_t> Find(std::string_view text) const;

private:
    struct Placed
    {
        std::size_t place;
        CollectionEntry entry;
    };
    // Takes the entries at `take` out, then puts others in: their places are those in the list
    // that comes out. Both ascend.
    struct Change
    {
        std::vector<std::size_t> take;
        std::vector<Placed> put;
        std::size_t state = 0;  // of the entries afterwards
        // Of typed text: where it was typed.
        std::optional<std::pair<std::size_t, Column>> typed_at;
    };

    Change Apply(Change change);  // returns what takes it back
    void Do(Change change);
    void Replace(std::size_t place, CollectionEntry entry);
    std::optional<std::size_t> Step(std::deque<Change>& from, std::deque<Change>& to);

    Collection& collection_;
    std::deque<Change> earlier_;  // each takes a change back, oldest first
    std::deque<Change> later_;
    std::size_t changes_ = 0;
    // Every list that ever was has a number of its own.
    std::size_t state_ = 0;
    std::size_t last_state_ = 0;
    std::optional<std::size_t> saved_state_ = 0;
};

}  // namespace korvinth::document
