#include "kit/axis/ChartAxis.h"

#include "axis/TickMarks.h"
#include "axis/TickSearch.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/NumberLabels.h"
#include "kit/axis/TimeTicks.h"
#include "kit/data/Telling.h"

#include <QDateTime>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace graph {

namespace {

// Distances of ticks in heights of their texts.
constexpr double tickDistanceAlongText = 3.0;
constexpr double tickDistanceAcrossText = 1.75;
constexpr double nominalLength = 600.0; // pixels
constexpr int marginSlack = 6;
// Between the plot area and the numbers below or above it, more than an axis has by itself: those at its ends are below
// the numbers of another axis, too.
constexpr int rowRoom = 2;
// Between the texts and the edge of the chart.
constexpr int edgeRoom = 2;
constexpr int minorMarkLength = 4;
constexpr double minorGridOpacity = 0.45;

double noOffset(double)
{
    return 0.0;
}

double placeOffset(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000.0)).offsetFromUtc();
}

} // namespace

/*!
    \qmltype ChartAxis
    \inqmlmodule graph_kit
    \inherits ValueAxis
    \brief An axis that scales by itself: linear, logarithmic or in time, with a title and a margin of its own.

    It chooses its ticks and writes their texts: as many as have room, with one prefix for all and as many digits
    as their distance needs. Where that is tiny beside the values, what they have in common is written once at the
    end of the axis, "2.4 GHz +", and the labels say the rest.

    Its margin is as wide as the labels need, and several such axes at one side of a plane are beside each other.
    A range from a greater to a smaller value shows a reversed axis.

    \c tickInterval FixedTicks shows the positions in \c ticks. A \c formatter writes the texts. A \c customInterval
    counts on a linear axis.
*/
ChartAxis::ChartAxis(QObject *parent)
    : ValueAxis(parent)
{
    setReversible();
    connect(this, &ValueAxis::requiredMarginChanged, this, &ChartAxis::followMargin);
    connect(this, &ValueAxis::axisChanged, this, &ChartAxis::checkRange);
    connect(this, &ValueAxis::visibleChanged, this, &ValueAxis::marginChanged);
    connect(this, &ValueAxis::minValueChanged, this, &ChartAxis::beginChanged);
    connect(this, &ValueAxis::maxValueChanged, this, &ChartAxis::endChanged);
    connect(this, &ValueAxis::marginChanged, this, &ChartAxis::roomChanged);
    connect(this, &ValueAxis::orientationChanged, this, &ChartAxis::measureAgain);
    connect(this, &ValueAxis::valueRangeChanged, this, &ChartAxis::measureAgain);
    connect(this, &ValueAxis::unitChanged, this, &ChartAxis::measureAgain);
    connect(this, &ValueAxis::formatterChanged, this, &ChartAxis::measureAgain);
    emitAxisChanged();
}

/*!
    \qmlproperty string ChartAxis::title
    What the axis shows, written along it; with the unit in brackets. Empty by default; a vertical axis of a Chart
    that has a single trace then has its name, and where there are several such axes the name is in the colour of the
    trace.
*/
void ChartAxis::setTitle(const QString &title)
{
    if (title == m_title)
        return;
    m_title = title;
    emit titleChanged();
    emitAxisChanged();
}

void ChartAxis::setTitleColor(const QColor &color)
{
    if (color == m_titleColor)
        return;
    m_titleColor = color;
    emitAxisChanged();
}

/*!
    \qmlproperty enumeration ChartAxis::scale
    How values become places along the axis.
    \value ChartAxis.Linear by differences; the default
    \value ChartAxis.Logarithmic by ratios. Zooming and panning are even in the logarithm. Values of 0 and below have
    no place: samples there are missing, and of a range that reaches there the positive part is shown, with a message.
    \value ChartAxis.Time linear, in seconds since the beginning of 1970, with the ticks and texts of a clock and a calendar
*/
void ChartAxis::setScale(ScaleType scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    setScaleKind(scale == Logarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear);
    measureAgain();
    emit scaleChanged();
    emitAxisChanged();
}

