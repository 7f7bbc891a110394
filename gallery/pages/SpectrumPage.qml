import QtQuick 2.15
import graph_plugin 1.0
import graph_controls 1.0
import "../controls"
import "../theme"

Page {
    id: page

    ready: series.size > 1

    controls: StyleSelector {
        plot: trace
    }
    endControls: ZoomButtons {
        zoomArea: zoomArea
    }
    readings: [
        Reading {
            label: "Peak in view"
            value: page.peakLevel
            widestValue: "\u2212100.00 dBm"
            valueColor: trace.penColor
        },
        Reading {
            label: "at"
            value: page.peakFrequency
            widestValue: "888.888 MHz"
            valueColor: trace.penColor
        },
        Reading {
            label: "Span"
            value: series.formattedXValue(xAxis.maxVisible - xAxis.minVisible)
            widestValue: "888.888 MHz"
        },
        Reading {
            label: "Points"
            value: series.size
            widestValue: "888888"
            visible: !Theme.compact
        },
        Reading {
            label: "Sweeps"
            value: page.sweepRate.toFixed(0) + " /s"
            widestValue: "88 /s"
            visible: !shell.takesPictures
        }
    ]

    property string peakLevel
    property string peakFrequency
    property int sweeps: 0
    property real sweepRate: 0

    // The largest sample in view.
    function readPeak() {
        var last = Math.min(series.size - 1, series.indexOf(xAxis.maxVisible));
        var peak = Math.max(0, series.indexOf(xAxis.minVisible));
        for (var i = peak; i <= last; ++i) {
            if (series.y(i) > series.y(peak))
                peak = i;
        }
        peakLevel = series.size > 0 ? series.formattedYValueByPosIndex(peak) : "";
        peakFrequency = series.size > 0 ? series.formattedXValueByPosIndex(peak) : "";
    }

    // Numbers that change with every sweep cannot be read: at most four a second.
    Timer {
        id: readingPause

        property bool pending: false

        function request() {
            pending = running;
            if (!running) {
                page.readPeak();
                start();
            }
        }

        interval: shell.takesPictures ? 0 : 250
        onTriggered: if (pending) request()
    }

    Timer {
        interval: 1000
        running: !shell.takesPictures
        repeat: true
        onTriggered: {
            page.sweepRate = page.sweeps;
            page.sweeps = 0;
        }
    }

    GraphView {
        id: view

        anchors.fill: parent
        zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
        axes: [
            ValueAxis {
                id: xAxis
                minValue: series.xRangeBegin
                maxValue: series.xRangeEnd
                tickInterval: ValueAxis.DisplayDynamic
                formatter: series.xFormatter
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
                minValue: series.yRangeBegin
                maxValue: series.yRangeEnd
                numTicks: Theme.compact ? 6 : 8
                unit: series.yUnits
                // Where fills and bars stand: zero dBm would hang them from the top.
                baseline: minValue
                margin: requiredMargin
                labelFont { family: Theme.family; pixelSize: Theme.axisText }
                labelColor: Theme.axisLabel
                lineColor: Theme.graticule
                labelsPlane: labelPlane
                linesPlane: gridPlane
            }
        ]
        series: PlotSeries {
            id: series
            dbusAddress: "analyzer,spectrum"
            // The bus gives the first and the last frequency; the step follows from them.
            xFirstValue: xRangeBegin
            xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
            axisX: xAxis
            axisY: yAxis
            onPlotChanged: {
                ++page.sweeps;
                readingPause.request();
            }
        }

        PlotBackground {
            z: -1
        }

        XYScale {
            id: gridPlane
        }

        GraphPlot {
            id: trace

            z: 1
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            penColor: Theme.traces[0]
            // Bars may be as wide as their samples are apart; lines stay lines.
            maxLineWidth: plotStyle === GraphPlot.BarPlot ? 64 : 2
            graphPoint: GraphPointCircle {
                pointSize: 2
            }
        }

        XYScale {
            id: labelPlane

            z: 2
        }

        Legend {
            z: 3
            plots: [trace]
            textColor: Theme.text
            backgroundColor: Theme.overlay
            pixelSize: Theme.smallText
            fontFamily: Theme.family
        }

        ZoomArea {
            id: zoomArea
        }

        Connections {
            target: view.zoomRect
            function onRectChanged() { readingPause.request(); }
        }
    }
}
