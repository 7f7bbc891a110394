#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class GraphCursor;
class GraphMarker;
class QQuickItem;

namespace graph {

class CursorLabel;
class ReadingLayout;

// The texts in one cursor. They share its height: each reading keeps clear of the others, of the distances at markers,
// of the names on flags, of the legend and of the cursor's own tag, so that they are found together.
class CursorLabels : public QObject
{
    Q_OBJECT

public:
    // Of that cursor, made for the first who asks; null without one.
    static CursorLabels *of(GraphCursor *cursor);

    void add(CursorLabel *label);
    void remove(CursorLabel *label);
    // Before the next frame, or for the next who asks, all of it is found again.
    void invalidate();
    void update();
    // The same, and announces what has changed: not while somebody asks, who would hear of it in the middle of that.
    void tell();

private:
    // Rows that are taken.
    struct Rows
    {
        double top;
        double end;
    };

    explicit CursorLabels(GraphCursor *cursor);

    void followMarkers();
    void sort();
    QVector<Rows> distanceRows(int fontSize) const;
    void addObstacles(int fontSize, ReadingLayout *layout) const;
    void placeReadings(double bottom);
    void followLegend(QQuickItem *legend);
    void followPlace(const QQuickItem *item);

    GraphCursor *m_cursor;
    QVector<CursorLabel *> m_labels;
    QVector<QPointer<QQuickItem>> m_flags; // with the names of the cursor and of its markers
    QPointer<QQuickItem> m_legend;
    bool m_isValid = true;
    bool m_isSorted = true;
    bool m_isUpdating = false;
};

} // namespace graph
