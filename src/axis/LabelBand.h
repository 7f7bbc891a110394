#pragma once

#include "axis/AxisGeometry.h"
#include "axis/LabelLayout.h"

#include <QFontMetrics>

class ValueAxis;

namespace graph {

// The room for the labels and the unit of one axis on its plane: outside the plot rectangle when the axis has a margin,
// else inside along the same edge. Works in whole pixels.
class LabelBand
{
public:
    // bounds: of the plane, which no label may leave.
    LabelBand(const ValueAxis &axis, const QFontMetrics &metrics, const AxisGeometry &geometry, const QRectF &bounds);

    const LabelTrack &track() const { return m_track; }

    // The extent of a text along the axis.
    double extent(const QString &text) const;

    // Where a text begins, on its baseline.
    QPoint textPosition(const LabelPlace &place, const QString &text) const;
    QPoint unitPosition() const { return m_unitPosition; }

private:
    void layOutHorizontal(const ValueAxis &axis);
    void layOutVertical(const ValueAxis &axis);
    int textLeft(int width) const;

    const QFontMetrics &m_metrics;
    const AxisGeometry &m_geometry;
    QRectF m_bounds;
    Qt::Alignment m_alignment;
    bool m_outside;
    LabelTrack m_track;
    int m_firstRowTop = 0;
    int m_rowStep = 0; // to the second row
    QPoint m_unitPosition;
};

} // namespace graph
