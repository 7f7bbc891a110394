#pragma once

#include "common/Export.h"
#include "data/MinMax.h"

#include <vector>

namespace graph {

// The newest rows of levels. A row replaces the oldest one: nothing that is there is moved.
class GRAPH_CHARTS_EXPORT WaterfallRows
{
public:
    // Of cells in memory, for any number of rows.
    static constexpr qint64 mostCells = qint64(1) << 26;

    int capacity() const { return m_capacity; }
    // The newest rows stay as far as there is room.
    void setCapacity(int rows);
    // How many there is room for, with rows of the present length.
    int ringSize() const { return m_slots; }

    int columns() const { return m_columns; }
    int count() const { return m_count; }
    // How many rows have come in all; each keeps its number.
    qint64 added() const { return m_added; }

    // Forgets all rows if they have another length.
    void add(const double *levels, int columns);
    void clear();

    // age: 0 is the newest. NaN is no level; infinities are the greatest and the least number.
    const float *row(int age) const
    {
        return m_cells.data() + std::size_t(slot(age)) * std::size_t(m_columns);
    }
    // Extremes of the newest row.
    MinMax newestExtent() const { return m_newestExtent; }

private:
    int room() const;
    int slot(int age) const { return (m_newest - age + int(m_slots)) % m_slots; }

    std::vector<float> m_cells;
    MinMax m_newestExtent;
    qint64 m_added = 0;
    int m_capacity = 500;
    int m_slots = 1;
    int m_columns = 0;
    int m_count = 0;
    int m_newest = 0;
};

} // namespace graph