/*!
    \qmlproperty int ChartAxis::minorTicks
    How many ticks there are between two that have a text; 0 for none, and as suits them with -1, the default. A
    logarithmic axis has those of 2 to 9 times the powers of ten, or none.
*/
void ChartAxis::setMinorTicks(int count)
{
    count = bounded(this, "minorTicks", count, -1);
    if (count == m_minorTicks)
        return;
    m_minorTicks = count;
    emit minorTicksChanged();
    emitAxisChanged();
}

/*!
    \qmlproperty bool ChartAxis::minorGrid
    Whether minor ticks are lines all across the plot area, or short ones at the side of the axis (false, the
    default).
*/
void ChartAxis::setMinorGrid(bool on)
{
    if (on == m_minorGrid)
        return;
    m_minorGrid = on;
    emit minorGridChanged();
    emitAxisChanged();
}

/*!
    \qmlproperty color ChartAxis::minorGridColor
    The colour of minor ticks and of the minor grid: a translucent lineColor unless set.
*/
void ChartAxis::setMinorGridColor(const QColor &color)
{
    if (color == m_minorGridColor)
        return;
    m_minorGridColor = color;
    emit minorGridColorChanged();
    emitAxisChanged();
}

QColor ChartAxis::minorGridColor() const
{
    if (m_minorGridColor.isValid())
        return m_minorGridColor;
    QColor color = lineColor();
    color.setAlphaF(color.alphaF() * minorGridOpacity);
    return color;
}

/*!
    \qmlproperty bool ChartAxis::utc
    Whether a Time axis shows coordinated universal time; false, the default, for the time of the place.
*/
void ChartAxis::setUtc(bool utc)
{
    if (utc == m_utc)
        return;
    m_utc = utc;
    emit utcChanged();
    emitAxisChanged();
}

/*!
    \qmlproperty enumeration ChartAxis::autoRange
    How the full range follows the data that a chart tells the axis of. A vertical axis gets some head room and
    round ends, a horizontal one the ends of the data.
    \value ChartAxis.Off not at all; the default
    \value ChartAxis.Grow an end moves outwards when data cross it
    \value ChartAxis.Fit and inwards when much of the range has become free
    \value ChartAxis.FitVisible the same for the data that are visible along the other axis

    An end that was written, minValue or maxValue, stays.
*/
void ChartAxis::setAutoRange(AutoRange mode)
{
    if (mode == m_autoRange)
        return;
    m_autoRange = mode;
    emit autoRangeChanged();
}

/*!
    \qmlproperty double ChartAxis::minValue
    \qmlproperty double ChartAxis::maxValue
    The ends of the full range, 0 and 1 by default. autoRange does not move written ones; NaN gives an end back to
    it.
*/
void ChartAxis::setMinValue(double minValue)
{
    m_writtenMin = std::isnan(minValue) ? std::nullopt : std::make_optional(minValue);
    if (m_writtenMin)
        ValueAxis::setMinValue(minValue);
    else
        m_hasFollowedData = false;
}

void ChartAxis::setMaxValue(double maxValue)
{
    m_writtenMax = std::isnan(maxValue) ? std::nullopt : std::make_optional(maxValue);
    if (m_writtenMax)
        ValueAxis::setMaxValue(maxValue);
    else
        m_hasFollowedData = false;
}

/*!
    \qmlmethod void ChartAxis::range(double from, double to)
    Writes both ends of the full range. From the greater to the smaller value the axis is reversed. An end that is
    no number is ignored with the other one, with a line in the category \c graph.kit.
*/
void ChartAxis::range(double from, double to)
{
    if (std::isnan(from) || std::isnan(to)) {
        tellOnce(this, "range",
                 QStringLiteral("is given a range from %1 to %2, which is ignored: write two numbers")
                     .arg(from)
                     .arg(to));
        return;
    }
    m_writtenMin = from;
    m_writtenMax = to;
    moveRange(from, to);
}

