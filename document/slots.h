// Index types and fixed-size tables of the plot document.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace korvinth::document {

// One of the 13 rows of the term editor and the function drawn from it.
enum class SlotIndex : std::int16_t {};
inline constexpr int kSlotCount = 13;

// One of the 61 parameters: 0 to 12 the lower bound of the integral function in that slot, 13 to 25
// its sample count, 26 to 60 the user's parameters in order of first appearance.
enum class ParameterIndex : std::int16_t {};
inline constexpr int kParameterCount = 61;
inline constexpr int kFirstSampleCount = 13;
inline constexpr int kFirstUserParameter = 26;

constexpr int Number(SlotIndex slot) { return static_cast<int>(slot); }
constexpr int Number(ParameterIndex index) { return static_cast<int>(index); }

constexpr ParameterIndex LowerBoundParameter(SlotIndex slot)
{
    return ParameterIndex{static_cast<std::int16_t>(slot)};
}
constexpr ParameterIndex SampleCountParameter(SlotIndex slot)
{
    return ParameterIndex{static_cast<std::int16_t>(Number(slot) + kFirstSampleCount)};
}

// A fixed table with one entry for each value of an index type.
template <class Index, class T, int kSize>
class IndexedTable
{
public:
    T& operator[](Index index) { return items_[static_cast<std::size_t>(index)]; }
    const T& operator[](Index index) const { return items_[static_cast<std::size_t>(index)]; }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }
    bool operator==(const IndexedTable&) const = default;

private:
    std::array<T, static_cast<std::size_t>(kSize)> items_{};
};

template <class T>
using SlotTable = IndexedTable<SlotIndex, T, kSlotCount>;
template <class T>
using ParameterTable = IndexedTable<ParameterIndex, T, kParameterCount>;

template <class Index, int kSize>
constexpr std::array<Index, static_cast<std::size_t>(kSize)> AllIndices()
{
    std::array<Index, static_cast<std::size_t>(kSize)> indices{};
    std::int16_t number = 0;
    for (Index& index : indices) index = Index{number++};
    return indices;
}

// for (SlotIndex slot : AllSlots()) ...
constexpr auto AllSlots() { return AllIndices<SlotIndex, kSlotCount>(); }
constexpr auto AllParameters() { return AllIndices<ParameterIndex, kParameterCount>(); }

}  // namespace korvinth::document
