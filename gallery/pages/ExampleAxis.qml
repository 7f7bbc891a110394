import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

ValueAxis {
    property AxisExample example

    margin: requiredMargin
    labelFont { family: Theme.family; pixelSize: Theme.compact ? 12 : 14 }
    labelColor: Theme.axisLabel
    lineColor: Theme.graticule
    labelsPlane: example.labelPlane
    linesPlane: example.gridPlane
}
