#pragma once

#include <QtGlobal>

#include <algorithm>

namespace graph {

// How many of the indices 0..size-1, from 0 on, satisfy isBefore, which holds for no index after the first
// for which it does not. Searches outwards from the guess: O(1) when the guess is close, else O(log size).
template <typename Predicate> int leadingCount(int size, int guess, Predicate isBefore)
{
    if (size <= 0)
        return 0;
    // isBefore holds below `low` and nowhere from `high` on.
    int low = 0;
    int high = size;
    const int start = std::min(std::max(guess, 0), size - 1);
    if (isBefore(start)) {
        low = start + 1;
        for (qint64 step = 1; low < high; step *= 2) {
            const int probe = int(std::min<qint64>(low + step, high)) - 1;
            if (!isBefore(probe)) {
                high = probe;
                break;
            }
            low = probe + 1;
        }
    } else {
        high = start;
        for (qint64 step = 1; low < high; step *= 2) {
            const int probe = int(std::max<qint64>(high - step, low));
            if (isBefore(probe)) {
                low = probe + 1;
                break;
            }
            high = probe;
        }
    }
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (isBefore(middle))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

} // namespace graph
