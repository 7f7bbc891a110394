import QtQuick 2.15
import "../theme"

// A number with a button for less and one for more.
Rectangle {
    id: stepper

    property string label
    property int value: 0
    property int from: 0
    property int to: 100
    property int step: 1

    // The value that the user asks for; the page that owns the value has to write it.
    signal activated(int value)

    implicitWidth: row.width
    implicitHeight: 40
    radius: Theme.radius
    color: Theme.plotArea
    border.color: Theme.hairline

    Row {
        id: row

        height: stepper.height

        PushButton {
            flat: true
            text: "\u2212"
            enabled: stepper.value > stepper.from
            onClicked: stepper.activated(Math.max(stepper.from, stepper.value - stepper.step))
        }

        Label {
            height: parent.height
            width: Theme.compact ? 66 : 84
            horizontalAlignment: Text.AlignHCenter
            text: stepper.label ? stepper.label + " " + stepper.value : stepper.value
        }

        PushButton {
            flat: true
            text: "+"
            enabled: stepper.value < stepper.to
            onClicked: stepper.activated(Math.min(stepper.to, stepper.value + stepper.step))
        }
    }
}
