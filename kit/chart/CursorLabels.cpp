#include "kit/chart/CursorLabels.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/chart/CursorLabel.h"

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
    std::stable_sort(rows.begin(), rows.end(), [](const Rows &a, const Rows &b) { return a.top < b.top; });
    return rows;
}

// From the top down each one moves below the one above it and below distances; those that do not fit any more move up
// again.
void CursorLabels::placeReadings(double bottom) const
{
    struct Reading
    {
        CursorLabel *label;
        CursorLabel::Wish wish;
        double y;
    };
    std::vector<Reading> readings;
    for (CursorLabel *label : m_labels) {
        if (const auto wish = label->wish())
            readings.push_back({label, *wish, 0.0});
    }
    if (readings.empty())
        return;
    std::stable_sort(readings.begin(), readings.end(),
                     [](const Reading &a, const Reading &b) { return a.wish.y < b.wish.y; });
    const QVector<Rows> distances = distanceRows(readings.front().wish.fontSize);
    double free = 0.0;
    for (Reading &reading : readings) {
        const double height = reading.wish.height + gap;
        reading.y = std::max({reading.wish.y, free, reading.wish.topInset});
        for (const Rows &rows : distances) {
            if (reading.y < rows.end && reading.y + height > rows.top)
                reading.y = rows.end;
        }
        free = reading.y + height;
    }
    free = bottom;
    for (auto reading = readings.rbegin(); reading != readings.rend(); ++reading) {
        const double height = reading->wish.height + gap;
        free = std::min(reading->y, free - height);
        for (auto rows = distances.rbegin(); rows != distances.rend(); ++rows) {
            if (free < rows->end && free + height > rows->top)
                free = rows->top - height;
        }
        reading->label->placeLabel(free);
    }
}

} // namespace graph
