import QtQuick 2.15
import graph_plugin 1.0

// Every type of the module in one document, connected to each other: tests load it and tear it apart.
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
        zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
        axes: [
            ValueAxis {
                id: xAxis; maxValue: 10; margin: requiredMargin
                labelsPlane: plane; linesPlane: plane
            },
            ValueAxis {
                id: yAxis; alignment: Qt.AlignLeft; maxValue: 10; unit: series.yUnits; margin: 20
                labelsPlane: plane; linesPlane: plane
            },
            ValueAxis {
                id: otherAxis; alignment: Qt.AlignRight; minValue: -50; maxValue: 50
                labelsPlane: overlay; linesPlane: overlay
            }
        ]
        series: [
            PlotSeries {
                id: series; axisX: xAxis; axisY: yAxis
                xUnits: "Hz"; yUnits: "dBm"; active: true; yData: [1, 5, 3, 8, 2]
            },
            PlotPoints { id: points; axisX: xAxis; axisY: otherAxis; xData: [1, 2]; yData: [3, 4] },
            PlotBands { id: bands; axisX: xAxis; axisY: yAxis; xData: [1, 2]; yData: [3, 4] },
            PlotRegions {
                id: regions
                axisX: xAxis
                axisY: yAxis
                PlotRegion { valid: true; begin: 1; end: 2; value: 5; name: "A" }
                PlotRegion { begin: 4; end: 3; value: 7; name: "B" }
            }
        ]

        XYScale { id: plane }
        XYScale { id: overlay; z: 5 }
        Flickable {}
        GraphPlot { id: trace; plotData: series; plotStyle: GraphPlot.LinePlot }
        ChannelPlot { plotData: regions }
        GraphBands { plotData: regions; renderToImage: true }
        AreaPlot { plotData: series; maxData: series; minData: bands }
        HeatmapPlot { axisX: xAxis; axisY: yAxis; dataDirectory: "" }
        ContainerPlot {
            id: container
            axisX: xAxis
            axisY: yAxis
            CrossPainter { point1X: 1; point1Y: 2; crossSize: 8 }
            CustomPainter { xData: [1, 2, 3]; yData: [1, 2, 1]; fillColor: "red" }
            SegmentPainter { point2X: 5; point2Y: 5; endSize: 3 }
            IntegralPainter { plotParent: container; plotData: series; begin: 1; end: 3 }
            TextPainter { origin: Qt.point(2, 2); label: "text" }
        }
        Repeater {
            model: [dot, circle, cross, horizontal, vertical, marker, reflections, activeMarker, pictogram]
            GraphPlot { plotStyle: GraphPlot.ScatterPlot; plotData: points; graphPoint: modelData }
        }
        Repeater {
            model: 5
            GraphPlot { plotStyle: index; plotData: index % 3 == 0 ? points : series }
        }
        GraphCursor {
            id: cursor
            primaryPlot: trace
            markers: GraphMarker { visible: true; Text {} }
            Text {
                GraphCursor.plot: trace
                text: GraphCursor.formattedYValue
                x: GraphCursor.xPosOnScreen
            }
        }
        GraphCursorY { Text { text: GraphCursor.formattedYValue } }
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
