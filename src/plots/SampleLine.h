#pragma once

#include "common/PixelMapping.h"

#include <QPointF>

namespace graph {

// The straight line on the screen between two samples, in data units: for the pixel columns between them.
class SampleLine
{
public:
    SampleLine(const PixelMapping &mapping, const QPointF &from, const QPointF &to)
        : m_mapping(mapping)
        , m_x(mapping.x(from.x()))
        , m_y(mapping.y(from.y()))
        , m_slope((mapping.y(to.y()) - m_y) / (mapping.x(to.x()) - m_x))
    {
    }

    double valueAt(double coordinate) const { return m_mapping.valueY(m_y + (coordinate - m_x) * m_slope); }

private:
    const PixelMapping &m_mapping;
    double m_x;
    double m_y;
    double m_slope;
};

} // namespace graph
