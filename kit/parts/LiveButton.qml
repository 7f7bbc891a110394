import QtQuick 2.15
import graph_kit 1.0

// Lets a chart that was held follow its data again.
Rectangle {
    id: button

    property ChartView view: null

    implicitWidth: Math.max(44, Math.ceil(name.implicitWidth) + 34)
    implicitHeight: Math.max(30, Math.ceil(name.implicitHeight) + 12)
    radius: height / 2
    color: touch.pressed ? view.colors.gridColor : view.colors.background
    border.color: view.colors.textColor

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        x: 12
        width: 8
        height: 8
        radius: 4
        color: view.colors.traceColors.length > 0 ? view.colors.traceColors[0] : view.colors.textColor
    }

    Text {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        x: 25
        text: "live"
        color: button.view.colors.textColor
        font.family: button.view.colors.fontFamily
        font.pixelSize: button.view.colors.fontSize
        renderType: Text.NativeRendering
    }

    MouseArea {
        id: touch

        anchors { fill: parent; margins: -7 }
        onClicked: button.view.following = true
    }
}
