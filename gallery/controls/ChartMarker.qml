import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../theme"

// A marker with a flag that can be dragged.
GraphMarker {
    id: marker

    property string name

    function place(value) {
        posValue = value;
        visible = true;
    }

    MarkerGrab {
        text: marker.name
        grabSize: Theme.touchSize
        textColor: Theme.flagText
        fontFamily: Theme.family
        fontSize: Theme.smallText
        backgroundColor: Theme.readoutOverlay
    }
}
