#include "app/collection_run.h"

#include <algorithm>
#include <charconv>

#include "app/message_text.h"
#include "app/picture_file.h"
#include "document/collection_file.h"
#include "document/plot_entry.h"
#include "files/path_text.h"

namespace korvinth::app {
namespace {

using document::Column;

constexpr std::size_t kLongestPictureName = 80;  // bytes of the entry's name

std::string Digits(std::size_t number, std::size_t width, char fill)
{
    std::string digits = std::to_string(number);
    digits.insert(0, width > digits.size() ? width - digits.size() : 0, fill);
    return digits;
}

std::size_t DigitsOf(std::size_t count) { return std::to_string(count).size(); }

}  // namespace

ReadFileResult ReadCollectionFile(const std::string& file)
{
    ReadFileResult result;
    std::string bytes;
    if (const auto fault = files::Disk().Read(files::PathOf(file), bytes)) {
        result.fault = files::ErrorText(fault);
    } else {
        result.fault = document::ReadCollection(bytes, document::ReadMode::Open, result.collection);
    }
    return result;
}

std::string EntryList(const document::Collection& collection)
{
    std::string list;
    const std::size_t width = DigitsOf(collection.entries.size());
    std::size_t number = 0;
    for (const document::CollectionEntry& entry : collection.entries) {
        list += Digits(++number, width, ' ') + (entry.is_protected ? " * " : "   ") +
                Printable(entry[Column::ShortText]) + '\n';
    }
    return list;
}

const document::CollectionEntry* FindEntry(const document::Collection& collection,
                                           std::string_view wanted)
{
    std::size_t number = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto [rest, error] = std::from_chars(wanted.data(), end, number);
    if (error == std::errc() && rest == end && number >= 1 && number <= collection.entries.size()) {
        return &collection.entries[number - 1];
    }
    const auto found = std::ranges::find_if(
        collection.entries, [&](const auto& entry) { return entry[Column::ShortText] == wanted; });
    return found == collection.entries.end() ? nullptr : &*found;
}

std::string ApplyEntry(Application& application, const document::CollectionEntry& entry)
{
    std::string faults = application.TakeEntry(entry);
    const document::PlotReport report = application.Apply();
    if (!faults.empty() && !report.errors.empty()) faults += "; ";
    return faults + report.errors;
}

std::string PictureName(std::size_t number, std::size_t count, std::string_view entry_name)
{
    std::string name;
    for (const char c : Printable(entry_name, kLongestPictureName)) {
        const bool awkward = std::string_view("/\\:*?\"<>|. ").find(c) != std::string_view::npos;
        name += awkward ? '_' : c;
    }
    return Digits(number, DigitsOf(count), '0') + (name.empty() ? "" : "-") + name + ".png";
}

std::string DrawAll(Application& application, const document::Collection& collection,
                    const std::string& folder, const render::PictureOptions& options,
                    const std::function<void(std::size_t done, std::size_t count)>& progress)
{
    const std::size_t count = collection.entries.size();
    const auto defaults = application.Document().attributes;
    std::string faults;
    std::size_t number = 0;
    for (const document::CollectionEntry& entry : collection.entries) {
        const auto complain = [&](const std::string& fault) {
            if (!fault.empty()) faults += Quoted(entry[Column::ShortText]) + ": " + fault + '\n';
        };
        ++number;
        application.Document().attributes = defaults;  // each as if it were drawn alone
        complain(ApplyEntry(application, entry));
        const std::string file = folder + PictureName(number, count, entry[Column::ShortText]);
        complain(WritePicture(application, file, options).fault);
        progress(number, count);
    }
    return faults;
}

}  // namespace korvinth::app
