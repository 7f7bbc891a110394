#include "data/PlotData.h"

#include "axis/ValueAxis.h"
#include "common/ObjectCounter.h"

#include <QDebug>
#include <QThread>
#include <QTimerEvent>

#include <cmath>
#include <limits>

namespace {

// False when the member holds the value already.
template <typename T> bool store(T &member, const T &value)
{
    if (member == value)
        return false;
    member = value;
    return true;
}

} // namespace

/*!
    \qmltype PlotData
    \inqmlmodule graph_plugin
    \brief The samples of one trace with their texts, number formats and axes; the base of all data types.

    \c plotChanged() follows every change of the data and of the properties except the axes, once per pass of
    the event loop however many changes there were.

    \qmlproperty int PlotData::size
    The number of samples.

    \qmlsignal PlotData::plotChanged()
    See above: what plots and cursors repaint on.

    \qmlmethod rect PlotData::boundingRect()
    The extent of the finite samples, in the units of the data; empty without any.

    \qmlmethod point PlotData::sample(int index)
    \qmlmethod double PlotData::y(int index)
    A sample or its value. (0, 0) and 0 for an index that does not exist.

    \qmlmethod double PlotData::x(int index)
    The x of a sample. For an index that does not exist a PlotSeries gives where that sample would be, all others 0.

    \qmlmethod point PlotData::first()
    \qmlmethod point PlotData::last()
    The first and the last sample, (0, 0) without any.
*/
PlotData::PlotData(QObject *parent)
    : QObject(parent)
{
    static graph::ObjectCounter counter("PD");
    setObjectName(counter.nextName());

    const char *const announced[] = {
        SIGNAL(sizeChanged(int)),
        SIGNAL(labelChanged(QString)),
        SIGNAL(xLabelChanged(QString)),
        SIGNAL(yLabelChanged(QString)),
        SIGNAL(xSigDigsChanged(int)),
        SIGNAL(ySigDigsChanged(int)),
        SIGNAL(xPrecisionChanged(int)),
        SIGNAL(yPrecisionChanged(int)),
        SIGNAL(xRangeBeginChanged(double)),
        SIGNAL(yRangeBeginChanged(double)),
        SIGNAL(xRangeEndChanged(double)),
        SIGNAL(yRangeEndChanged(double)),
        SIGNAL(xUnitsChanged(QString)),
        SIGNAL(yUnitsChanged(QString)),
        SIGNAL(sgnUsePointsAsSignalsChanged()),
        SIGNAL(sgnActiveChanged()),
    };
    for (const char *signal : announced)
        connect(this, signal, this, SLOT(emitPlotChanged()));
}

graph::SampleSpan PlotData::sampleSpan(double xMin, double xMax) const
{
    return graph::SampleSpan(samples(QRectF(xMin, 0.0, xMax - xMin, 0.0)));
}

graph::SampleSpan PlotData::sampleSpan(const QRectF &rect) const
{
    double begin = rect.x();
    double end = rect.x() + rect.width();
    if (begin > end)
        std::swap(begin, end);
    // Both the end of a range and the x of a sample are sums of rounded numbers: 3 * 0.1 lies beyond 0.3, and the
    // sample at the end of the axis would be missing from its trace.
    const double rounding = 4.0 * std::numeric_limits<double>::epsilon() * qMax(qAbs(begin), qAbs(end));
    return std::isfinite(rounding) ? sampleSpan(begin - rounding, end + rounding) : sampleSpan(begin, end);
}

/*!
    \qmlproperty string PlotData::dbusAddress
    Where the data comes from: the name of a bus client, a comma and the prefix of its item names. Each
    property follows the item of its name; one that the bus does not have yet is followed from the moment it has. A
    service that is not there or does not answer is a line in the log; all of them together hold up a page for 2 s at
    most. A comma alone lets go of all items; the properties keep their last values. An address without a comma, the
    empty text included, is ignored. Default: empty. A change is not announced.
*/
void PlotData::setDbusAddress(const QString &address)
{
    if (!m_bus.setAddress(address))
        return;
    static const char *const keys[] = {"xLabel",     "yLabel",      "xSigDigs",    "ySigDigs",  "xPrecision",
                                       "yPrecision", "xRangeBegin", "yRangeBegin", "xRangeEnd", "yRangeEnd",
                                       "xUnits",     "yUnits",      "label"};
    for (const char *key : keys)
        connectOrnItem(QLatin1String(key));
}

