import QtQuick 2.15
import "../controls"
import "../theme"

// One small chart under its heading.
Rectangle {
    property alias title: heading.text
    default property alias chart: chartArea.data

    color: Theme.bar
    radius: Theme.radius

    Label {
        id: heading

        x: 10
        y: Theme.compact ? 3 : 6
        width: parent.width - 20
        font.pixelSize: Theme.smallText
        color: Theme.quietText
    }

    Item {
        id: chartArea

        anchors { fill: parent; topMargin: heading.y + heading.height + 3; leftMargin: 6; rightMargin: 6; bottomMargin: 5 }
    }
}
