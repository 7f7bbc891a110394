import QtQuick 2.15
import graph_plugin 1.0
import graph_controls 1.0
import "../controls"
import "../theme"

Page {
    id: page

    ready: first.size > 1 && second.size > 1

    // Shows this share of the capture around the middle of what is shown now.
    function showShare(share) {
        var rect = chart.zoomRect;
        rect.setCenterAndZoom(Qt.vector2d(share, rect.height),
                              Qt.point(rect.left + rect.width / 2, rect.top + rect.height / 2));
    }

    controls: SegmentedSelector {
        readonly property var shares: [1, 0.1, 0.01, 0.001, 0.0001]

        choices: shares.map(function (share) { return first.formattedXValue(share * (first.xRangeEnd - first.xRangeBegin)); })
        currentIndex: shares.findIndex(function (share) { return Math.abs(chart.zoomRect.width / share - 1) < 0.01; })
        onActivated: page.showShare(shares[index])
    }
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Time in view"
            value: first.formattedXValue(chart.axisX.maxVisible - chart.axisX.minVisible)
            widestValue: "888.888 ms"
        },
        Reading {
            label: "Per division"
            value: first.formattedXValue((chart.axisX.maxVisible - chart.axisX.minVisible) / 10)
            widestValue: "888.888 ms"
        },
        Reading {
            label: "Samples per channel"
            value: first.size.toLocaleString(Qt.locale("en_US"), "f", 0)
        }
    ]

    TraceChart {
        id: chart

        axisX {
            minValue: first.xRangeBegin
            maxValue: first.xRangeEnd
            formatter: first.xFormatter
        }
        axisY {
            minValue: Math.min(first.yRangeBegin, second.yRangeBegin)
            maxValue: Math.max(first.yRangeEnd, second.yRangeEnd)
            unit: first.yUnits
        }
        zoomRect.minWidth: 0.00002
        series: [
            PlotSeries {
                id: first
                dbusAddress: "scope,ch1"
                xFirstValue: xRangeBegin
                xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
            },
            PlotSeries {
                id: second
                dbusAddress: "scope,ch2"
                xFirstValue: xRangeBegin
                xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
            }
        ]

        GraphPlot {
            id: secondTrace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: second
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[1]
            minLineWidth: 1
            maxLineWidth: 2
        }

        GraphPlot {
            id: firstTrace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: first
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            minLineWidth: 1
            maxLineWidth: 2
        }

        Legend {
            z: 4
            plots: [firstTrace, secondTrace]
            textColor: Theme.text
            backgroundColor: Theme.overlay
            pixelSize: Theme.smallText
            fontFamily: Theme.family
        }
    }
}