bool PlotData::containsPoint(double)
{
    return false;
}

void PlotData::clear()
{
    emitPlotChanged();
}

bool PlotData::operator==(const PlotData &other) const
{
    if (!isSameKind(other) || size() != other.size())
        return false;
    // Not through QPointF, which takes points a picosecond apart for equal ones.
    for (int i = 0; i < size(); ++i) {
        if (x(i) != other.x(i) || y(i) != other.y(i))
            return false;
    }
    return true;
}

double PlotData::baseline() const
{
    return m_axisY ? m_axisY->baseline() : 0.0;
}

/*!
    \qmlproperty string PlotData::label
    \qmlproperty string PlotData::xLabel
    \qmlproperty string PlotData::yLabel
    The names of the trace and of its two quantities. Default: empty.
*/
void PlotData::setLabel(const QString &label)
{
    if (store(m_label, label))
        emit labelChanged(m_label);
}

void PlotData::setXLabel(const QString &label)
{
    if (store(m_x.label, label))
        emit xLabelChanged(m_x.label);
}

void PlotData::setYLabel(const QString &label)
{
    if (store(m_y.label, label))
        emit yLabelChanged(m_y.label);
}

/*!
    \qmlproperty int PlotData::xSigDigs
    \qmlproperty int PlotData::ySigDigs
    Significant digits of formatted values, where there is a formatter. Default: 4.
*/
void PlotData::setXSigDigs(int sigDigs)
{
    if (store(m_x.sigDigs, sigDigs))
        emit xSigDigsChanged(m_x.sigDigs);
}

void PlotData::setYSigDigs(int sigDigs)
{
    if (store(m_y.sigDigs, sigDigs))
        emit ySigDigsChanged(m_y.sigDigs);
}

/*!
    \qmlproperty int PlotData::xPrecision
    \qmlproperty int PlotData::yPrecision
    Decimals of formatted values, where there is a formatter. Default: 2.
*/
void PlotData::setXPrecision(int precision)
{
    if (store(m_x.precision, precision))
        emit xPrecisionChanged(m_x.precision);
}

void PlotData::setYPrecision(int precision)
{
    if (store(m_y.precision, precision))
        emit yPrecisionChanged(m_y.precision);
}

/*!
    \qmlproperty double PlotData::xRangeBegin
    \qmlproperty double PlotData::xRangeEnd
    \qmlproperty double PlotData::yRangeBegin
    \qmlproperty double PlotData::yRangeEnd
    The nominal ranges, in the units of the data, for setting up axes; they limit nothing. Default: 0.
*/
void PlotData::setXRangeBegin(double value)
{
    if (store(m_x.rangeBegin, value))
        emit xRangeBeginChanged(m_x.rangeBegin);
}

void PlotData::setYRangeBegin(double value)
{
    if (store(m_y.rangeBegin, value))
        emit yRangeBeginChanged(m_y.rangeBegin);
}

void PlotData::setXRangeEnd(double value)
{
    if (store(m_x.rangeEnd, value))
        emit xRangeEndChanged(m_x.rangeEnd);
}

void PlotData::setYRangeEnd(double value)
{
    if (store(m_y.rangeEnd, value))
        emit yRangeEndChanged(m_y.rangeEnd);
}

/*!
    \qmlproperty string PlotData::xUnits
    \qmlproperty string PlotData::yUnits
    The unit that chooses the formatter of the values, for example "Hz" or "dBm". A unit that no formatter knows reads
    back empty. Default: empty.

    \qmlproperty BaseFormatter PlotData::xFormatter
    \qmlproperty BaseFormatter PlotData::yFormatter
    What turns values into text; null when there is no unit. It belongs to the data object.
*/
void PlotData::setXUnits(const QString &units)
{
    if (units == xUnits())
        return;
    m_x.replaceFormatter(units, this);
    if (m_x.formatter) {
        connect(this, SIGNAL(xSigDigsChanged(int)), m_x.formatter, SLOT(setSigDigs(int)));
        connect(this, SIGNAL(xPrecisionChanged(int)), m_x.formatter, SLOT(setPrecision(int)));
    }
    emit xUnitsChanged(xUnits());
    emit xFormatterChanged(m_x.formatter);
}

