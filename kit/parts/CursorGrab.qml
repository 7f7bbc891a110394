import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors

/*! \brief Moves a GraphCursor or a GraphCursorY with a finger.

\image markers.png A cursor and its tag, which a finger drags

A child of the cursor: the line can be dragged by a strip around it, and near an edge the view pans for as long as the
finger stays there. Drags that start elsewhere, taps, double taps, pinches and the wheel still go to the zoom area. If
several lines are under the finger, the nearest is taken. Set \c {staysOnScreen: false} for a horizontal cursor;
otherwise it stops at whole values only. Change \c enabled together with the \c visible of the cursor, which has no change
signal.
*/
LineGrab {
    id: grab

    /*! The cursor that it moves: the one that it is in. */
    property GraphCursor cursor: parent
    /*! A ZoomArea or a Chart whose taps move the cursor; null by default. */
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
