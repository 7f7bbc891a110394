#pragma once

#include <array>
#include <chrono>

// Which complaints about one service are due: each kind once in complaintInterval.
class Complaints
{
public:
    enum Kind { MalformedArrays, ForeignAnswer, MixedKinds, NoRoom, LostElements, KindCount };

    bool isDue(Kind kind);

private:
    std::array<std::chrono::steady_clock::time_point, KindCount> m_next{};
};
