import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../theme"

// A horizontal cursor that can be dragged and shows its value.
GraphCursorY {
    property alias tagAtRight: tag.atRight

    renderTarget: Theme.plotTarget
    color: Theme.secondCursor
    // On the screen it would stop at whole values only.
    staysOnScreen: false

    CursorGrab {
        grabSize: Theme.touchSize
    }

    CursorTag {
        id: tag

        textColor: Theme.flagText
        fontFamily: Theme.family
        fontSize: Theme.smallText
    }
}
