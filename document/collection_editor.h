// The list of a collection as its window changes it: every change of entries goes through here.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/collection.h"

namespace korvinth::document {

// Knows whether the entries were changed since they were saved, and takes changes back.
class CollectionEditor
{
public:
    // Outlives the editor.
    explicit CollectionEditor(Collection& collection) : collection_(collection) {}

    const std::vector<CollectionEntry>& Entries() const { return collection_.entries; }

    bool Modified() const { return modified_; }
    void SetModified(bool modified) { modified_ = modified; }
    // Counts the changes; who wrote at count n has everything up to it.
    std::size_t Changes() const { return changes_; }

    // Places are from 0. `before` up to the number of entries.
    void Insert(std::size_t before, std::vector<CollectionEntry> entries);
    void Remove(std::span<const std::size_t> places);
    // The entries at `places`, in their order, in front of the entry at `before`.
    void Move(std::span<const std::size_t> places, std::size_t before);
    void SetText(std::size_t place, Column column, std::string text);
    // All columns but the descriptions, and its protection, stay those of the entry at `place`.
    void SetPlot(std::size_t place, const CollectionEntry& plot);
    void SetProtected(std::span<const std::size_t> places, bool is_protected);

    // The entries are others (another file was read): nothing of before can be taken back.
    void Forget();

    // Takes back the last change, or does it again; the place to select.
    std::optional<std::size_t> Undo();
    std::optional<std::size_t> Redo();

    // Entries whose short or long description or terms contain the text, without regard to case.
    std::vector<std::size_t> Find(std::string_view text) const;

private:
    Collection& collection_;
    bool modified_ = false;
    std::size_t changes_ = 0;
};

}  // namespace korvinth::document
