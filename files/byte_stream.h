// All bytes of an opened file, by whatever calls a system reads and writes some of them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace korvinth::files {

class ByteStream
{
public:
    virtual ~ByteStream() = default;
    // `count` is 0 at the end of the file only.
    virtual std::error_code ReadSome(std::span<char> room, std::size_t& count) const = 0;
    virtual std::error_code WriteSome(std::string_view bytes, std::size_t& count) const = 0;
};

// From here to the end; `expected` bytes, or more in a file that has no size beforehand. None after
// a fault, which may be std::errc::file_too_large or not_enough_memory.
std::error_code ReadAll(const ByteStream& from, std::size_t expected, std::string& bytes);
std::error_code WriteAll(const ByteStream& to, std::string_view bytes);
std::error_code CopyAll(const ByteStream& from, const ByteStream& to);

}  // namespace korvinth::files
