#include "axis/AxisPainting.h"

#include "axis/PlaneAccess.h"
#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Distances of the texts from the plot rectangle, in pixels.
constexpr int rowDistance = 2;
constexpr int bandDistance = 4;
constexpr int marginSlack = 6;

enum class Side { Begin, Middle, End };

// Left and top are the begin. Combined alignments belong to the side that they name.
Side axisSide(const ValueAxis &axis)
{
    const bool horizontal = axis.orientation() == Qt::Horizontal;
    const Qt::Alignment alignment = axis.alignment();
    if (alignment & (horizontal ? Qt::AlignBottom : Qt::AlignRight))
        return Side::End;
    return alignment & (horizontal ? Qt::AlignTop : Qt::AlignLeft) ? Side::Begin : Side::Middle;
}

// The labels stand in a margin only where the plane keeps one free: for the four plain alignments.
bool hasBand(const ValueAxis &axis)
{
    const int alignment = int(axis.alignment());
    const bool plain = alignment == Qt::AlignLeft || alignment == Qt::AlignRight ||
                       alignment == Qt::AlignTop || alignment == Qt::AlignBottom;
    return plain && axis.margin() > 0;
}

bool showsLabels(const ValueAxis &axis)
{
    return axis.visible() && axis.axisStyle() != ValueAxis::TicksOnly;
}

// Dashes that cannot be drawn, or that would be so short that a line takes for ever, become a solid line.
QPen drawablePen(QPen pen, QVector<qreal> dashes)
{
    if (pen.style() != Qt::CustomDashLine)
        return pen;
    double sum = 0.0;
    bool drawable = !dashes.isEmpty();
    for (const double length : qAsConst(dashes)) {
        drawable = drawable && length >= 0.0 && length <= 1e4;
        sum += length;
    }
    if (!drawable || sum < 0.5 * dashes.size()) {
        pen.setStyle(Qt::SolidLine);
        return pen;
    }
    if (dashes.size() % 2 == 1)
        dashes.append(1.0);
    pen.setDashPattern(dashes);
    return pen;
}

double clampedPlace(double wanted, double lowest, double highest)
{
    return std::max(std::min(wanted, highest), lowest);
}

} // namespace

AxisPainting::AxisPainting(ValueAxis &axis, const QRectF &rect)
    : m_axis(axis)
    , m_rect(rect)
    , m_bounds(rect)
    , m_horizontal(axis.orientation() == Qt::Horizontal)
    , m_mapping(axis.minVisible(), axis.maxVisible(), axis.maxVisible() - axis.minVisible(),
                axis.maxVisible() - axis.minVisible(), rect.size())
    , m_metrics(axis.labelFont())
{
    if (const QQuickItem *plane = planeItem(axis.labelsPlane()))
        m_bounds = plane->boundingRect().united(rect);
}

