#include "data/PlotSeries.h"

#include "common/SafeInteger.h"
#include "data/VectorStream.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// A whole number from 0 to 2147483647, of the sequence that every process repeats.
int pseudoRandom()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    static unsigned int state = 1; // where Qt 5 begins
    return rand_r(&state);
#else
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return qrand();
    QT_WARNING_POP
#endif
}

} // namespace

/*!
    \qmltype PlotSeries
    \inherits PlotData
    \inqmlmodule graph_plugin
    \brief A sampled trace: values of y, equally spaced in x.
*/
PlotSeries::PlotSeries(QObject *parent)
    : PlotData(parent)
{
    connect(this, SIGNAL(xIntervalChanged(double)), this, SLOT(emitPlotChanged()));
    connect(this, SIGNAL(xFirstValueChanged(double)), this, SLOT(emitPlotChanged()));
}

// The extent of the samples whose x and y are finite; null without any.
QRectF PlotSeries::boundingRect() const
{
    graph::MinMax extentX;
    graph::MinMax extentY;
    for (int i = 0; i < m_yData.size(); ++i) {
        const double yi = m_yData.at(i);
        const double xi = x(i);
        if (!std::isfinite(yi) || !std::isfinite(xi))
            continue;
        extentX.add({xi, xi});
        extentY.add({yi, yi});
    }
    return graph::boundingRect(extentX, extentY);
}

QPointF PlotSeries::sample(int index) const
{
    return contains(index) ? QPointF(x(index), m_yData.at(index)) : QPointF();
}

QVector<QPointF> PlotSeries::samples(const QRectF &rect) const
{
    return sampleSpan(rect).toVector();
}

graph::SampleSpan PlotSeries::sampleSpan(double xMin, double xMax) const
{
    graph::SampleSpan span = graph::SampleSpan(m_yData, m_xFirstValue, m_xInterval).between(xMin, xMax);
    span.setPyramid(m_pyramid.forView(span.size()));
    return span;
}

/*!
    \qmlmethod int PlotData::indexOf(double x)
    The index of the sample nearest to x. In a series it is not limited to the samples that exist; -1 when it
    is empty or has no spacing.
*/
int PlotSeries::indexOf(double x) const
{
    const double position = (x - m_xFirstValue) / m_xInterval;
    if (m_yData.isEmpty() || m_xInterval == 0.0 || std::isnan(position))
        return -1;
    return graph::roundedIndex(position);
}

double PlotSeries::y(int index) const
{
    return contains(index) ? m_yData.at(index) : 0.0;
}

QPointF PlotSeries::first() const
{
    return sample(0);
}

QPointF PlotSeries::last() const
{
    return sample(m_yData.size() - 1);
}

void PlotSeries::setDbusAddress(const QString &address)
{
    PlotData::setDbusAddress(address);
    if (!BusBinding::isAddress(address))
        return;
    // The services publish the first two under these names, which are not those of the properties: the values
    // are there for QML to read, and the series does not move.
    connectOrnItem(QStringLiteral("xFirsValue"));
    connectOrnItem(QStringLiteral("xIncrement"));
    connectOrnVecDoubleItem(QStringLiteral("yData"));
}

void PlotSeries::clear()
{
    const int formerSize = m_yData.size();
    m_yData.clear();
    announceData(formerSize);
    PlotData::clear();
}

void PlotSeries::reserve(int n)
{
    if (n > 0)
        m_yData.reserve(n);
}

void PlotSeries::resize(int n)
{
    const int formerSize = m_yData.size();
    if (n < 0 || n == formerSize)
        return;
    m_yData.resize(n);
    announceData(formerSize);
}

bool PlotSeries::operator==(const PlotData &other) const
{
    if (!isSameKind(other))
        return false;
    const auto &series = static_cast<const PlotSeries &>(other);
    return m_xFirstValue == series.m_xFirstValue && m_xInterval == series.m_xInterval &&
           m_yData == series.m_yData;
}

/*!
    \qmlproperty double PlotSeries::xInterval
    The distance in x from one sample to the next, in units of x; may be negative. Default: 1. With 0 every
    sample is at the same x; with NaN or an infinity nothing is drawn.
*/
void PlotSeries::setXInterval(double interval)
{
    if (m_xInterval == interval)
        return;
    m_xInterval = interval;
    emit xIntervalChanged(m_xInterval);
}

/*!
    \qmlproperty double PlotSeries::xFirstValue
    The x of the first sample. Default: 0.
*/
void PlotSeries::setXFirstValue(double value)
{
    if (m_xFirstValue == value)
        return;
    m_xFirstValue = value;
    emit xFirstValueChanged(m_xFirstValue);
}

/*!
    \qmlproperty list<real> PlotSeries::yData
    The values, read and written as a whole. NaN leaves a gap, and so do undefined and a text that is no number; under
    Qt 6 only NaN does: its engine makes 0 of the others, with a warning. Default: empty. Without a notify signal:
    plotChanged() and sizeChanged() tell of new values.

    Write it in a handler, or from C++; do not bind it to a list property of a C++ object. Each evaluation of such a
    binding keeps a copy of the list until the engine collects garbage, and the engine does not know its size.
*/
void PlotSeries::setYData(const QVector<double> &yData)
{
    // The comparison ends at once for the same shared array, and at the first difference for another one.
    if (m_yData == yData)
        return;
    const int formerSize = m_yData.size();
    m_yData = yData;
    announceData(formerSize);
}

/*!
    \qmlmethod void PlotSeries::fillData(int count, double min, double max)
    Appends \a count values that wander at random between \a min and \a max, for trying out a chart; up
    to 16777216 values in all.
*/
void PlotSeries::fillData(int count, double min, double max)
{
    constexpr double randomMax = 2147483647.0;
    constexpr int greatestSize = 1 << 24;
    const double span = max - min;
    double value = pseudoRandom() * span / randomMax + min;
    const int end = std::min(count, greatestSize - int(m_yData.size()));
    for (int i = 0; i < end; ++i) {
        value = value + pseudoRandom() * (span * 0.25) / randomMax - span * 0.25 * 0.5;
        if (value > max)
            value = max;
        if (!(min < value))
            value = min;
        m_yData.append(value);
    }
    m_pyramid.reset();
    ++m_epoch;
    emit sizeChanged(count); // what was added, not the new size, as scripts expect it
}

void PlotSeries::announceData(int formerSize)
{
    m_pyramid.reset();
    ++m_epoch;
    if (m_yData.size() != formerSize)
        emit sizeChanged(m_yData.size());
    emitPlotChanged();
}

void PlotSeries::write(QDataStream &stream) const
{
    stream << m_xFirstValue << m_xInterval;
    graph::writeVector(stream, m_yData);
}

void PlotSeries::read(QDataStream &stream)
{
    double first = 0.0;
    double interval = 0.0;
    stream >> first >> interval;
    const QVector<double> values = graph::readVector<double>(stream);
    if (stream.status() != QDataStream::Ok)
        return;
    setXFirstValue(first);
    setXInterval(interval);
    setYData(values);
}
