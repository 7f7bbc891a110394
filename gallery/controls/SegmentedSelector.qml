import QtQuick 2.15
import "../theme"

// One of a few choices, all of them visible.
Rectangle {
    id: selector

    property var choices: []
    property int currentIndex: 0
    // Only this many of the choices, counted from the first, can be chosen.
    property int usable: choices.length

    signal activated(int index)

    implicitWidth: row.width + 4
    implicitHeight: 40
    radius: Theme.radius
    color: Theme.plotArea
    border.color: Theme.hairline

    Row {
        id: row

        x: 2
        y: 2

        Repeater {
            model: selector.choices

            Rectangle {
                readonly property bool current: index === selector.currentIndex

                width: Math.max(Theme.compact ? 46 : 54, choice.implicitWidth + (Theme.compact ? 18 : 26))
                height: selector.height - 4
                radius: Theme.radius - 1
                color: touch.pressed ? Theme.pressed : current ? Theme.raised : "transparent"

                Rectangle {
                    visible: parent.current
                    anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
                    width: parent.width - 16
                    height: 2
                    color: Theme.accent
                }

                Label {
                    id: choice

                    anchors.centerIn: parent
                    text: modelData
                    color: parent.current ? Theme.text : Theme.quietText
                    opacity: touch.enabled ? 1 : 0.35
                }

                MouseArea {
                    id: touch

                    anchors.fill: parent
                    enabled: index < selector.usable
                    onClicked: selector.activated(index)
                }
            }
        }
    }
}
