import QtQuick 2.15
import "../theme"

// Switches something on or off; a line below the text shows that it is on.
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
