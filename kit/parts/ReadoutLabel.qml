import QtQuick 2.15

// One reading: a quiet name and a clear value beside it.
Item {
    id: readout

    property string label
    property string value
    // The widest value that is to be expected: room for it is kept, so that readings beside this one stay in place.
    property string widestValue
    property color labelColor: "#8b98a5"
    property color valueColor: "white"
    property string fontFamily: "Roboto"
    property int labelPixelSize: 13
    property int valuePixelSize: 17
    property real spacing: 8
    // Milliseconds between changes of the value, and what lets it follow at once, as SteadyText has them.
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
        color: readout.labelColor
        font.family: readout.fontFamily
        font.pixelSize: readout.labelPixelSize
        renderType: Text.NativeRendering
    }

    Text {
        id: number

        x: name.implicitWidth + readout.spacing
        anchors.verticalCenter: parent.verticalCenter
        text: steady.text
        color: readout.valueColor
        font.family: readout.fontFamily
        font.pixelSize: readout.valuePixelSize
        renderType: Text.NativeRendering
    }
}
