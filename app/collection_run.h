// Collections without a window: listing their entries, choosing and drawing them.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "app/application.h"
#include "document/collection.h"
#include "render/picture_options.h"

namespace korvinth::app {

struct ReadFileResult
{
    document::Collection collection;
    std::string fault;  // German; the rows read so far are there
};
ReadFileResult ReadCollectionFile(const std::string& file);

// One line an entry: its number, "*" when it is protected, its name.
std::string EntryList(const document::Collection& collection);

// The entry of this number, counted from 1, or else of this name; nullptr when there is none.
const document::CollectionEntry* FindEntry(const document::Collection& collection,
                                           std::string_view wanted);

// Makes the entry's plot the application's. What is wrong with it, "" when nothing.
std::string ApplyEntry(Application& application, const document::CollectionEntry& entry);

// The name of the picture of an entry: its number, its name in signs that every disk takes.
std::string PictureName(std::size_t number, std::size_t count, std::string_view entry_name);

// Draws every entry into a file of the folder; tells how many are done. The faults, one a line.
std::string DrawAll(Application& application, const document::Collection& collection,
                    const std::string& folder, const render::PictureOptions& options,
                    const std::function<void(std::size_t done, std::size_t count)>& progress);

}  // namespace korvinth::app
