import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

// One kind of mark on a row of points. A tap selects a point.
AxisCard {
    id: card

    property PlotData points
    property alias graphPoint: marks.graphPoint
    property alias penColor: marks.penColor
    property alias lineWidth: marks.maxLineWidth
    property alias selectedPoint: marks.selectedPoint

    GraphView {
        anchors.fill: parent
        axes: [
            ValueAxis {
                id: xAxis
                minValue: -0.6
                maxValue: 4.6
                axisStyle: ValueAxis.TicksOnly
                numTicks: 4
                lineColor: Theme.graticule
                labelsPlane: grid
                linesPlane: grid
            },
            ValueAxis {
                id: yAxis
                alignment: Qt.AlignLeft
                axisStyle: ValueAxis.TicksOnly
                numTicks: 4
                lineColor: Theme.graticule
                labelsPlane: grid
                linesPlane: grid
            }
        ]

        PlotBackground {
            z: -1
        }

        XYScale {
            id: grid
        }

        GraphPlot {
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: card.points
            axisX: xAxis
            axisY: yAxis
            penColor: Theme.hairline
            minLineWidth: 2
            maxLineWidth: 2
        }

        GraphPlot {
            id: marks

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.ScatterPlot
            plotData: card.points
            axisX: xAxis
            axisY: yAxis
            minLineWidth: 1
            maxLineWidth: 2
        }

        MouseArea {
            onClicked: function(mouse) { marks.selectedPoint = marks.checkClickPosition(mouse.x, mouse.y, 24); }
        }
    }
}