/*!
    \qmlmethod string ChartAxis::valueText(double value)
    A value with its unit, or as a date and time, for a readout: with as many digits as tell it from its neighbours on
    the screen.
*/
QString ChartAxis::valueText(double value) const
{
    constexpr double steps = 1000.0;
    if (m_scale == Time)
        return readingOfTime(value, std::abs(maxVisible() - minVisible()), m_utc ? noOffset : placeOffset);
    if (formatter())
        return ValueAxis::formattedValue(value);
    const double span = std::abs(maxVisible() - minVisible());
    const double resolution = m_scale == Logarithmic ? std::abs(value) / steps : span / steps;
    return numberWithUnit(value, resolution, AxisUnit(unit()));
}

std::optional<int> ChartAxis::numberPrefix() const
{
    if (m_scale != Linear || !hasOwnTicks() || formatter() || !AxisUnit(unit()).takesPrefixes())
        return std::nullopt;
    const auto [lowest, highest] = std::minmax({minVisible(), maxVisible()});
    const double length = m_length > 1.0 ? double(m_length) : nominalLength;
    // Several readings ask at once.
    const PrefixKey key(lowest, highest, length, unit());
    if (m_prefixKey != key) {
        m_prefixKey = key;
        m_prefix = plan(lowest, highest, length).prefix;
    }
    return m_prefix;
}

void ChartAxis::moveRange(double from, double to)
{
    ValueAxis::setMinValue(from);
    ValueAxis::setMaxValue(to);
}

void ChartAxis::setDataExtent(double lowest, double highest, double leastPositive)
{
    if (m_autoRange == Off || (m_writtenMin && m_writtenMax))
        return;
    const bool isReversed = minValue() > maxValue();
    const ScaleEnds present =
        isReversed ? ScaleEnds{maxValue(), minValue()} : ScaleEnds{minValue(), maxValue()};
    AutoRangeRequest request;
    request.scale = scaleKind();
    request.onlyGrows = m_autoRange == Grow;
    request.hasHeadRoom = orientation() == Qt::Vertical && m_hasHeadRoom;
    request.present = m_hasFollowedData ? &present : nullptr;
    request.data = {lowest, highest, leastPositive};
    if (!std::isfinite(lowest) || !std::isfinite(highest))
        return;
    m_hasFollowedData = true;
    const ScaleEnds found = graph::autoRange(request);
    moveRange(m_writtenMin.value_or(isReversed ? found.end : found.begin),
              m_writtenMax.value_or(isReversed ? found.begin : found.end));
}

// Of what a logarithmic axis cannot show it tells once, not while a document is still writing the range.
void ChartAxis::checkRange()
{
    const bool isUntouched = minValue() == 0.0 && maxValue() == 1.0;
    const bool isBad = m_scale == Logarithmic && !isUntouched && std::min(minValue(), maxValue()) <= 0.0;
    if (isBad && !m_hasComplained) {
        const ScaleEnds shown = axisRange().shownEnds();
        tell(this,
             QStringLiteral("is logarithmic and cannot show the range %1 to %2, only %3 to %4: write a range "
                            "above 0, or scale: ChartAxis.Linear")
                 .arg(minValue())
                 .arg(maxValue())
                 .arg(shown.begin)
                 .arg(shown.end));
    }
    m_hasComplained = isBad;
}

// Labels of another kind need another margin.
void ChartAxis::measureAgain()
{
    m_widestText = 0;
    m_plan = {};
    m_planKey.reset();
}

/*!
    \qmlproperty int ChartAxis::margin
    The room beside the plot area for labels and title, in pixels. It follows requiredMargin until it is written;
    undefined lets it follow again.
*/
void ChartAxis::setMargin(int margin)
{
    m_hasWrittenMargin = true;
    ValueAxis::setMargin(margin);
}

void ChartAxis::resetMargin()
{
    m_hasWrittenMargin = false;
    m_followedMargin = margin();
    followMargin();
}

void ChartAxis::setRoomBeyond(int pixels)
{
    m_roomBeyond = pixels;
    followMargin();
}

void ChartAxis::followMargin()
{
    // Another one came from C++, by way of the base class.
    if (m_hasWrittenMargin || margin() != m_followedMargin)
        return;
    m_followedMargin = requiredMargin() + m_roomBeyond;
    ValueAxis::setMargin(m_followedMargin);
}

