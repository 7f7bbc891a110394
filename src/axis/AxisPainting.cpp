#include "axis/AxisGeometry.h"
#include "axis/LabelBand.h"
#include "axis/TickSearch.h"
#include "axis/ValueAxis.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

class PainterSaver
{
public:
    explicit PainterSaver(QPainter *painter)
        : m_painter(painter)
    {
        m_painter->save();
    }
    ~PainterSaver() { m_painter->restore(); }
    Q_DISABLE_COPY(PainterSaver)

private:
    QPainter *m_painter;
};

} // namespace

graph::AxisGeometry ValueAxis::geometryIn(const QRectF &rect) const
{
    return {rect,         m_orientation == Qt::Horizontal, m_minVisible,
            m_maxVisible, m_rangeOrder == Decreasing,      m_minValue + m_maxValue};
}

void ValueAxis::paintLines(QPainter *painter, const QRectF &rect)
{
    const graph::AxisGeometry geometry = geometryIn(rect);
    if (!m_visible || m_axisStyle == LabelsOnly || !geometry.isDrawable())
        return;
    const QRect pixels = rect.toRect();
    QVector<QLine> lines;
    const QList<qreal> values = visibleTicks(geometry);
    for (const double value : values) {
        int position = 0;
        if (!geometry.position(value, &position))
            continue;
        if (geometry.horizontal)
            lines.append(QLine(position, pixels.top(), position, pixels.bottom()));
        else
            lines.append(QLine(pixels.left(), position, pixels.right(), position));
    }
    const PainterSaver saver(painter);
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(m_linePen);
    painter->drawLines(lines);
}

void ValueAxis::paintLabels(QPainter *painter, const QRectF &rect)
{
    const graph::AxisGeometry geometry = geometryIn(rect);
    if (!m_visible || m_axisStyle == TicksOnly || !geometry.isDrawable())
        return;
    const QList<qreal> values = visibleTicks(geometry);
    updateLabelTexts(values);

    const QFontMetrics metrics(m_labelFont);
    const graph::LabelBand band(*this, metrics, geometry, planeRect(rect));
    QVector<graph::LabelCandidate> candidates;
    for (int i = 0; i < values.size(); ++i) {
        int position = 0;
        if (!m_labelTexts[i].isEmpty() && geometry.position(values[i], &position))
            candidates.append({i, labelNumber(values[i], i), position + 0.5, band.extent(m_labelTexts[i])});
    }

    const PainterSaver saver(painter);
    painter->setFont(m_labelFont);
    painter->setPen(m_labelColor);
    const QVector<graph::LabelPlace> places = graph::labelPlaces(candidates, band.track());
    for (const graph::LabelPlace &place : places)
        painter->drawText(band.textPosition(place, m_labelTexts[place.index]), m_labelTexts[place.index]);
    if (m_unit.isEmpty())
        return;
    if (!geometry.horizontal && m_verticalUnitLabelColor.isValid())
        painter->setPen(m_verticalUnitLabelColor);
    painter->drawText(band.unitPosition(), m_unit);
}

// The room in which labels have to stay whole: the plane's, or that of the plot area while there is no plane.
QRectF ValueAxis::planeRect(const QRectF &rect) const
{
    const QQuickItem *plane = m_labelsPlane;
    return plane ? plane->boundingRect().united(rect) : rect;
}

QList<qreal> ValueAxis::visibleTicks(const graph::AxisGeometry &geometry)
{
    return ticks(geometry.horizontal ? computeTickCountH(geometry.rect.width())
                                     : computeTickCountV(geometry.rect.height()));
}

// Counts ticks from the axis' zero, or along the list of fixed ones: it stays with a tick while the axis is panned.
qint64 ValueAxis::labelNumber(double value, int index) const
{
    if (m_tickInterval == FixedTicks)
        return m_ticks.indexOf(value);
    const double number = std::round(value / tickSpacing());
    return std::abs(number) < 1e15 ? static_cast<qint64>(number) : index;
}

double ValueAxis::tickSpacing() const
{
    if (m_customInterval != 0.0)
        return m_customInterval;
    const int count = m_lastTickCount < 1 ? m_numTicks : m_lastTickCount;
    return m_tickInterval == ScaledBinary ? interval2(count) : interval10(count);
}

void ValueAxis::updateLabelTexts(const QList<qreal> &values)
{
    if (m_labelValues == values && m_labelTexts.size() == values.size())
        return;
    m_labelValues = values;
    m_labelTexts.clear();
    // Sums of spacings miss zero by a hair, which would be written as a tiny number.
    const double nothing = m_tickInterval == FixedTicks ? 0.0 : 1e-9 * tickSpacing();
    for (const double value : values)
        m_labelTexts.append(formattedValue(std::abs(value) < nothing ? 0.0 : value));
}

/*!
    \qmlproperty int ValueAxis::requiredMargin
    \readonly
    The margin in pixels in which the labels of the full range and the unit have room. It does not change while the
    chart is zoomed.
*/
int ValueAxis::requiredMargin() const
{
    constexpr int distances = 6; // from the plot area and from the edge of the plane
    const QFontMetrics metrics(m_labelFont);
    if (m_orientation == Qt::Horizontal) {
        const int rows = (m_staggered ? 2 : 1) + (m_unit.isEmpty() ? 0 : 1);
        return rows * metrics.height() + distances;
    }
    int width = metrics.horizontalAdvance(m_unit);
    const auto include = [&](double value) {
        if (std::isfinite(value))
            width = std::max(width, metrics.horizontalAdvance(formattedValue(value)));
    };
    include(m_minValue);
    include(m_maxValue);
    if (m_tickInterval == FixedTicks) {
        for (const double tick : m_ticks)
            include(tick);
    } else {
        // The ticks at both ends of the range, and those of one zoom step further in, have the longest numbers.
        const double interval = graph::decimalInterval(m_maxValue - m_minValue, m_numTicks, m_ticks);
        for (const double step : {interval, interval / 10}) {
            for (int i = 0; step > 0.0 && i <= 10; ++i) {
                include(std::ceil(m_minValue / step) * step + i * step);
                include(std::floor(m_maxValue / step) * step - i * step);
            }
        }
    }
    return width + distances;
}

void ValueAxis::updateRequiredMargin()
{
    const int margin = requiredMargin();
    if (m_notifiedMargin == margin)
        return;
    m_notifiedMargin = margin;
    emit requiredMarginChanged();
}
