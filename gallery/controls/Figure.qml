import QtQuick 2.15
import "../theme"

// A figure to be read from afar.
Column {
    id: figure

    property string name
    property string value
    property string unit

    Label {
        width: parent.width
        text: figure.name
        font.pixelSize: Theme.smallText
        color: Theme.quietText
    }

    Row {
        spacing: 6

        Label {
            id: number

            text: figure.value
            font.pixelSize: Theme.compact ? 24 : 30
        }

        Label {
            anchors.baseline: number.baseline
            text: figure.unit
            font.pixelSize: Theme.bodyText
            color: Theme.quietText
        }
    }
}