void AxisPainting::paintLines(QPainter *painter)
{
    if (!m_axis.visible() || m_axis.axisStyle() == ValueAxis::LabelsOnly || !m_mapping.isDrawable())
        return;
    QVector<QLineF> lines;
    const QVector<Mark> visible = marks(m_axis.ticks(tickCount()));
    lines.reserve(visible.size());
    for (const Mark &mark : visible) {
        if (m_horizontal) {
            const double x = m_rect.left() + pixel(mark.place);
            lines.append(QLineF(x, m_rect.top(), x, m_rect.bottom() - 1.0));
        } else {
            const double y = m_rect.top() + pixel(mark.place);
            lines.append(QLineF(m_rect.left(), y, m_rect.right() - 1.0, y));
        }
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(drawablePen(m_axis.gridPen(), m_axis.lineDashPattern()));
    painter->drawLines(lines);
    painter->restore();
}

void AxisPainting::paintLabels(QPainter *painter, AxisTexts &texts)
{
    if (!showsLabels(m_axis) || !m_mapping.isDrawable())
        return;
    const int count = tickCount();
    m_ticks = m_axis.ticks(count);
    m_interval = m_axis.tickSpacing(count, m_axis.maxVisible() - m_axis.minVisible());
    m_ordinals = tickOrdinals(m_ticks, m_interval);
    if (m_ordinals.size() < m_ticks.size()) {
        m_positions = m_axis.tickInterval() == ValueAxis::FixedTicks ? m_axis.ticks() : m_ticks;
        m_ordinals = tickOrdinals(m_ticks, m_positions);
    }
    const QList<qreal> &known = m_positions.isEmpty() ? m_ticks : m_positions;
    if (texts.ticks != known)
        texts = {known, {}};
    m_texts = &texts;
    checkTexts();
    painter->save();
    painter->setFont(m_axis.labelFont());
    painter->setPen(m_axis.labelColor());
    if (m_horizontal)
        paintHorizontalLabels(painter);
    else
        paintVerticalLabels(painter);
    painter->restore();
}

int AxisPainting::requiredMargin(const ValueAxis &axis)
{
    const QFontMetrics metrics(axis.labelFont());
    if (axis.orientation() == Qt::Horizontal) {
        const bool twoRows = axis.staggered() || !axis.unit().isEmpty();
        return (twoRows ? 2 : 1) * metrics.height() + marginSlack;
    }
    QList<qreal> values{axis.minValue(), axis.maxValue()};
    if (axis.tickInterval() == ValueAxis::FixedTicks) {
        values += axis.ticks();
    } else {
        // The ends may be shorter than what stands between them: 0 and 1, but 0.2.
        const double step = axis.tickSpacing(axis.numTicks(), axis.valueRange());
        const double first = step > 0.0 ? std::ceil(axis.minValue() / step) * step : 0.0;
        const double last = step > 0.0 ? std::floor(axis.maxValue() / step) * step : 0.0;
        values << first << first + step << last - step << last;
    }
    int widest = metrics.horizontalAdvance(axis.unit());
    for (const double value : std::as_const(values)) {
        if (value >= axis.minValue() && value <= axis.maxValue())
            widest = std::max(widest, metrics.horizontalAdvance(axis.formattedValue(value)));
    }
    return widest + marginSlack;
}

QVector<AxisPainting::Mark> AxisPainting::marks(const QList<qreal> &ticks) const
{
    const double length = m_horizontal ? m_rect.width() : m_rect.height();
    QVector<Mark> visible;
    visible.reserve(ticks.size());
    for (int i = 0; i < ticks.size(); ++i) {
        const double at = place(ticks.at(i));
        // Rounding may put the last tick a hair behind the last pixel, where it belongs.
        if (at > -1.0 && at < length)
            visible.append({i, at});
    }
    return visible;
}

// A decreasing axis shows the mirrored values, where the plots draw the plain ones.
double AxisPainting::place(double value) const
{
    const bool mirrored = m_axis.rangeOrder() == ValueAxis::Decreasing;
    const double shown = mirrored ? m_axis.minValue() + m_axis.maxValue() - value : value;
    return m_horizontal ? m_mapping.x(shown) : m_mapping.y(shown);
}

int AxisPainting::tickCount() const
{
    return m_horizontal ? m_axis.computeTickCountH(m_rect.width())
                        : m_axis.computeTickCountV(m_rect.height());
}

const AxisTexts::Text &AxisPainting::text(double tick)
{
    const auto known = m_texts->texts.constFind(tick);
    if (known != m_texts->texts.constEnd())
        return *known;
    const QString text = m_axis.formattedValue(labelledValue(tick));
    return *m_texts->texts.insert(tick, {text, m_metrics.horizontalAdvance(text)});
}

// What repeated adding leaves of a zero would read 1.4e-17.
double AxisPainting::labelledValue(double tick) const
{
    return std::abs(tick) < 1e-9 * m_interval ? 0.0 : tick;
}

// A formatter may answer differently at any time, its digits come over the bus, and tells nobody.
void AxisPainting::checkTexts()
{
    if (!m_axis.formatter())
        return;
    const auto &texts = m_texts->texts;
    const bool stale = std::any_of(texts.keyValueBegin(), texts.keyValueEnd(), [this](const auto &known) {
        return m_axis.formattedValue(labelledValue(known.first)) != known.second.text;
    });
    if (!stale)
        return;
    m_texts->texts.clear();
    // Not at once: this is a repaint, perhaps in another thread.
    QMetaObject::invokeMethod(&m_axis, [axis = &m_axis] { axis->updateRequiredMargin(); }, Qt::QueuedConnection);
}

void AxisPainting::paintHorizontalLabels(QPainter *painter)
{
    const bool band = hasBand(m_axis);
    const QRectF bounds = band ? roomForHorizontalLabels() : m_rect;
    const Side side = axisSide(m_axis);
    const int height = m_metrics.height();
    if (height > bounds.height())
        return;
    // Rows follow each other away from the plot in a margin, and into the plot inside it.
    const bool downwards = (side == Side::End) == band || side == Side::Middle;
    double top = std::floor(m_rect.center().y()) + rowDistance;
    if (side == Side::Begin)
        top = band ? m_rect.top() - rowDistance - height : m_rect.top() + rowDistance;
    else if (side == Side::End)
        top = band ? m_rect.bottom() + rowDistance : m_rect.bottom() - rowDistance - height;
    const double secondTop = downwards ? top + height : top - height;
    const bool roomForTwo = secondTop >= bounds.top() && secondTop + height <= bounds.bottom();
    const int rows = m_axis.staggered() && roomForTwo ? 2 : 1;
    const auto rowTop = [&](int row) {
        return clampedPlace(row == 0 ? top : secondTop, bounds.top(), bounds.bottom() - height);
    };

    const int gap = m_metrics.horizontalAdvance(QLatin1Char('0'));
    LabelRoom room;
    room.begin = roundedPixel(bounds.left() - m_rect.left());
    room.end = roundedPixel(bounds.right() - m_rect.left());
    room.gap = gap;
    const int width = m_metrics.horizontalAdvance(m_axis.unit());
    if (width > 0 && width <= bounds.width()) {
        const bool ownRow = band && roomForTwo && rows == 1;
        const double right = ownRow ? m_rect.right() : bounds.right();
        const double left = std::max(right - width, bounds.left());
        room.takenRow = ownRow ? -1 : rows - 1;
        room.takenBegin = roundedPixel(left - m_rect.left());
        room.takenEnd = room.takenBegin + width;
        drawText(painter, left, rowTop(ownRow ? 1 : rows - 1), m_axis.unit());
    }

    const QVector<LabelSpan> labels = chosenSpans(marks(m_ticks), rows, room);
    for (const PlacedLabel &label : placedLabels(labels, room))
        drawText(painter, m_rect.left() + label.start, rowTop(label.row), text(m_ticks.at(label.index)).text);
}

void AxisPainting::paintVerticalLabels(QPainter *painter)
{
    const bool band = hasBand(m_axis);
    const QRectF bounds = roomForVerticalLabels(band);
    const Side side = axisSide(m_axis);
    const int height = m_metrics.height();
    const auto left = [&](int width) {
        double wanted = std::floor(m_rect.center().x()) - bandDistance - width;
        if (side == Side::Begin)
            wanted = band ? m_rect.left() - bandDistance - width : m_rect.left() + rowDistance;
        else if (side == Side::End)
            wanted = band ? m_rect.right() + bandDistance : m_rect.right() - rowDistance - width;
        return clampedPlace(wanted, bounds.left(), bounds.right() - width);
    };

    LabelRoom room;
    room.begin = roundedPixel(bounds.top() - m_rect.top());
    room.end = roundedPixel(bounds.bottom() - m_rect.top());
    room.gap = height / 4;
    const int unitWidth = m_metrics.horizontalAdvance(m_axis.unit());
    if (unitWidth > 0 && unitWidth <= bounds.width() && height <= bounds.height()) {
        room.takenRow = 0;
        room.takenBegin = std::max(room.begin, -height / 2 - height);
        room.takenEnd = room.takenBegin + height;
        const QColor color = m_axis.verticalUnitLabelColor();
        painter->setPen(color.isValid() ? color : m_axis.labelColor());
        drawText(painter, left(unitWidth), m_rect.top() + room.takenBegin, m_axis.unit());
        painter->setPen(m_axis.labelColor());
    }

    QVector<Mark> visible = marks(m_ticks);
    const auto outside = [&](const Mark &mark) { return mark.place < room.begin || mark.place > room.end; };
    visible.erase(std::remove_if(visible.begin(), visible.end(), outside), visible.end());
    const QVector<LabelSpan> labels = chosenSpans(visible, 1, room);
    for (const PlacedLabel &label : placedLabels(labels, room)) {
        const AxisTexts::Text &shown = text(m_ticks.at(label.index));
        if (shown.width <= bounds.width())
            drawText(painter, left(shown.width), m_rect.top() + label.start, shown.text);
    }
}

// The labels of every stride-th tick, in as many rows.
QVector<LabelSpan> AxisPainting::spans(const QVector<Mark> &marks, double stride, int rows)
{
    QVector<LabelSpan> labels;
    for (const Mark &mark : marks) {
        const double ordinal = m_ordinals.at(mark.index);
        if (!(std::fmod(ordinal, stride) == 0.0))
            continue;
        const double tick = m_ticks.at(mark.index);
        const int row = rows == 2 && std::fmod(ordinal / stride, 2.0) != 0.0 ? 1 : 0;
        if (!text(tick).text.isEmpty())
            labels.append(
                {mark.index, labelCenter(mark.place, extent(tick)), extent(tick), row, isExtreme(tick)});
    }
    return labels;
}

QVector<LabelSpan> AxisPainting::chosenSpans(const QVector<Mark> &marks, int rows, const LabelRoom &room)
{
    const double stride = m_positions.isEmpty() ? gridStride(marks, rows, room.gap) : listStride(rows, room.gap);
    return stride > 0.0 ? spans(marks, stride, rows) : QVector<LabelSpan>();
}

// The stride for evenly spaced ticks. It depends on nothing that changes while the axis is panned, apart from
// the widths of the labels themselves.
double AxisPainting::gridStride(const QVector<Mark> &marks, int rows, int gap)
{
    const double distance = rows * std::abs(place(m_interval) - place(0.0));
    const int rounding = 2;
    int widest = m_horizontal ? gap : m_metrics.height();
    for (const double end :
         {std::ceil(m_axis.minValue() / m_interval), std::floor(m_axis.maxValue() / m_interval)}) {
        if (m_horizontal && std::isfinite(end * m_interval))
            widest = std::max(widest, text(end * m_interval).width);
    }
    for (;;) {
        const double stride = labelStride(distance, widest + gap + rounding);
        int found = widest;
        for (const LabelSpan &label : stride > 0.0 ? spans(marks, stride, rows) : QVector<LabelSpan>())
            found = std::max(found, label.extent);
        if (found == widest)
            return stride;
        widest = found;
    }
}

// The stride for ticks from a list. All of them count, not only the visible ones, so that it stays while
// panning.
double AxisPainting::listStride(int rows, int gap)
{
    double stride = 1.0;
    for (; stride < m_positions.size(); stride = labelStride(1.0, stride + 1.0)) {
        QVector<LabelSpan> labels;
        for (int i = 0; i < m_positions.size(); i += truncatedIndex(stride)) {
            const double position = m_positions.at(i);
            const int row = rows == 2 && std::fmod(i / stride, 2.0) != 0.0 ? 1 : 0;
            if (std::isfinite(position) && !text(position).text.isEmpty())
                labels.append({i, place(position), extent(position), row});
        }
        if (keepsGap(labels, gap))
            break;
    }
    return stride;
}

bool AxisPainting::isExtreme(double tick) const
{
    const double tolerance = 1e-9 * std::abs(m_interval);
    return std::abs(tick - m_axis.minValue()) <= tolerance || std::abs(tick - m_axis.maxValue()) <= tolerance;
}

int AxisPainting::extent(double tick)
{
    return m_horizontal ? text(tick).width : m_metrics.height();
}

// Inside the plot area a grid line would strike the number of a vertical axis through.
bool AxisPainting::labelStandsOnLine() const
{
    return !m_horizontal && !hasBand(m_axis);
}

double AxisPainting::labelCenter(double place, int extent) const
{
    return labelStandsOnLine() ? place - extent / 2 : place;
}

// Labels below or above the plot area end where the columns of numbers beside it begin: two texts that touch in a
// corner read as one.
QRectF AxisPainting::roomForHorizontalLabels() const
{
    QRectF room = m_bounds;
    for (const ValueAxis *axis : planeAxes(m_axis.labelsPlane())) {
        if (!axis || axis->orientation() != Qt::Vertical || !showsLabels(*axis) || !hasBand(*axis))
            continue;
        if (axisSide(*axis) == Side::Begin)
            room.setLeft(std::max(room.left(), m_rect.left() - bandDistance));
        else
            room.setRight(std::min(room.right(), m_rect.right() + bandDistance));
    }
    return room;
}

// The numbers of horizontal axes have their rows to themselves, or those of both would meet in the corner.
// Outside the plot area rows may be entered as far as they and the digits leave free.
QRectF AxisPainting::roomForVerticalLabels(bool band) const
{
    QRectF room = band ? m_bounds : m_rect;
    const int free = m_metrics.descent() + m_metrics.ascent() - m_metrics.capHeight();
    for (const ValueAxis *axis : planeAxes(m_axis.labelsPlane())) {
        if (!axis || axis->orientation() != Qt::Horizontal || !showsLabels(*axis) || hasBand(*axis) != band)
            continue;
        const int rows = axis->staggered() ? 2 : 1;
        const int height = rows * QFontMetrics(axis->labelFont()).height() + rowDistance;
        const int inset = band ? -free : height;
        if (axisSide(*axis) == Side::End)
            room.setBottom(std::min(room.bottom(), m_rect.bottom() - inset));
        else if (axisSide(*axis) == Side::Begin)
            room.setTop(std::max(room.top(), m_rect.top() + inset));
    }
    return room;
}

void AxisPainting::drawText(QPainter *painter, double left, double top, const QString &text) const
{
    painter->drawText(QPointF(left, top + m_metrics.ascent()), text);
}

} // namespace graph
