#include "simulator/HeatmapCounter.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace simulation {

namespace {

// The file's levels are in dBmV at 75 ohm; readers turn them back into dBm with this number.
constexpr double dBmVAtZeroDBm = 48.7506;
constexpr int highestCode = 7;

// Each code means twice the share of the samples of the one below it: rare events stay visible beside
// the noise.
quint8 codeOf(quint64 count, quint64 most)
{
    if (count == 0)
        return 0;
    int code = highestCode;
    for (quint64 doubled = 2 * count; doubled <= most && code > 1; doubled *= 2)
        --code;
    return quint8(code);
}

} // namespace

HeatmapCounter::HeatmapCounter(int samples, double firstFrequency, double frequencyStep, const Grid &grid)
    : m_samples(std::max(samples, 0))
    , m_firstFrequency(firstFrequency)
    , m_frequencyStep(frequencyStep)
    , m_grid(grid)
    , m_columns(std::min({m_samples, std::max(grid.columns, 0), 0xffff}))
{
    m_grid.rows = std::clamp(grid.rows, 0, 0xffff);
    m_counts.assign(size_t(m_columns) * size_t(m_grid.rows), 0);
}

void HeatmapCounter::add(const QVector<double> &levels)
{
    if (levels.size() != m_samples)
        return;
    ++m_sweeps;
    for (int column = 0; column < m_columns; ++column) {
        const int end = firstSampleOf(column + 1);
        for (int i = firstSampleOf(column); i < end; ++i) {
            const double row = std::round((m_grid.topLevel - levels.at(i)) / m_grid.rowStep);
            if (row >= 0.0 && row < m_grid.rows)
                ++m_counts[size_t(graph::truncatedIndex(row)) * size_t(m_columns) + size_t(column)];
        }
    }
}

void HeatmapCounter::clear()
{
    m_sweeps = 0;
    std::fill(m_counts.begin(), m_counts.end(), 0);
}

Heatmap HeatmapCounter::heatmap() const
{
    Heatmap result;
    result.columnCount = quint16(m_columns);
    result.rowCount = quint16(m_grid.rows);
    result.referenceLevel = m_grid.topLevel + dBmVAtZeroDBm;
    result.rowStep = m_grid.rowStep;
    result.cells.resize(m_counts.size());
    for (int column = 0; column < m_columns; ++column) {
        const double centre = firstSampleOf(column) + 0.5 * (samplesIn(column) - 1);
        const double frequency = std::round(m_firstFrequency + centre * m_frequencyStep);
        result.columnFrequencies.push_back(quint32(std::clamp(frequency, 0.0, 4294967295.0)));
        const quint64 most = quint64(samplesIn(column)) * quint64(m_sweeps);
        for (int row = 0; row < m_grid.rows; ++row) {
            const size_t cell = size_t(row) * size_t(m_columns) + size_t(column);
            result.cells[cell] = codeOf(m_counts[cell], most);
        }
    }
    return result;
}

int HeatmapCounter::samplesIn(int column) const
{
    return firstSampleOf(column + 1) - firstSampleOf(column);
}

int HeatmapCounter::firstSampleOf(int column) const
{
    return int(qint64(column) * m_samples / m_columns);
}

} // namespace simulation
