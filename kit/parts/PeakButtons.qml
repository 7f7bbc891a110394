import QtQuick 2.15
import graph_plugin 1.0
import "cursors.js" as Cursors
import "theme.js" as Theme

/*! \brief Three buttons for a cursor: the next peak to the left, the highest one, the next one to the right.
*/
Row {
    id: buttons

    /*! The cursor; null by default. */
    property GraphCursor cursor: null
    readonly property var theme: Theme.of(buttons)
    /*! Of a button, of one that is pressed, and of the texts; inside of a Chart those of its theme. */
    property color color: theme ? theme.minorGridColor : "#26303a"
    property color pressedColor: theme ? theme.gridColor : "#33404d"
    property color textColor: theme ? theme.textColor : "white"
    /*! Of the texts; inside of a Chart those of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 15
    /*! Of a button in pixels: 40, at least 44 wide, with corners of radius 5. */
    property real buttonHeight: 40
    property real leastWidth: 44
    property real radius: 5

    function press(index) {
        if (!cursor)
            return;
        if (index === 0)
            cursor.setPeakLeft();
        else if (index === 1)
            Cursors.goToPeak(cursor);
        else
            cursor.setPeakRight();
    }

    spacing: 6

    Repeater {
        model: ["\u2039", "Peak", "\u203a"]

        Rectangle {
            width: Math.max(buttons.leastWidth, Math.ceil(name.implicitWidth) + 24)
            height: buttons.buttonHeight
            radius: buttons.radius
            color: touch.pressed ? buttons.pressedColor : buttons.color

            Text {
                id: name

                anchors.centerIn: parent
                text: modelData
                color: buttons.textColor
                font.family: buttons.fontFamily
                font.pixelSize: buttons.fontSize
                renderType: Text.NativeRendering
            }

            MouseArea {
                id: touch

                anchors.fill: parent
                onClicked: buttons.press(index)
            }
        }
    }
}
