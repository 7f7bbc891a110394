import QtQuick 2.15
import "../theme"

// Names traces in their colours in one row, where a legend in the plot would cover them. A tap hides or shows a trace.
Row {
    id: keys

    property var plots: []

    spacing: Theme.compact ? 12 : 18

    Repeater {
        model: keys.plots

        Item {
            readonly property var plot: modelData

            width: name.x + name.implicitWidth
            height: 40
            opacity: plot && plot.visible ? 1 : 0.4

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 16
                height: 4
                radius: 2
                color: parent.plot ? parent.plot.penColor : "transparent"
            }

            Label {
                id: name

                x: 22
                height: parent.height
                text: parent.plot && parent.plot.plotData ? parent.plot.plotData.label : ""
                font.pixelSize: Theme.smallText
            }

            MouseArea {
                anchors.fill: parent
                onClicked: parent.plot.visible = !parent.plot.visible
            }
        }
    }
}
