import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    readonly property bool isReplay: shell.pageInfo.service === "replay"
    readonly property real unit: isReplay ? 1 : 1e6

    // Begin and end in MHz, level in dBm, name, style, colour.
    readonly property var plan: [
        [703, 733, -50, "Uplink 700", PlotRegion.Rectangle, 4],
        [733, 758, -68, "Duplex gap", PlotRegion.Trapezoid, 5],
        [736, 742, -58, "Microphones", PlotRegion.Ellipse, 3],
        [758, 788, -40, "Downlink 700", PlotRegion.Trapezoid, 2],
        [758, 768, -52, "Safety", PlotRegion.Rectangle, 1],
        [791, 821, -36, "Downlink 800", PlotRegion.Trapezoid, 2],
        [821, 832, -76, "Gap 800", PlotRegion.Ellipse, 5],
        [832, 862, -44, "Uplink 800", PlotRegion.Rectangle, 4],
        [863, 870, -46, "Short range", PlotRegion.Ellipse, 3],
        [870, 876, -40, "Trunked", PlotRegion.Ellipse, 1],
        [874, 880, -56, "Railway up", PlotRegion.Rectangle, 1],
        [880, 915, -50, "Uplink 900", PlotRegion.Rectangle, 4],
        [919, 925, -52, "Railway down", PlotRegion.Ellipse, 1],
        [925, 960, -38, "Downlink 900", PlotRegion.Trapezoid, 2],
        [960, 1000, -64, "Navigation", PlotRegion.LabelOnly, 0],
        [992, 992.2, -50, "Beacon", PlotRegion.Rectangle, 3]
    ]

    function plannedRows() {
        return plan.map(function (band) {
            return {begin: band[0] * 1e6, end: band[1] * 1e6, value: band[2], name: band[3], style: band[4],
                color: Theme.traces[band[5]]};
        });
    }

    ready: table.size > 0 && series.size > 1

    controls: [
        SegmentedSelector {
            id: imageSwitch

            choices: ["Painted", "Kept as image"]
            onActivated: function(index) { currentIndex = index; }
        },
        SegmentedSelector {
            id: outlineSwitch

            choices: ["Outlined", "Plain"]
            onActivated: function(index) { currentIndex = index; }
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Bands"
            value: table.size
        },
        Reading {
            label: "In view"
            value: (chart.axisX.minVisible / page.unit).toFixed(1) + " to " + (chart.axisX.maxVisible / page.unit).toFixed(1) + " MHz"
        }
    ]

    RegionTable {
        id: table

        rows: page.isReplay ? recordedLoader.item.rows : page.plannedRows()
        missingValue: series.yRangeEnd
        // Bands start at the baseline of this axis.
        axisX: chart.axisX
        axisY: chart.axisY
    }

    Loader {
        id: recordedLoader

        active: page.isReplay
        sourceComponent: RecordedRegions {
            colors: [Theme.traces[2], Theme.traces[1], Theme.traces[3]]
            styles: [PlotRegion.Trapezoid, PlotRegion.Ellipse, PlotRegion.Rectangle]
        }
    }

    PlotSeries {
        id: series

        dbusAddress: page.isReplay ? "replay,trace" : "analyzer,spectrum"
        xFirstValue: xRangeBegin
        xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
    }

    TraceChart {
        id: chart

        axisX {
            minValue: series.xRangeBegin
            maxValue: series.xRangeEnd
            formatter: series.xFormatter
            unit: page.isReplay ? "MHz" : ""
        }
        axisY {
            minValue: Math.floor(series.yRangeBegin / 10) * 10
            maxValue: page.isReplay ? 20 : series.yRangeEnd + 10
            baseline: Math.floor(series.yRangeBegin / 10) * 10
            unit: page.isReplay ? "dBmV" : series.yUnits
        }

        GraphPlot {
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            minLineWidth: 1
            maxLineWidth: 1
        }

        GraphBands {
            renderTarget: Theme.plotTarget
            plotData: table
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[2]
            labelPen: Theme.text
            labelFont: Qt.font({family: Theme.family, pixelSize: Theme.smallText})
            fillOpacity: 0.22
            lineWidth: outlineSwitch.currentIndex === 0 ? 1 : 0
            renderToImage: imageSwitch.currentIndex === 1
        }
    }
}
