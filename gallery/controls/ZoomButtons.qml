import QtQuick 2.15
import graph_kit 1.0

// Zooming without fingers on the chart: closer, farther, everything.
Row {
    id: buttons

    property ZoomArea zoomArea

    function zoom(factor) {
        zoomArea.zoomAt((zoomArea.width - 1) / 2, (zoomArea.height - 1) / 2, factor, 1);
    }

    spacing: 6

    PushButton {
        text: "\u2212"
        onClicked: buttons.zoom(1.6)
    }

    PushButton {
        text: "+"
        onClicked: buttons.zoom(1 / 1.6)
    }

    PushButton {
        text: "All"
        onClicked: buttons.zoomArea.showAll()
    }
}
