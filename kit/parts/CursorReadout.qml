import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

/*! \brief The reading of one trace at a cursor: a dot where the cursor crosses the trace, and the value beside it.

\image markers.png The reading of a trace at a cursor

The value is that of the sample next to the cursor, and the dot is on that sample: beside the line where this trace has other
x than the plot that the cursor moves along, and not there while the sample is out of view. Between samples nothing is
calculated.

A direct child of a GraphCursor, one per trace. Labels stay inside of the plot and do not cover each other, nor flags or
the legend of a Chart; where one column of them is too high there are several. Nothing shows while the plot is hidden, empty
or gone, its sample is missing, or the cursor is beyond the first or the last sample by more than half of their distance.
*/
Item {
    id: readout

    /*! The trace. */
    property alias plot: reader.plot
    readonly property var chart: Theme.chartOf(readout)
    readonly property bool readsLevel: reader.readsLevel
    /*! Where in a WaterfallPlot the level is read, in units of its vertical axis: in the row that it reads itself unless
        another place is written. */
    property alias levelY: reader.levelY
    /*! The value, NaN without one. */
    readonly property alias reading: reader.reading
    /*! What is written: the value with its unit, unless the document writes something else. */
    property alias text: reader.text
    readonly property var theme: chart ? chart.colors : null
    /*! Of the dot: that of the trace. */
    property color color: readsLevel && theme ? theme.cursorColor : plot ? plot.penColor : "white"
    /*! Of the text; inside of a Chart that of its theme, with a bar in the colour of the trace beside it, and elsewhere that
        of the trace. */
    property color textColor: theme ? theme.textColor : color
    /*! Behind the text; inside of a Chart that of its plot area, elsewhere translucent black, or white below a dark text. */
    property color backgroundColor: theme ? Theme.translucent(theme.plotBackground, 0.85) : Theme.behind(textColor)
    /*! Of the text; inside of a Chart that of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 14
    /*! Diameter of the dot, 9 pixels. */
    property real dotSize: 9
    /*! Rows kept free at the top, for example for flags; 0 by default. */
    property alias topInset: reader.topInset
    /*! Milliseconds between changes of a text that a live trace changes, 0 for all of them; a moved cursor is followed at
        once. */
    property alias interval: reader.interval

    /*! False while there is nothing to read. */
    readonly property alias shown: reader.shown
    /*! The column of pixels where the cursor crosses the trace. */
    readonly property alias crossingX: reader.crossingX
    /*! The row of pixels there. */
    readonly property alias crossingY: reader.crossingY
    readonly property alias labelHeight: reader.labelHeight
    readonly property alias wantedY: reader.wantedY
    readonly property alias labelY: reader.labelY

    anchors.fill: parent
    GraphCursor.plot: plot

    // Writes the text and places dot and chip.
    CursorReading {
        id: reader

        chart: readout.chart
        levelY: readsLevel ? (plot.readRow + 0.5) * plot.rowInterval * (plot.direction === WaterfallPlot.Up ? 1 : -1) : NaN
        fontSize: readout.fontSize
        dot: dot
        box: chip
        label: value
    }

    Rectangle {
        id: dot

        width: readout.dotSize
        height: readout.dotSize
        radius: readout.dotSize / 2
        color: readout.color
        border.color: readout.backgroundColor
    }

    Rectangle {
        id: chip

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
            textFormat: Text.PlainText
            color: readout.textColor
            font.family: readout.fontFamily
            font.pixelSize: readout.fontSize
            renderType: Text.NativeRendering
        }
    }
}
