import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

// The cursor of a Chart with the readings of its traces. Declared in a Chart it takes the place of the one that a tap
// brings: it is always there, a finger drags it, taps and the chart's keys move it, and it may have markers.
GraphCursor {
    id: cursor

    property ChartView view: Theme.chartOf(cursor)
    // False for the one that the chart places itself.
    property bool isDeclared: true
    // The row of pixels where it was placed: levels are read there.
    property real row: NaN

    signal rowPlaced()

    property real _waiting: NaN
    // Whether its sample is in view.
    readonly property ValueAxis axis: plots.length >= 0 && primaryPlot ? primaryPlot.axisX : null
    readonly property bool inView: !axis || (posValue - axis.minVisible) * (posValue - axis.maxVisible) <= 0

    // On a sample that is in view, which may leave it later on.
    function placeAt(x, y) {
        _waiting = primaryPlot ? NaN : x;
        setStaysOnScreen(true);
        setPosOnScreen(Math.round(x));
        setStaysOnScreen(false);
        row = y;
        rowPlaced();
    }

    // A new one has no plots until the chart has taken it in.
    onPlotsChanged: if (!isNaN(_waiting) && primaryPlot) placeAt(_waiting, row)
    color: view ? view.colors.cursorColor : "white"
    paintedWidth: 1
    staysOnScreen: isDeclared
    Component.onCompleted: if (isDeclared && view) view.declaredCursor = cursor

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

    CursorGrab { enabled: cursor.isDeclared; tapArea: cursor.isDeclared ? cursor.view : null }
    CursorTag {}
}
