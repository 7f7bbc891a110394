import QtQuick 2.15
import "../theme"

// The layout of a page: the chart, a strip of controls below it, and the readings at the bottom.
Item {
    id: page

    // True when everything on the page is there; pictures are taken only then.
    property bool ready: true
    default property alias chart: chartArea.data
    property alias controls: controlRow.data
    property alias endControls: endRow.data
    property alias readings: readingRow.data

    Item {
        id: chartArea

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            bottom: strip.top
            leftMargin: Theme.gap
            rightMargin: Theme.gap
            topMargin: Theme.gap
        }
    }

    Item {
        id: strip

        anchors { left: parent.left; right: parent.right; bottom: footer.top; leftMargin: Theme.gap; rightMargin: Theme.gap }
        height: controlRow.children.length + endRow.children.length > 0 ? 40 + Theme.gap : Theme.gap

        Row {
            id: controlRow

            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.gap
        }

        Row {
            id: endRow

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: Theme.gap
        }
    }

    Rectangle {
        id: footer

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: readingRow.children.length > 0 ? Theme.footerHeight : 0
        color: Theme.bar

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.hairline
        }

        Row {
            id: readingRow

            anchors { left: parent.left; leftMargin: Theme.gap; verticalCenter: parent.verticalCenter }
            height: parent.height
            spacing: Theme.compact ? 18 : 30
        }
    }
}
