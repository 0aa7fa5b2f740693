#include <algorithm>
#include <optional>
#include <utility>

#include "document/collection_file.h"
#include "document/collection_format.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using term::TrimBlanks;

constexpr std::string_view kNoIdentification = "In der Sammlungsdatei fehlt die Kennungszeile!";
constexpr std::string_view kBrokenOff = "Die Sammlungsdatei bricht unerwartet ab!";

std::string TooManyEntries()
{
    return "Die Sammlungsdatei hat mehr als " + std::to_string(kMostEntries) + " Einträge!";
}

// The lines of a text, which end in CR LF, LF or CR.
class LineSource
{
public:
    explicit LineSource(std::string_view text) : text_(text) {}

    std::optional<std::string_view> Next()
    {
        if (position_ >= text_.size()) return {};
        const std::size_t end = std::min(Find('\n', next_feed_), Find('\r', next_return_));
        const std::string_view line = text_.substr(position_, end - position_);
        position_ = end + (text_.substr(end).starts_with(kLineBreak) ? 2 : 1);
        return line;
    }

private:
    // Remembers what it has found: a text without one of the signs is searched once only.
    std::size_t Find(char sign, std::optional<std::size_t>& next) const
    {
        if (!next || *next < position_) next = std::min(text_.find(sign, position_), text_.size());
        return *next;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::optional<std::size_t> next_feed_, next_return_;
};

enum class LineEnd { None, Block, Section, Fault };

// One block.
class BlockReader
{
public:
    explicit BlockReader(CollectionEntry& entry) : entry_(entry) {}

    // `first` is what follows the opening brace.
    LineEnd Run(std::string_view first, LineSource& lines)
    {
        first = TrimBlanks(first);
        if (first.starts_with('*')) {
            entry_.is_protected = true;
            first.remove_prefix(1);
        }
        LineEnd end = TakeLine(first);
        while (end == LineEnd::None) {
            const std::optional<std::string_view> line = lines.Next();
            end = line ? TakeLine(*line) : LineEnd::Fault;
        }
        CloseValue();
        return end;
    }

private:
    LineEnd TakeLine(std::string_view line)
    {
        line = TrimBlanks(line);
        const bool closes = line.ends_with('}');
        // Deliberate: the braces stay in a long description, and still end the block.
        const bool is_long =
            open_ ? *open_ == Column::LongText : line.starts_with(Mark(Keyword::LongText));
        if (closes && !is_long) {
            without_braces_ = line;
            std::erase(without_braces_, '}');
            line = TrimBlanks(without_braces_);
        }
        LineEnd end = LineEnd::None;
        if (open_) {
            value_ += kLineBreak;
            ContinueValue(line);
        } else if (!line.empty()) {
            end = Route(line);
        }
        return end == LineEnd::None && closes ? LineEnd::Block : end;
    }

    LineEnd Route(std::string_view line)
    {
        const Keyword keyword = KeywordOf(line);
        const std::string_view value = TrimBlanks(line.substr(Mark(keyword).size()));
        switch (keyword) {
            case Keyword::EndOfBlock: return LineEnd::Block;
            case Keyword::EndOfSection: return LineEnd::Section;
            case Keyword::ShortText: entry_.Set(Column::ShortText, std::string(value)); break;
            case Keyword::LongText: OpenValue(Column::LongText, value); break;
            case Keyword::Lines: OpenValue(Column::Lines, value); break;
            case Keyword::Points: OpenValue(Column::Points, value); break;
            case Keyword::Colours: entry_.Set(Column::Colours, std::string(value)); break;
            case Keyword::Widths: entry_.Set(Column::Widths, std::string(value)); break;
            case Keyword::LineTypes: entry_.Set(Column::LineTypes, std::string(value)); break;
            case Keyword::Attributes: entry_.Set(Column::Attributes, std::string(value)); break;
            default: return TakeWholeLine(line, keyword);
        }
        return LineEnd::None;
    }

