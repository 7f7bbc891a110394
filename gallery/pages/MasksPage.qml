import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    // Forbidden areas: corners in MHz and dBm. The trace has to stay below an upper limit and above a lower one.
    readonly property var masks: [
        {name: "Block", upper: true, x: [789, 789, 790, 822, 823, 836, 836], y: [-20, -70, -44, -44, -88, -88, -20]},
        {name: "Power", upper: false, x: [852, 852, 864, 867, 872, 872], y: [-120, -72, -72, -82, -82, -120]},
        {name: "Guard", upper: true, x: [927, 929, 945, 947], y: [-20, -72, -72, -20]},
        {name: "Burst", upper: true, x: [955, 957, 967, 969], y: [-20, -70, -70, -20]}
    ]
    // Per mask: how many samples lie in it, and the worst of them.
    property var results: []
    property int sweeps: 0
    property int failedSweeps: 0

    function judged(mask, painter) {
        var result = {count: 0, x: 0, y: 0};
        var last = Math.min(series.size - 1, series.indexOf(mask.x[mask.x.length - 1] * 1e6));
        for (var i = Math.max(0, series.indexOf(mask.x[0] * 1e6)); i <= last; ++i) {
            var x = series.x(i), y = series.y(i);
            if (!painter.containsPoint(x, y))
                continue;
            if (result.count === 0 || (mask.upper ? y > result.y : y < result.y)) {
                result.x = x;
                result.y = y;
            }
            ++result.count;
        }
        return result;
    }

    function judge() {
        if (series.size < 2 || painters.count < masks.length)
            return;
        results = masks.map(function (mask, index) { return judged(mask, painters.itemAt(index)); });
        ++sweeps;
        if (results.some(function (result) { return result.count > 0; }))
            ++failedSweeps;
    }

    function startAgain() {
        sweeps = 0;
        failedSweeps = 0;
        judge();
    }

    function fails(index) {
        return index < results.length && results[index].count > 0;
    }

    ready: results.length > 0
    Component.onCompleted: judge()

    controls: [
        Stepper {
            id: shift

            label: "Limits"
            from: -20
            to: 20
            step: 2
            onActivated: function(value) {
                shift.value = value;
                page.startAgain();
            }
        },
        PushButton {
            text: "Start again"
            onClicked: page.startAgain()
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Row {
            height: parent.height
            spacing: Theme.compact ? 14 : 24

            Repeater {
                model: page.masks

                Reading {
                    label: modelData.name
                    value: page.fails(index) ? "fail" : "pass"
                    widestValue: "pass"
                    textColor: page.fails(index) ? Theme.bad : Theme.good
                }
            }
        },
        Reading {
            label: "Failed sweeps"
            value: page.failedSweeps + " of " + page.sweeps
            visible: !shell.takesPictures
        }
    ]

    TraceChart {
        id: chart

        axisX {
            minValue: series.xRangeBegin
            maxValue: series.xRangeEnd
            formatter: series.xFormatter
        }
        axisY {
            minValue: series.yRangeBegin
            maxValue: series.yRangeEnd
            unit: series.yUnits
        }
        series: LiveSpectrum {
            id: series
            onPlotChanged: page.judge()
        }

        ContainerPlot {
            renderTarget: Theme.plotTarget
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY

            Repeater {
                id: painters

                model: page.masks

                CustomPainter {
                    xData: modelData.x.map(function (x) { return x * 1e6; })
                    yData: modelData.y
                    // Tighter limits reach further: an upper limit down, a lower one up.
                    origin: Qt.point(0, modelData.upper ? shift.value : -shift.value)
                    lineColor: page.fails(index) ? Theme.bad : Theme.good
                    lineWidth: 2
                    fillColor: lineColor
                    fillOpacity: page.fails(index) ? 0.32 : 0.14
                }
            }
        }

        GraphPlot {
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            minLineWidth: 1
            maxLineWidth: 2
        }

        // Arrows at the worst samples; zooming does not change their size.
        ContainerPlot {
            id: arrows

            renderTarget: Theme.plotTarget
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY

            Repeater {
                model: page.masks

                CustomPainter {
                    readonly property var result: page.results[index] || {count: 0, x: 0, y: 0}
                    readonly property int side: modelData.upper ? 1 : -1

                    visible: result.count > 0
                    pixelShape: true
                    origin: Qt.point(result.x, result.y)
                    xData: [0, -7, -3, -3, 3, 3, 7]
                    yData: [4, 14, 14, 24, 24, 14, 14].map(function (y) { return y * side; })
                    lineColor: Theme.bad
                    fillColor: Theme.bad
                    fillOpacity: 1
                }
            }

            Repeater {
                model: page.masks

                TextPainter {
                    readonly property var result: page.results[index] || {count: 0, x: 0, y: 0}

                    plotParent: arrows
                    visible: result.count > 0
                    origin: Qt.point(result.x, result.y)
                    label: result.y.toFixed(1) + " dBm"
                    labelColor: Theme.text
                    font: Qt.font({family: Theme.family, pixelSize: Theme.smallText})
                    hTextAlignment: Qt.AlignHCenter
                    vTextAlignment: modelData.upper ? Qt.AlignBottom : Qt.AlignTop
                    labelOffset: modelData.upper ? 28 : -28
                }
            }
        }
    }
}