void PlotData::setYUnits(const QString &units)
{
    if (units == yUnits())
        return;
    m_y.replaceFormatter(units, this);
    if (m_y.formatter) {
        connect(this, SIGNAL(ySigDigsChanged(int)), m_y.formatter, SLOT(setSigDigs(int)));
        connect(this, SIGNAL(yPrecisionChanged(int)), m_y.formatter, SLOT(setPrecision(int)));
    }
    emit yUnitsChanged(yUnits());
    emit yFormatterChanged(m_y.formatter);
}

/*!
    \qmlproperty ValueAxis PlotData::axisX
    \qmlproperty ValueAxis PlotData::axisY
    The axes that the data is drawn against; plots of the data take them over. Null by default and once the axis is
    gone.
*/
ValueAxis *PlotData::axisX() const
{
    return m_axisX;
}

ValueAxis *PlotData::axisY() const
{
    return m_axisY;
}

void PlotData::setAxisX(ValueAxis *axis)
{
    if (m_axisX == axis)
        return;
    m_axisX = axis;
    emit axisXChanged(axis);
}

void PlotData::setAxisY(ValueAxis *axis)
{
    if (m_axisY == axis)
        return;
    m_axisY = axis;
    emit axisYChanged(axis);
}

/*!
    \qmlproperty bool PlotData::usePointsAsSegments
    Points are the two ends of separate segments, pair by pair. Used by \l PlotPoints. Default: false. The signal is
    sgnUsePointsAsSignalsChanged().

    \qmlsignal PlotData::sgnUsePointsAsSignalsChanged()
    Tells a change of usePointsAsSegments.
*/
void PlotData::setUsePointsAsSegments(bool use)
{
    if (store(m_usePointsAsSegments, use))
        emit sgnUsePointsAsSignalsChanged();
}

/*!
    \qmlproperty bool PlotData::active
    A cursor may choose the plot of this data by itself. Default: false.
*/
void PlotData::setActive(bool active)
{
    if (store(m_active, active))
        emit sgnActiveChanged();
}

QString PlotData::xUnits() const
{
    return m_x.units();
}

QString PlotData::yUnits() const
{
    return m_y.units();
}

/*!
    \qmlmethod string PlotData::formattedXValue(double x)
    \qmlmethod string PlotData::formattedYValue(double y)
    The value as text: by the formatter, or with six digits where there is none.
*/
QString PlotData::formattedXValue(double x) const
{
    return m_x.formatted(x);
}

QString PlotData::formattedYValue(double y) const
{
    return m_y.formatted(y);
}

/*!
    \qmlmethod string PlotData::formattedXValueByPosIndex(int posIndex)
    \qmlmethod string PlotData::formattedYValueByPosIndex(int posIndex)
    The x or y of a sample as text.
*/
QString PlotData::formattedXValueByPosIndex(int posIndex) const
{
    return formattedXValue(x(posIndex));
}

QString PlotData::formattedYValueByPosIndex(int posIndex) const
{
    return formattedYValue(y(posIndex));
}

/*!
    \qmlmethod void PlotData::emitPlotChanged()
    Announces a change of the data: one plotChanged() follows in the next pass of the event loop.
*/
void PlotData::emitPlotChanged()
{
    // A pending timer is kept: one that is started again at every change would wait for as long as they come.
    if (m_plotChangedTimer != 0)
        return;
    if (QThread::currentThread() == thread())
        m_plotChangedTimer = startTimer(0, Qt::CoarseTimer);
    else
        tellOfThread();
}

// Once, where an object's name may be read: a thread that goes on would fill the log.
void PlotData::tellOfThread()
{
    if (m_isToldOfThread.exchange(true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            qWarning() << this
                       << "is changed by another thread, and does not show that: have it changed in its own, "
                          "with QMetaObject::invokeMethod()";
        },
        Qt::QueuedConnection);
}

void PlotData::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_plotChangedTimer) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(m_plotChangedTimer);
    m_plotChangedTimer = 0;
    emit plotChanged();
}

void PlotData::connectOrnItem(const QString &key)
{
    m_bus.followItem(key);
}

void PlotData::connectOrnVecDoubleItem(const QString &key)
{
    m_bus.followVector(key);
}

void PlotData::connectOrnVecDoubleItem(const QString &key, const BusBinding::Sink &sink)
{
    m_bus.followVector(key, sink);
}

// QML may call the two handlers itself: then there is no sender, or another one.
void PlotData::handleOrnItemValueChanged()
{
    m_bus.takeValue(sender());
}

void PlotData::handleOrnVecDoubleItemChanged()
{
    m_bus.takeVector(sender());
}
