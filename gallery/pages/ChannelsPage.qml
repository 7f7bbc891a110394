import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    readonly property bool isReplay: shell.pageInfo.service === "replay"
    readonly property var selected: channels.selectedPoint >= 0 ? table.maker.objectAt(channels.selectedPoint) : null
    property int moment: 0

    function noise(i) {
        var value = Math.sin(i * 12.9898) * 43758.5453;
        return value - Math.floor(value);
    }

    // Power of a simulated channel in dBmV: a tilt over the band, a level of its own and a slow ripple.
    function power(index, time) {
        return 6 - index * 0.09 + 3 * (noise(index) - 0.5) + 0.7 * Math.sin(index / 4 + time / 9) + 0.3 * noise(index + 97 * time);
    }

    function simulatedRows() {
        var rows = [];
        for (var i = 0; i < 80; ++i) {
            var isAnalogue = i < 12;
            rows.push({begin: 111 + 8 * i, end: 119 + 8 * i, value: i === 33 || i === 34 ? NaN : power(i, 0),
                name: isAnalogue ? "K" + (i + 5) : "D" + (i - 11), color: isAnalogue ? Theme.traces[1] : Theme.traces[0],
                style: PlotRegion.Rectangle});
        }
        return rows;
    }

    function advance() {
        ++moment;
        for (var i = 0; i < table.size; ++i) {
            var region = table.maker.objectAt(i);
            if (region.valid)
                region.value = power(i, moment);
        }
    }

    ready: table.size > 0 && (!isReplay || trace.plotData.size > 1)
    Component.onCompleted: channels.selectedPoint = isReplay ? 12 : 62

    controls: [
        PushButton {
            text: "\u2039"
            enabled: channels.selectedPoint > 0
            onClicked: --channels.selectedPoint
        },
        PushButton {
            text: "\u203a"
            enabled: channels.selectedPoint < table.size - 1
            onClicked: ++channels.selectedPoint
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Channel"
            value: page.selected ? page.selected.name : "\u2014"
            widestValue: "OFDM 1"
            textColor: page.selected ? page.selected.color : Theme.text
        },
        Reading {
            label: "from"
            value: page.selected ? page.selected.begin + " to " + page.selected.end + " MHz" : "\u2014"
            widestValue: "888 to 888 MHz"
        },
        Reading {
            label: "Power"
            value: !page.selected ? "\u2014" : page.selected.valid ? page.selected.value.toFixed(1) + " dBmV" : "not measured"
            widestValue: "\u221288.8 dBmV"
        },
        Reading {
            label: "Channels"
            value: table.size
            visible: !Theme.compact
        },
        Reading {
            label: "Frames"
            value: channels.fps + " /s"
            widestValue: "88 /s"
            visible: !shell.takesPictures
        }
    ]

    RegionTable {
        id: table

        rows: page.isReplay ? recordedLoader.item.rows : page.simulatedRows()
        yUnits: "dBmV"
        yPrecision: 1
        ySigDigs: 3
        // Channels start at the baseline of this axis.
        axisX: chart.axisX
        axisY: chart.axisY
    }

    Loader {
        id: recordedLoader

        active: page.isReplay
        sourceComponent: RecordedRegions {
            colors: [Theme.traces[0], Theme.traces[1], Theme.traces[3]]
            styles: [PlotRegion.Rectangle]
        }
    }

    Timer {
        interval: 50
        running: !page.isReplay && !shell.takesPictures
        repeat: true
        onTriggered: page.advance()
    }

    PlotSeries {
        id: series

        dbusAddress: page.isReplay ? "replay,trace" : ""
        xFirstValue: xRangeBegin
        xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
    }

    TraceChart {
        id: chart

        axisX {
            minValue: page.isReplay ? series.xRangeBegin : 107
            maxValue: page.isReplay ? series.xRangeEnd : 755
            unit: "MHz"
        }
        axisY {
            minValue: page.isReplay ? Math.floor(series.yRangeBegin / 10) * 10 : -10
            maxValue: page.isReplay ? 20 : 12
            baseline: page.isReplay ? -80 : -10
            unit: "dBmV"
        }

        GraphPlot {
            id: trace

            visible: page.isReplay
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[2]
            minLineWidth: 1
            maxLineWidth: 2
        }

        ChannelPlot {
            id: channels

            renderTarget: Theme.plotTarget
            plotData: table
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            labelPen: Theme.text
            labelFont: Qt.font({family: Theme.family, pixelSize: Theme.smallText})
            fillOpacity: page.isReplay ? 0.2 : 0.375
        }

        Connections {
            target: chart.zoomArea
            function onTapped(x, y) {
                channels.selectedPoint = channels.checkClickPosition(chart.zoomArea.contentX + x, chart.zoomArea.contentY + y, 12);
            }
        }
    }
}
