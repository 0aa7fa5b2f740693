// Saved plots: the rows of a collection file with their thirteen columns of text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvinth::document {

// What a row holds. Columns of several lines join them with CR LF.
enum class Column {
    ShortText = 0,   // the entry's name in the list
    LongText = 1,    // description
    Functions = 2,   // "f(x)=x^2", "$" in front of one that is not drawn
    Parameters = 3,  // "a=1"
    Details = 4,     // bracketed lines of parameters and functions
    Ranges = 5,      // displayed ranges and drawing intervals
    Integrals = 6,   // assignments that begin with u
    Colours = 7,     // the colour table
    Widths = 8,      // line widths
    LineTypes = 9,
    Attributes = 10,
    Lines = 11,   // additional lines
    Points = 12,  // additional points
};
inline constexpr int kColumnCount = 13;
inline constexpr std::string_view kLineBreak = "\r\n";

// The name of the row that carries the plot being worked on through the file.
inline constexpr std::string_view kBufferName = "__tmp__";

// More than a school year's work; a file of nothing but braces cannot fill the memory.
inline constexpr std::size_t kMostEntries = 1'000'000;

// One row. It takes memory for the columns that have a text only.
class CollectionEntry
{
public:
    std::string_view operator[](Column column) const;  // "" for an absent one
    void Set(Column column, std::string text);
    // As one more line of the column; the first when it has no text.
    void Append(Column column, std::string_view line);

    bool is_protected = false;

    bool operator==(const CollectionEntry&) const = default;

private:
    struct ColumnText
    {
        Column column{};
        std::string text;
        bool operator==(const ColumnText&) const = default;
    };
    std::vector<ColumnText> texts_;  // in the order of the columns, none of them empty
};

struct Collection
{
    std::vector<CollectionEntry> entries;
    CollectionEntry buffer;      // the plot being worked on; its columns 0 and 1 are not used
    bool buffer_loaded = false;  // the last read found one

    bool operator==(const Collection&) const = default;
};

// Walks the lines of a column. Deliberate: a line that reads "end" ends the text.
class LineCursor
{
public:
    explicit LineCursor(std::string_view text) : text_(text) {}
    // "end" behind the last line.
    std::string_view Next();
    // The next that is not empty.
    std::string_view NextFull();

private:
    std::string_view text_;
    std::size_t position_ = 0;
};

// Without one CR LF at the end.
std::string_view CutLineBreak(std::string_view text);

}  // namespace korvinth::document
