#include "painters/CustomPainter.h"

#include "common/Opacity.h"
#include "common/SafeInteger.h"
#include "raster/PolygonGeometry.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

// The mapped points; one that is not finite ends a polygon and the next one starts another.
template <typename Map>
QVector<QPolygonF> polygons(const QVector<double> &xData, const QVector<double> &yData, Map map)
{
    const auto bounded = [](double value) {
        return std::max(-graph::farthestCoordinate, std::min(value, graph::farthestCoordinate));
    };

    QVector<QPolygonF> result(1);
    const int count = std::min(xData.size(), yData.size());
    result.first().reserve(count);
    for (int i = 0; i < count; ++i) {
        const QPointF point = map(xData[i], yData[i]);
        if (std::isfinite(point.x()) && std::isfinite(point.y()))
            result.last().append(QPointF(bounded(point.x()), bounded(point.y())));
        else if (!result.last().isEmpty())
            result.append(QPolygonF());
    }
    return result;
}

QPainterPath clippedLine(const QPolygonF &points, const QRectF &clip)
{
    QPainterPath path;
    for (int i = 1; i < points.size(); ++i) {
        QPointF begin = points[i - 1];
        QPointF end = points[i];
        if (!graph::clipLine(begin, end, clip))
            continue;
        // A joint in the visible part stays one.
        if (path.elementCount() == 0 || path.currentPosition() != begin)
            path.moveTo(begin);
        path.lineTo(end);
    }
    return path;
}

} // namespace

/*!
    \qmltype CustomPainter
    \inherits BasePainter
    \brief A shape of any number of points: a limit mask, a symbol, an outline.

    A point that is not finite splits the shape in two. Where parts overlap an even number of times, the shape
    has a hole.
*/
CustomPainter::CustomPainter(QQuickItem *parent)
    : BasePainter(parent)
{
    connect(this, SIGNAL(xDataChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(yDataChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(originChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(pixelShapeChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(closedChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineWidthChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(fillColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(fillOpacityChanged()), this, SIGNAL(updateNeeded()));
}

/*!
    \qmlmethod bool CustomPainter::containsPoint(double x, double y)
    Whether a data point lies inside the shape, by the odd-even rule; an open shape counts as closed. Always
    false for a shape in pixels, whose extent in data units depends on the zoom.
*/
bool CustomPainter::containsPoint(double x, double y) const
{
    if (m_pixelShape)
        return false;
    const auto shapes =
        polygons(m_xData, m_yData, [this](double px, double py) { return m_origin + QPointF(px, py); });
    return graph::containsOddEven(shapes, QPointF(x, y));
}

void CustomPainter::paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY)
{
    if (std::min(m_xData.size(), m_yData.size()) < 2)
        return;
    const graph::PixelMapping place = mapping(visibleRect, scaleX, scaleY);
    const auto toPixels = [&place](double x, double y) { return QPointF(place.x(x), place.y(y)); };
    const QPointF origin = toPixels(m_origin.x(), m_origin.y());
    const QVector<QPolygonF> shapes = polygons(m_xData, m_yData, [&](double x, double y) {
        return m_pixelShape ? origin + QPointF(x, -y) : toPixels(m_origin.x() + x, m_origin.y() + y);
    });
    // So far outside that the border along which a shape is cut off is never seen.
    const double margin = graph::penWidth(m_lineWidth) + 1.0;
    const QRectF clip = QRectF(0.0, 0.0, place.width() - 1.0, place.height() - 1.0)
                            .adjusted(-margin, -margin, margin, margin);
    painter->save();
    fill(painter, shapes, clip);
    stroke(painter, shapes, clip);
    painter->restore();
}

void CustomPainter::fill(QPainter *painter, const QVector<QPolygonF> &shapes, const QRectF &clip) const
{
    const QColor color = graph::translucent(m_fillColor, m_fillOpacity);
    if (color.alpha() == 0)
        return;
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (const QPolygonF &shape : shapes)
        path.addPolygon(graph::clippedPolygon(shape, clip));
    painter->fillPath(path, color);
}

void CustomPainter::stroke(QPainter *painter, const QVector<QPolygonF> &shapes, const QRectF &clip) const
{
    const int width = graph::penWidth(m_lineWidth);
    if (width == 0)
        return;
    const QPen pen(m_lineColor, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    QPainterPath path;
    for (const QPolygonF &shape : shapes) {
        if (shape.size() < 2)
            continue;
        if (m_closed) {
            const QPolygonF part = graph::clippedPolygon(shape, clip);
            path.addPolygon(part);
            if (!part.isEmpty())
                path.closeSubpath();
        } else {
            path.addPath(clippedLine(shape, clip));
        }
    }
    painter->strokePath(path, pen);
}

/*!
    \qmlproperty list<real> CustomPainter::xData
    X of the points relative to the origin, in units of the horizontal axis, or in pixels, see pixelShape. Of
    xData and yData the shorter length counts; fewer than two points draw nothing.
*/
void CustomPainter::setXData(const QVector<double> &xData)
{
    if (m_xData == xData)
        return;
    m_xData = xData;
    emit xDataChanged();
}

/*!
    \qmlproperty list<real> CustomPainter::yData
    Y of the points relative to the origin, in units of the vertical axis, or in pixels upwards, see
    pixelShape.
*/
void CustomPainter::setYData(const QVector<double> &yData)
{
    if (m_yData == yData)
        return;
    m_yData = yData;
    emit yDataChanged();
}

/*!
    \qmlproperty point CustomPainter::origin
    The data point that is added to every point, (0, 0) by default.
*/
void CustomPainter::setOrigin(const QPointF &origin)
{
    // Qt compares points with a tolerance, which would swallow small moves near zero.
    if (m_origin.x() == origin.x() && m_origin.y() == origin.y())
        return;
    m_origin = origin;
    emit originChanged();
}

/*!
    \qmlproperty bool CustomPainter::pixelShape
    True for a symbol that keeps its size: the points are pixels around the origin, y upwards. False by
    default.
*/
void CustomPainter::setPixelShape(bool pixelShape)
{
    if (m_pixelShape == pixelShape)
        return;
    m_pixelShape = pixelShape;
    emit pixelShapeChanged();
}

/*!
    \qmlproperty bool CustomPainter::closed
    Whether the outline returns to its first point; true by default. The filling always does.
*/
void CustomPainter::setClosed(bool closed)
{
    if (m_closed == closed)
        return;
    m_closed = closed;
    emit closedChanged();
}

/*!
    \qmlproperty color CustomPainter::lineColor
    Colour of the outline, black by default.
*/
void CustomPainter::setLineColor(const QColor &color)
{
    if (m_lineColor == color)
        return;
    m_lineColor = color;
    emit lineColorChanged();
}

/*!
    \qmlproperty int CustomPainter::lineWidth
    Width of the outline in pixels, 1 by default; 0 draws none.
*/
void CustomPainter::setLineWidth(int width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    emit lineWidthChanged();
}

/*!
    \qmlproperty color CustomPainter::fillColor
    Colour of the filling, transparent by default.
*/
void CustomPainter::setFillColor(const QColor &color)
{
    if (m_fillColor == color)
        return;
    m_fillColor = color;
    emit fillColorChanged();
}

/*!
    \qmlproperty double CustomPainter::fillOpacity
    Opacity of the filling, clamped to 0..1; 0.375 by default.
*/
void CustomPainter::setFillOpacity(double opacity)
{
    const double bounded = graph::boundedOpacity(opacity);
    if (m_fillOpacity == bounded)
        return;
    m_fillOpacity = bounded;
    emit fillOpacityChanged();
}