int ChartAxis::titleHeight() const
{
    return m_title.isEmpty() ? 0 : QFontMetrics(labelFont()).height();
}

int ChartAxis::requiredMargin() const
{
    const QFontMetrics metrics(labelFont());
    if (orientation() == Qt::Horizontal) {
        // The unit has a row of its own unless it is in the title.
        const bool hasUnitRow = m_title.isEmpty() && !unit().isEmpty();
        return (staggered() || hasUnitRow ? 2 : 1) * metrics.height() + marginSlack + rowRoom + titleHeight();
    }
    const int titleRoom = m_title.isEmpty() ? 0 : titleHeight() + edgeRoom;
    if (!hasOwnTicks())
        return ValueAxis::requiredMargin() + titleRoom;
    const ScaleEnds ends = axisRange().shownEnds();
    const TickPlan whole =
        plan(std::min(ends.begin, ends.end), std::max(ends.begin, ends.end), nominalLength);
    int widest = std::max(m_widestText, m_title.isEmpty() ? metrics.horizontalAdvance(whole.unit) : 0);
    for (const QString &text : whole.texts)
        widest = std::max(widest, metrics.horizontalAdvance(text));
    return widest + marginSlack + titleRoom;
}

bool ChartAxis::hasOwnTicks() const
{
    // A formatter may show other units than those of the axis, in which plain ticks then are round.
    const bool arePlain = m_scale == Linear && !isReversed() && (customInterval() != 0.0 || formatter());
    return tickInterval() != FixedTicks && !arePlain;
}

TickRequest ChartAxis::requestFor(double lowest, double highest, double length) const
{
    const QFontMetricsF metrics(labelFont());
    const bool isAlongText = orientation() == Qt::Horizontal;
    TickRequest request;
    request.scale = scaleKind();
    request.lowest = lowest;
    request.highest = highest;
    request.length = length;
    request.spacing = metrics.height() * (isAlongText ? tickDistanceAlongText : tickDistanceAcrossText);
    request.gap = isAlongText ? metrics.horizontalAdvance(QLatin1Char('0')) * 2.0 : metrics.height() / 4.0;
    request.unit = unit();
    request.interval = m_scale == Linear ? customInterval() : 0.0;
    request.minorTicks = m_minorTicks;
    if (isAlongText)
        request.extent = [metrics](const QString &text) { return metrics.horizontalAdvance(text); };
    else
        request.extent = [height = metrics.height()](const QString &) { return height; };
    return request;
}

TickPlan ChartAxis::plan(double lowest, double highest, double length) const
{
    const TickRequest request = requestFor(lowest, highest, length);
    TickPlan found = m_scale == Time          ? timeTicks(request, m_utc ? noOffset : placeOffset)
                     : m_scale == Logarithmic ? logarithmicTicks(request)
                                              : linearTicks(request);
    if (!formatter())
        return found;
    for (int i = 0; i < found.majors.size(); ++i)
        found.texts[i] = formatter()->formatValue(found.majors.at(i));
    found.unit = AxisUnit(unit()).symbol();
    found.common.clear();
    return found;
}

TickSet ChartAxis::tickSet(const QRectF &rect)
{
    if (tickInterval() == FixedTicks) {
        TickSet fixed;
        fixed.positions = ticks();
        const auto [lowest, highest] = std::minmax({minVisible(), maxVisible()});
        fixed.ticks = ticksWithin(fixed.positions, lowest, highest);
        return fixed;
    }
    if (!hasOwnTicks())
        return ValueAxis::tickSet(rect);
    updatePlan((orientation() == Qt::Horizontal ? rect.width() : rect.height()) - 1.0);
    TickSet set;
    set.ticks = QList<qreal>(m_plan.majors.begin(), m_plan.majors.end());
    set.positions = set.ticks;
    set.minors = m_plan.minors;
    return set;
}

