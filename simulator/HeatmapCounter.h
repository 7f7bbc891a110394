#pragma once

#include "simulator/Heatmap.h"

#include <QVector>

namespace simulation {

// Counts the levels of many sweeps into the cells of a heat map.
class HeatmapCounter
{
public:
    // Where the cells lie: levels in dBm, the centre of the top row and the height of a row.
    struct Grid
    {
        int columns = 500;
        int rows = 110;
        double topLevel = -20.0;
        double rowStep = 1.0;
    };

    // There are never more columns than samples, so that none stays without data.
    HeatmapCounter(int samples, double firstFrequency, double frequencyStep, const Grid &grid);

    // A sweep of another size is left out, and so are levels beyond the grid or NaN.
    void add(const QVector<double> &levels);
    void clear();
    int sweeps() const { return m_sweeps; }

    Heatmap heatmap() const;

private:
    int samplesIn(int column) const;
    int firstSampleOf(int column) const;

    int m_samples;
    double m_firstFrequency;
    double m_frequencyStep;
    Grid m_grid;
    int m_columns;
    int m_sweeps = 0;
    std::vector<quint32> m_counts;
};

} // namespace simulation
