import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors

/*! \brief Keys for a cursor.

Give it the focus; it needs no place on the screen. Left and Right move by samples, faster while held; Home and End go to
the ends of the trace, P to its highest peak, [ and ] to the next peak in view; Up and Down move a horizontal cursor.
*/
Item {
    id: keys

    /*! The cursor that keys move; null by default. */
    property GraphCursor cursor: null
    /*! The cursor that Up and Down move; null by default. */
    property GraphCursorY horizontalCursor: null
    /*! \internal
        Number of rows that the last press of Up or Down moved. */
    property real step: 1

    /*! The same for a key that arrives another way, for example from a knob; gives whether it was one of these. */
    function press(key, autoRepeat) {
        return Boolean(cursor) && pressAlong(key, autoRepeat) || Boolean(horizontalCursor) && pressAcross(key, autoRepeat);
    }

    function pressAlong(key, autoRepeat) {
        switch (key) {
        case Qt.Key_Left:
            cursor.moveLeft(autoRepeat);
            return true;
        case Qt.Key_Right:
            cursor.moveRight(autoRepeat);
            return true;
        case Qt.Key_Home:
            Cursors.goToFirst(cursor);
            return true;
        case Qt.Key_End:
            Cursors.goToLast(cursor);
            return true;
        case Qt.Key_P:
            Cursors.goToPeak(cursor);
            return true;
        case Qt.Key_BracketLeft:
            cursor.setPeakLeft();
            return true;
        case Qt.Key_BracketRight:
            cursor.setPeakRight();
            return true;
        }
        return false;
    }

    function pressAcross(key, autoRepeat) {
        if (key !== Qt.Key_Up && key !== Qt.Key_Down)
            return false;
        step = autoRepeat ? Math.min(step * 1.5, 19) : 1;
        var row = horizontalCursor.posOnScreen + (key === Qt.Key_Down ? 1 : -1) * Math.floor(step);
        Cursors.moveToRow(horizontalCursor, Math.max(0, Math.min(row, horizontalCursor.height - 1)));
        return true;
    }

    Keys.onPressed: function(event) { event.accepted = press(event.key, event.isAutoRepeat); }
}
