import QtQuick 2.15
import graph_kit 1.0
import "../theme"

CursorReadout {
    backgroundColor: Theme.readoutOverlay
    fontFamily: Theme.family
    fontSize: Theme.bodyText
    interval: shell.takesPictures ? 0 : 250
}
