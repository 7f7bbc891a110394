#include "data/PlotPoints.h"

#include "data/LeadingCount.h"
#include "data/VectorStream.h"
#include "platform/ui/ServerModule.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numeric>

namespace {

bool isAscending(const QVector<QPointF> &points)
{
    for (int i = 1; i < points.size(); ++i) {
        if (!(points.at(i - 1).x() <= points.at(i).x()))
            return false;
    }
    return points.isEmpty() || !std::isnan(points.first().x());
}

} // namespace

/*!
    \qmltype PlotPoints
    \inherits PlotData
    \inqmlmodule graph_plugin
    \brief Points with an x and a y of their own, drawn in ascending order of x; or separate segments, see
    \c usePointsAsSegments.

    Points whose x is NaN are never drawn.
*/
PlotPoints::PlotPoints(QObject *parent)
    : PlotData(parent)
{
}

// The extent of the points whose x and y are finite; null without any.
QRectF PlotPoints::boundingRect() const
{
    graph::MinMax extentX;
    graph::MinMax extentY;
    for (const QPointF &point : m_points) {
        if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
            continue;
        extentX.add({point.x(), point.x()});
        extentY.add({point.y(), point.y()});
    }
    return graph::boundingRect(extentX, extentY);
}

QVector<QPointF> PlotPoints::samples(const QRectF &rect) const
{
    if (usePointsAsSegments())
        qWarning("Used usePointsAsSegments with even number of points.");
    return sampleSpan(rect).toVector();
}

graph::SampleSpan PlotPoints::sampleSpan(double xMin, double xMax) const
{
    if (usePointsAsSegments())
        return xMin <= xMax ? segmentSpan(xMin, xMax) : segmentSpan(xMax, xMin);
    const Ascending &sorted = ascending();
    graph::SampleSpan span = graph::SampleSpan(sorted.points, sorted.indices).between(xMin, xMax);
    span.setPyramid(m_pyramid.forView(span.size()));
    return span;
}

// The index of the first point of each pair that overlaps the range.
QVector<int> PlotPoints::segmentsIn(double xMin, double xMax) const
{
    QVector<int> pairs;
    for (int i = 0; i + 1 < m_points.size(); i += 2) {
        const double x1 = m_points.at(i).x();
        const double x2 = m_points.at(i + 1).x();
        if ((x1 <= xMax && x2 >= xMin) || (x2 <= xMax && x1 >= xMin))
            pairs.append(i);
    }
    return pairs;
}

// Only where a pair in the middle has to be left out are the others copied.
graph::SampleSpan PlotPoints::segmentSpan(double xMin, double xMax) const
{
    const QVector<int> pairs = segmentsIn(xMin, xMax);
    if (pairs.isEmpty())
        return graph::SampleSpan();
    const int begin = pairs.first();
    const int end = pairs.last() + 2;
    if (2 * pairs.size() == end - begin)
        return graph::SampleSpan(m_points).mid(begin, end);

    QVector<QPointF> points;
    QVector<int> indices;
    for (int pair : qAsConst(pairs)) {
        for (int i = pair; i < pair + 2; ++i) {
            points.append(m_points.at(i));
            indices.append(i);
        }
    }
    return graph::SampleSpan(points, indices);
}

int PlotPoints::indexOf(double x) const
{
    const Ascending &sorted = ascending();
    const int count = sorted.points.size();
    if (count == 0 || std::isnan(x))
        return -1;
    int nearest = graph::leadingCount(count, count / 2, [&](int i) { return sorted.points.at(i).x() < x; });
    if (nearest > 0) {
        GenerateAssert(nearest < 1, "PlotPoints::indexOf", "would index -1 in vector");
        const double before = sorted.points.at(nearest - 1).x();
        if (nearest == count || x - before <= sorted.points.at(nearest).x() - x) {
            // The first of several points at that x.
            nearest = graph::leadingCount(nearest, nearest - 1,
                                          [&](int i) { return sorted.points.at(i).x() < before; });
        }
    }
    return sorted.indices.isEmpty() ? nearest : sorted.indices.at(nearest);
}

void PlotPoints::setDbusAddress(const QString &address)
{
    PlotData::setDbusAddress(address);
    if (!BusBinding::isAddress(address))
        return;
    connectOrnVecDoubleItem(QStringLiteral("xData"));
    connectOrnVecDoubleItem(QStringLiteral("yData"));
}

// Between the first and the last point, or in one of the segments.
bool PlotPoints::containsPoint(double x)
{
    if (!usePointsAsSegments())
        return !m_points.isEmpty() && m_points.first().x() <= x && x <= m_points.last().x();

    int i = 0;
    for (; i + 1 < m_points.size(); i += 2) {
        if (m_points.at(i).x() <= x && x <= m_points.at(i + 1).x())
            return true;
    }
    if (i < m_points.size())
        qWarning("Trying to use plot points as segments but number of points is odd");
    return false;
}

