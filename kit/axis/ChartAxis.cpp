#include "kit/axis/ChartAxis.h"

#include "axis/TickMarks.h"
#include "axis/TickSearch.h"
#include "kit/axis/AxisTitle.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/UnitText.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"

#include <QFontMetrics>
#include <QPen>

#include <algorithm>

namespace graph {

namespace {

constexpr double nominalLength = 600.0; // pixels
constexpr double mostIntervals = 1000.0;
// Ticks of a document that are laid out.
constexpr int mostFixedTicks = 10000;
constexpr int marginSlack = 6;
// Between the plot area and the numbers below or above it, more than an axis has by itself: those at its ends are below
// the numbers of another axis, too.
constexpr int rowRoom = 2;
// Between the texts and the edge of the chart.
constexpr int edgeRoom = 2;
constexpr int minorMarkLength = 4;
constexpr double minorGridOpacity = 0.45;

// So that the range between two ends is a number. NaN is none, and what is infinite neither.
std::optional<double> writtenEnd(const ChartAxis *axis, const char *property, double end)
{
    if (std::isfinite(end))
        return bounded(axis, property, end, -farthestEnd, farthestEnd);
    if (std::isinf(end))
        tellOnce(
            axis, property,
            QStringLiteral("is given %1 by %2, where no range can end, and leaves this end to autoRange: "
                           "write a number, or nothing")
                .arg(end)
                .arg(QLatin1String(property)));
    return std::nullopt;
}

// What the data ask for, apart from an end that is written. Where all data are beyond that, the other end is on its
// proper side, too: the axis does not turn round.
ScaleEnds withWritten(const ScaleEnds &found, const std::optional<double> &lowest,
                      const std::optional<double> &highest, ScaleKind kind)
{
    const ScaleEnds ends{lowest.value_or(found.begin), highest.value_or(found.end)};
    if (ends.begin < ends.end)
        return ends;
    constexpr double leastShare = 1e-3;
    const double written = lowest ? ends.begin : ends.end;
    const bool isRatio = kind == ScaleKind::Logarithmic && written > 0.0;
    const double ratio = found.end / found.begin;
    const double distance = std::max(found.end - found.begin, std::abs(written) * leastShare);
    if (lowest)
        return {written, isRatio ? written * ratio : written + distance};
    return {isRatio ? written / ratio : written - distance, written};
}

} // namespace

/*!
    \qmltype ChartAxis
    \inqmlmodule graph_kit
    \inherits ValueAxis
    \brief An axis that scales by itself: linear, logarithmic or in time, with a title and a margin of its own.

    \image logarithmic.png An axis of decades with its minor ticks

    \code
    ChartAxis { alignment: Qt.AlignRight; title: "Temperature"; unit: "°C"; autoRange: ChartAxis.Fit }
    ChartAxis { scale: ChartAxis.Logarithmic; minValue: 20; maxValue: 20000; unit: "Hz"; minorGrid: true }
    \endcode

    It chooses its ticks and writes their texts: as many as have room, with one prefix for all and as many digits
    as their distance needs. Where that is tiny beside the values, what they have in common is written once at the
    end of the axis, "2.4 GHz +", and the labels say the rest.

    Its margin is as wide as the labels need, and several such axes at one side of a plane are beside each other.
    A range from a greater to a smaller value shows a reversed axis.

    \c tickInterval FixedTicks shows the positions in \c ticks, up to 10000 of them; of more the axis chooses its own. A \c formatter writes the texts. A \c customInterval
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
    connect(this, &ValueAxis::formatterChanged, this, &ChartAxis::followFormatter);
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
    if (!store(m_scale, bounded(this, "scale", scale, Linear, Time)))
        return;
    setScaleKind(m_scale == Logarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear);
    // Ends that were near enough are not on another scale.
    m_hasFollowedData = m_hasFollowedData && m_autoRange == Grow;
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

    Beyond the dots of traces with the style Points or LineAndPoints there is as much room as shows them whole.
    An end that was written, minValue or maxValue, stays. For traces that are bars or areas the range includes the
    baseline, without room beyond it.
*/
void ChartAxis::setAutoRange(AutoRange mode)
{
    m_hasWrittenAutoRange = true;
    if (!store(m_autoRange, bounded(this, "autoRange", mode, Off, FitVisible)))
        return;
    emit autoRangeChanged();
}

/*!
    \qmlproperty double ChartAxis::minValue
    \qmlproperty double ChartAxis::maxValue
    The ends of the full range, 0 and 1 by default. autoRange does not move written ones; NaN gives an end back to
    it, and so does an infinite number, with a line in the category \c graph.kit.
*/
void ChartAxis::setMinValue(double minValue)
{
    const bool wasWritten = m_writtenMin.has_value();
    m_writtenMin = writtenEnd(this, "minValue", minValue);
    takeDirection();
    if (m_writtenMin)
        ValueAxis::setMinValue(*m_writtenMin);
    else if (wasWritten)
        leaveEnd();
}

void ChartAxis::setMaxValue(double maxValue)
{
    const bool wasWritten = m_writtenMax.has_value();
    m_writtenMax = writtenEnd(this, "maxValue", maxValue);
    takeDirection();
    if (m_writtenMax)
        ValueAxis::setMaxValue(*m_writtenMax);
    else if (wasWritten)
        leaveEnd();
}

// One end alone does not say which way the axis runs.
void ChartAxis::takeDirection()
{
    if (m_writtenMin && m_writtenMax)
        m_isReversed = *m_writtenMin > *m_writtenMax;
}

// A chart fits it again.
void ChartAxis::leaveEnd()
{
    m_hasFollowedData = false;
    emit autoRangeChanged();
}

/*!
    \qmlmethod void ChartAxis::range(var from, var to)
    Writes both ends of the full range, numbers or dates. From the greater to the smaller value the axis is reversed. An end that is
    no number is ignored with the other one, an infinite one leaves its end to autoRange, with a line in the category
    \c graph.kit.
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
    m_writtenMin = writtenEnd(this, "range", from);
    m_writtenMax = writtenEnd(this, "range", to);
    takeDirection();
    moveRange(m_writtenMin.value_or(minValue()), m_writtenMax.value_or(maxValue()));
    if (!m_writtenMin || !m_writtenMax)
        leaveEnd();
}

void ChartAxis::range(const QVariant &from, const QVariant &to)
{
    range(numberIn(from), numberIn(to));
}

/*!
    \qmlmethod string ChartAxis::valueText(double value)
    A value with its unit, or as a date and time, for a readout: with as many digits as tell it from its neighbours on
    the screen.
*/
QString ChartAxis::valueText(double value) const
{
    if (formatter())
        return ValueAxis::formattedValue(value);
    return numbering().reading(value, std::abs(maxVisible() - minVisible()));
}

QString ChartAxis::differenceText(double difference) const
{
    if (m_scale == Time || formatter())
        return valueText(difference);
    AxisNumbering differences = numbering();
    differences.unit = AxisUnit::ofDifferences(unit());
    return differences.reading(difference, std::abs(maxVisible() - minVisible()));
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
        m_prefix = m_found.of(numbering(), lowest, highest, length).prefix;
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
    const bool isReversed = m_writtenMin || m_writtenMax ? m_isReversed : minValue() > maxValue();
    const ScaleEnds present =
        isReversed ? ScaleEnds{maxValue(), minValue()} : ScaleEnds{minValue(), maxValue()};
    AutoRangeRequest request;
    request.scale = scaleKind();
    request.onlyGrows = m_autoRange == Grow;
    request.hasHeadRoom = orientation() == Qt::Vertical && m_hasHeadRoom;
    request.reach = m_reach;
    request.present = m_hasFollowedData ? &present : nullptr;
    request.data = {lowest, highest, leastPositive};
    if (m_restsOnBaseline)
        request.data.baseline = baseline();
    if (!std::isfinite(lowest) || !std::isfinite(highest))
        return;
    m_hasFollowedData = true;
    const ScaleEnds found = withWritten(graph::autoRange(request), isReversed ? m_writtenMax : m_writtenMin,
                                        isReversed ? m_writtenMin : m_writtenMax, scaleKind());
    moveRange(isReversed ? found.end : found.begin, isReversed ? found.begin : found.end);
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
    m_planned.forget();
}

// That of a document may be shared by several axes, of which it knows none.
void ChartAxis::followFormatter()
{
    measureAgain();
    if (m_followedFormatter)
        disconnect(m_followedFormatter, nullptr, this, SLOT(emitAxisChanged()));
    m_followedFormatter = formatter();
    if (!m_followedFormatter)
        return;
    connect(m_followedFormatter, SIGNAL(destroyed()), SLOT(emitAxisChanged()));
    if (m_followedFormatter->metaObject()->indexOfSignal("changed()") >= 0)
        connect(m_followedFormatter, SIGNAL(changed()), SLOT(emitAxisChanged()));
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

void ChartAxis::setRows(AxisRows rows)
{
    if (!store(m_rows, rows))
        return;
    updateRequiredMargin();
    emitAxisChanged();
}

void ChartAxis::setUnitBehind(bool behind)
{
    if (store(m_isUnitBehind, behind))
        updateRequiredMargin();
}

int ChartAxis::marginWith(AxisRows rows) const
{
    if (m_hasWrittenMargin || margin() != m_followedMargin)
        return margin();
    return rows == AxisRows::None ? 0 : horizontalMargin(rows) + m_roomBeyond;
}

void ChartAxis::setLabelsAbove(bool above)
{
    if (store(m_hasLabelsAbove, above))
        updateRequiredMargin();
}

void ChartAxis::followMargin()
{
    // Another one came from C++, by way of the base class.
    if (m_hasWrittenMargin || margin() != m_followedMargin)
        return;
    m_followedMargin = m_rows == AxisRows::None ? 0 : requiredMargin() + m_roomBeyond;
    ValueAxis::setMargin(m_followedMargin);
}

bool ChartAxis::hasTitle() const
{
    return !m_title.isEmpty() && (orientation() == Qt::Vertical || m_rows < AxisRows::WithoutTitles);
}

int ChartAxis::titleHeight() const
{
    return m_title.isEmpty() ? 0 : QFontMetrics(labelFont()).height();
}

int ChartAxis::horizontalMargin(AxisRows rows) const
{
    // The unit has a row of its own unless it is in the title.
    const int height = QFontMetrics(labelFont()).height();
    const bool hasUnitRow = m_title.isEmpty() && !unit().isEmpty() && rows == AxisRows::All;
    return (staggered() || hasUnitRow ? 2 : 1) * height + marginSlack + rowRoom +
           (rows < AxisRows::WithoutTitles ? titleHeight() : 0);
}

int ChartAxis::requiredMargin() const
{
    if (orientation() == Qt::Horizontal)
        return m_rows == AxisRows::None ? 0 : horizontalMargin(m_rows);
    const QFontMetrics metrics(labelFont());
    const int titleRoom = m_title.isEmpty() ? 0 : titleHeight() + edgeRoom;
    const auto roomBehind = [&](const QString &unit) {
        const int width = metrics.horizontalAdvance(QLatin1Char(' ') + unit) + 1;
        const bool isBehind = m_hasLabelsAbove || (m_isUnitBehind && width <= 3 * metrics.ascent());
        return isBehind && m_title.isEmpty() && !unit.isEmpty() ? width : 0;
    };
    if (!hasOwnTicks())
        return ValueAxis::requiredMargin() + titleRoom + roomBehind(unit());
    const ScaleEnds ends = axisRange().shownEnds();
    const auto [lowest, highest] = std::minmax({ends.begin, ends.end});
    const TickPlan whole = numbering().plan(lowest, highest, nominalLength);
    int widest =
        std::max(m_planned.widestText(),
                 m_title.isEmpty() ? metrics.horizontalAdvance(unitAboveNumbers(whole.unit, metrics)) : 0);
    for (const QString &text : whole.texts)
        widest = std::max(widest, metrics.horizontalAdvance(text));
    return widest + marginSlack + titleRoom + roomBehind(whole.unit);
}

bool ChartAxis::hasTooSmallInterval() const
{
    const double interval = customInterval();
    return interval != 0.0 && !(std::abs((maxVisible() - minVisible()) / interval) <= mostIntervals);
}

bool ChartAxis::hasTooManyTicks() const
{
    return tickInterval() == FixedTicks && ticks().size() > mostFixedTicks;
}

double ChartAxis::writtenInterval() const
{
    return customInterval() > 0.0 && !hasTooSmallInterval() ? customInterval() : 0.0;
}

bool ChartAxis::hasOwnTicks() const
{
    // A formatter may show other units than those of the axis, in which plain ticks then are round.
    const bool arePlain = m_scale == Linear && !isReversed() && (writtenInterval() != 0.0 || formatter());
    return tickInterval() == FixedTicks ? hasTooManyTicks() : !arePlain;
}

AxisNumbering ChartAxis::numbering() const
{
    AxisNumbering numbering;
    numbering.kind = m_scale == Time          ? AxisNumbering::Kind::Time
                     : m_scale == Logarithmic ? AxisNumbering::Kind::Logarithmic
                                              : AxisNumbering::Kind::Linear;
    numbering.isUtc = m_utc;
    numbering.isAlongText = orientation() == Qt::Horizontal;
    numbering.font = labelFont();
    numbering.unit = unit();
    numbering.interval = m_scale == Linear ? writtenInterval() : 0.0;
    numbering.minorTicks = m_minorTicks;
    numbering.formatter = formatter();
    return numbering;
}

TickSet ChartAxis::tickSet(const QRectF &rect)
{
    if (tickInterval() == FixedTicks && !hasTooManyTicks()) {
        TickSet fixed;
        fixed.positions = ticks();
        const auto [lowest, highest] = std::minmax({minVisible(), maxVisible()});
        fixed.ticks = ticksWithin(fixed.positions, lowest, highest);
        return fixed;
    }
    if (!hasOwnTicks())
        return customInterval() < 0.0 ? TickSet() : ValueAxis::tickSet(rect);
    updatePlan((orientation() == Qt::Horizontal ? rect.width() : rect.height()) - 1.0);
    TickSet set;
    set.ticks = QList<qreal>(m_planned.plan().majors.begin(), m_planned.plan().majors.end());
    set.positions = set.ticks;
    set.minors = m_planned.plan().minors;
    return set;
}

void ChartAxis::updatePlan(double length)
{
    if (m_length.exchange(length) != length)
        QMetaObject::invokeMethod(this, &ChartAxis::lengthChanged, Qt::QueuedConnection);
    ScaleEnds ends{minVisible(), maxVisible()};
    if (scaleKind() == ScaleKind::Logarithmic)
        ends = positivePart(ends.begin, ends.end);
    const auto [lowest, highest] = std::minmax({ends.begin, ends.end});
    const int widest = m_planned.widestText();
    if (!m_planned.update(numbering(), lowest, highest, length, &m_found))
        return;
    forgetTexts();
    if (widest == m_planned.widestText())
        return;
    // Not at once: this is a repaint, perhaps in another thread.
    QMetaObject::invokeMethod(
        this, [this] { updateRequiredMargin(); }, Qt::QueuedConnection);
}

QString ChartAxis::formattedValue(double value) const
{
    if (!hasOwnTicks())
        return ValueAxis::formattedValue(value);
    const int index = m_planned.plan().majors.indexOf(value);
    if (index >= 0)
        return m_planned.plan().texts.at(index);
    return numbering().text(value);
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
    if (hasOwnTicks() && !m_planned.plan().majors.isEmpty())
        look.unit = m_planned.plan().common.isEmpty() ? m_planned.plan().unit : m_planned.plan().common;
    if (hasTitle())
        look.unit = m_planned.plan().common;
    look.hasLabels = look.hasLabels && m_rows != AxisRows::None;
    if (!look.isHorizontal())
        look.unit = unitAboveNumbers(look.unit, QFontMetrics(labelFont()));
    return look;
}

QString ChartAxis::shownUnit() const
{
    return hasOwnTicks() && !m_planned.plan().majors.isEmpty() ? m_planned.plan().unit
                                                               : AxisUnit(unit()).symbol();
}

void ChartAxis::paintLabels(QPainter *painter, const QRectF &rect, const LabelSurroundings &surroundings)
{
    if (m_rows == AxisRows::None)
        return;
    LabelSurroundings inner = surroundings;
    if (orientation() == Qt::Horizontal) {
        inner.bounds.adjust(edgeRoom, 0.0, -edgeRoom, 0.0);
        // Farther away are the rows of other axes.
        const double depth = ValueAxis::look().offset + margin();
        inner.bounds.setTop(std::max(inner.bounds.top(), rect.top() - depth));
        inner.bounds.setBottom(std::min(inner.bounds.bottom(), rect.bottom() + depth));
    }
    ValueAxis::paintLabels(painter, rect, inner);
    if (!hasTitle() || !visible() || axisStyle() == TicksOnly)
        return;
    const AxisLook drawn = ValueAxis::look();
    const AxisTitle title{m_title, shownUnit(), labelFont(),
                          m_titleColor.isValid() ? m_titleColor : labelColor()};
    title.paint(painter, drawn, rect, drawn.offset + margin() - edgeRoom);
}

} // namespace graph
