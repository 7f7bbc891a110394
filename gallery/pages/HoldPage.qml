import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    // Sweeps of a picture, far enough apart to catch what comes and goes.
    readonly property int picturedSweeps: 10
    readonly property int nextSweep: 2 + 60 * hold.sweeps
    property string spread
    property string spreadAt

    function takeSweep() {
        // A sweep of a picture may be announced more than once.
        if (shell.takesPictures && sweepNumber.value !== nextSweep)
            return;
        hold.add(series.yData);
        if (shell.takesPictures && hold.sweeps < picturedSweeps)
            Qt.callLater(shell.holdSweep, nextSweep);
    }

    // The sample in view whose level has changed most.
    function readSpread() {
        var first = Math.max(0, series.indexOf(chart.axisX.minVisible));
        var last = Math.min(highest.size - 1, series.indexOf(chart.axisX.maxVisible));
        var most = -1;
        var place = 0;
        for (var i = first; i <= last; ++i) {
            var change = highest.y(i) - lowest.y(i);
            if (change > most) {
                most = change;
                place = i;
            }
        }
        spread = most < 0 ? "" : most.toFixed(1) + " dB";
        spreadAt = most < 0 ? "" : series.formattedXValueByPosIndex(place);
    }

    ready: hold.sweeps >= picturedSweeps

    controls: [
        PushButton {
            text: "Start again"
            onClicked: hold.reset()
        },
        SegmentedSelector {
            id: runSelector

            choices: ["Run", "Stop"]
            onActivated: function(index) { currentIndex = index; }
        },
        TraceKeys {
            plots: [trace, highestTrace, lowestTrace]
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Sweeps"
            value: hold.sweeps
            widestValue: "88888"
        },
        Reading {
            label: "Largest change in view"
            value: page.spread
            widestValue: "88.8 dB"
            textColor: area.penColor
        },
        Reading {
            label: "at"
            value: page.spreadAt
            widestValue: "888.888 MHz"
            textColor: area.penColor
        }
    ]

    TraceHold {
        id: hold

        // Written, not bound: a binding that reads lists of C++ keeps each one until the engine collects its garbage.
        onChanged: {
            highest.yData = maximum;
            lowest.yData = minimum;
            readingPause.request();
        }
    }

    BusValue {
        id: sweepNumber
        dbusAddress: "analyzer,spectrum"
        key: "sweep"
    }

    Timer {
        id: readingPause

        function request() {
            if (shell.takesPictures || !running)
                restart();
        }

        interval: shell.takesPictures ? 0 : 250
        onTriggered: page.readSpread()
    }

    LiveSpectrum {
        id: series

        onPlotChanged: if (runSelector.currentIndex === 0) page.takeSweep()
        Component.onCompleted: if (size > 1) page.takeSweep()
    }

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
        series: [
            PlotSeries {
                id: highest
                label: "Highest"
                xFirstValue: series.xFirstValue
                xInterval: series.xInterval
            },
            PlotSeries {
                id: lowest
                label: "Lowest"
                xFirstValue: series.xFirstValue
                xInterval: series.xInterval
            }
        ]

        AreaPlot {
            id: area

            renderTarget: Theme.plotTarget
            opacity: 0.4
            axisX: chart.axisX
            axisY: chart.axisY
            maxData: highest
            minData: lowest
            penColor: Theme.traces[4]
        }

        GraphPlot {
            id: highestTrace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: highest
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[1]
            minLineWidth: 1
            maxLineWidth: 1
        }

        GraphPlot {
            id: lowestTrace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: lowest
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[4]
            minLineWidth: 1
            maxLineWidth: 1
        }

        GraphPlot {
            id: trace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[0]
            minLineWidth: 1
            maxLineWidth: 2
        }

        Connections {
            target: chart.zoomRect
            function onRectChanged() { readingPause.request(); }
        }
    }
}
