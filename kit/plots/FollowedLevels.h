#pragma once

#include "data/MinMax.h"
#include "kit/plots/WaterfallRaster.h"

#include <optional>

namespace graph {

// The levels of the first and of the last colour: an end that a document writes stays, the other one follows the levels
// that are seen.
class FollowedLevels
{
public:
    const WaterfallLevels &levels() const { return m_levels; }

    // Without a level the end follows again, from the next levels on. Each is false when the ends stay the same.
    bool writeFrom(const std::optional<double> &level);
    bool writeTo(const std::optional<double> &level);
    // An end that has to give way goes a little farther, so that noise does not move it with each row: all rows have to
    // be coloured again.
    bool see(const MinMax &levels);

private:
    bool write(std::optional<double> *end, const std::optional<double> &level);
    bool change(double from, double to);

    WaterfallLevels m_levels;
    std::optional<double> m_writtenFrom;
    std::optional<double> m_writtenTo;
    bool m_hasSeen = false;
};

} // namespace graph
