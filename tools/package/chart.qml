import QtQuick 2.15
import graph_plugin 1.0

GraphView {
    width: 400
    height: 240
    axes: [
        ValueAxis { id: time; maxValue: 4; margin: requiredMargin; labelsPlane: plane; linesPlane: plane },
        ValueAxis {
            id: level
            alignment: Qt.AlignLeft
            maxValue: 10
            unit: "dBm"
            margin: requiredMargin
            labelsPlane: plane
            linesPlane: plane
        }
    ]

    XYScale { id: plane }
    GraphPlot {
        plotData: PlotSeries { axisX: time; axisY: level; yData: [1, 5, 3, 8, 2] }
        plotStyle: GraphPlot.LinePlot
    }
}
