import QtQuick 2.15
import "../theme"

Rectangle {
    id: button

    property string text
    property bool flat: false
    default property alias content: holder.data

    signal clicked()

    implicitWidth: Math.max(Theme.touchSize, label.implicitWidth + 24)
    implicitHeight: 40
    radius: Theme.radius
    color: touch.pressed ? Theme.pressed : flat ? "transparent" : Theme.raised
    opacity: enabled ? 1 : 0.35

    Label {
        id: label

        anchors.centerIn: parent
        text: button.text
    }

    Item {
        id: holder

        anchors.centerIn: parent
    }

    MouseArea {
        id: touch

        anchors.fill: parent
        onClicked: button.clicked()
    }
}
