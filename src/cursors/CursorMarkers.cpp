#include "cursors/CursorMarkers.h"

#include "cursors/GraphMarker.h"
#include "cursors/NearestSample.h"

namespace graph {

void CursorMarkers::append(GraphMarker *marker, GraphCursor *cursor)
{
    marker->setCursor(cursor);
    m_markers.append(marker);
    // One that is created later finds its data there.
    marker->placeIfAwaited();
}

GraphMarker *CursorMarkers::at(int index) const
{
    return m_markers.value(index);
}

template <typename Call> void CursorMarkers::forEach(const Call &call)
{
    const auto markers = m_markers;
    for (GraphMarker *marker : markers) {
        if (marker)
            call(*marker);
    }
}

void CursorMarkers::giveColors(const QVector<QColor> &colors)
{
    for (int i = 0; i < m_markers.size() && !colors.isEmpty(); ++i) {
        if (GraphMarker *marker = m_markers.at(i)) {
            marker->setDefaultColor(colors.at(i % colors.size()));
            marker->handleDeltaChanged();
        }
    }
}

void CursorMarkers::placeAgain()
{
    forEach([](GraphMarker &marker) { marker.placeAgain(); });
}

void CursorMarkers::placeOnSamples()
{
    forEach([](GraphMarker &marker) { marker.setPosIndex(marker.posIndex()); });
}

void CursorMarkers::placeOnPresentSamples()
{
    forEach([](GraphMarker &marker) {
        const PlotData *data = marker.primarySeries();
        if (data && hasSample(*data, marker.posIndex()))
            marker.setPosIndex(marker.posIndex());
    });
}

void CursorMarkers::placeAwaited()
{
    forEach([](GraphMarker &marker) { marker.placeIfAwaited(); });
}

void CursorMarkers::followScroll()
{
    forEach([](GraphMarker &marker) { marker.followScroll(); });
}

} // namespace graph
