import QtQuick 2.15
import graph_kit 1.0
import "cursors.js" as Cursors

// The margin beside the plot area: wheel and drags there are for the axis alone.
MouseArea {
    id: area

    property ChartView view: null
    property int side: Qt.AlignBottom
    readonly property bool horizontal: side === Qt.AlignTop || side === Qt.AlignBottom
    readonly property Item plot: view ? view.plotArea : null
    property real last: 0
    property real startDepth: 0
    property point start

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
    enabled: Boolean(view) && (horizontal ? view.zoom.horizontal : view.zoom.vertical)

    onPressed: function(mouse) {
        last = place(mouse.x, mouse.y);
        startDepth = depth(mouse.x, mouse.y);
        start = Qt.point(mouse.x, mouse.y);
        // A swipe along an axis that shows everything is not for it, but for what is around the chart, such as a list.
        preventStealing = view.canPanBeside(side, startDepth) && !Cursors.isSwipedAcross(area, horizontal);
    }
    onPositionChanged: function(mouse) {
        if (Math.abs(horizontal ? mouse.x - start.x : mouse.y - start.y) > Qt.styleHints.startDragDistance)
            preventStealing = view.canPanBeside(side, startDepth);
        var now = place(mouse.x, mouse.y);
        view.panBeside(side, startDepth, last - now);
        last = now;
    }
    onDoubleClicked: view.showAllOf(horizontal ? Qt.Horizontal : Qt.Vertical)
    onWheel: function(wheel) {
        wheel.accepted = view.zoom.wheel || wheel.modifiers & (Qt.ControlModifier | Qt.ShiftModifier);
        if (!wheel.accepted)
            return;
        view.zoomBeside(side, depth(wheel.x, wheel.y), place(wheel.x, wheel.y),
                        Math.pow(1.25, -wheel.angleDelta.y / 120));
    }
}
