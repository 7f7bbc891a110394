import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

/*! \brief The reading of one trace at a cursor: a dot where the cursor crosses the trace, and the value beside it.

A direct child of a GraphCursor, one per trace. Labels stay inside of the plot and do not cover each other. Nothing shows
while the plot is hidden, empty or gone, or its sample is missing.
*/
Item {
    id: readout

    /*! The trace. */
    property AbstractPlot plot: null
    readonly property var chart: Theme.chartOf(readout)
    readonly property bool readsLevel: Boolean(plot) && plot instanceof WaterfallPlot
    /*! Where in a WaterfallPlot the level is read, in units of its vertical axis: in the row that it reads itself unless
        another place is written. */
    property real levelY: readsLevel ? (plot.readRow + 0.5) * plot.rowInterval * (plot.direction === WaterfallPlot.Up ? 1 : -1) : NaN
    /*! The value, NaN without one. */
    readonly property real reading: readsLevel ? (_rows, plot.levelAt(GraphCursor.xValue, levelY)) : GraphCursor.yValue
    /*! What is written: the value with its unit, unless the document writes something else. */
    property string text: chart && plot ? (_scale, chart.formatY(plot, reading)) + (readsLevel ? ", " + _rowText : "")
                        : readsLevel && plot.plotData ? plot.plotData.formattedYValue(reading) : GraphCursor.formattedYValue
    readonly property var theme: chart ? chart.colors : null
    /*! Of the dot: that of the trace. */
    property color color: readsLevel && theme ? theme.cursorColor : plot ? plot.penColor : "white"
    /*! Of the text; inside of a Chart that of its theme, with a bar in the colour of the trace beside it, and elsewhere that
        of the trace. */
    property color textColor: theme ? theme.textColor : color
    /*! Behind the text; inside of a Chart that of its plot area, transparent elsewhere. */
    property color backgroundColor: theme ? Theme.translucent(theme.plotBackground, 0.85) : "transparent"
    /*! Of the text; inside of a Chart that of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 14
    /*! Diameter of the dot, 9 pixels. */
    property real dotSize: 9
    /*! Rows kept free at the top, for example for flags; 0 by default. */
    property real topInset: 0
    /*! Milliseconds between changes of a text that a live trace changes, 0 for all of them; a moved cursor is followed at
        once. */
    property int interval: 0

    /*! False while there is nothing to read. */
    readonly property bool shown: GraphCursor.index >= 0 && Boolean(plot) && Boolean(plot.plotData)
                                  && plot.plotData.size > 0 && !isNaN(reading)
    /*! The column of pixels where the cursor crosses the trace. */
    readonly property real crossingX: GraphCursor.xPosOnScreen
    /*! The row of pixels there. */
    readonly property real crossingY: readsLevel ? Math.round(levelPlace()) : GraphCursor.yPosOnScreen
    readonly property real labelHeight: chip.height
    // Above the crossing, where a peak leaves room; below it at the top of the plot.
    readonly property real wantedY: crossingY - labelHeight - 6 >= topInset ? crossingY - labelHeight - 6 : crossingY + 6
    readonly property real labelY: shown ? placeAmongSiblings() : 0

    // Readings have the prefix of the numbers beside them.
    readonly property var _scale: plot && plot.axisY ? [plot.axisY.minVisible, plot.axisY.maxVisible] : []
    // Which row of a waterfall is read: where its axis says what rows are, in its units, else the number of the row.
    readonly property int _row: readsLevel ? Math.floor(Math.abs(levelY) / plot.rowInterval) : 0
    readonly property string _rowText: !readsLevel ? "" : plot.axisY && plot.axisY.unit && plot.axisY.valueText
        ? plot.axisY.valueText(_row * plot.rowInterval * (levelY < 0 ? -1 : 1)) : "row " + _row
    // Counts the rows of a waterfall that have come.
    property int _rows: 0

    // Follows the visible range.
    function levelPlace() {
        var axis = plot.axisY;
        return axis && axis.minVisible !== axis.maxVisible && height > 0 ? plot.mapToItemY(levelY) : 0;
    }

    // The rows of the distances that the cursor writes beside its markers.
    function distanceRows() {
        var cursor = parent, size = cursor.font.pixelSize > 0 ? cursor.font.pixelSize : fontSize, rows = [];
        for (var i = 0; cursor.markers && i < cursor.markers.length; ++i) {
            var marker = cursor.markers[i];
            if (marker && marker.visible && marker.showDelta)
                rows.push({ top: marker.deltaY - size - 2, end: marker.deltaY + 0.3 * size + 2 });
        }
        return rows.sort(function (a, b) { return a.top - b.top; });
    }

    // From the top down each label moves below the one above it and below distances; those that do not fit any more move
    // up again.
    function placeAmongSiblings() {
        var labels = [];
        var distances = distanceRows();
        var bottom = height;
        for (var i = 0; i < parent.children.length; ++i) {
            // Null while it is being destroyed.
            var other = parent.children[i];
            if (other && other.tagInset > 0)
                bottom = Math.min(bottom, height - other.tagInset);
            if (other && other.wantedY !== undefined && other.shown)
                labels.push({ item: other, order: labels.length, y: other.wantedY, height: other.labelHeight + 2 });
        }
        labels.sort(function (a, b) { return a.y - b.y || a.order - b.order; });
        var free = topInset;
        labels.forEach(function (label) {
            label.y = Math.max(label.y, free);
            distances.forEach(function (rows) {
                if (label.y < rows.end && label.y + label.height > rows.top)
                    label.y = rows.end;
            });
            free = label.y + label.height;
        });
        free = bottom;
        distances.reverse();
        labels.reverse().forEach(function (label) {
            label.y = Math.min(label.y, free - label.height);
            distances.forEach(function (rows) {
                if (label.y < rows.end && label.y + label.height > rows.top)
                    label.y = rows.top - label.height;
            });
            free = label.y;
        });
        return labels.find(function (label) { return label.item === readout; }).y;
    }

    anchors.fill: parent
    GraphCursor.plot: plot

    Connections {
        target: readout.readsLevel ? readout.plot.plotData : null
        function onPlotChanged() { ++readout._rows; }
    }

    SteadyText {
        id: steady

        source: readout.text
        interval: readout.interval
        key: readout.GraphCursor.xValue
    }

    Rectangle {
        visible: readout.shown && readout.crossingY >= 0 && readout.crossingY < readout.height
        x: readout.crossingX - Math.floor(width / 2)
        y: readout.crossingY - Math.floor(height / 2)
        width: readout.dotSize
        height: readout.dotSize
        radius: readout.dotSize / 2
        color: readout.color
        border.color: readout.backgroundColor
    }

    Rectangle {
        id: chip

        readonly property real rightX: readout.crossingX + 10
        readonly property real leftX: readout.crossingX - 9 - width

        visible: readout.shown
        x: rightX + width <= readout.width || leftX < 0 ? rightX : leftX
        y: Math.round(readout.labelY)
        width: Math.ceil(value.implicitWidth) + value.x + 5
        height: Math.ceil(value.implicitHeight) + 2
        radius: 3
        color: readout.backgroundColor

        Rectangle {
            id: bar

            visible: String(readout.textColor) !== String(readout.color)
            width: 3
            height: parent.height
            radius: 1
            color: readout.color
        }

        Text {
            id: value

            x: bar.visible ? 8 : 5
            y: 1
            text: steady.text
            color: readout.textColor
            font.family: readout.fontFamily
            font.pixelSize: readout.fontSize
            renderType: Text.NativeRendering
        }
    }
}
