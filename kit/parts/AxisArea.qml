import QtQuick 2.15
import graph_kit 1.0

// The margin beside the plot area: wheel and drags there are for the axis alone.
MouseArea {
    id: area

    property ChartView view: null
    property int side: Qt.AlignBottom
    readonly property bool horizontal: side === Qt.AlignTop || side === Qt.AlignBottom
    readonly property Item plot: view ? view.plotArea : null
    property real last: 0
    property real startDepth: 0

    // From the beginning of the axis, 0 to 1.
    function place(x, y) {
        return horizontal ? x / Math.max(1, width - 1) : 1 - y / Math.max(1, height - 1);
    }

    // Away from the plot area.
    function depth(x, y) {
        return side === Qt.AlignLeft ? width - x : side === Qt.AlignRight ? x : side === Qt.AlignTop ? height - y : y;
    }

    x: !plot ? 0 : side === Qt.AlignLeft ? 0 : side === Qt.AlignRight ? plot.x + plot.width : plot.x
    y: !plot ? 0 : side === Qt.AlignTop ? 0 : side === Qt.AlignBottom ? plot.y + plot.height : plot.y
    width: !plot ? 0 : side === Qt.AlignLeft ? plot.x : side === Qt.AlignRight ? view.width - x : plot.width
    height: !plot ? 0 : side === Qt.AlignTop ? plot.y : side === Qt.AlignBottom ? view.height - y : plot.height
    preventStealing: true

    onPressed: function(mouse) {
        last = place(mouse.x, mouse.y);
        startDepth = depth(mouse.x, mouse.y);
    }
    onPositionChanged: function(mouse) {
        var now = place(mouse.x, mouse.y);
        view.panBeside(side, startDepth, last - now);
        last = now;
    }
    onDoubleClicked: view.showAllOf(horizontal ? Qt.Horizontal : Qt.Vertical)
    onWheel: function(wheel) {
        view.zoomBeside(side, depth(wheel.x, wheel.y), place(wheel.x, wheel.y),
                        Math.pow(1.25, -wheel.angleDelta.y / 120));
    }
}
