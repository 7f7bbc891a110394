import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "cursors.js" as Cursors
import "theme.js" as Theme

/*! \brief The cursor of a Chart with the readings of its traces.

\image markers.png A cursor with its reading and two markers with their distances

Declared in a Chart it takes the place of the one that a tap brings: it is always there, a finger drags it, taps and the
chart's keys move it, and it may have markers. It is a GraphCursor with a CursorGrab, a CursorTag, and a CursorReadout for
each trace.

\code
Chart {
    Trace { values: [1, 5, 3, 8, 2] }
    ChartCursor {
        markers: GraphMarker { posValue: 2; visible: true; MarkerGrab { text: "A" } }
    }
}
\endcode
*/
GraphCursor {
    id: cursor

    /*! The chart that it is in. */
    property ChartView view: Theme.chartOf(cursor)
    /*! \internal
        False for the one that the chart places itself. */
    property bool isDeclared: true
    /*! The row of pixels of the tap that placed it, where the level of a WaterfallPlot is read. */
    property real row: NaN

    /*! After a tap or the mouse has placed it, also in the column where it is already. */
    signal rowPlaced()

    property real _waiting: NaN
    property real _awaited: NaN
    property bool _placing: false
    // Whether its sample is in view.
    readonly property ValueAxis axis: plots.length >= 0 && primaryPlot ? primaryPlot.axisX : null
    /*! Whether its sample is in view. */
    readonly property bool inView: !axis || (posValue - axis.minVisible) * (posValue - axis.maxVisible) <= 0

    /*! Places it at the sample next to a pixel of the plot area. */
    function placeAt(x, y) {
        _waiting = primaryPlot ? NaN : x;
        _awaited = NaN;
        setStaysOnScreen(true);
        setPosOnScreen(Math.round(x));
        setStaysOnScreen(false);
        row = y;
        rowPlaced();
    }

    // On the sample next to a value, once there are samples.
    function placeAtValue(value) {
        _placing = true;
        setPosValue(value);
        _placing = false;
        _awaited = posIndex < 0 ? value : NaN;
    }

    function _placeAtAwaited() {
        if (!_placing && !isNaN(_awaited) && primaryPlot)
            placeAtValue(_awaited);
    }

    // A new one has no plots until the chart has taken it in.
    onPlotsChanged: {
        _placeAtAwaited();
        if (!isNaN(_waiting) && primaryPlot)
            placeAt(_waiting, row);
    }
    // The first sample is where it begins by itself.
    onPosIndexChanged: _placeAtAwaited()
    color: view ? view.colors.cursorColor : "white"
    paintedWidth: 1
    staysOnScreen: isDeclared
    Component.onCompleted: if (isDeclared && view) view.declaredCursor = cursor

    Repeater {
        model: cursor.view && cursor.view.cursor.readings ? cursor.view.traces.filter(trace => trace.readings !== false) : []

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

    // In no view it would be silent.
    Loader {
        active: cursor.isDeclared && !cursor.view && !Cursors.zoomRect(cursor)
        sourceComponent: Diagnosis {}
    }
    CursorGrab { enabled: cursor.isDeclared; tapArea: cursor.isDeclared ? cursor.view : null }
    CursorTag {}
}
