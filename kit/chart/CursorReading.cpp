#include "kit/chart/CursorReading.h"

#include "common/SafeInteger.h"
#include "cursors/GraphCursor.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/TraceReach.h"
#include "kit/data/Store.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"

#include <cmath>

namespace graph {

namespace {

// Between a crossing and its label.
constexpr double gapAbove = 6.0;
// Around the text in its box.
constexpr double marginRight = 5.0;
constexpr double marginBelow = 2.0;

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

bool CursorReading::Place::operator==(const Place &other) const
{
    return isShown == other.isShown && crossing == other.crossing && width == other.width &&
           height == other.height && wantedY == other.wantedY && labelX == other.labelX &&
           labelY == other.labelY;
}

/*!
    \qmltype CursorReading
    \internal
    The reading of one plot at a cursor.
*/
CursorReading::CursorReading(QQuickItem *parent)
    : CursorText(parent)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] { invalidate(); });
}

const WaterfallPlot *CursorReading::waterfall() const
{
    return qobject_cast<const WaterfallPlot *>(m_plot.data());
}

bool CursorReading::readsLevel() const
{
    return waterfall();
}

double CursorReading::reading() const
{
    refresh();
    return m_reading;
}

const CursorReading::Place &CursorReading::freshPlace() const
{
    refresh();
    return m_place;
}

void CursorReading::setPlot(AbstractPlot *plot)
{
    if (m_plot == plot)
        return;
    m_plot = plot;
    invalidate();
    emit plotChanged();
}

void CursorReading::setLevelY(double y)
{
    if (isSame(m_levelY, y))
        return;
    m_levelY = y;
    invalidate();
    emit levelYChanged();
}

void CursorReading::setDot(QQuickItem *dot)
{
    if (m_dot == dot)
        return;
    m_dot = dot;
    if (dot)
        connect(dot, &QQuickItem::widthChanged, this, [this] { invalidate(); });
    invalidate();
    emit partsChanged();
}

void CursorReading::setFontSize(int size)
{
    if (!store(m_fontSize, size))
        return;
    invalidate();
    emit fontSizeChanged();
}

void CursorReading::setTopInset(double inset)
{
    if (!store(m_topInset, inset))
        return;
    invalidate();
    emit topInsetChanged();
}

void CursorReading::setInterval(int milliseconds)
{
    if (!store(m_interval, milliseconds))
        return;
    invalidate();
    emit intervalChanged();
}

void CursorReading::read()
{
    const GraphCursor *cursor = holder();
    const int index = cursor && m_plot ? cursor->indexOfPlot(m_plot) : -1;
    if (!cursor) {
        m_place.isShown = false;
        return;
    }
    followAxis();
    readValue(*cursor, index);
    findText(textOf(*cursor, index));
    passOn(cursor->posValue());
    const QQuickItem *text = label();
    m_place.height = text ? std::ceil(text->implicitHeight()) + marginBelow : 0.0;
    const double above = m_place.crossing.y() - m_place.height - gapAbove;
    m_place.wantedY = above >= m_topInset ? above : m_place.crossing.y() + gapAbove;
    m_place.width = text ? std::ceil(text->implicitWidth()) + text->x() + marginRight : 0.0;
    placeLabel({});
}

// Readings have the unit and the prefix of the numbers beside them.
void CursorReading::followAxis()
{
    ValueAxis *axis = m_plot ? m_plot->axisY() : nullptr;
    if (m_axis == axis)
        return;
    if (m_axis)
        disconnect(m_axis, nullptr, this, nullptr);
    m_axis = axis;
    if (!axis)
        return;
    connect(axis, &ValueAxis::unitChanged, this, [this] { invalidate(); });
    connect(axis, &ValueAxis::formatterChanged, this, [this] { invalidate(); });
    connect(axis, &ValueAxis::visibleRangeChanged, this, [this] { invalidate(); });
}

