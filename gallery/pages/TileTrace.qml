import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

// A trace that fills a tile. Further plots of the tile take its axes.
Item {
    id: tile

    property PlotData trace
    property alias penColor: plot.penColor
    property alias plotStyle: plot.plotStyle
    property alias graphPoint: plot.graphPoint
    property real minX: 0
    property real maxX: 239
    property real minY: 0
    property real maxY: 1
    readonly property alias axisX: xAxis
    readonly property alias axisY: yAxis

    anchors.fill: parent

    ValueAxis {
        id: xAxis
        minValue: tile.minX
        maxValue: tile.maxX
    }

    ValueAxis {
        id: yAxis
        alignment: Qt.AlignLeft
        minValue: tile.minY
        maxValue: tile.maxY
        baseline: tile.minY
    }

    GraphPlot {
        id: plot

        anchors.fill: parent
        z: 1
        renderTarget: Theme.plotTarget
        plotStyle: GraphPlot.LinePlot
        plotData: tile.trace
        axisX: xAxis
        axisY: yAxis
        minLineWidth: 1
        maxLineWidth: 2
    }
}
