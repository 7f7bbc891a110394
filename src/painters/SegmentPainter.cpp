#include "painters/SegmentPainter.h"

#include "common/SafeInteger.h"
#include "raster/PixelCentres.h"
#include "raster/PolygonGeometry.h"

#include <QPainter>

#include <cmath>

namespace {

// So near that the extent of a line is finite; what is in sight stays exactly where it is.
QPointF bounded(const QPointF &point, const QPointF &origin, double scaleX, double scaleY)
{
    const auto near = [](double value, double centre, double scale) {
        const double reach = graph::farthestCoordinate / std::abs(scale);
        return std::isfinite(value) ? qBound(centre - reach, value, centre + reach) : value;
    };
    return QPointF(near(point.x(), origin.x(), scaleX), near(point.y(), origin.y(), scaleY));
}

} // namespace

/*!
    \qmltype SegmentPainter
    \inherits BasePainter
    \brief A straight line between two data points. The part of it in the visible range is drawn.
*/
SegmentPainter::SegmentPainter(QQuickItem *parent)
    : BasePainter(parent)
{
    connect(this, SIGNAL(point1XChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(point1YChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(point2XChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(point2YChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(segmentColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineWidthChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineStyleChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(endSizeChanged()), this, SIGNAL(updateNeeded()));
}

void SegmentPainter::paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY)
{
    const graph::PixelMapping place = mapping(visibleRect, scaleX, scaleY);
    if (!place.isLinearX() || !place.isLinearY()) {
        paintOnScreen(painter, place);
        return;
    }
    const QPointF first = bounded({m_point1X, m_point1Y}, visibleRect.topLeft(), scaleX, scaleY);
    const QPointF second = bounded({m_point2X, m_point2Y}, visibleRect.topLeft(), scaleX, scaleY);
    QPointF begin = first;
    QPointF end = second;
    // Clipped before the conversion to pixels, so that a far end does not bend the visible part. In two steps, because
    // a point computed from an end that is very far is only near the border.
    const double w = visibleRect.width();
    const double h = visibleRect.height();
    if (!graph::clipLine(begin, end, visibleRect.adjusted(-w, -h, w, h)) ||
        !graph::clipLine(begin, end, visibleRect))
        return;
    const auto toPixels = [&place](const QPointF &point) {
        return QPoint(place.column(point.x()), place.row(point.y()));
    };
    // Compared exactly: Qt's own comparison takes points within a tiny data range for equal.
    const auto same = [](const QPointF &a, const QPointF &b) { return a.x() == b.x() && a.y() == b.y(); };
    draw(painter, toPixels(begin), toPixels(end), same(begin, first), same(end, second));
}

// Where an axis is not linear, the line is straight on the screen and no longer in data units.
void SegmentPainter::paintOnScreen(QPainter *painter, const graph::PixelMapping &place) const
{
    const auto near = [](double coordinate) {
        return std::isnan(coordinate)
                   ? coordinate
                   : qBound(-graph::farthestCoordinate, coordinate, graph::farthestCoordinate);
    };
    const QPointF first(near(place.x(m_point1X)), near(place.y(m_point1Y)));
    const QPointF second(near(place.x(m_point2X)), near(place.y(m_point2Y)));
    const QRectF item(0.0, 0.0, place.width() - 1.0, place.height() - 1.0);
    QPointF begin = first;
    QPointF end = second;
    if (!graph::clipLine(begin, end, item))
        return;
    const auto toPixels = [](const QPointF &point) {
        return QPoint(graph::pixel(point.x()), graph::pixel(point.y()));
    };
    draw(painter, toPixels(begin), toPixels(end), item.contains(first), item.contains(second));
}

void SegmentPainter::draw(QPainter *painter, const QPoint &begin, const QPoint &end, bool isFirst,
                          bool isSecond) const
{
    painter->save();
    QPen pen(m_segmentColor, graph::penWidth(m_lineWidth), m_lineStyle, Qt::RoundCap);
    painter->setPen(pen);
    const graph::PixelCentres centred(painter);
    painter->drawLine(begin, end);

    pen.setStyle(Qt::SolidLine);
    painter->setPen(pen);
    if (isFirst)
        drawEnd(painter, begin);
    if (isSecond)
        drawEnd(painter, end);
    painter->restore();
}

void SegmentPainter::drawEnd(QPainter *painter, const QPoint &end) const
{
    const int half = graph::pixel(m_endSize);
    if (half > 0)
        painter->drawLine(end.x(), end.y() - half, end.x(), end.y() + half);
}

/*!
    \qmlproperty double SegmentPainter::point1X
    First end in units of the horizontal axis, 0 by default.
*/
void SegmentPainter::setPoint1X(double x)
{
    if (m_point1X == x)
        return;
    m_point1X = x;
    emit point1XChanged();
}

/*!
    \qmlproperty double SegmentPainter::point1Y
    First end in units of the vertical axis, 0 by default.
*/
void SegmentPainter::setPoint1Y(double y)
{
    if (m_point1Y == y)
        return;
    m_point1Y = y;
    emit point1YChanged();
}

/*!
    \qmlproperty double SegmentPainter::point2X
    Second end in units of the horizontal axis, 0 by default.
*/
void SegmentPainter::setPoint2X(double x)
{
    if (m_point2X == x)
        return;
    m_point2X = x;
    emit point2XChanged();
}

/*!
    \qmlproperty double SegmentPainter::point2Y
    Second end in units of the vertical axis, 0 by default.
*/
void SegmentPainter::setPoint2Y(double y)
{
    if (m_point2Y == y)
        return;
    m_point2Y = y;
    emit point2YChanged();
}

/*!
    \qmlproperty color SegmentPainter::segmentColor
    Colour of the line, black by default.
*/
void SegmentPainter::setSegmentColor(const QColor &color)
{
    if (m_segmentColor == color)
        return;
    m_segmentColor = color;
    emit segmentColorChanged();
}

/*!
    \qmlproperty int SegmentPainter::lineWidth
    Width of the line in pixels, 1 by default.
*/
void SegmentPainter::setLineWidth(int width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    emit lineWidthChanged();
}

/*!
    \qmlproperty enumeration SegmentPainter::lineStyle
    Qt.SolidLine by default, Qt.DashLine and so on.
*/
void SegmentPainter::setLineStyle(Qt::PenStyle style)
{
    if (m_lineStyle == style)
        return;
    m_lineStyle = style;
    emit lineStyleChanged();
}

/*!
    \qmlproperty int SegmentPainter::endSize
    Length in pixels to which a vertical bar reaches up and down at each visible end; 0, the default, draws
    none.
*/
void SegmentPainter::setEndSize(int size)
{
    if (m_endSize == size)
        return;
    m_endSize = size;
    emit endSizeChanged();
}
