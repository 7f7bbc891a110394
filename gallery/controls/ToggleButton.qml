import QtQuick 2.15
import "../theme"

// On or off, with a line below the text while on.
PushButton {
    id: button

    property bool on: false

    Rectangle {
        y: 15
        anchors.horizontalCenter: parent.horizontalCenter
        width: button.width - 16
        height: 2
        color: button.on ? Theme.accent : Theme.hairline
    }
}
