#include "cursors/CursorPlaces.h"

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"

#include <algorithm>
#include <cmath>

namespace graph {

std::optional<CursorPlace> CursorPlaces::ofIndex(double number) const
{
    if (!m_data || !m_axis)
        return {};
    if (!m_direction.snapsToSamples)
        return ofLevel(number);
    int index = truncatedIndex(number);
    const bool exists = hasSample(*m_data, index);
    if (m_staysOnScreen) {
        // A series that runs backwards has the end of the screen first.
        const auto visible =
            std::minmax({m_data->indexOf(m_axis->minVisible()), m_data->indexOf(m_axis->maxVisible())});
        index = std::max(std::min(index, visible.second), visible.first);
        // The screen may show no sample at all.
        if (exists)
            index = std::max(std::min(index, m_data->size() - 1), 0);
    }
    if (!hasSample(*m_data, index))
        return {};
    return CursorPlace{index, m_data->x(index), m_data};
}

std::optional<CursorPlace> CursorPlaces::ofLevel(double value) const
{
    int index = truncatedIndex(value);
    if (m_staysOnScreen) {
        const bool isReversed = m_axis->isReversed();
        index = std::min(index, truncatedIndex(isReversed ? m_axis->minVisible() : m_axis->maxVisible()));
        index = std::max(index, truncatedIndex(isReversed ? m_axis->maxVisible() : m_axis->minVisible()));
    }
    if (m_staysOnScreen || std::isinf(value))
        value = index;
    if (index >= m_data->size())
        return {};
    return CursorPlace{index, value, nullptr};
}

std::optional<CursorPlace> CursorPlaces::ofValue(double value) const
{
    if (!m_direction.snapsToSamples)
        return ofIndex(value);
    const int index = nearestSample(value);
    if (index < 0)
        return {};
    return ofIndex(index);
}

int CursorPlaces::nearestSample(double value) const
{
    const int index = m_data && !std::isnan(value) ? graph::nearestSample(*m_data, value) : -1;
    return index >= 0 && !std::isnan(m_data->x(index)) ? index : -1;
}

std::optional<double> CursorPlaces::valueOf(int index, double formerValue) const
{
    if (!m_data)
        return {};
    if (!m_direction.snapsToSamples)
        return formerValue;
    if (!hasSample(*m_data, index))
        return {};
    return m_data->x(index);
}

} // namespace graph
