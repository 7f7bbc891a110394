#include "kit/plots/WaterfallRows.h"

#include <algorithm>
#include <limits>

namespace graph {

namespace {

float singlePrecision(double level)
{
    constexpr double greatest = std::numeric_limits<float>::max();
    return level != level ? std::numeric_limits<float>::quiet_NaN()
                          : float(std::min(std::max(level, -greatest), greatest));
}

} // namespace

int WaterfallRows::room() const
{
    return m_columns == 0 ? m_capacity
                          : int(std::max<qint64>(1, std::min<qint64>(m_capacity, mostCells / m_columns)));
}

void WaterfallRows::setCapacity(int rows)
{
    m_capacity = std::max(1, rows);
    const int ringSize = room();
    if (m_count == 0) {
        m_slots = 1;
        m_cells.clear();
        return;
    }
    if (ringSize == m_slots)
        return;
    const int kept = std::min(m_count, ringSize);
    std::vector<float> cells(std::size_t(ringSize) * std::size_t(m_columns));
    for (int age = 0; age < kept; ++age)
        std::copy_n(row(age), m_columns, cells.begin() + std::ptrdiff_t(kept - 1 - age) * m_columns);
    m_cells.swap(cells);
    m_slots = ringSize;
    m_count = kept;
    m_newest = kept - 1;
}

void WaterfallRows::clear()
{
    m_count = 0;
    m_columns = 0;
    m_newestExtent = {};
    m_cells.clear();
    m_cells.shrink_to_fit();
}

void WaterfallRows::add(const double *levels, int columns)
{
    if (columns != m_columns)
        clear();
    if (columns <= 0)
        return;
    if (m_count == 0) {
        m_columns = columns;
        m_slots = room();
        m_newest = m_slots - 1;
        m_cells.resize(std::size_t(m_slots) * std::size_t(columns));
    }
    m_newest = (m_newest + 1) % m_slots;
    m_count = std::min(m_count + 1, m_slots);
    ++m_added;
    std::transform(levels, levels + columns, m_cells.begin() + std::ptrdiff_t(m_newest) * columns,
                   singlePrecision);
    m_newestExtent = minMax(levels, columns);
}

} // namespace graph
