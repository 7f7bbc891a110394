#pragma once

#include <QColor>
#include <QPointer>
#include <QVector>

class GraphCursor;
class GraphMarker;

namespace graph {

// The markers of a cursor. Calls for all of them go to those that are there at the beginning: what a marker announces
// may change the list.
class CursorMarkers
{
public:
    void append(GraphMarker *marker, GraphCursor *cursor);
    void clear() { m_markers.clear(); }
    int count() const { return int(m_markers.size()); }
    // Null for one that has been destroyed.
    GraphMarker *at(int index) const;

    // They start again after the last one.
    void giveColors(const QVector<QColor> &colors);
    // To the values that they were given last, or those of their samples.
    void placeAgain();
    // To the pixels of their samples; those without a sample are hidden.
    void placeOnSamples();
    // The same, but those stay as they are.
    void placeOnPresentSamples();
    // New data may have the samples that values wait for.
    void placeAwaited();
    void followScroll();

private:
    template <typename Call> void forEach(const Call &call);

    QVector<QPointer<GraphMarker>> m_markers;
};

} // namespace graph
