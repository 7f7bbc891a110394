import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors
import "theme.js" as Theme

/*! \brief Moves a GraphMarker with a finger and shows its name on a flag.

\image markers.png Two markers with their flags and distances

Declared inside of the marker it is its \c label:

\code
GraphMarker { MarkerGrab { text: "A" } }
\endcode

The flag has the marker's colour; flags that would cover each other are put in rows. A marker that is dragged beyond the
data stays on the last sample.
*/
LineGrab {
    id: grab

    // Written by the marker that this is the label of.
    property GraphMarker _parentMarker: null
    /*! The marker that it moves: the one that it is the label of. */
    property GraphMarker marker: _parentMarker
    readonly property GraphCursor cursor: parent
    /*! Behind the distance that the cursor writes, so that it can be read over a trace; inside of a Chart that of its plot
        area, elsewhere translucent black, or white below a dark text. */
    property color backgroundColor: theme ? Theme.translucent(theme.plotBackground, 0.85) : Theme.behind(color)

    function freeRow() {
        var used = [];
        for (var i = 0; cursor && i < cursor.markers.length && cursor.markers[i] !== marker; ++i) {
            var other = cursor.markers[i].label;
            if (other && other.flagWidth !== undefined && other.shown && Math.abs(other.line - line) < other.flagWidth + 2)
                used.push(other.row);
        }
        var free = 0;
        while (used.indexOf(free) >= 0)
            ++free;
        return free;
    }

    // Those of several markers below each other, where the document leaves them all in the place of the first.
    function placeDistance() {
        var index = cursor && marker ? Array.prototype.indexOf.call(cursor.markers, marker) : -1;
        if (index > 0 && marker.deltaY === 100)
            marker.setDeltaY(100 + index * Math.ceil(metrics.height + 6));
    }

    line: marker ? marker.posOnScreen : 0
    Component.onCompleted: Qt.callLater(placeDistance)
    shown: Boolean(marker) && marker.visible && line >= 0 && line < width
    zoomRect: Cursors.zoomRect(cursor)
    color: marker ? marker.color : "transparent"
    row: freeRow()
    onMovedTo: function(place) { Cursors.moveMarker(cursor, marker, place); }

    Rectangle {
        id: background

        // As the cursor places its text: between the lines if it fits, else in a chart beside that of the marker, and
        // elsewhere beside both of them.
        function textX(first, second, textWidth) {
            if (textWidth + 11 < Math.abs(first - second))
                return Math.floor((first + second - textWidth - 1) / 2);
            if (grab.chart) {
                var isLeft = second < first, beyond = isLeft ? second - 5 - textWidth : second + 5;
                return beyond >= 0 && beyond + textWidth <= grab.width ? beyond : isLeft ? first + 5 : first - 5 - textWidth;
            }
            return first + second >= grab.width ? Math.min(first, second) - 5 - textWidth : Math.max(first, second) + 5;
        }

        // The cursor's own measure of its text.
        readonly property int textWidth: Math.ceil(delta.boundingRect.width) - 1

        // Below what the cursor paints.
        parent: grab.cursor
        z: -1
        visible: Boolean(grab.cursor && grab.marker) && grab.marker.visible && grab.marker.showDelta
        x: visible ? textX(grab.cursor.posOnScreen, Math.max(0, Math.min(grab.line, grab.width - 1)),
                           textWidth) - 4 : 0
        y: grab.marker ? grab.marker.deltaY - Math.ceil(metrics.ascent) - 1 : 0
        width: Math.ceil(delta.advanceWidth) + 8
        height: Math.ceil(metrics.height) + 2
        radius: 3
        color: grab.backgroundColor

        TextMetrics {
            id: delta

            font: metrics.font
            text: grab.marker ? grab.marker.formattedDelta : ""
        }

        FontMetrics {
            id: metrics

            font: grab.cursor ? grab.cursor.font : Qt.application.font
        }
    }
}
