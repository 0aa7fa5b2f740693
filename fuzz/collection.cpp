// A collection file: reading, and reading what was written of it. Input: the bytes of the file.
#include "document/collection_file.h"
#include "document/collection_format.h"
#include "document/text_encoding.h"
#include "fuzz/fuzzing.h"
#include "term/words.h"

namespace {

using namespace korvinth;
using namespace korvinth::document;

// There is no way to write such a line in front of one that needs a written break, or as the last.
bool HasHalfAnEnd(const CollectionEntry& entry)
{
    for (int column = 0; column < kColumnCount; ++column) {
        const std::string_view text = entry[Column{column}];
        if (text.find("\\end\r\n") != text.npos || text.ends_with("\\end")) return true;
    }
    return false;
}

// Deliberate: the first saving drops empty lines of every value but the description.
void DropEmptyLines(CollectionEntry& entry)
{
    for (const Column column : {Column::Lines, Column::Points}) {
        std::string value(entry[column]);
        while (value.find("\r\n\r\n") != value.npos) {
            value = term::ReplaceAll(value, "\r\n\r\n", kLineBreak);
        }
        value.resize(value.find_last_not_of(" \r\n") + 1);
        entry.Set(column, value);
    }
}

void Normalise(Collection& collection)
{
    for (CollectionEntry& entry : collection.entries) DropEmptyLines(entry);
    DropEmptyLines(collection.buffer);
    // Always written, and without its own name and description.
    collection.buffer_loaded = true;
    collection.buffer.is_protected = false;
    collection.buffer.Set(Column::ShortText, "");
    collection.buffer.Set(Column::LongText, "");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = fuzzing::Input(data, size);
    DecodeText(EncodeText(DecodeText(bytes)));
    Collection first;
    const std::string message = ReadCollection(bytes, ReadMode::Open, first);
    Collection appended = first;
    fuzzing::Require(ReadCollection(bytes, ReadMode::Append, appended) == message,
                     "appending tells the same", message);
    fuzzing::Require(appended.entries.size() == 2 * first.entries.size(),
                     "appending reads the same entries");

    const std::string written = WriteCollection(first);
    Collection second;
    const std::string fault = ReadCollection(written, ReadMode::Open, second);
    fuzzing::Require(fault.empty(), "what is written can be read", written, fault);
    fuzzing::Require(second.entries.size() == first.entries.size(), "no entry is lost", written);
    const std::string again = WriteCollection(second);
    Collection third;
    ReadCollection(again, ReadMode::Open, third);
    for (std::size_t i = 0; i < first.entries.size(); ++i) {
        if (HasHalfAnEnd(first.entries[i])) return 0;
    }
    if (HasHalfAnEnd(first.buffer)) return 0;
    Normalise(first);
    Normalise(second);
    Normalise(third);
    fuzzing::Require(second == first, "the second reading is the first", written, again);
    fuzzing::Require(third == second, "and the third, too", written, again);
    return 0;
}
