import QtQuick 2.15
import "theme.js" as Theme

/*! \brief One reading of a status line: a quiet name and a clear value beside it.
*/
Item {
    id: readout

    /*! The name and the value. */
    property string label
    property string value
    /*! The widest value that is to be expected: room for it is kept, so that readings beside this one stay in place. */
    property string widestValue
    readonly property var theme: Theme.of(readout)
    /*! Of the name and of the value; inside of a Chart those of its theme. */
    property color color: theme ? Theme.translucent(theme.textColor, 0.7) : "#8b98a5"
    property color textColor: theme ? theme.textColor : "white"
    /*! Inside of a Chart that of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    /*! Of the value and of the name, which is smaller. */
    property int fontSize: theme ? Math.round(theme.fontSize * 1.2) : 17
    property int labelFontSize: Math.round(fontSize * 0.77)
    /*! Between name and value, 8 pixels. */
    property real spacing: 8
    /*! Milliseconds between changes of the value, and what lets it follow at once, as those of SteadyText. */
    property int interval: 0
    property var key

    implicitWidth: name.implicitWidth + spacing + Math.ceil(Math.max(room.width, number.implicitWidth))
    implicitHeight: number.implicitHeight

    SteadyText {
        id: steady

        source: readout.value
        interval: readout.interval
        key: readout.key
    }

    TextMetrics {
        id: room

        font: number.font
        text: readout.widestValue
    }

    Text {
        id: name

        anchors.baseline: number.baseline
        text: readout.label
        textFormat: Text.PlainText
        color: readout.color
        font.family: readout.fontFamily
        font.pixelSize: readout.labelFontSize
        renderType: Text.NativeRendering
    }

    Text {
        id: number

        x: name.implicitWidth + readout.spacing
        anchors.verticalCenter: parent.verticalCenter
        text: steady.text
        textFormat: Text.PlainText
        color: readout.textColor
        font.family: readout.fontFamily
        font.pixelSize: readout.fontSize
        renderType: Text.NativeRendering
    }
}
