import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

// One of `lanes` traces that lie below one another.
GraphPlot {
    id: plot

    property int lane: 0
    property int lanes: 1
    property var samples: []
    property int lineWidth: 1

    // In units of the trace, which goes from -1.4 to 1.4.
    readonly property real laneHeight: 3

    renderTarget: Theme.plotTarget
    penColor: Theme.traces[lane % Theme.traces.length]
    minLineWidth: lineWidth
    maxLineWidth: lineWidth
    graphPoint: GraphPointCircle {
        pointSize: 2
    }
    plotData: PlotSeries {
        xInterval: axisX && size > 1 ? axisX.maxValue / (size - 1) : 1
        xUnits: "s"
        yUnits: "V"
        ySigDigs: 3
        yData: plot.samples
        axisX: plot.axisX
        axisY: plot.axisY
    }
    axisY: ValueAxis {
        alignment: Qt.AlignLeft
        minValue: -plot.laneHeight * (plot.lanes - plot.lane - 0.5)
        maxValue: plot.laneHeight * (plot.lane + 0.5)
        baseline: -plot.laneHeight / 2
    }
}
