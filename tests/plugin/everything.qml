import QtQuick 2.15
import graph_plugin 1.0

// Every type of the module in one document.
Item {
    id: root

    property AbstractPlot plot: trace
    property GraphPoint point: dot
    property PlotData plotData: series

    width: 400
    height: 400

    GraphView {
        id: view

        width: 400
        height: 300
        axes: [
            ValueAxis { id: xAxis; maxValue: 10; margin: 20; labelsPlane: plane; linesPlane: plane },
            ValueAxis { id: yAxis; alignment: Qt.AlignLeft; maxValue: 10; margin: 20; labelsPlane: plane; linesPlane: plane }
        ]
        series: [
            PlotSeries { id: series; axisX: xAxis; axisY: yAxis; yData: [1, 5, 3, 8, 2] },
            PlotPoints { id: points; axisX: xAxis; axisY: yAxis; xData: [1, 2]; yData: [3, 4] },
            PlotBands { id: bands; axisX: xAxis; axisY: yAxis; xData: [1, 2]; yData: [3, 4] },
            PlotRegions {
                id: regions
                axisX: xAxis
                axisY: yAxis
                PlotRegion { valid: true; begin: 1; end: 2; value: 5; name: "A" }
            }
        ]

        XYScale { id: plane }
        Flickable {}
        GraphPlot { id: trace; plotData: series; plotStyle: GraphPlot.LinePlot }
        ChannelPlot { plotData: regions }
        GraphBands { plotData: regions }
        AreaPlot { maxData: points; minData: bands }
        HeatmapPlot { axisX: xAxis; axisY: yAxis; dataDirectory: "" }
        ContainerPlot {
            axisX: xAxis
            axisY: yAxis
            CrossPainter { point1X: 1; point1Y: 2; crossSize: 8 }
            CustomPainter { xData: [1, 2, 3]; yData: [1, 2, 1] }
            SegmentPainter { point2X: 5; point2Y: 5 }
            IntegralPainter { plotData: series; begin: 1; end: 3 }
            TextPainter { origin: Qt.point(2, 2); label: "text" }
        }
        Repeater {
            model: [dot, circle, cross, horizontal, vertical, marker, reflections, activeMarker, pictogram]
            GraphPlot { plotStyle: GraphPlot.ScatterPlot; plotData: points; graphPoint: modelData }
        }
        GraphCursor {
            id: cursor
            markers: GraphMarker { visible: true; Text {} }
            Text {
                GraphCursor.plot: trace
                text: GraphCursor.formattedYValue
            }
        }
        GraphCursorY {}
    }

    WorldView {
        id: world
        view: view
        y: 300
        width: 400
        height: 100
        WorldPlot { anchors.fill: parent; graphPlot: trace }
        Test {}
    }

    GraphPointDot { id: dot }
    GraphPointCircle { id: circle }
    GraphPointCross { id: cross }
    GraphPointHorizontalLine { id: horizontal }
    GraphPointVerticalLine { id: vertical }
    GraphPointMarker { id: marker }
    GraphPointReflections { id: reflections }
    GraphPointActiveMarker { id: activeMarker }
    GraphPointPictogramMarker { id: pictogram }
    ZoomRect { width: 0.5 }
}
