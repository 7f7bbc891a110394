import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

// The whole extent of a plot, with a window over what its chart shows. The window can be dragged, its edges as well; a
// tap beside it brings it there.
WorldView {
    id: strip

    property GraphPlot plot
    readonly property real windowLeft: zoomRect ? zoomRect.left * width : 0
    readonly property real windowWidth: zoomRect ? zoomRect.width * width : width

    Rectangle {
        anchors.fill: parent
        color: Theme.plotArea
        border.color: Theme.graticule
    }

    WorldPlot {
        anchors { fill: parent; margins: 3 }
        renderTarget: Theme.plotTarget
        graphPlot: strip.plot
        maxLineWidth: 1
    }

    Rectangle {
        width: strip.windowLeft
        height: parent.height
        color: Theme.veil
    }

    Rectangle {
        x: strip.windowLeft + strip.windowWidth
        width: parent.width - x
        height: parent.height
        color: Theme.veil
    }

    Rectangle {
        x: Math.min(strip.windowLeft, parent.width - width)
        width: Math.max(6, strip.windowWidth)
        height: parent.height
        color: "transparent"
        radius: 2
        border { color: Theme.accent; width: 2 }

        Repeater {
            model: [-4, parent.width - 4]

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                x: modelData
                width: 8
                height: 20
                radius: 3
                color: Theme.accent
            }
        }
    }

    MouseArea {
        // Where the finger lies relative to the edge or to the window that it holds.
        property real grip: 0
        property int held: 0

        readonly property int leftEdge: 1
        readonly property int rightEdge: 2
        readonly property int window: 3

        function hold(x) {
            var fromLeft = x - strip.windowLeft;
            var fromRight = x - strip.windowLeft - strip.windowWidth;
            // Half of a narrow window is left for moving it.
            var inside = Math.min(20, strip.windowWidth / 4);
            if (fromLeft > -20 && fromLeft < inside)
                held = leftEdge;
            else if (fromRight < 20 && fromRight > -inside)
                held = rightEdge;
            else
                held = window;
            if (held === window && (fromLeft < 0 || fromRight > 0))
                strip.zoomRect.moveLeft((x - strip.windowWidth / 2) / strip.width);
            grip = held === rightEdge ? x - strip.windowLeft - strip.windowWidth : x - strip.windowLeft;
        }

        anchors.fill: parent
        enabled: strip.zoomRect !== null
        preventStealing: true
        onPressed: function(mouse) { hold(mouse.x); }
        onPositionChanged: function(mouse) {
            var place = (mouse.x - grip) / strip.width;
            if (held === leftEdge)
                strip.zoomRect.left = place;
            else if (held === rightEdge)
                strip.zoomRect.right = place;
            else
                strip.zoomRect.moveLeft(place);
        }
    }
}