    LineEnd TakeWholeLine(std::string_view line, Keyword keyword)
    {
        if (keyword >= Keyword::FirstFiller && keyword <= Keyword::LastFiller) {
            return LineEnd::None;  // it has no column
        }
        const std::optional<Column> column = ColumnOfWholeLine(line);
        if (!column) return LineEnd::Fault;
        entry_.Append(*column, line);
        return LineEnd::None;
    }

    void OpenValue(Column column, std::string_view line)
    {
        open_ = column;
        value_.clear();
        ContinueValue(line);
    }

    void ContinueValue(std::string_view line)
    {
        const std::size_t end = line.find(kEndOfValue);
        line = line.substr(0, end);
        for (;;) {
            const std::size_t written_break = line.find(kWrittenBreak);
            value_ += line.substr(0, written_break);
            if (written_break == line.npos) break;
            value_ += kLineBreak;
            line.remove_prefix(written_break + kWrittenBreak.size());
        }
        if (end != line.npos) CloseValue();
    }

    void CloseValue()
    {
        if (open_) entry_.Append(*open_, value_);
        open_.reset();
    }

    CollectionEntry& entry_;
    std::optional<Column> open_;  // of the value of several lines being read
    std::string value_;
    std::string without_braces_;
};

class Reader
{
public:
    Reader(std::string_view text, Collection& collection) : text_(text), collection_(collection) {}

    std::string Run()
    {
        collection_.buffer_loaded = false;
        for (std::size_t section = 0; section < kModeNames.size(); ++section) {
            std::string message = ReadSection(section);
            if (!message.empty()) return message;
        }
        TakeBuffer();
        return {};
    }

private:
    // Deliberate: each section is looked for from the start of the text, so that a line of an
    // entry's description can begin the second one.
    std::string ReadSection(std::size_t section)
    {
        LineSource lines(text_);
        const std::string head = "[" + std::string(kModeNames[section]) + "]";
        std::optional<std::string_view> line = lines.Next();
        while (line && *line != head) line = lines.Next();
        if (!line) return section == 0 ? std::string(kNoIdentification) : std::string();
        for (line = lines.Next(); line && !line->starts_with('['); line = lines.Next()) {
            if (!line->starts_with('{')) continue;
            if (collection_.entries.size() >= kMostEntries) return TooManyEntries();
            const LineEnd end = ReadBlock(line->substr(1), lines);
            if (end == LineEnd::Fault) return std::string(kBrokenOff);
            if (end == LineEnd::Section) break;
        }
        return {};
    }

    LineEnd ReadBlock(std::string_view first, LineSource& lines)
    {
        std::vector<CollectionEntry>& entries = collection_.entries;
        CollectionEntry& entry = entries.emplace_back();
        entry.Set(Column::ShortText, "Eintrag " + std::to_string(entries.size()));
        return BlockReader(entry).Run(first, lines);
    }

    // Deliberate: the first row of that name is taken, on appending also one that was there before;
    // the descriptions of the buffer stay behind.
    void TakeBuffer()
    {
        std::vector<CollectionEntry>& entries = collection_.entries;
        const auto found = std::ranges::find_if(entries, [](const CollectionEntry& entry) {
            return entry[Column::ShortText] == kBufferName;
        });
        if (found == entries.end()) return;
        collection_.buffer = std::move(*found);
        collection_.buffer.Set(Column::ShortText, "");
        collection_.buffer.Set(Column::LongText, "");
        collection_.buffer.is_protected = false;
        collection_.buffer_loaded = true;
        entries.erase(found);
    }

    std::string_view text_;
    Collection& collection_;
};

}  // namespace

std::string ReadCollection(std::string_view bytes, ReadMode mode, Collection& collection)
{
    if (mode == ReadMode::Open) collection.entries.clear();
    const std::string text = DecodeText(bytes);
    return Reader(text, collection).Run();
}

}  // namespace korvinth::document
