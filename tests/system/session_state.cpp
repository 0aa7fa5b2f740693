#include "tests/system/session_state.h"

#include <chrono>
#include <cstdlib>
#include <sstream>

#include "document/collection_file.h"
#include "files/file_system.h"

namespace korvinth::app {

using document::Column;

std::int64_t Now()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

std::string Term(int number) { return "f(x)=a*x+" + std::to_string(number); }

int NumberIn(std::string_view row)
{
    const std::size_t plus = row.find("a*x+");
    return plus == std::string_view::npos ? 0 : std::atoi(row.data() + plus + 4);
}

std::string Text(const State& state)
{
    std::ostringstream text;
    text << state.number << ' ' << state.parameter;
    for (const int entry : state.entries) text << ' ' << entry;
    return text.str();
}

State StateOf(std::istream& text)
{
    State state;
    text >> state.number >> state.parameter;
    for (int entry = 0; text >> entry;) state.entries.push_back(entry);
    return state;
}

std::vector<int> NumbersIn(const std::vector<document::CollectionEntry>& entries)
{
    std::vector<int> numbers;
    for (const document::CollectionEntry& entry : entries) {
        const int number = NumberIn(std::string(entry[Column::Functions]));
        if (number != 0) numbers.push_back(number);
    }
    return numbers;
}

std::optional<State> StateIn(const std::filesystem::path& file)
{
    document::Collection collection;
    const std::string bytes = ContentOf(file);
    if (bytes.empty()) return std::nullopt;
    const std::string fault = document::ReadCollection(bytes, document::ReadMode::Open, collection);
    if (!fault.empty() || !collection.buffer_loaded) return std::nullopt;
    const std::string parameters(collection.buffer[Column::Parameters]);
    State state;
    state.number = NumberIn(std::string(collection.buffer[Column::Functions]));
    state.parameter = parameters.starts_with("a=") ? std::atof(parameters.c_str() + 2) : 0;
    state.entries = NumbersIn(collection.entries);
    return state;
}

std::string ContentOf(const std::filesystem::path& file)
{
    std::string bytes;
    return files::Disk().Read(file, bytes) ? "" : bytes;
}

}  // namespace korvinth::app
