#include "kit/chart/CursorLabels.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/chart/CursorLabel.h"
#include "kit/chart/ReadingLayout.h"

#include <algorithm>
#include <vector>

namespace graph {

namespace {

constexpr double gap = 2.0; // between readings, in pixels

} // namespace

CursorLabels *CursorLabels::of(GraphCursor *cursor)
{
    if (!cursor)
        return nullptr;
    auto *labels = cursor->findChild<CursorLabels *>(QString(), Qt::FindDirectChildrenOnly);
    return labels ? labels : new CursorLabels(cursor);
}

CursorLabels::CursorLabels(GraphCursor *cursor)
    : QObject(cursor)
    , m_cursor(cursor)
{
    const auto changed = [this] { invalidate(); };
    connect(cursor, &GraphCursor::plotValuesChanged, this, changed);
    connect(cursor, &GraphCursor::posValueChanged, this, changed);
    connect(cursor, &GraphCursor::posOnScreenChanged, this, changed);
    connect(cursor, &GraphCursor::plotsChanged, this, changed);
    connect(cursor, &GraphCursor::seriesChanged, this, changed);
    connect(cursor, &GraphCursor::primaryPlotChanged, this, changed);
    connect(cursor, &GraphCursor::fontChanged, this, changed);
    connect(cursor, &GraphCursor::markersChanged, this, [this] { followMarkers(); });
    connect(cursor, &QQuickItem::childrenChanged, this, [this] {
        m_isSorted = false;
        invalidate();
    });
    followMarkers();
}

void CursorLabels::followMarkers()
{
    auto markers = m_cursor->markers();
    for (int i = 0; i < int(markers.count(&markers)); ++i) {
        const GraphMarker *marker = markers.at(&markers, i);
        if (!marker)
            continue;
        connect(marker, &GraphMarker::visibleChanged, this, &CursorLabels::invalidate, Qt::UniqueConnection);
        connect(marker, &GraphMarker::showDeltaChanged, this, &CursorLabels::invalidate,
                Qt::UniqueConnection);
        connect(marker, &GraphMarker::deltaYChanged, this, &CursorLabels::invalidate, Qt::UniqueConnection);
    }
    invalidate();
}

void CursorLabels::add(CursorLabel *label)
{
    m_labels.append(label);
    m_isSorted = false;
    m_isValid = true;
    invalidate();
}

void CursorLabels::remove(CursorLabel *label)
{
    m_labels.removeAll(label);
    m_isValid = true;
    invalidate();
}

void CursorLabels::invalidate()
{
    if (m_labels.isEmpty() || !m_isValid)
        return;
    m_isValid = false;
    m_labels.first()->askForFrame();
}

// In the order of the items in the cursor: of readings of the same row the first one is above.
void CursorLabels::sort()
{
    m_isSorted = true;
    const QList<QQuickItem *> children = m_cursor->childItems();
    std::stable_sort(m_labels.begin(), m_labels.end(), [&](const CursorLabel *a, const CursorLabel *b) {
        return children.indexOf(a->around()) < children.indexOf(b->around());
    });
    m_flags.clear();
    for (const QQuickItem *child : children) {
        if (auto *flag = child->property("flag").value<QQuickItem *>()) {
            m_flags.append(flag);
            followPlace(flag);
        }
    }
}

void CursorLabels::update()
{
    if (m_isValid || m_isUpdating)
        return;
    m_isUpdating = true;
    m_isValid = true;
    if (!m_isSorted)
        sort();
    for (CursorLabel *label : qAsConst(m_labels))
        label->read();
    double bottom = m_cursor->height();
    for (const CursorLabel *label : qAsConst(m_labels)) {
        if (label->foundInset() > 0.0)
            bottom = std::min(bottom, m_cursor->height() - label->foundInset());
    }
    placeReadings(bottom);
    for (CursorLabel *label : qAsConst(m_labels))
        label->show();
    m_isUpdating = false;
}

void CursorLabels::tell()
{
    update();
    // Who hears of it may change the list.
    const QVector<CursorLabel *> labels = m_labels;
    for (CursorLabel *label : labels) {
        if (m_labels.contains(label))
            label->tell();
    }
}

// Of the distances that the cursor writes beside its markers.
QVector<CursorLabels::Rows> CursorLabels::distanceRows(int fontSize) const
{
    QVector<Rows> rows;
    const int ownSize = m_cursor->font().pixelSize();
    const double size = ownSize > 0 ? ownSize : fontSize;
    auto markers = m_cursor->markers();
    for (int i = 0; i < int(markers.count(&markers)); ++i) {
        const GraphMarker *marker = markers.at(&markers, i);
        if (marker && marker->isVisible() && marker->showDelta())
            rows.append({marker->deltaY() - size - 2.0, marker->deltaY() + 0.3 * size + 2.0});
    }
    return rows;
}

// With the names of markers, and with distances, which are anywhere in their rows.
void CursorLabels::addObstacles(int fontSize, ReadingLayout *layout) const
{
    const auto rectOf = [this](const QQuickItem *item) {
        return m_cursor->mapRectFromItem(item, QRectF(QPointF(), item->size()));
    };
    for (const Rows &rows : distanceRows(fontSize))
        layout->keepClearOf(QRectF(0.0, rows.top, m_cursor->width(), rows.end - rows.top));
    for (const QQuickItem *flag : m_flags) {
        if (flag && flag->isVisible())
            layout->keepClearOf(rectOf(flag));
    }
    if (m_legend && m_legend->isVisible()) {
        layout->keepClearOf(rectOf(m_legend));
        layout->setBox(rectOf(m_legend));
    }
}

void CursorLabels::placeReadings(double bottom)
{
    struct Reading
    {
        CursorLabel *label;
        CursorLabel::Wish wish;
    };
    std::vector<Reading> readings;
    for (CursorLabel *label : qAsConst(m_labels)) {
        if (const auto wish = label->wish())
            readings.push_back({label, *wish});
    }
    if (readings.empty())
        return;
    std::stable_sort(readings.begin(), readings.end(),
                     [](const Reading &a, const Reading &b) { return a.wish.y < b.wish.y; });
    followLegend(readings.front().wish.legend);
    ReadingLayout layout(m_cursor->posOnScreen(), m_cursor->size(), bottom);
    addObstacles(readings.front().wish.fontSize, &layout);
    std::vector<ReadingLabel> labels;
    labels.reserve(readings.size());
    for (const Reading &reading : readings)
        labels.push_back({reading.wish.size, reading.wish.y, reading.wish.topInset, {}});
    layout.place(&labels);
    for (std::size_t i = 0; i < readings.size(); ++i)
        readings[i].label->placeLabel(labels[i].place);
}

void CursorLabels::followLegend(QQuickItem *legend)
{
    if (m_legend == legend)
        return;
    if (m_legend)
        disconnect(m_legend, nullptr, this, nullptr);
    m_legend = legend;
    if (legend)
        followPlace(legend);
}

void CursorLabels::followPlace(const QQuickItem *item)
{
    for (const auto changed : {&QQuickItem::xChanged, &QQuickItem::yChanged, &QQuickItem::widthChanged,
                               &QQuickItem::heightChanged, &QQuickItem::visibleChanged})
        connect(item, changed, this, &CursorLabels::invalidate, Qt::UniqueConnection);
}

} // namespace graph
