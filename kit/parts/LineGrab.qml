import QtQuick 2.15
import graph_plugin 1.0
import "theme.js" as Theme

// What CursorGrab and MarkerGrab share: a strip along a line that can be dragged with a finger, panning near the edges,
// and a small flag with a name. Taps and double taps go through to what lies below.
Item {
    id: grab

    /*! \internal
        The column of a vertical line, the row of a horizontal one. */
    property real line: 0
    /*! \internal */
    property bool horizontal: false
    property bool shown: true
    /*! What a finger near an edge pans: the zoom rectangle of the view, unless another one is written. */
    property ZoomRect zoomRect: null
    /*! Width of the strip that can be grabbed, 44 pixels. */
    property real grabSize: 44
    /*! A finger this near to an edge pans the view, 40 pixels. */
    property real panMargin: 40
    /*! How fast it pans at the very edge, in visible ranges per second, 1. */
    property real panSpeed: 1
    /*! Name on a flag at the end of the line; without one, the default, there is no flag. */
    property string text
    /*! Of the flag: that of the line. */
    property color color: "white"
    readonly property var chart: Theme.chartOf(grab)
    readonly property var theme: chart ? chart.colors : null
    readonly property Item _legend: chart && chart.legendBox && chart.legendBox.visible ? chart.legendBox : null
    // Where the legend is above, the flags are below it.
    readonly property real _top: _legend && _legend.y < flag.height && flag.x < _legend.x + _legend.width
                                 && _legend.x < flag.x + flag.width ? _legend.y + _legend.height : 0
    /*! Of the name on the flag: inside of a Chart the background of its theme. Elsewhere, and where that could not be read,
        black or white. */
    property color textColor: Theme.onto(color, theme)
    /*! Of the name on the flag; inside of a Chart those of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 13
    /*! \internal
        Flags in different rows do not cover each other. */
    property int row: 0
    /*! Whether a finger is moving the line. */
    readonly property bool dragging: touch.dragging
    readonly property alias flagWidth: flag.width
    // Readings keep clear of it.
    readonly property alias flag: flag

    /*! The finger asks for the line to be at this column, or row, of pixels. */
    signal movedTo(real place)

    // How far away a press at the point is; the flag belongs to the line.
    function grabDistance(x, y) {
        if (flag.visible && flag.contains(flag.mapFromItem(grab, x, y)))
            return 0;
        return Math.abs((horizontal ? y : x) - line);
    }

    // Of lines that lie close together a press takes the nearest.
    function isNearest(x, y) {
        var siblings = parent ? parent.children : [];
        for (var i = 0; i < siblings.length; ++i) {
            var other = siblings[i];
            if (other && other !== grab && other.grabDistance !== undefined && other.shown && other.horizontal === horizontal
                    && other.grabDistance(x, y) < grabDistance(x, y))
                return false;
        }
        return true;
    }

    anchors.fill: parent

    Rectangle {
        id: flag

        visible: grab.shown && grab.text !== ""
        // Odd, so that the line is in its middle.
        width: Math.ceil(Math.max(height, name.implicitWidth + 8)) | 1
        height: Math.ceil(name.implicitHeight) + 4
        x: grab.horizontal ? 2 : Math.max(0, Math.min(grab.line - (width - 1) / 2, grab.width - width))
        y: grab.horizontal ? Math.max(0, Math.min(grab.line - Math.floor(height / 2), grab.height - height))
                           : 2 + grab._top + grab.row * (height + 2)
        radius: 3
        color: grab.color

        Text {
            id: name

            anchors.centerIn: parent
            text: grab.text
            textFormat: Text.PlainText
            color: grab.textColor
            font.family: grab.fontFamily
            font.pixelSize: grab.fontSize
            renderType: Text.NativeRendering
        }
    }

    MouseArea {
        id: touch

        readonly property real length: grab.horizontal ? grab.height : grab.width
        readonly property real margin: Math.min(grab.panMargin, length / 4)
        property bool dragging: false
        property bool dragged: false
        property real finger: 0
        property real start: 0
        // From the line to the finger.
        property real offset: 0
        // -1 to 1, how deep in the margin of an edge the finger is, and how deep it may be without panning: a drag
        // that starts in there and leads out of it does not pan.
        readonly property real depth: Math.max(-1, Math.min(1, finger < margin ? (finger - margin) / margin
                : finger > length - 1 - margin ? (finger - (length - 1 - margin)) / margin : 0))
        property real allowedDepth: 0

        function place(mouse) {
            var point = grab.mapFromItem(touch, mouse.x, mouse.y);
            return grab.horizontal ? point.y : point.x;
        }

        function follow() {
            grab.movedTo(Math.max(0, Math.min(finger - offset, length - 1)));
        }

        function pan(share) {
            if (grab.horizontal)
                grab.zoomRect.moveBottom(grab.zoomRect.bottom - share * grab.zoomRect.height);
            else
                grab.zoomRect.moveLeft(grab.zoomRect.left + share * grab.zoomRect.width);
        }

        x: grab.horizontal ? 0 : Math.round(grab.line - grab.grabSize / 2)
        y: grab.horizontal ? Math.round(grab.line - grab.grabSize / 2) : 0
        width: grab.horizontal ? grab.width : grab.grabSize
        height: grab.horizontal ? grab.grabSize : grab.height
        enabled: grab.shown
        preventStealing: true
        propagateComposedEvents: true
        cursorShape: grab.horizontal ? Qt.SizeVerCursor : Qt.SizeHorCursor
        onPressed: function(mouse) {
            var point = grab.mapFromItem(touch, mouse.x, mouse.y);
            mouse.accepted = grab.isNearest(point.x, point.y);
            start = place(mouse);
            dragged = false;
        }
        onPositionChanged: function(mouse) {
            finger = place(mouse);
            if (!dragging) {
                if (Math.abs(finger - start) < Qt.styleHints.startDragDistance)
                    return;
                offset = finger - grab.line;
                allowedDepth = Math.abs(depth);
                dragging = true;
                dragged = true;
            }
            allowedDepth = Math.min(allowedDepth, Math.abs(depth));
            follow();
        }
        onReleased: dragging = false
        onCanceled: dragging = false
        onClicked: function(mouse) { mouse.accepted = dragged; }
        onDoubleClicked: function(mouse) { mouse.accepted = false; }
        onEnabledChanged: dragging = dragging && enabled

        Timer {
            interval: 16
            repeat: true
            running: touch.dragging && Math.abs(touch.depth) > touch.allowedDepth
            onTriggered: {
                if (!grab.zoomRect)
                    return;
                touch.pan(touch.depth * grab.panSpeed * interval / 1000);
                touch.follow();
            }
        }
    }
}
