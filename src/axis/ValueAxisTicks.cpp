#include "axis/ValueAxis.h"

#include "axis/TickSearch.h"
#include "platform/ui/SystemLocale.h"

#include <QDebug>
#include <QFontMetrics>

// Which ticks the axis has: the search and its cache. Everything else of the class stands in ValueAxis.cpp.

QList<qreal> ValueAxis::ticks(int count)
{
    if (count != m_lastTickCount) {
        m_ticksDirty = true;
        m_lastTickCount = count;
    }
    if (m_ticksDirty) {
        m_cachedTicks = buildTicks(count < 1 ? m_numTicks : count);
        m_ticksDirty = false;
    }
    return m_cachedTicks;
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
    double lowest = m_minVisible;
    double highest = m_maxVisible;
    if (m_rangeOrder == Decreasing) {
        const double sum = m_minValue + m_maxValue;
        lowest = sum - m_maxVisible;
        highest = sum - m_minVisible;
    }
    if (m_tickInterval == FixedTicks)
        return graph::ticksWithin(m_ticks, lowest, highest);
    const double interval = tickSpacing(count, m_maxVisible - m_minVisible);
    if (!(interval > 0.0)) {
        qDebug() << this << "buildTicks() interval = 0!!!";
        return {};
    }
    const QList<qreal> built = graph::spacedTicks(lowest, highest, interval);
    if (built.size() == graph::tickLimit)
        qDebug() << this << "buildTicks() ends after" << graph::tickLimit << "ticks";
    return built;
}

double ValueAxis::interval10(int count) const
{
    const double factor = localizationFactor();
    return graph::decimalInterval((m_maxVisible - m_minVisible) * factor, count, m_ticks) / factor;
}

double ValueAxis::interval2(int count) const
{
    const double factor = localizationFactor();
    return graph::binaryInterval((m_maxVisible - m_minVisible) * factor, count) / factor;
}

double ValueAxis::tickSpacing(int count, double range) const
{
    if (m_tickInterval == FixedTicks)
        return 0.0;
    if (m_customInterval != 0.0)
        return m_customInterval;
    const double factor = localizationFactor();
    const double spacing = m_tickInterval == ScaledBinary
                               ? graph::binaryInterval(range * factor, count)
                               : graph::decimalInterval(range * factor, count, m_ticks);
    return spacing / factor;
}

int ValueAxis::computeTickCountH(double width) const
{
    if (m_tickInterval != DisplayDynamic)
        return m_numTicks;
    return computeTickCount(width, estimateAverageLabelWidth(), m_dynamicTicksRatio);
}

int ValueAxis::computeTickCountV(double height) const
{
    if (m_tickInterval != DisplayDynamic)
        return m_numTicks;
    return computeTickCount(height, getLabelHeight(), m_dynamicTicksRatio);
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
    return QFontMetrics(m_labelFont).boundingRect(QLatin1Char('0')).width() * 5;
}

int ValueAxis::getLabelHeight() const
{
    return QFontMetrics(m_labelFont).height();
}
