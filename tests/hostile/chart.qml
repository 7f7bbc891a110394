import QtQuick 2.15
import charts 1.0

// A chart in which everything is connected to everything, for the tests to tear apart.
Item {
    id: root

    width: 300
    height: 200

    GraphView {
        id: view

        anchors.fill: parent
        zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
        axes: [
            ValueAxis { id: xAxis; maxValue: 100; margin: requiredMargin; labelsPlane: plane; linesPlane: plane },
            ValueAxis { id: yAxis; alignment: Qt.AlignLeft; maxValue: 60; unit: series.yUnits; labelsPlane: plane; linesPlane: plane },
            ValueAxis { id: otherAxis; alignment: Qt.AlignRight; minValue: -50; maxValue: 50; labelsPlane: overlay; linesPlane: overlay }
        ]
        series: [
            PlotSeries { id: series; axisX: xAxis; axisY: yAxis; xUnits: "Hz"; yUnits: "dBm"; active: true; yData: [1, 50, 3, 20, 7, 9, 40] },
            PlotPoints { id: points; axisX: xAxis; axisY: otherAxis; xData: [1, 2, 50, 60]; yData: [4, 8, 2, 5] },
            PlotBands { id: bands; axisX: xAxis; axisY: yAxis; xData: [10, 20]; yData: [30, 20] },
            PlotRegions {
                id: regions
                axisX: xAxis
                axisY: yAxis
                PlotRegion { begin: 10; end: 30; value: 20; name: "one" }
                PlotRegion { begin: 40; end: 35; value: 50; name: "two" }
            }
        ]
        XYScale { id: plane }
        XYScale { id: overlay; z: 5 }
        Flickable { contentWidth: 300; contentHeight: 200 }
        Repeater {
            model: 7
            GraphPlot { plotStyle: index; plotData: index % 3 == 0 ? points : series; graphPoint: point }
        }
        GraphPlot { id: scatter; plotStyle: GraphPlot.ScatterPlot; plotData: points; graphPoint: icons }
        AreaPlot { plotData: series; minData: series; maxData: points }
        ChannelPlot { plotData: regions }
        GraphBands { plotData: regions; renderToImage: true }
        HeatmapPlot { axisX: xAxis; axisY: yAxis; dataDirectory: "" }
        ContainerPlot {
            id: container
            plotData: series
            CrossPainter { point1X: 5; point1Y: 5 }
            TextPainter { origin: Qt.point(5, 5); label: "text" }
            SegmentPainter { point2X: 50; point2Y: 30; endSize: 3 }
            IntegralPainter { plotParent: container; begin: 2; end: 5 }
            CustomPainter { xData: [1, 5, 30]; yData: [3, 20, 2]; fillColor: "red" }
        }
        GraphCursor {
            id: cursor
            primaryPlot: scatter
            markers: [GraphMarker { posIndex: 1; visible: true; Text { text: "marker" } }]
            Text { GraphCursor.plot: scatter; text: GraphCursor.formattedYValue; x: GraphCursor.xPosOnScreen }
        }
        GraphCursorY { Text { text: GraphCursor.formattedYValue } }
    }
    WorldView {
        width: 300
        height: 40
        WorldPlot { anchors.fill: parent; graphPlot: scatter }
    }
    GraphPointDot { id: point }
    GraphPointReflections { id: icons }
}
