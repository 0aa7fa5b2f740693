// What the fuzz targets share: pieces of the input, conditions that must hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace korvinth::fuzzing {

// Of every target: the bytes that libFuzzer made, as a text.
inline std::string_view Input(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

// Ends the program, which libFuzzer reports as a finding, when the condition does not hold.
inline void Require(bool condition, std::string_view what, std::string_view first = {},
                    std::string_view second = {})
{
    if (condition) return;
    std::fprintf(stderr, "Violated: %.*s\n--- first:\n%.*s\n--- second:\n%.*s\n---\n",
                 static_cast<int>(what.size()), what.data(), static_cast<int>(first.size()),
                 first.data(), static_cast<int>(second.size()), second.data());
    std::abort();
}

// The lines of the input, without the line breaks; the first `count` - 1, and the rest as the last.
inline std::vector<std::string> Lines(std::string_view text, std::size_t count)
{
    std::vector<std::string> lines;
    while (lines.size() + 1 < count) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) break;
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    lines.emplace_back(text);
    return lines;
}

}  // namespace korvinth::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
