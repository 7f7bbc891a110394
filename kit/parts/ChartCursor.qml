import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0

// The cursor of a Chart with the readings of its traces.
GraphCursor {
    id: cursor

    property ChartView view: null

    color: view ? view.colors.cursorColor : "white"
    paintedWidth: 1

    Repeater {
        model: cursor.view && cursor.view.cursor.readings ? cursor.view.traces : []

        CursorReadout { plot: modelData; dotSize: 7 }
    }

    CursorTag {}
}
