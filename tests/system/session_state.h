// What the session that is killed changes, and where it is found again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/collection.h"

namespace korvinth::app {

inline constexpr const char* kSavedCollection = "gespeichert.txt";
inline constexpr const char* kExportedPicture = "bild.svg";

// Milliseconds of the monotonic clock that all processes share.
std::int64_t Now();

// What of a session's state its steps change: the number in the plotted term, the parameter, and
// the numbers in the terms of the entries.
struct State
{
    int number = 0;
    double parameter = 0;
    std::vector<int> entries;
    bool operator==(const State&) const = default;
};

// The row of a plot with this number, and the number in a row; 0 for another one.
std::string Term(int number);
int NumberIn(std::string_view row);

// As the killed process tells it.
std::string Text(const State& state);
State StateOf(std::istream& text);

// Those that the session has added.
std::vector<int> NumbersIn(const std::vector<document::CollectionEntry>& entries);
// Nothing when the file is not there or not complete.
std::optional<State> StateIn(const std::filesystem::path& file);
// "" for a file that cannot be read.
std::string ContentOf(const std::filesystem::path& file);

}  // namespace korvinth::app