void ChartAxis::updatePlan(double length)
{
    m_length = length;
    ScaleEnds ends{minVisible(), maxVisible()};
    if (scaleKind() == ScaleKind::Logarithmic)
        ends = positivePart(ends.begin, ends.end);
    const PlanKey key(ends.begin, ends.end, length, labelFont(), unit(), m_minorTicks, m_scale, m_utc,
                      orientation(), customInterval());
    // A formatter may answer differently at any time.
    if (m_planKey == key && !formatter())
        return;
    m_planKey = key;
    TickPlan wanted = plan(std::min(ends.begin, ends.end), std::max(ends.begin, ends.end), length);
    if (wanted == m_plan)
        return;
    forgetTexts();
    m_plan = std::move(wanted);
    if (orientation() == Qt::Horizontal)
        return;
    const QFontMetrics metrics(labelFont());
    int widest = m_widestText;
    for (const QString &text : qAsConst(m_plan.texts))
        widest = std::max(widest, metrics.horizontalAdvance(text));
    if (widest == m_widestText)
        return;
    m_widestText = widest;
    // Not at once: this is a repaint, perhaps in another thread.
    QMetaObject::invokeMethod(
        this, [this] { updateRequiredMargin(); }, Qt::QueuedConnection);
}

QString ChartAxis::formattedValue(double value) const
{
    if (!hasOwnTicks())
        return ValueAxis::formattedValue(value);
    const int index = m_plan.majors.indexOf(value);
    if (index >= 0)
        return m_plan.texts.at(index);
    return m_scale == Time ? timeText(value, m_utc ? noOffset : placeOffset)
                           : shortNumber(value, AxisUnit(unit()));
}

AxisLook ChartAxis::look() const
{
    AxisLook look = ValueAxis::look();
    look.minorPen = QPen(minorGridColor(), look.linePen.width());
    look.minorLength = m_minorGrid ? 0 : minorMarkLength;
    look.unit = AxisUnit(look.unit).symbol();
    look.entersCorners = true;
    if (look.isHorizontal() && look.hasBand())
        look.offset += rowRoom;
    if (hasOwnTicks() && !m_plan.majors.isEmpty())
        look.unit = m_plan.common.isEmpty() ? m_plan.unit : m_plan.common;
    if (!m_title.isEmpty())
        look.unit = m_plan.common;
    return look;
}

QString ChartAxis::shownTitle() const
{
    const QString shown = hasOwnTicks() && !m_plan.majors.isEmpty() ? m_plan.unit : AxisUnit(unit()).symbol();
    return shown.isEmpty() ? m_title : m_title + QLatin1String(" (") + shown + QLatin1Char(')');
}

// The outer row of the margin, or of the plot area where there is no margin.
QRectF ChartAxis::titleBand(const QRectF &plot) const
{
    const AxisLook drawn = ValueAxis::look();
    const double height = titleHeight();
    const double outside = drawn.hasBand() ? drawn.offset + margin() - edgeRoom : 0.0;
    const bool isBegin = drawn.side() == AxisSide::Begin;
    if (orientation() == Qt::Horizontal) {
        const double top = isBegin ? plot.top() - outside : plot.bottom() + outside - height;
        return QRectF(plot.left(), top, plot.width(), height);
    }
    const double left = isBegin ? plot.left() - outside : plot.right() + outside - height;
    return QRectF(left, plot.top(), height, plot.height());
}

void ChartAxis::paintLabels(QPainter *painter, const QRectF &rect, const LabelSurroundings &surroundings)
{
    LabelSurroundings inner = surroundings;
    if (orientation() == Qt::Horizontal)
        inner.bounds.adjust(edgeRoom, 0.0, -edgeRoom, 0.0);
    ValueAxis::paintLabels(painter, rect, inner);
    if (m_title.isEmpty() || !visible() || axisStyle() == TicksOnly)
        return;
    const QRectF band = titleBand(rect);
    painter->save();
    painter->setFont(labelFont());
    painter->setPen(m_titleColor.isValid() ? m_titleColor : labelColor());
    const int flags = Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine;
    if (orientation() == Qt::Horizontal) {
        painter->drawText(band, flags, shownTitle());
    } else {
        painter->translate(band.bottomLeft());
        painter->rotate(-90.0);
        painter->drawText(QRectF(QPointF(), band.size().transposed()), flags, shownTitle());
    }
    painter->restore();
}

} // namespace graph