void PlotPoints::clear()
{
    setPoints({});
    PlotData::clear();
}

void PlotPoints::reserve(int n)
{
    if (n > 0)
        m_points.reserve(n);
}

void PlotPoints::resize(int n)
{
    if (n < 0 || n == m_points.size())
        return;
    const int formerSize = beginChange();
    m_points.resize(n);
    endChange(formerSize);
}

bool PlotPoints::operator==(const PlotData &other) const
{
    return PlotData::operator==(other);
}

// Stable, and without a rule for NaN of its own a comparison sort would be undefined.
QVector<int> PlotPoints::ascendingOrder() const
{
    QVector<int> order(m_points.size());
    std::iota(order.begin(), order.end(), 0);
    const auto firstNaN = std::stable_partition(order.begin(), order.end(),
                                                [this](int i) { return !std::isnan(m_points.at(i).x()); });
    std::stable_sort(order.begin(), firstNaN,
                     [this](int a, int b) { return m_points.at(a).x() < m_points.at(b).x(); });
    return order;
}

void PlotPoints::sort()
{
    if (isAscending(m_points))
        return;
    QVector<QPointF> sorted;
    sorted.reserve(m_points.size());
    for (int index : ascendingOrder())
        sorted.append(m_points.at(index));
    setPoints(sorted);
}

/*!
    \qmlproperty list<real> PlotPoints::xData
    \qmlproperty list<real> PlotPoints::yData
    The coordinates of the points, read and written as a whole. A list of another length changes the number of
    points; the other coordinate of new points is 0. NaN, undefined and a text that is no number leave a gap in y;
    points without an x are not drawn. Default: empty. Writing an empty list forgets both coordinates. As for
    PlotSeries::yData, do not bind to a list property of a C++ object.
*/
QVector<double> PlotPoints::xData() const
{
    QVector<double> values(m_points.size());
    std::transform(m_points.cbegin(), m_points.cend(), values.begin(),
                   [](const QPointF &p) { return p.x(); });
    return values;
}

QVector<double> PlotPoints::yData() const
{
    QVector<double> values(m_points.size());
    std::transform(m_points.cbegin(), m_points.cend(), values.begin(),
                   [](const QPointF &p) { return p.y(); });
    return values;
}

void PlotPoints::setXData(const QVector<double> &xData)
{
    setCoordinate(xData, [](QPointF &point) -> double & { return point.rx(); });
}

void PlotPoints::setYData(const QVector<double> &yData)
{
    setCoordinate(yData, [](QPointF &point) -> double & { return point.ry(); });
}

template <typename Coordinate>
void PlotPoints::setCoordinate(const QVector<double> &values, Coordinate coordinate)
{
    const auto isEqual = [&](const QPointF &point, double value) {
        QPointF copy(point);
        return coordinate(copy) == value;
    };
    if (std::equal(m_points.cbegin(), m_points.cend(), values.cbegin(), values.cend(), isEqual))
        return;
    const int formerSize = beginChange();
    m_points.resize(values.size());
    QPointF *points = m_points.data();
    for (int i = 0; i < values.size(); ++i)
        coordinate(points[i]) = values.at(i);
    endChange(formerSize);
}

void PlotPoints::setPoints(const QVector<QPointF> &points)
{
    const int formerSize = beginChange();
    m_points = points;
    endChange(formerSize);
}

void PlotPoints::appendPoint(const QPointF &point)
{
    const int formerSize = beginChange();
    m_points.append(point);
    endChange(formerSize);
}

// Lets go of what was derived from the points first: it shares the array, which would be copied else.
int PlotPoints::beginChange()
{
    m_ascending = Ascending();
    m_pyramid.reset();
    ++m_epoch;
    return m_points.size();
}

void PlotPoints::endChange(int formerSize)
{
    if (m_points.size() != formerSize)
        emit sizeChanged(m_points.size());
    emitPlotChanged();
}

const PlotPoints::Ascending &PlotPoints::ascending() const
{
    if (m_ascending.isKnown)
        return m_ascending;
    m_ascending.isKnown = true;
    if (isAscending(m_points)) {
        m_ascending.points = m_points; // shared
        return m_ascending;
    }
    for (int index : ascendingOrder()) {
        if (std::isnan(m_points.at(index).x()))
            break;
        m_ascending.points.append(m_points.at(index));
        m_ascending.indices.append(index);
    }
    return m_ascending;
}

void PlotPoints::write(QDataStream &stream) const
{
    graph::writeVector(stream, m_points);
}

void PlotPoints::read(QDataStream &stream)
{
    const QVector<QPointF> points = graph::readVector<QPointF>(stream);
    if (stream.status() == QDataStream::Ok)
        setPoints(points);
}

void PlotPoints::GenerateAssert(bool condition, const char *, const char *)
{
    if (condition)
        std::cerr << "GenerateAssert"
                  << " is about to assert: " << ServerModule::getBacktrace().toStdString() << std::endl;
}
