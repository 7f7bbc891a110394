import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors
import "theme.js" as Theme

/*! \brief A cursor's own position in words: at the bottom of the line of a GraphCursor, at an end of that of a GraphCursorY.

A child of the cursor.
*/
Item {
    id: tag

    /*! The cursor: the one that it is in. */
    property GraphCursor cursor: parent
    /*! Behind the text: that of the cursor. */
    property color color: cursor ? Qt.rgba(cursor.color.r, cursor.color.g, cursor.color.b, 1) : "transparent"
    readonly property var chart: Theme.chartOf(tag)
    readonly property var theme: chart ? chart.colors : null
    /*! Of the text, and its font; inside of a Chart those of its theme. */
    property color textColor: theme ? theme.plotBackground : "black"
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 13
    /*! At which end of a horizontal line; false by default. */
    property bool atRight: false
    readonly property bool horizontal: cursor instanceof GraphCursorY
    readonly property PlotData series: Cursors.primaryData(cursor)
    /*! The position with its unit, unless the document writes something else. */
    property string text: !series ? "" : chart && !horizontal ? chart.formatX(cursor.posValue)
                         : chart ? chart.formatY(cursor.primaryPlot, cursor.posValue)
                         : horizontal ? series.formattedYValue(cursor.posValue) : series.formattedXValue(cursor.posValue)

    // The rows at the bottom that readings keep clear of.
    readonly property real tagInset: !horizontal && visible ? height - box.y + 2 : 0
    // Above the button "live" and a legend at the bottom where it would be below them.
    readonly property real _floor: {
        var floor = height;
        (chart ? [chart.liveButton, chart.legendBox] : []).forEach(function (other) {
            if (other && other.visible && other.y > height / 2 && box.x + box.width + 4 > other.x && box.x < other.x + other.width + 4)
                floor = Math.min(floor, other.y);
        });
        return floor;
    }

    anchors.fill: parent
    visible: text !== ""

    Rectangle {
        id: box

        readonly property real line: tag.cursor ? tag.cursor.posOnScreen : 0

        x: !tag.horizontal ? Math.max(0, Math.min(line - (width - 1) / 2, tag.width - width))
           : tag.atRight ? tag.width - width - 2 : 2
        y: tag.horizontal ? Math.max(0, Math.min(line - (height - 1) / 2, tag.height - height))
           : tag._floor - height - 2
        width: Math.ceil(name.implicitWidth + 10) | 1
        height: Math.ceil(name.implicitHeight + 3) | 1
        radius: 3
        color: tag.color

        Text {
            id: name

            anchors.centerIn: parent
            text: tag.text
            color: tag.textColor
            font.family: tag.fontFamily
            font.pixelSize: tag.fontSize
            renderType: Text.NativeRendering
        }
    }
}
