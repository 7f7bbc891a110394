#include "kit/chart/CursorLabels.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/chart/CursorPosition.h"
#include "kit/chart/CursorReading.h"

#include <algorithm>

namespace graph {

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

void CursorLabels::add(CursorText *text)
{
    m_texts.append(text);
    m_isSorted = false;
    m_isValid = true;
    invalidate();
}

void CursorLabels::remove(CursorText *text)
{
    m_texts.removeAll(text);
    m_isValid = true;
    invalidate();
}

void CursorLabels::invalidate()
{
    if (m_texts.isEmpty() || !m_isValid)
        return;
    m_isValid = false;
    m_texts.first()->polish();
}

// In the order of the items in the cursor: of readings of the same row the first one is above.
void CursorLabels::sort()
{
    m_isSorted = true;
    const QList<QQuickItem *> children = m_cursor->childItems();
    std::stable_sort(m_texts.begin(), m_texts.end(), [&](const CursorText *a, const CursorText *b) {
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
    for (CursorText *text : qAsConst(m_texts))
        text->read();
    double bottom = m_cursor->height();
    for (const CursorText *text : qAsConst(m_texts)) {
        const auto *tag = qobject_cast<const CursorPosition *>(text);
        if (tag && tag->foundInset() > 0.0)
            bottom = std::min(bottom, m_cursor->height() - tag->foundInset());
    }
    placeReadings(bottom);
    for (CursorText *text : qAsConst(m_texts))
        text->show();
    m_isUpdating = false;
}

void CursorLabels::tell()
{
    update();
    // Who hears of it may change the list.
    const QVector<CursorText *> texts = m_texts;
    for (CursorText *text : texts) {
        if (m_texts.contains(text))
            text->tell();
    }
}

QVector<CursorReading *> CursorLabels::readings() const
{
    QVector<CursorReading *> shown;
    for (CursorText *text : m_texts) {
        auto *reading = qobject_cast<CursorReading *>(text);
        if (reading && reading->foundPlace().isShown)
            shown.append(reading);
    }
    return shown;
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
    QVector<CursorReading *> labels = readings();
    if (labels.isEmpty())
        return;
    std::stable_sort(labels.begin(), labels.end(), [](const CursorReading *a, const CursorReading *b) {
        return a->foundPlace().wantedY < b->foundPlace().wantedY;
    });
    const QVector<Rows> distances = distanceRows(labels.first()->fontSize());
    const auto heightOf = [](const CursorReading *label) { return label->foundPlace().height + 2.0; };
    QVector<double> tops;
    double free = 0.0;
    for (const CursorReading *label : qAsConst(labels)) {
        double y = std::max({label->foundPlace().wantedY, free, label->topInset()});
        for (const Rows &rows : distances) {
            if (y < rows.end && y + heightOf(label) > rows.top)
                y = rows.end;
        }
        tops.append(y);
        free = y + heightOf(label);
    }
    free = bottom;
    for (int i = labels.size() - 1; i >= 0; --i) {
        const double height = heightOf(labels.at(i));
        double y = std::min(tops.at(i), free - height);
        for (auto rows = distances.rbegin(); rows != distances.rend(); ++rows) {
            if (y < rows->end && y + height > rows->top)
                y = rows->top - height;
        }
        labels.at(i)->placeLabel(y);
        free = y;
    }
}

} // namespace graph
