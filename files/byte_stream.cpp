#include "files/byte_stream.h"

#include <algorithm>
#include <new>

#include "files/file_system.h"

namespace korvinth::files {
namespace {

constexpr std::size_t kPortion = std::size_t{1} << 20U;  // of a copied file
constexpr std::size_t kLeastRoom = 4096;                 // for what is read

std::error_code Fill(const ByteStream& from, std::size_t expected, std::string& bytes)
{
    if (expected > kLargestFile) return std::make_error_code(std::errc::file_too_large);
    std::size_t filled = 0;
    for (;;) {
        // The files that the system makes up have no size beforehand.
        if (filled == bytes.size()) bytes.resize(std::max({expected + 1, 2 * filled, kLeastRoom}));
        std::size_t count = 0;
        if (const std::error_code fault = from.ReadSome(std::span(bytes).subspan(filled), count)) {
            return fault;
        }
        if (count == 0) break;
        filled += count;
        if (filled > kLargestFile) return std::make_error_code(std::errc::file_too_large);
    }
    bytes.resize(filled);
    return {};
}

}  // namespace

std::error_code ReadAll(const ByteStream& from, std::size_t expected, std::string& bytes)
{
    bytes.clear();
    std::error_code fault;
    try {
        fault = Fill(from, expected, bytes);
    } catch (const std::bad_alloc&) {
        fault = std::make_error_code(std::errc::not_enough_memory);
    }
    if (fault) bytes.clear();
    return fault;
}

std::error_code WriteAll(const ByteStream& to, std::string_view bytes)
{
    while (!bytes.empty()) {
        std::size_t count = 0;
        if (const std::error_code fault = to.WriteSome(bytes, count)) return fault;
        bytes.remove_prefix(count);
    }
    return {};
}

std::error_code CopyAll(const ByteStream& from, const ByteStream& to)
{
    std::string portion(kPortion, '\0');
    for (;;) {
        std::size_t count = 0;
        if (const std::error_code fault = from.ReadSome(portion, count)) return fault;
        if (count == 0) return {};
        const std::string_view bytes(portion.data(), count);
        if (const std::error_code fault = WriteAll(to, bytes)) return fault;
    }
}

}  // namespace korvinth::files
