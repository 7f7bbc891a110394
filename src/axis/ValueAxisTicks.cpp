#include "axis/ValueAxis.h"

#include "axis/AxisLabels.h"
#include "axis/LabelLayout.h"
#include "axis/TickSearch.h"
#include "platform/ui/SystemLocale.h"

#include <QDebug>
#include <QFontMetrics>
#include <QMetaMethod>

#include <algorithm>
#include <cmath>

// The ticks of the axis and the texts of their labels.

QList<qreal> ValueAxis::ticks(int count)
{
    if (m_ticks.isDirtyFor(count))
        m_ticks.setList(buildTicks(count < 1 ? numTicks() : count));
    return m_ticks.list();
}

double ValueAxis::localizationFactor() const
{
    if (!m_formatter)
        return 1.0;
    const QString type = m_formatter->getType();
    if (type != QLatin1String("FeetFormatter") && type != QLatin1String("FeetFormatterScaled"))
        return 1.0;
    const bool metric = SystemLocale::instance().getMeasurementSystem() == 0;
    return metric ? 0.3048 : 1.0;
}

QList<qreal> ValueAxis::buildTicks(int count) const
{
    const bool isFixed = tickInterval() == FixedTicks;
    if (!isFixed && !(tickSpacing(count, m_range.visibleExtent()) > 0.0)) {
        qDebug() << this << "buildTicks() interval = 0!!!";
        return {};
    }
    const QList<qreal> built = m_ticks.build(count, m_range, localizationFactor());
    if (!isFixed && built.size() == graph::tickLimit)
        qDebug() << this << "buildTicks() ends after" << graph::tickLimit << "ticks";
    return built;
}

double ValueAxis::interval10(int count) const
{
    return m_ticks.decimalSpacing(count, m_range.visibleExtent(), localizationFactor());
}

double ValueAxis::interval2(int count) const
{
    return graph::AxisTicks::binarySpacing(count, m_range.visibleExtent(), localizationFactor());
}

double ValueAxis::tickSpacing(int count, double range) const
{
    return m_ticks.spacing(count, range, localizationFactor());
}

int ValueAxis::computeTickCountH(double width) const
{
    if (tickInterval() != DisplayDynamic)
        return numTicks();
    return computeTickCount(width, estimateAverageLabelWidth(), dynamicTicksRatio());
}

int ValueAxis::computeTickCountV(double height) const
{
    if (tickInterval() != DisplayDynamic)
        return numTicks();
    return computeTickCount(height, getLabelHeight(), dynamicTicksRatio());
}

int ValueAxis::computeTickCount(double length, double labelSize, double ratio)
{
    if (labelSize <= 0.0) {
        qWarning("%s - labelSize is %g, expected value > 0", "computeTickCount", labelSize);
        return 5;
    }
    return graph::tickCount(length, labelSize, ratio);
}

int ValueAxis::estimateAverageLabelWidth() const
{
    return QFontMetrics(labelFont()).boundingRect(QLatin1Char('0')).width() * 5;
}

int ValueAxis::getLabelHeight() const
{
    return QFontMetrics(labelFont()).height();
}

graph::TickSet ValueAxis::tickSet(const QRectF &rect)
{
    const int count =
        orientation() == Qt::Horizontal ? computeTickCountH(rect.width()) : computeTickCountV(rect.height());
    graph::TickSet set;
    set.ticks = ticks(count);
    set.interval = tickSpacing(count, m_range.visibleExtent());
    set.isDecreasing = m_rangeOrder == Decreasing;
    if (tickInterval() == FixedTicks)
        set.positions = m_ticks.positions();
    else if (graph::tickOrdinals(set.ticks, set.interval).size() < set.ticks.size())
        set.positions = set.ticks;
    return set;
}

// The values whose labels the margin has to have room for.
QList<qreal> ValueAxis::namedValues() const
{
    QList<qreal> values{minValue(), maxValue()};
    if (tickInterval() == FixedTicks) {
        values += m_ticks.positions();
    } else {
        // The ends may be shorter than what is between them: 0 and 1, but 0.2.
        const double step = tickSpacing(numTicks(), valueRange());
        const double first = step > 0.0 ? std::ceil(minValue() / step) * step : 0.0;
        const double last = step > 0.0 ? std::floor(maxValue() / step) * step : 0.0;
        values << first << first + step << last - step << last;
    }
    const auto isOutside = [this](double value) { return !(value >= minValue() && value <= maxValue()); };
    values.erase(std::remove_if(values.begin(), values.end(), isOutside), values.end());
    return values;
}

/*!
    \qmlproperty enumeration ValueAxis::tickInterval
    ScaledDecimal (default) and ScaledBinary search a round spacing for numTicks ticks, DisplayDynamic for as
    many as dynamicTicksRatio of the axis' length has room for; FixedTicks shows those of the ticks that are
    visible. Without a notify signal.
*/
void ValueAxis::setTickInterval(TickInterval interval)
{
    if (m_ticks.setKind(static_cast<graph::AxisTicks::Kind>(interval)))
        updateRequiredMargin();
}

