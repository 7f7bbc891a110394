#include "axis/LabelBand.h"

#include "axis/PlaneAccess.h"
#include "axis/ValueAxis.h"

#include <algorithm>

namespace graph {

namespace {

constexpr int rowDistance = 2;     // between labels and the plot area, for rows of labels
constexpr int columnDistance = 4;  // the same for columns, whose letters have no room of their own
constexpr int cornerOverhang = 2;  // how far a column of labels may reach beside a row in the corner

bool hasInnerLabels(const ValueAxis &axis)
{
    return axis.visible() && axis.axisStyle() != ValueAxis::TicksOnly && axis.margin() <= 0;
}

} // namespace

LabelBand::LabelBand(const ValueAxis &axis, const QFontMetrics &metrics, const AxisGeometry &geometry,
                     const QRectF &bounds)
    : m_metrics(metrics)
    , m_geometry(geometry)
    , m_bounds(bounds)
    , m_alignment(axis.alignment())
{
    const bool onEdge = m_alignment == Qt::AlignLeft || m_alignment == Qt::AlignRight || m_alignment == Qt::AlignTop
                        || m_alignment == Qt::AlignBottom;
    m_outside = onEdge && axis.margin() > 0;
    m_track.gap = metrics.horizontalAdvance(QLatin1Char('0'));
    if (geometry.horizontal)
        layOutHorizontal(axis);
    else
        layOutVertical(axis);
}

void LabelBand::layOutHorizontal(const ValueAxis &axis)
{
    const QRectF &rect = m_geometry.rect;
    const int height = m_metrics.height();
    const bool atTop = m_alignment == Qt::AlignTop;
    m_track.rows = axis.staggered() ? 2 : 1;
    if (m_outside) {
        m_track.lowest = m_bounds.left();
        m_track.highest = m_bounds.right();
        m_firstRowTop = atTop ? pixel(rect.top()) - rowDistance - height : pixel(rect.bottom()) + rowDistance;
        m_rowStep = atTop ? -height : height;
    } else {
        m_track.lowest = rect.left() + rowDistance;
        m_track.highest = rect.right() - rowDistance;
        m_rowStep = atTop ? height : -height;
        if (atTop)
            m_firstRowTop = pixel(rect.top()) + rowDistance;
        else if (m_alignment == Qt::AlignBottom)
            m_firstRowTop = pixel(rect.bottom()) - rowDistance - height;
        else
            m_firstRowTop = pixel(rect.center().y()) - height / 2;
    }

    if (axis.unit().isEmpty())
        return;
    // A row of its own where the margin has room for it, else the end of the first row.
    const int width = m_metrics.horizontalAdvance(axis.unit());
    const int left = std::max(pixel(m_track.lowest), pixel(m_track.highest) - width);
    const bool ownRow = m_outside && axis.margin() >= (m_track.rows + 1) * height + rowDistance;
    if (!ownRow)
        m_track.reserved.append({double(left), m_track.highest, 0});
    const int top = m_firstRowTop + (ownRow ? m_track.rows * m_rowStep : 0);
    m_unitPosition = QPoint(left, top + m_metrics.ascent());
}

void LabelBand::layOutVertical(const ValueAxis &axis)
{
    const QRectF &rect = m_geometry.rect;
    if (m_outside) {
        // The row of labels of another axis begins right behind the corner.
        m_track.lowest = std::max(m_bounds.top(), rect.top() - cornerOverhang);
        m_track.highest = std::min(m_bounds.bottom(), rect.bottom() + cornerOverhang);
    } else {
        m_track.lowest = rect.top() + rowDistance;
        m_track.highest = rect.bottom() - rowDistance;
        const QList<ValueAxis *> neighbours = planeAxes(axis.labelsPlane());
        for (const ValueAxis *other : neighbours) {
            if (other->orientation() != Qt::Horizontal || !hasInnerLabels(*other))
                continue;
            const double rows = other->getLabelHeight() * (other->staggered() ? 2 : 1);
            if (other->alignment() == Qt::AlignTop)
                m_track.reserved.append({rect.top(), rect.top() + rows});
            else if (other->alignment() == Qt::AlignBottom)
                m_track.reserved.append({rect.bottom() - rows, rect.bottom()});
        }
    }

    if (axis.unit().isEmpty())
        return;
    // Above a label at the top edge, as far as the plane reaches; else such a label gives way.
    const int height = m_metrics.capHeight();
    const double wanted = rect.top() - height / 2 - m_track.gap - height;
    const double top = std::max(m_outside ? m_bounds.top() : m_track.lowest, wanted);
    m_track.reserved.append({top, top + height});
    m_unitPosition = QPoint(textLeft(m_metrics.horizontalAdvance(axis.unit())), pixel(top) + height);
}

// The left end of a text in a column of labels.
int LabelBand::textLeft(int width) const
{
    const QRectF &rect = m_geometry.rect;
    int left = pixel(rect.center().x()) - width / 2;
    if (m_alignment == Qt::AlignLeft)
        left = m_outside ? pixel(rect.left()) - columnDistance - width : pixel(rect.left()) + rowDistance;
    else if (m_alignment == Qt::AlignRight)
        left = m_outside ? pixel(rect.right()) + columnDistance : pixel(rect.right()) - rowDistance - width;
    return std::max(pixel(m_bounds.left()), std::min(left, pixel(m_bounds.right()) - width));
}

double LabelBand::extent(const QString &text) const
{
    return m_geometry.horizontal ? m_metrics.horizontalAdvance(text) : m_metrics.capHeight();
}

QPoint LabelBand::textPosition(const LabelPlace &place, const QString &text) const
{
    if (m_geometry.horizontal)
        return QPoint(roundedPixel(place.start), m_firstRowTop + place.row * m_rowStep + m_metrics.ascent());
    return QPoint(textLeft(m_metrics.horizontalAdvance(text)), roundedPixel(place.start) + m_metrics.capHeight());
}

} // namespace graph
