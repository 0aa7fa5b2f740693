#include <algorithm>
#include <array>

#include "document/collection_file.h"
#include "document/collection_format.h"

namespace korvinth::document {
namespace {

struct ValueColumn
{
    Column column;
    Keyword keyword;
};
// In the order of writing; columns without a keyword hold whole lines.
constexpr ValueColumn kSingleLines[] = {
    {Column::Functions, Keyword::None},        {Column::Parameters, Keyword::None},
    {Column::Details, Keyword::None},          {Column::Ranges, Keyword::None},
    {Column::Integrals, Keyword::None},        {Column::Colours, Keyword::Colours},
    {Column::Widths, Keyword::Widths},         {Column::LineTypes, Keyword::LineTypes},
    {Column::Attributes, Keyword::Attributes},
};
constexpr ValueColumn kSeveralLines[] = {{Column::Lines, Keyword::Lines},
                                         {Column::Points, Keyword::Points}};

// Without blanks at the end, empty lines and a line break at the end. An empty line at the
// beginning stays.
std::string Normalised(std::string_view value)
{
    while (value.ends_with(' ')) value.remove_suffix(1);
    std::string text;
    text.reserve(value.size());
    while (!value.empty()) {
        const std::size_t end = value.find(kLineBreak);
        text += value.substr(0, end);
        if (end == value.npos) break;
        text += kLineBreak;
        value.remove_prefix(end);
        while (value.starts_with(kLineBreak)) value.remove_prefix(kLineBreak.size());
    }
    text.resize(CutLineBreak(text).size());
    return text;
}

constexpr std::string_view kHalfEnd = "\\end";

// Whether two lines of a value are written on lines of their own, since they then come back as they
// are. Only a file of other origin, with its line breaks written as "\n", can hold others.
bool OnLinesOfTheirOwn(std::string_view line, std::string_view next)
{
    if (line.ends_with(kHalfEnd)) return true;  // the sign for a break would complete it
    return !line.ends_with('}') && !line.ends_with(' ') && !next.starts_with(' ') &&
           next != kSecondSection;
}

void WriteValue(std::string_view value, std::string& text)
{
    for (;;) {
        const std::size_t end = value.find(kLineBreak);
        const std::string_view line = value.substr(0, end);
        text += line;
        if (end == value.npos) break;
        value.remove_prefix(end + kLineBreak.size());
        const std::string_view next = value.substr(0, value.find(kLineBreak));
        text += OnLinesOfTheirOwn(line, next) ? kLineBreak : kWrittenBreak;
        // A blank keeps the line from beginning a section and does not count where it is read.
        if (line.ends_with(kHalfEnd) && next == kSecondSection) text += ' ';
    }
    // Behind this the mark would not be found where it begins.
    if (value.ends_with(kHalfEnd)) text += kLineBreak;
    text += kEndOfValue;
}

// Everything but the descriptions.
void WriteColumns(const CollectionEntry& entry, std::string& text)
{
    for (const auto& [column, keyword] : kSeveralLines) {
        const std::string value = Normalised(entry[column]);
        if (value.empty()) continue;
        text.append(kLineBreak).append(Mark(keyword));
        WriteValue(value, text);
    }
    for (const auto& [column, keyword] : kSingleLines) {
        const std::string value = Normalised(entry[column]);
        if (!value.empty()) text.append(kLineBreak).append(Mark(keyword)).append(value);
    }
}

void WriteBlock(const CollectionEntry& entry, std::string_view short_text,
                std::string_view long_text, std::string& text)
{
    text += entry.is_protected ? "{*" : "{";
    text.append(Mark(Keyword::ShortText)).append(short_text).append(kLineBreak);
    text += Mark(Keyword::LongText);
    WriteValue(long_text, text);
    const std::size_t columns = text.size();
    WriteColumns(entry, text);
    // The brace would take others along that stand in its line.
    const std::size_t last_line = std::max(text.rfind(kLineBreak), columns);
    if (text.find('}', last_line) != text.npos) text += kLineBreak;
    text += "}";
}

}  // namespace

std::string RowsText(const std::vector<CollectionEntry>& rows)
{
    std::string text;
    for (const CollectionEntry& row : rows) {
        text += kLineBreak;
        WriteBlock(row, row[Column::ShortText], row[Column::LongText], text);
    }
    return text;
}

std::string WriteCollection(const CollectionEntry& buffer, std::string_view rows_text)
{
    std::string text = "[" + std::string(kModeNames[0]) + "]";
    text += kLineBreak;
    WriteBlock(buffer, kBufferName, "", text);
    text += rows_text;
    return EncodeText(text);
}

std::string WriteCollection(const Collection& collection)
{
    return WriteCollection(collection.buffer, RowsText(collection.entries));
}

}  // namespace korvinth::document
