import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"

// Any recordings: a trace, a table of events, a table of regions, each alone or with the others.
Page {
    id: page

    readonly property var recording: shell.recording
    // Equally spaced samples need no x values.
    readonly property PlotData trace: recording.equallySpaced ? series : points
    readonly property bool hasLevels: recording.yBegin !== undefined
    // If an axis reached further, its length would not fit into a number.
    readonly property real farthest: 7e307
    // A little room above and below the values, in steps of few digits, so that the labels stay short.
    readonly property var yRange: rangeOf(recording.yBegin, recording.yEnd)
    readonly property real yStep: Math.pow(10, Math.floor(Math.log(yRange.end - yRange.begin) / Math.LN10) - 1)
    readonly property var xRange: rangeOf(recording.xBegin, recording.xEnd)
    readonly property string note: {
        if (recording.samples + recording.events + recording.regions === 0)
            return "This recording holds no samples.";
        if (!hasLevels)
            return "Every sample of this recording is missing.";
        if (Math.max(-recording.yBegin, recording.yEnd, -recording.xBegin, recording.xEnd) > farthest)
            return "What lies beyond %1 has no place on an axis.".arg(farthest.toPrecision(1));
        return "";
    }

    // The range of an axis for these values; also for a single value, and for none.
    function rangeOf(begin, end) {
        if (begin === undefined)
            return {begin: 0, end: 1};
        var low = Math.max(-farthest, Math.min(farthest, begin)), high = Math.max(-farthest, Math.min(farthest, end));
        // Values closer than this are the same place on any axis.
        var room = high - low > 1e-9 * Math.max(Math.abs(low), Math.abs(high)) ? 0 : 0.05 * Math.abs(low) || 0.5;
        return {begin: low - room, end: high + room};
    }

    function number(value) {
        return Number(value.toPrecision(6));
    }

    function rangeText(begin, end, unit) {
        return number(begin) + (end > begin ? " to " + number(end) : "") + (unit ? " " + unit : "");
    }

    ready: trace.size === recording.samples && events.size === recording.events && regions.size === recording.regions

    controls: [
        StyleSelector {
            plot: tracePlot
            visible: page.recording.samples > 0
        },
        Stepper {
            id: chosenEvent

            label: "Event"
            to: events.size - 1
            visible: events.size > 0
            onActivated: function(value) { chosenEvent.value = value; }
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: page.recording.xLabel || "x"
            value: page.rangeText(chart.axisX.minVisible, chart.axisX.maxVisible, page.recording.xUnit)
        },
        Reading {
            label: page.recording.yLabel || "y"
            value: page.hasLevels ? page.rangeText(page.recording.yBegin, page.recording.yEnd, page.recording.yUnit) : "\u2014"
        },
        Reading {
            label: "Points"
            value: page.trace.size
            visible: page.recording.samples > 0 && !(Theme.compact && events.size > 0)
        },
        Reading {
            label: "Regions"
            value: regions.size
            visible: regions.size > 0 && !(Theme.compact && events.size > 0)
        },
        Reading {
            label: names.value && chosenEvent.value < names.value.length ? names.value[chosenEvent.value] : "Event"
            value: events.size > 0 ? page.number(events.x(chosenEvent.value)) + " " + page.recording.xUnit : ""
            textColor: marks.penColor
            visible: events.size > 0
        }
    ]

    PlotSeries {
        id: series

        dbusAddress: page.recording.equallySpaced ? "replay,trace" : ""
        xFirstValue: page.recording.xFirst || 0
        xInterval: page.recording.xStep || 1
    }

    PlotPoints {
        id: points

        dbusAddress: page.recording.samples > 0 && !page.recording.equallySpaced ? "replay,trace" : ""
    }

    PlotPoints {
        id: events

        dbusAddress: page.recording.events > 0 ? "replay,events" : ""
    }

    BusValue {
        id: names

        dbusAddress: page.recording.events > 0 ? "replay,events" : ""
        key: "labels"
    }

    RegionTable {
        id: regions

        rows: recordedLoader.item ? recordedLoader.item.rows : []
        missingValue: chart.axisY.maxValue
        axisX: chart.axisX
        axisY: chart.axisY
    }

    Loader {
        id: recordedLoader

        active: page.recording.regions > 0
        sourceComponent: RecordedRegions {
            colors: [Theme.traces[2], Theme.traces[4], Theme.traces[3]]
            styles: [PlotRegion.Rectangle]
        }
    }

    TraceChart {
        id: chart

        axisX {
            minValue: page.xRange.begin
            maxValue: page.xRange.end
            unit: page.recording.xUnit
        }
        axisY {
            minValue: (Math.floor(page.yRange.begin / page.yStep) - 1) * page.yStep
            maxValue: (Math.ceil(page.yRange.end / page.yStep) + 1) * page.yStep
            baseline: page.recording.regions > 0 || !(chart.axisY.minValue < 0 && chart.axisY.maxValue > 0) ? chart.axisY.minValue : 0
            unit: page.recording.yUnit
        }

        GraphBands {
            renderTarget: Theme.plotTarget
            plotData: regions
            axisX: chart.axisX
            axisY: chart.axisY
            labelPen: Theme.text
            labelFont: Qt.font({family: Theme.family, pixelSize: Theme.smallText})
            fillOpacity: 0.22
        }

        GraphPlot {
            id: tracePlot

            renderTarget: Theme.plotTarget
            // A single sample is no line.
            plotStyle: page.recording.samples > 1 ? GraphPlot.LinePlot : GraphPlot.ScatterPlot
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

        GraphPlot {
            id: marks

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.ScatterPlot
            plotData: events
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[1]
            minLineWidth: 2
            maxLineWidth: 2
            graphPoint: GraphPointVerticalLine {
                pointSize: 22
            }
        }

        // A ring around the event whose readings are shown.
        GraphPlot {
            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.ScatterPlot
            plotData: PlotPoints {
                xData: events.size > 0 ? [events.x(chosenEvent.value)] : []
                yData: events.size > 0 ? [events.y(chosenEvent.value)] : []
            }
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.text
            minLineWidth: 2
            maxLineWidth: 2
            graphPoint: GraphPointCircle {
                pointSize: 9
            }
        }

        Item {
            z: 4

            Rectangle {
                anchors { horizontalCenter: parent.horizontalCenter; top: parent.top; topMargin: Theme.gap }
                width: note.implicitWidth + 2 * Theme.gap
                height: note.implicitHeight + Theme.gap
                radius: Theme.radius
                color: Theme.overlay
                visible: page.note !== ""

                Label {
                    id: note

                    anchors.centerIn: parent
                    text: page.note
                    color: Theme.warning
                }
            }
        }
    }
}
