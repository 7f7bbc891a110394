import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors

// Moves a GraphCursor or a GraphCursorY with a finger. Declare it as a child of the cursor: the line can be dragged by a
// strip around it, near an edge the view pans for as long as the finger stays there.
LineGrab {
    id: grab

    property GraphCursor cursor: parent
    // A tap on this ZoomArea or Chart moves the cursor to it.
    property Item tapArea: null

    horizontal: cursor instanceof GraphCursorY
    line: cursor ? cursor.posOnScreen : 0
    shown: Boolean(Cursors.primaryPlot(cursor))
    zoomRect: Cursors.zoomRect(cursor)
    // The cursor's own colour is translucent after a paint.
    color: cursor ? Qt.rgba(cursor.color.r, cursor.color.g, cursor.color.b, 1) : "transparent"
    onMovedTo: function(place) {
        if (horizontal)
            Cursors.moveToRow(cursor, place);
        else
            Cursors.moveToColumn(cursor, place);
    }

    Connections {
        target: grab.tapArea
        function onTapped(x, y) {
            if (grab.shown && grab.enabled)
                grab.movedTo(grab.horizontal ? y : x);
        }
    }
}