void CursorReading::readValue(const GraphCursor &cursor, int index)
{
    const PlotData *data = m_plot ? m_plot->plotData() : nullptr;
    if (const WaterfallPlot *levels = waterfall()) {
        const ValueAxis *axis = levels->axisY();
        const bool isPlaced = axis && axis->minVisible() != axis->maxVisible() && around()->height() > 0.0;
        m_reading = levels->levelAt(cursor.posValue(), m_levelY);
        m_place.crossing.setY(isPlaced ? std::floor(levels->mapToItemY(m_levelY) + 0.5) : 0.0);
    } else if (index >= 0) {
        // That of a horizontal cursor is not read along x.
        const bool isRead = cursor.isHorizontal() || reachesTo(*m_plot, cursor.posValue());
        m_reading = isRead ? cursor.yValues().value(index) : std::numeric_limits<double>::quiet_NaN();
        m_place.crossing.setY(pixel(cursor.yPositions().value(index)));
    }
    m_place.crossing.setX(columnOfSample(cursor));
    const bool hasRoom = around()->width() > 0.0 && around()->height() > 0.0;
    m_place.isShown = hasRoom && index >= 0 && data && data->size() > 0 && !std::isnan(m_reading);
}

// That of the sample whose value is read, which the line passes where the trace has other samples than the primary plot.
double CursorReading::columnOfSample(const GraphCursor &cursor) const
{
    const PlotData *data = m_plot ? m_plot->plotData() : nullptr;
    if (!data || readsLevel() || cursor.isHorizontal() || data->usePointsAsSegments() || !m_plot->axisX())
        return cursor.posOnScreen();
    const int sample = nearestSample(*data, cursor.posValue());
    const double x = sample < 0 ? cursor.posValue() : data->x(sample);
    return x == cursor.posValue() ? cursor.posOnScreen() : pixel(m_plot->mapToItemX(x));
}

QString CursorReading::textOf(const GraphCursor &cursor, int index) const
{
    const PlotData *data = m_plot ? m_plot->plotData() : nullptr;
    if (chart() && m_plot) {
        const QString value = chart()->formatY(m_plot, m_reading);
        return readsLevel() ? value + QStringLiteral(", ") + rowText() : value;
    }
    if (readsLevel() && data)
        return data->formattedYValue(m_reading);
    return index >= 0 ? cursor.formattedYValues().value(index) : QString();
}

// Which row of a waterfall is read: where its axis says what rows are, in its units, else the number of the row.
QString CursorReading::rowText() const
{
    const WaterfallPlot *levels = waterfall();
    const double row = std::floor(std::abs(m_levelY) / levels->rowInterval());
    const auto *axis = qobject_cast<const ChartAxis *>(levels->axisY());
    if (axis && !axis->unit().isEmpty())
        return axis->valueText(row * levels->rowInterval() * (m_levelY < 0.0 ? -1.0 : 1.0));
    return QStringLiteral("row %1").arg(truncatedIndex(row));
}

// A moved cursor is the user's doing: its text follows at once.
void CursorReading::passOn(double cursorValue)
{
    if (!isSame(m_writtenAt, cursorValue))
        m_pause.stop();
    m_writtenAt = cursorValue;
    if (!m_pause.isActive() && write(foundText()) && m_interval > 0)
        m_pause.start(m_interval);
}

void CursorReading::tell()
{
    if (!isSame(m_toldReading, m_reading)) {
        m_toldReading = m_reading;
        emit readingChanged();
    }
    CursorText::tell();
    if (store(m_toldPlace, m_place))
        emit placeChanged();
}

void CursorReading::show()
{
    const QPointF crossing = m_place.crossing;
    if (m_dot) {
        m_dot->setVisible(m_place.isShown && crossing.y() >= 0.0 && crossing.y() < around()->height() &&
                          crossing.x() >= 0.0 && crossing.x() <= around()->width());
        m_dot->setPosition(crossing -
                           QPointF(std::floor(m_dot->width() / 2.0), std::floor(m_dot->height() / 2.0)));
    }
    if (!box() || !label())
        return;
    box()->setVisible(m_place.isShown);
    box()->setSize(QSizeF(m_place.width, m_place.height));
    box()->setPosition(QPointF(m_place.labelX, std::floor(m_place.labelY + 0.5)));
}

std::optional<CursorLabel::Wish> CursorReading::wish() const
{
    if (!m_place.isShown)
        return std::nullopt;
    return Wish{m_place.wantedY, QSizeF(m_place.width, m_place.height), m_topInset, m_fontSize,
                chart() ? chart()->legendBox() : nullptr};
}

} // namespace graph
