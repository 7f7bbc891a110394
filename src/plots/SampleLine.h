#pragma once

#include "common/PixelMapping.h"

#include <QPointF>

namespace graph {

// The straight line between two places on the screen, in data units: for the pixel columns between them.
class SampleLine
{
public:
    // Where a sample is.
    static QPointF placeOf(const PixelMapping &mapping, const QPointF &sample)
    {
        return {mapping.x(sample.x()), mapping.y(sample.y())};
    }

    SampleLine(const PixelMapping &mapping, const QPointF &from, const QPointF &to)
        : m_mapping(mapping)
        , m_from(from)
        , m_slope((to.y() - from.y()) / (to.x() - from.x()))
    {
    }

    double valueAt(double coordinate) const
    {
        return m_mapping.valueY(m_from.y() + (coordinate - m_from.x()) * m_slope);
    }

private:
    const PixelMapping &m_mapping;
    QPointF m_from;
    double m_slope;
};

} // namespace graph
