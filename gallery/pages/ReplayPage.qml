import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

// Any recording, its axes scaled to what the replay says about its ranges.
Page {
    id: page

    readonly property var recording: shell.recording
    // Equally spaced samples need no x values.
    readonly property PlotData trace: recording["x-step"] ? series : points
    // A little room above and below the trace, in steps of few digits, so that the labels stay short.
    readonly property real yRange: trace.yRangeEnd - trace.yRangeBegin
    readonly property real yStep: yRange > 0 ? Math.pow(10, Math.floor(Math.log(yRange) / Math.LN10) - 1) : 1

    function reading(value, unit) {
        return Number(value.toPrecision(6)) + (unit ? " " + unit : "");
    }

    ready: trace.size > 1

    controls: StyleSelector {
        plot: tracePlot
    }
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: page.recording["x-label"] || "x"
            value: page.reading(chart.axisX.minVisible) + " to " + page.reading(chart.axisX.maxVisible, page.recording["x-unit"])
        },
        Reading {
            label: page.recording["y-label"] || "y"
            value: page.reading(page.trace.yRangeBegin) + " to " + page.reading(page.trace.yRangeEnd, page.recording["y-unit"])
        },
        Reading {
            label: "Points"
            value: page.trace.size
        }
    ]

    PlotSeries {
        id: series

        dbusAddress: page.recording["x-step"] ? "replay,trace" : ""
        xFirstValue: xRangeBegin
        xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
    }

    PlotPoints {
        id: points

        dbusAddress: page.recording["x-step"] ? "" : "replay,trace"
    }

    TraceChart {
        id: chart

        axisX {
            minValue: page.trace.xRangeBegin
            maxValue: page.trace.xRangeEnd
            unit: page.recording["x-unit"] || ""
        }
        axisY {
            minValue: (Math.floor(page.trace.yRangeBegin / page.yStep) - 1) * page.yStep
            maxValue: (Math.ceil(page.trace.yRangeEnd / page.yStep) + 1) * page.yStep
            unit: page.recording["y-unit"] || ""
        }

        GraphPlot {
            id: tracePlot

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: page.trace
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            minLineWidth: 1
            maxLineWidth: plotStyle === GraphPlot.BarPlot ? 64 : 2
            graphPoint: GraphPointCircle {
                pointSize: 2
            }
        }
    }
}
