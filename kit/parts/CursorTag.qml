import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

/*! \brief A cursor's own position in words: at the bottom of the line of a GraphCursor, at an end of that of a GraphCursorY.

\image markers.png The tag of a cursor, at the bottom of its line

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
    /*! Of the text: inside of a Chart the background of its theme. Elsewhere, and where that could not be read, black or
        white. */
    property color textColor: Theme.onto(color, theme)
    /*! Of the text; inside of a Chart those of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 13
    /*! At which end of a horizontal line; false by default. */
    property alias atRight: position.atRight
    readonly property bool horizontal: cursor instanceof GraphCursorY
    /*! The position with its unit, unless the document writes something else. */
    property alias text: position.text

    readonly property alias tagInset: position.tagInset
    // The name on the line of a horizontal cursor; else the button "live" and a legend at the bottom.
    readonly property var _obstacles: horizontal ? _flags() : _below()

    function _flags() {
        return Array.prototype.filter.call(parent ? parent.children : [], other => other.flagWidth && other.flag.visible)
            .map(other => Qt.rect(0, 0, other.flag.x + other.flagWidth, 0));
    }

    function _below() {
        var below = [];
        (chart ? [chart.liveButton, chart.legendBox] : []).forEach(function (other) {
            if (other && other.visible && other.y > height / 2)
                below.push(Qt.rect(other.x, other.y, other.width, other.height));
        });
        return below;
    }

    anchors.fill: parent
    visible: !position.isEmpty && width > 0 && height > 0

    // Writes the text and places the box.
    CursorPosition {
        id: position

        chart: tag.chart
        cursor: tag.cursor
        obstacles: tag._obstacles
        box: box
        label: name
    }

    Rectangle {
        id: box

        radius: 3
        color: tag.color

        Text {
            id: name

            anchors.centerIn: parent
            textFormat: Text.PlainText
            color: tag.textColor
            font.family: tag.fontFamily
            font.pixelSize: tag.fontSize
            renderType: Text.NativeRendering
        }
    }
}
