import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../theme"

// A view with an axis at the bottom and one at the left, a grid below the plots and labels above them, and zooming by
// hand. The plots are the children that the page adds.
GraphView {
    id: chart

    property alias axisX: xAxis
    property alias axisY: yAxis
    readonly property alias zoomArea: area
    // For further axes of a page.
    readonly property alias labelPlane: labelPlane
    readonly property alias gridPlane: gridPlane

    anchors.fill: parent
    zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
    axes: [
        ValueAxis {
            id: xAxis
            tickInterval: ValueAxis.DisplayDynamic
            margin: requiredMargin
            labelFont { family: Theme.family; pixelSize: Theme.axisText }
            labelColor: Theme.axisLabel
            lineColor: Theme.graticule
            labelsPlane: labelPlane
            linesPlane: gridPlane
        },
        ValueAxis {
            id: yAxis
            alignment: Qt.AlignLeft
            numTicks: Theme.compact ? 6 : 8
            // Fills and bars start at zero or, where that is out of range, at the bottom of the chart.
            baseline: minValue < 0 && maxValue > 0 ? 0 : minValue
            margin: requiredMargin
            labelFont { family: Theme.family; pixelSize: Theme.axisText }
            labelColor: Theme.axisLabel
            lineColor: Theme.graticule
            labelsPlane: labelPlane
            linesPlane: gridPlane
        }
    ]

    PlotBackground {
        z: -1
    }

    XYScale {
        id: gridPlane
    }

    XYScale {
        id: labelPlane

        z: 2
    }

    ZoomArea {
        id: area

        z: 3
    }
}
