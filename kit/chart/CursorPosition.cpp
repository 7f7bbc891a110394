#include "kit/chart/CursorPosition.h"

#include "cursors/GraphCursor.h"
#include "data/PlotData.h"
#include "kit/data/Store.h"
#include "view/base/AbstractPlot.h"

#include <QRectF>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr double inset = 2.0;    // from an end of the line
constexpr double gap = 4.0;      // to an obstacle
constexpr double marginX = 10.0; // around the text
constexpr double marginY = 3.0;

// So that the line is in its middle.
double odd(double length)
{
    return double(int(std::ceil(length)) | 1);
}

double within(double place, double extent)
{
    return std::max(0.0, std::min(place, extent));
}

} // namespace

/*!
    \qmltype CursorPosition
    \internal
    The position of a cursor.
*/
CursorPosition::CursorPosition(QQuickItem *parent)
    : CursorText(parent)
{
    connect(this, &CursorText::textChanged, this, [this] { updateEmpty(); });
}

// At once, because the item around is hidden by it.
void CursorPosition::updateEmpty()
{
    const bool hasData = m_cursor && m_cursor->primarySeries();
    if (store(m_isEmpty, hasOwnText() ? foundText().isEmpty() : !hasData))
        emit isEmptyChanged();
}

GraphCursor *CursorPosition::cursor() const
{
    return m_cursor;
}

double CursorPosition::tagInset() const
{
    refresh();
    return m_inset;
}

void CursorPosition::setCursor(GraphCursor *cursor)
{
    if (m_cursor == cursor)
        return;
    if (m_cursor)
        disconnect(m_cursor, nullptr, this, nullptr);
    m_cursor = cursor;
    if (cursor) {
        const auto changed = [this] { updateEmpty(); };
        connect(cursor, &GraphCursor::plotsChanged, this, changed);
        connect(cursor, &GraphCursor::seriesChanged, this, changed);
        connect(cursor, &GraphCursor::primaryPlotChanged, this, changed);
    }
    // Of the one that it is in, all texts hear already.
    if (cursor && cursor != holder()) {
        const auto changed = [this] { invalidate(); };
        connect(cursor, &GraphCursor::posValueChanged, this, changed);
        connect(cursor, &GraphCursor::posOnScreenChanged, this, changed);
        connect(cursor, &GraphCursor::plotsChanged, this, changed);
    }
    updateEmpty();
    invalidate();
    emit cursorChanged();
}

void CursorPosition::setAtRight(bool atRight)
{
    if (!store(m_isAtRight, atRight))
        return;
    invalidate();
    emit atRightChanged();
}

void CursorPosition::setObstacles(const QVariantList &obstacles)
{
    if (!store(m_obstacles, obstacles))
        return;
    invalidate();
    emit obstaclesChanged();
}

void CursorPosition::read()
{
    findText(m_cursor ? textOf(*m_cursor) : QString());
    write(foundText());
    m_inset = 0.0;
    if (m_cursor && box() && label())
        place(*m_cursor);
}

QString CursorPosition::textOf(const GraphCursor &cursor) const
{
    const PlotData *data = cursor.primarySeries();
    if (!data)
        return {};
    if (chart())
        return cursor.isHorizontal() ? chart()->formatY(cursor.primaryPlot(), cursor.posValue())
                                     : chart()->formatX(cursor.posValue());
    return cursor.isHorizontal() ? data->formattedYValue(cursor.posValue())
                                 : data->formattedXValue(cursor.posValue());
}

// In a low chart it would hide the trace: it is over the numbers of the axis there.
bool CursorPosition::isBelow(const QSizeF &box) const
{
    constexpr double leastRows = 6.0;
    const double height = around()->height();
    const double bottom = chart() ? around()->mapToItem(chart(), {0.0, height}).y() : 0.0;
    return chart() && height < leastRows * box.height() && bottom + 1.0 + box.height() <= chart()->height();
}

void CursorPosition::place(const GraphCursor &cursor)
{
    const QSizeF size(odd(label()->implicitWidth() + marginX), odd(label()->implicitHeight() + marginY));
    const double line = cursor.posOnScreen();
    const QSizeF area(around()->width(), around()->height());
    box()->setSize(size);
    if (cursor.isHorizontal()) {
        double left = 0.0;
        for (const QVariant &flag : qAsConst(m_obstacles))
            left = std::max(left, flag.toRectF().right());
        box()->setPosition({m_isAtRight ? area.width() - size.width() - inset : left + inset,
                            within(line - (size.height() - 1.0) / 2.0, area.height() - size.height())});
        return;
    }
    const double x = within(line - (size.width() - 1.0) / 2.0, area.width() - size.width());
    if (isBelow(size)) {
        box()->setPosition({x, area.height() + 1.0});
        return;
    }
    double floor = area.height();
    for (const QVariant &obstacle : qAsConst(m_obstacles)) {
        const QRectF other = obstacle.toRectF();
        if (x + size.width() + gap > other.left() && x < other.right() + gap)
            floor = std::min(floor, other.top());
    }
    box()->setPosition({x, floor - size.height() - inset});
    if (around()->isVisible())
        m_inset = area.height() - box()->y() + inset;
}

void CursorPosition::tell()
{
    CursorText::tell();
    if (store(m_toldInset, m_inset))
        emit tagInsetChanged();
}

} // namespace graph
