import QtQuick 2.15
import graph_kit 1.0
import "../theme"

ReadoutLabel {
    height: parent ? parent.height : implicitHeight
    fontFamily: Theme.family
    color: Theme.quietText
    textColor: Theme.text
    labelFontSize: Theme.smallText
    fontSize: Theme.valueText
}
