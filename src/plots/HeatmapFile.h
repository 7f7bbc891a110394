#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

class QIODevice;

namespace graph {

// More than any measurement has. A header that claims more is damaged or hostile.
constexpr std::size_t largestCellCount = std::size_t(1) << 24;

// For a vector that grows by what is written there at once: elements without a value are not filled before.
template <typename Value> struct UnfilledAllocator : std::allocator<Value>
{
    template <typename Other> struct rebind
    {
        using other = UnfilledAllocator<Other>;
    };

    template <typename Other> void construct(Other *) noexcept {}
    template <typename Other, typename... Values> void construct(Other *place, Values &&...values)
    {
        ::new (static_cast<void *>(place)) Other(std::forward<Values>(values)...);
    }
};

// How often each level was seen at each frequency, as colour codes.
struct Heatmap
{
    std::uint16_t columnCount = 0;
    std::uint16_t rowCount = 0;
    double referenceLevel = 0.0;                 // of the top row
    double rowStep = 0.0;                        // level span of one row
    std::vector<unsigned int> columnFrequencies; // Hz, one per column
    // Row by row from the top, lowest frequency first. May hold fewer than columnCount x rowCount: cells
    // beyond its end have code 0.
    std::vector<unsigned char, UnfilledAllocator<unsigned char>> cells;
};

// The heat map that an open device holds from its position on; what a short device does not hold is 0. Takes
// no more memory than the device can fill, the frequencies apart (256 KiB at most). Throws std::bad_alloc, and
// std::length_error, before it asks for any memory, where the header claims more than largestCellCount.
Heatmap readHeatmap(QIODevice &device);

} // namespace graph
