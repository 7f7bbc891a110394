import QtQuick 2.15
import graph_plugin 1.0

/*! \brief Zooms to a rectangle that is drawn with the right mouse button, or with a finger after a long press.

A child of a GraphView, above its ZoomArea, whose \c boxZoom it is for the long press; a Chart has one of its own. A
rectangle that is flat zooms in one direction only, and so do the directions that the \c zoomAxis of the ZoomRect allows.
*/
Item {
    id: box

    /*! What it moves: the zoom rectangle of the view that it is in, unless another one is written. */
    property ZoomRect zoomRect: parent && parent.zoomRect ? parent.zoomRect : null
    /*! Of the rectangle, white. */
    property color color: "white"
    /*! A side shorter than this does not count, 12 pixels. */
    property real leastSide: 12
    /*! Whether a rectangle is being drawn. */
    readonly property bool drawing: frame.visible

    /*! The rectangle is complete; in pixels of the plot area. */
    signal zoomed(rect area)

    function begin(x, y) {
        frame.startX = frame.endX = bounded(x, width);
        frame.startY = frame.endY = bounded(y, height);
        frame.visible = true;
    }

    function move(x, y) {
        frame.endX = bounded(x, width);
        frame.endY = bounded(y, height);
    }

    function cancel() {
        frame.visible = false;
    }

    function end() {
        if (!frame.visible)
            return;
        frame.visible = false;
        var across = frame.spansX && frame.width >= leastSide;
        var down = frame.spansY && frame.height >= leastSide;
        if (!zoomRect || !across && !down)
            return;
        var rect = zoomRect;
        var left = across ? frame.x / Math.max(1, width - 1) : 0;
        var top = down ? frame.y / Math.max(1, height - 1) : 0;
        var partX = across ? frame.width / Math.max(1, width - 1) : 1;
        var partY = down ? frame.height / Math.max(1, height - 1) : 1;
        var newWidth = rect.width * partX;
        var newHeight = rect.height * partY;
        var newLeft = rect.left + rect.width * left;
        var newBottom = rect.bottom - rect.height * top;
        rect.setCenterAndZoom(Qt.vector2d(newWidth, newHeight),
                              Qt.point(newLeft + newWidth / 2, newBottom - newHeight / 2));
        zoomed(Qt.rect(frame.x, frame.y, frame.width, frame.height));
    }

    function bounded(place, length) {
        return Math.max(0, Math.min(place, length - 1));
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        preventStealing: true
        onPressed: function(mouse) { box.begin(mouse.x, mouse.y); }
        onPositionChanged: function(mouse) { box.move(mouse.x, mouse.y); }
        onReleased: box.end()
        onCanceled: box.cancel()
    }

    Rectangle {
        id: frame

        property real startX: 0
        property real startY: 0
        property real endX: 0
        property real endY: 0
        readonly property bool allowsX: Boolean(box.zoomRect) && (box.zoomRect.zoomAxis & Qt.Horizontal) !== 0
        readonly property bool allowsY: Boolean(box.zoomRect) && (box.zoomRect.zoomAxis & Qt.Vertical) !== 0
        // A stroke along one direction means that direction alone.
        readonly property bool spansX: allowsX && (!allowsY || Math.abs(endX - startX) >= box.leastSide)
        readonly property bool spansY: allowsY && (!allowsX || Math.abs(endY - startY) >= box.leastSide)

        visible: false
        x: spansX ? Math.min(startX, endX) : 0
        y: spansY ? Math.min(startY, endY) : 0
        width: spansX ? Math.abs(endX - startX) : box.width
        height: spansY ? Math.abs(endY - startY) : box.height
        color: Qt.rgba(box.color.r, box.color.g, box.color.b, 0.12)
        border.color: Qt.rgba(box.color.r, box.color.g, box.color.b, 0.7)
    }
}