/*!
    \qmlproperty int ValueAxis::numTicks
    About how many ticks are wanted, 5 by default; DisplayDynamic does not ask. Without a notify signal.
*/
void ValueAxis::setNumTicks(int count)
{
    if (m_ticks.setNumber(count))
        updateRequiredMargin();
}

/*!
    \qmlproperty double ValueAxis::dynamicTicksRatio
    The share of the axis' length that labels may fill with DisplayDynamic, 0.5 by default. Without a notify
    signal.
*/
void ValueAxis::setDynamicTicksRatio(double ratio)
{
    m_ticks.setDynamicRatio(ratio);
}

/*!
    \qmlproperty double ValueAxis::baseline
    Where bars and filled plots begin, in axis units, 0 by default. Without a notify signal.
*/
void ValueAxis::setBaseline(double baseline)
{
    m_hasWrittenBaseline = true;
    if (baseline == m_baseline)
        return;
    m_baseline = baseline;
    m_ticks.setDirty(true);
}

/*!
    \qmlproperty list<real> ValueAxis::ticks
    The positions of FixedTicks. Otherwise the mantissas that a decimal spacing may have, ascending: 1, 1.5,
    2, 2.5, 5 and 10 by default.
*/
void ValueAxis::setTicks(const QList<qreal> &ticks)
{
    if (m_ticks.setPositions(ticks))
        emit ticksChanged(m_ticks.positions());
}

/*!
    \qmlproperty double ValueAxis::customInterval
    The distance of the ticks in axis units; 0, the default, has one searched, and a negative one
    leaves no ticks. Without a notify signal.
*/
void ValueAxis::setCustomInterval(double interval)
{
    m_ticks.setCustomInterval(interval);
    m_ticks.setDirty(true);
    updateRequiredMargin();
}

/*!
    \qmlproperty enumeration ValueAxis::rangeOrder
    Increasing (default) or Decreasing: the ticks and labels are mirrored, the plots are not.
*/
void ValueAxis::setRangeOrder(AxisRangeOrder order)
{
    if (order == m_rangeOrder)
        return;
    m_rangeOrder = order;
    m_ticks.setDecreasing(order == Decreasing);
    m_ticks.setDirty(true);
    emit rangeOrderChanged();
}

QString ValueAxis::formattedValue(double value) const
{
    if (m_formatter)
        return m_formatter->formatValue(value);
    const int index = m_ticks.positions().indexOf(value);
    if (index >= 0) {
        const QStringList labels = tickLabels();
        if (index < labels.size())
            return labels.at(index);
    }
    return QString::number(value, 'g', 6);
}

/*!
    \qmlproperty list<string> ValueAxis::tickLabels
    The texts of the values at the same place in ticks; an empty text shows none.
    Empty by default. Without a notify signal.
*/
void ValueAxis::setTickLabels(const QStringList &labels)
{
    m_tickLabels = labels;
    m_texts.clear();
    updateRequiredMargin();
}

/*!
    \qmlproperty BaseFormatter ValueAxis::formatter
    Makes the texts of the labels; null, the default, shows tickLabels and plain numbers. The axis adopts a
    formatter that has no parent. It follows the digits of the data that a formatter belongs to; after other
    changes of a formatter the labels are right with the next repaint, see emitAxisChanged().
*/
void ValueAxis::setFormatter(BaseFormatter *formatter)
{
    if (formatter == m_formatter)
        return;
    m_formatter = formatter;
    m_ticks.setDirty(true);
    if (formatter && !formatter->parent())
        formatter->setParent(this);
    followDigits(formatter ? formatter->parent() : nullptr);
    emit formatterChanged();
}

// A formatter does not announce that it formats differently; the data object that made it and sets its
// digits does.
void ValueAxis::followDigits(QObject *owner)
{
    static const char *const changes[] = {SIGNAL(xSigDigsChanged(int)), SIGNAL(ySigDigsChanged(int)),
                                          SIGNAL(xPrecisionChanged(int)), SIGNAL(yPrecisionChanged(int))};
    if (m_digitsOwner)
        disconnect(m_digitsOwner, nullptr, this, SLOT(emitAxisChanged()));
    m_digitsOwner = owner == this ? nullptr : owner;
    for (const char *change : changes) {
        if (m_digitsOwner && m_digitsOwner->metaObject()->indexOfSignal(change + 1) >= 0)
            connect(m_digitsOwner, change, this, SLOT(emitAxisChanged()));
    }
}

/*!
    \qmlproperty int ValueAxis::requiredMargin
    The margin in pixels that the labels of the full range need; write \c {margin: requiredMargin} to have it.
    It does not change while zooming.
*/
int ValueAxis::requiredMargin() const
{
    // The values cost a search, and a margin above or below does not depend on them.
    const QList<qreal> values = orientation() == Qt::Horizontal ? QList<qreal>() : namedValues();
    return graph::requiredMargin(m_look, values, [this](double value) { return formattedValue(value); });
}

// Measuring texts is not free: only for those who listen.
void ValueAxis::updateRequiredMargin()
{
    if (!isSignalConnected(QMetaMethod::fromSignal(&ValueAxis::requiredMarginChanged)))
        return;
    const int required = requiredMargin();
    if (required == m_announcedMargin)
        return;
    m_announcedMargin = required;
    emit requiredMarginChanged();
}
