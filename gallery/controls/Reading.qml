import QtQuick 2.15
import graph_kit 1.0
import "../theme"

ReadoutLabel {
    height: parent ? parent.height : implicitHeight
    fontFamily: Theme.family
    labelColor: Theme.quietText
    valueColor: Theme.text
    labelPixelSize: Theme.smallText
    valuePixelSize: Theme.valueText
}
