#include "kit/plots/WaterfallPlot.h"

#include "common/SafeInteger.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"

#include <QPainter>

#include <cmath>

namespace graph {

/*!
    \qmltype WaterfallPlot
    \inqmlmodule graph_kit
    \inherits AbstractPlot
    \brief Rows of levels over time, as colours: a spectrogram.

    \image waterfall.png Rows of levels, the newest at the top, and their colour scale

    \code
    WaterfallPlot { series: spectrum; rows: 500; colorMap: "inferno"; from: -120; to: -20 }
    \endcode

    x is that of the columns, which lie around start, start + interval and so on. y counts away from 0,
    where the newest row is: downwards to negative numbers, or upwards, by rowInterval a row. Without an axis
    all columns, or all rows, are shown. Where several levels share a pixel the largest is shown; NaN is
    transparent.

    plotData is the row of the number readRow, so that a cursor of the chart reads its levels.
*/
WaterfallPlot::WaterfallPlot(QQuickItem *parent)
    : AbstractPlot(parent)
    , m_colors(*graph::colorMap(m_colorMap))
{
    setRenderTarget(Image);
    setPlotData(&m_read);
}

WaterfallPlot::~WaterfallPlot()
{
    setPlotData(nullptr);
}

/*!
    \qmlproperty int WaterfallPlot::rows
    How many rows are kept, 500 by default and at least 1. Of rows so long that these would take more than 256
    MiB fewer are kept, and a line in the category \c graph.kit says how many.

    \qmlproperty int WaterfallPlot::count
    \readonly
    How many rows there are.
*/
void WaterfallPlot::setRows(int rows)
{
    const int former = m_rows.capacity();
    const int formerCount = m_rows.count();
    m_rows.setCapacity(bounded(this, "rows", rows, 1));
    if (m_rows.capacity() == former)
        return;
    tellOfRoom();
    showReadRow();
    update();
    emit rowsChanged();
    if (m_rows.count() != formerCount)
        emit countChanged();
}

/*!
    \qmlproperty var WaterfallPlot::start
    The x of the first column, a number or a date; 0 by default. That of a series is taken from it.
*/
void WaterfallPlot::setStart(double start)
{
    if (!store(m_place.start, start))
        return;
    m_read.setXFirstValue(start);
    update();
    emit startChanged();
}

void WaterfallPlot::setStart(const QVariant &start)
{
    if (const auto x = numberOf(this, "start", start))
        setStart(*x);
}

/*!
    \qmlproperty real WaterfallPlot::interval
    The distance of two columns, 1 by default. That of a series is taken from it.
*/
void WaterfallPlot::setInterval(double interval)
{
    if (!store(m_place.interval, interval))
        return;
    m_read.setXInterval(interval);
    update();
    emit intervalChanged();
}

/*!
    \qmlproperty real WaterfallPlot::rowInterval
    The distance in y from one row to the next, greater than 0; 1 by default. With the time between rows, in
    seconds, the vertical axis is in seconds.
*/
void WaterfallPlot::setRowInterval(double interval)
{
    if (!(interval > 0.0) || !std::isfinite(interval)) {
        tellOnce(this, "rowInterval",
                 QStringLiteral("has a rowInterval of %1, which is ignored: write a number above 0")
                     .arg(interval));
        return;
    }
    if (interval == rowInterval())
        return;
    placeRows(interval, m_direction);
    emit rowIntervalChanged();
}

/*!
    \qmlproperty enumeration WaterfallPlot::direction
    WaterfallPlot.Down (default): the newest row is at the top, at y = 0, and older ones below it have
    negative y. WaterfallPlot.Up: the newest row is at the bottom, at y = 0.
*/
void WaterfallPlot::setDirection(Direction direction)
{
    direction = bounded(this, "direction", direction, Down, Up);
    if (m_direction == direction)
        return;
    placeRows(rowInterval(), direction);
    emit directionChanged();
}

void WaterfallPlot::placeRows(double interval, Direction direction)
{
    m_direction = direction;
    m_place.rowStep = direction == Up ? interval : -interval;
    update();
}

/*!
    \qmlproperty PlotData WaterfallPlot::plotData
    The row that cursors read, of the number readRow. Another one is ignored, with a line in the category
    \c graph.kit.
*/
void WaterfallPlot::refuseData(PlotData *data)
{
    if (data && data != plotData())
        tellOnce(this, "plotData",
                 QStringLiteral("shows rows of levels, and ignores its plotData, which is the row that "
                                "cursors read: write series, or call addRow()"));
}

/*!
    \qmlproperty PlotData WaterfallPlot::series
    Data, or a plot with them, of which each change, that is each plotChanged(), is a row; null by default. Its samples are taken to
    be equally spaced from the first to the last.
*/
void WaterfallPlot::useSeries(PlotData *series)
{
    if (m_series == series)
        return;
    if (m_series)
        disconnect(m_series, nullptr, this, SLOT(takeSeries()));
    m_series = series;
    if (series)
        connect(series, SIGNAL(plotChanged()), this, SLOT(takeSeries()));
    emit seriesChanged();
}

void WaterfallPlot::takeSeries()
{
    const int size = m_series ? m_series->size() : 0;
    if (size == 0)
        return;
    QVector<double> levels(size);
    for (int i = 0; i < size; ++i)
        levels[i] = m_series->y(i);
    setStart(m_series->x(0));
    if (size > 1)
        setInterval((m_series->x(size - 1) - m_series->x(0)) / (size - 1));
    addRow(levels);
}

/*!
    \qmlmethod void WaterfallPlot::addRow(list<real> levels)
    A new row of levels, a list or a typed array; from C++ also a pointer and a count. A row of another length
    than the former clears those, the first time with a line in the category \c graph.kit; an empty one clears them silently.
*/
void WaterfallPlot::addRow(const QVariant &levels)
{
    const auto numbers = numberList(this, "levels", levels);
    if (numbers)
        addRow(*numbers);
    else
        tellOnce(this, "addRow",
                 QStringLiteral("is given a row that is no list: write addRow([-90, -80, -70])"));
}

void WaterfallPlot::addRow(const double *levels, int count)
{
    const int formerCount = m_rows.count();
    if (formerCount > 0 && count > 0 && count != m_rows.columns())
        tellOnce(this, "length",
                 QStringLiteral(
                     "has a row of %1 levels after rows of %2, which clears these: add rows of one length")
                     .arg(count)
                     .arg(m_rows.columns()));
    m_rows.add(levels, count);
    tellOfRoom();
    followLevels();
    showReadRow();
    update();
    if (m_rows.count() != formerCount)
        emit countChanged();
}

void WaterfallPlot::tellOfRoom()
{
    if (m_rows.count() == 0 || m_rows.ringSize() >= m_rows.capacity())
        return;
    tellOnce(
        this, "room",
        QStringLiteral("keeps %1 rows of %2 levels instead of %3, which would take more than 256 MiB: write "
                       "rows: %1")
            .arg(m_rows.ringSize())
            .arg(m_rows.columns())
            .arg(m_rows.capacity()));
}

/*!
    \qmlmethod void WaterfallPlot::clear()
    Forgets all rows.
*/
void WaterfallPlot::clear()
{
    addRow(nullptr, 0);
}

/*!
    \qmlproperty var WaterfallPlot::colorMap
    "viridis" (default), "turbo", "inferno" or "grey", or a list of colours from the smallest to the largest
    level; one colour is that of all levels. Anything else is a line in the category \c graph.kit and leaves
    the map as it is.
*/
void WaterfallPlot::setColorMap(const QVariant &map)
{
    const auto colors = graph::colorMap(map);
    if (!colors) {
        tell(this, QStringLiteral("has an unknown colorMap: write a list of colours, or one of %1")
                       .arg(colorMapNames().join(QLatin1String(", "))));
        return;
    }
    m_colorMap = map;
    m_colors = *colors;
    update();
    emit colorMapChanged();
}

/*!
    \qmlproperty real WaterfallPlot::from
    \qmlproperty real WaterfallPlot::to
    The levels of the first and of the last colour; where \c from is the greater one the colours run backwards, and a
    diagnosis says so. Levels beyond them have these colours. One that is not set, or reset with undefined, follows the
    levels that have been seen; -100 and 0 without any.
*/
void WaterfallPlot::setFrom(double level)
{
    if (isLevel("from", level))
        handleLevels(m_levels.writeFrom(level));
}

void WaterfallPlot::setTo(double level)
{
    if (isLevel("to", level))
        handleLevels(m_levels.writeTo(level));
}

bool WaterfallPlot::isLevel(const char *property, double level) const
{
    if (std::isfinite(level))
        return true;
    tellOnce(
        this, property,
        QStringLiteral("has a %1 of %2, which is ignored: write a level, or none, and it follows the levels")
            .arg(QLatin1String(property))
            .arg(level));
    return false;
}

void WaterfallPlot::resetFrom()
{
    m_levels.writeFrom({});
    followLevels();
}

void WaterfallPlot::resetTo()
{
    m_levels.writeTo({});
    followLevels();
}

void WaterfallPlot::followLevels()
{
    if (m_rows.count() > 0)
        handleLevels(m_levels.see(m_rows.newestExtent()));
}

void WaterfallPlot::handleLevels(bool areChanged)
{
    if (!areChanged)
        return;
    update();
    emit levelsChanged();
}

/*!
    \qmlproperty string WaterfallPlot::unit
    The unit of the levels, for readings and the colour scale; empty by default.
*/
void WaterfallPlot::setUnit(const QString &unit)
{
    if (!store(m_unit, unit))
        return;
    m_read.setYUnits(unit);
    emit unitChanged();
}

/*!
    \qmlproperty int WaterfallPlot::readRow
    The row that plotData holds and cursors read: 0, the newest, by default.
*/
void WaterfallPlot::setReadRow(int row)
{
    if (!store(m_readRow, bounded(this, "readRow", row, 0)))
        return;
    showReadRow();
    emit readRowChanged();
}

void WaterfallPlot::showReadRow()
{
    QVector<double> levels;
    if (m_readRow >= 0 && m_readRow < m_rows.count()) {
        const float *row = m_rows.row(m_readRow);
        levels = QVector<double>(row, row + m_rows.columns());
    }
    m_read.setYData(levels);
}

/*!
    \qmlmethod int WaterfallPlot::rowAt(double y)
    The row at a y of the vertical axis, 0 being the newest; -1 where there is none.
*/
int WaterfallPlot::rowAt(double y) const
{
    return m_place.rowAt(y, m_rows.count());
}

/*!
    \qmlmethod double WaterfallPlot::levelAt(double x, double y)
    The level at a place in units of the axes, NaN where there is none.
*/
double WaterfallPlot::levelAt(double x, double y) const
{
    const int column = m_place.columnAt(x, m_rows.columns());
    const int row = rowAt(y);
    return column < 0 || row < 0 ? std::numeric_limits<double>::quiet_NaN() : double(m_rows.row(row)[column]);
}

// All rows that are kept have their place from the start, so that an axis that follows the extent does
// not move.
DataExtent WaterfallPlot::dataExtent() const
{
    DataExtent extent;
    if (m_rows.columns() == 0)
        return extent;
    const auto [left, right] = std::minmax({m_place.columnEdge(0), m_place.columnEdge(m_rows.columns())});
    const auto [lowest, highest] = std::minmax({0.0, m_place.rowEdge(m_rows.ringSize())});
    if (std::isfinite(left) && std::isfinite(right))
        extent.x = {left, right};
    extent.y = {lowest, highest};
    return extent;
}

double WaterfallPlot::minVisibleX() const
{
    return axisX() ? AbstractPlot::minVisibleX() : dataExtent().x.min;
}

double WaterfallPlot::maxVisibleX() const
{
    return axisX() ? AbstractPlot::maxVisibleX() : dataExtent().x.max;
}

double WaterfallPlot::visibleRangeX() const
{
    return axisX() ? AbstractPlot::visibleRangeX() : maxVisibleX() - minVisibleX();
}

double WaterfallPlot::minVisibleY() const
{
    return axisY() ? AbstractPlot::minVisibleY() : dataExtent().y.min;
}

double WaterfallPlot::maxVisibleY() const
{
    return axisY() ? AbstractPlot::maxVisibleY() : dataExtent().y.max;
}

double WaterfallPlot::visibleRangeY() const
{
    return axisY() ? AbstractPlot::visibleRangeY() : maxVisibleY() - minVisibleY();
}

void WaterfallPlot::paintPlot(const PlotFrame &frame)
{
    if (m_rows.count() > 0)
        frame.painter->drawImage(0, 0,
                                 m_raster.image(m_rows, m_place, m_levels.levels(), m_colors, frame.mapping));
}

} // namespace graph
