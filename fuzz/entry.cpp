// The entry of a collection as a plot: what is taken of it is a plot that comes back. Input: the
// lines of the entry.
#include <optional>

#include "document/apply_plot.h"
#include "document/collection_file.h"
#include "document/plot_document.h"
#include "document/plot_entry.h"
#include "fuzz/fuzzing.h"
#include "fuzz/quiet_host.h"

namespace {

using namespace korvinth;
using namespace korvinth::document;

// Through the reader, since entries come out of files.
std::optional<CollectionEntry> EntryOf(std::string_view input)
{
    Collection collection;
    std::string text = "[Funktionenplotter]\n{";
    text.append(input).append("}");
    ReadCollection(text, ReadMode::Open, collection);
    if (collection.entries.empty()) return std::nullopt;
    return collection.entries.front();
}

std::string TextOf(const CollectionEntry& entry)
{
    Collection collection;
    collection.entries.push_back(entry);
    return WriteCollection(collection);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    term::MathParser parser;
    fuzzing::QuietHost host;
    const DisplayedRanges ranges;
    PlotDocument plot;
    const std::optional<CollectionEntry> entry = EntryOf(fuzzing::Input(data, size));
    if (!entry) return 0;
    FillPlot(*entry, plot);
    ApplyPlot(plot, parser, host);
    CollectionEntry written = EntryOfPlot(plot, ranges);

    PlotDocument again;
    const std::string messages = FillPlot(written, again);
    fuzzing::Require(messages.empty(), "an entry of a plot is right", TextOf(written), messages);
    ApplyPlot(again, parser, host);
    const CollectionEntry second = EntryOfPlot(again, ranges);
    fuzzing::Require(second == written, "the plot comes back", TextOf(written), TextOf(second));

    Collection collection;
    written.Set(Column::ShortText, "a");
    collection.entries.push_back(written);
    Collection read;
    const std::string fault = ReadCollection(WriteCollection(collection), ReadMode::Open, read);
    fuzzing::Require(fault.empty() && read.entries.size() == 1 && read.entries[0] == written,
                     "through a file, too", TextOf(written), WriteCollection(read));
    return 0;
}
