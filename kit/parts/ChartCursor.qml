import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0

// The cursor of a Chart with the readings of its traces.
GraphCursor {
    id: cursor

    property ChartView view: null
    // The row of pixels where it was placed: levels are read there.
    property real row: NaN

    signal rowPlaced()

    property real _waiting: NaN

    function placeAt(x, y) {
        _waiting = primaryPlot ? NaN : x;
        setPosOnScreen(Math.round(x));
        row = y;
        rowPlaced();
    }

    // A new one has no plots until the chart has taken it in.
    onPlotsChanged: if (!isNaN(_waiting) && primaryPlot) placeAt(_waiting, row)
    color: view ? view.colors.cursorColor : "white"
    paintedWidth: 1

    Repeater {
        model: cursor.view && cursor.view.cursor.readings ? cursor.view.traces : []

        CursorReadout {
            id: readout

            plot: modelData
            dotSize: 7
            // Not a binding: the place goes with the colours when the view moves.
            Component.onCompleted: if (readsLevel) follow()
            function follow() {
                if (readsLevel && !isNaN(cursor.row))
                    levelY = plot.mapFromItemY(cursor.row);
            }
            Connections {
                target: cursor
                function onRowPlaced() { readout.follow(); }
            }
        }
    }

    CursorTag {}
}
