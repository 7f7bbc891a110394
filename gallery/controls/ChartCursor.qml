import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../theme"

// A cursor that can be dragged, tapped to its place, and says where it is.
GraphCursor {
    id: cursor

    property ZoomArea zoomArea: null

    // What it reads on the plot; nothing while the plot is hidden or its sample is missing.
    function reading(plot) {
        var values = yValues;
        var index = indexOfPlot(plot);
        return index >= 0 && index < values.length && !isNaN(values[index]) ? formattedYValues[index] : "---";
    }

    renderTarget: Theme.plotTarget
    color: Theme.cursor
    font { family: Theme.family; pixelSize: Theme.smallText }

    CursorGrab {
        tapArea: cursor.zoomArea
        grabSize: Theme.touchSize
    }

    CursorTag {
        textColor: Theme.flagText
        fontFamily: Theme.family
        fontSize: Theme.smallText
    }
}
