import QtQuick 2.15
import QtQuick.Window 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"

// How fast charts are drawn: one frame after the other with a chosen number of samples, and the time it takes.
Page {
    id: page

    readonly property int traces: [1, 2, 5, 10][traceSelector.currentIndex]
    readonly property int samples: [1000, 10000, 100000, 1000000][sampleSelector.currentIndex]
    readonly property int lineWidth: [1, 2, 4, 8][widthSelector.currentIndex]
    // Each point gets a mark of its own: with more of them a frame would take seconds.
    readonly property bool pointsAllowed: traces * samples <= 10000
    property int chosenStyle: GraphPlot.LinePlot
    readonly property int style: chosenStyle === GraphPlot.ScatterPlot && !pointsAllowed ? GraphPlot.LinePlot : chosenStyle
    readonly property bool renewing: motionSelector.currentIndex === 0
    readonly property bool panning: motionSelector.currentIndex === 1
    readonly property var settings: [traces, samples, lineWidth, style, renewing, panning]

    readonly property real samplesShown: traces * samples * chart.zoomRect.width
    readonly property real samplesPerSecond: samplesShown * meter.framesPerSecond
    readonly property var scale: [{factor: 1e9, prefix: "G"}, {factor: 1e6, prefix: "M"}, {factor: 1e3, prefix: "k"}]
        .find(function (scale) { return page.samplesPerSecond >= scale.factor; }) || {factor: 1, prefix: ""}

    // Frames of new data, and frames of panning.
    property int renewals: 0
    property int steps: 0

    function advance() {
        if (renewing)
            ++renewals;
        else
            chart.zoomRect.moveLeft(0.25 - 0.25 * Math.cos(++steps / 60));
    }

    // Three digits, or a dash while there is no figure.
    function figure(value) {
        return isNaN(value) ? "\u2013" : value.toFixed(value < 9.995 ? 2 : value < 99.95 ? 1 : 0);
    }

    onSettingsChanged: meter.restart()
    // Panning needs room to move.
    onPanningChanged: {
        if (panning)
            chart.zoomRect.setCenterAndZoom(Qt.vector2d(0.5, 1), Qt.point(0.25, 0.5));
        else
            chart.zoomArea.showAll();
    }

    FrameMeter {
        id: meter

        window: page.Window.window
        running: (page.renewing || page.panning) && page.Window.visibility !== Window.Minimized
        onFrameShown: page.advance()
    }

    NoisyTraces {
        id: noise
    }

    Row {
        id: figures

        readonly property real figureWidth: Math.floor(width / 4)

        width: parent.width

        Figure {
            width: figures.figureWidth
            name: "Frames"
            value: page.figure(meter.framesPerSecond)
            unit: "/s"
        }

        Figure {
            width: figures.figureWidth
            name: "Painting a frame"
            value: page.figure(meter.paintTime)
            unit: "ms"
        }

        Figure {
            width: figures.figureWidth
            name: "Samples drawn"
            value: page.figure(page.samplesPerSecond / page.scale.factor)
            unit: page.scale.prefix + "/s"
        }

        Figure {
            width: figures.figureWidth
            name: "Samples in view"
            value: Math.round(page.samplesShown).toLocaleString(Qt.locale("en_US"), "f", 0)
        }
    }

    Item {
        anchors {
            left: parent.left
            right: parent.right
            top: figures.bottom
            bottom: choices.top
            topMargin: Theme.compact ? 2 : 4
            bottomMargin: Theme.compact ? 4 : 8
        }

        TraceChart {
            id: chart

            zoomArea.enabled: !page.panning
            zoomRect.zoomAxis: Qt.Horizontal
            axisX {
                maxValue: 1
                formatter: lanes.count > 0 ? lanes.itemAt(0).plotData.xFormatter : null
            }
            axisY {
                // Each trace has an axis of its own.
                axisStyle: ValueAxis.TicksOnly
                maxValue: 10
                numTicks: 10
            }

            Repeater {
                id: lanes

                // The view takes only plots that are there from the start.
                model: 10

                StressTrace {
                    visible: index < page.traces
                    axisX: chart.axisX
                    lane: index
                    lanes: page.traces
                    samples: visible ? noise.trace(page.renewals + index, page.samples) : []
                    plotStyle: page.style
                    lineWidth: page.lineWidth
                }
            }

            ChartCursor {
                id: cursor

                zoomArea: chart.zoomArea
                posOnScreen: chart.width / 3

                Repeater {
                    model: page.traces

                    TraceReadout {
                        plot: lanes.count > index ? lanes.itemAt(index) : null
                    }
                }
            }
        }
    }

    Row {
        id: choices

        anchors.bottom: parent.bottom
        spacing: Theme.compact ? 12 : 24

        NamedSelector {
            id: traceSelector

            name: "Traces"
            choices: ["1", "2", "5", "10"]
            currentIndex: 2
        }

        NamedSelector {
            id: sampleSelector

            name: "Samples"
            choices: ["1k", "10k", "100k", "1M"]
            currentIndex: 2
        }

        NamedSelector {
            id: widthSelector

            name: "Pen"
            choices: ["1", "2", "4", "8"]
        }
    }

    controls: SegmentedSelector {
        choices: ["Fill", "Line", "Max", "Min", "Bars", "Points"]
        currentIndex: page.style
        usable: page.pointsAllowed ? 6 : 5
        onActivated: function(index) { page.chosenStyle = index; }
    }
    endControls: SegmentedSelector {
        id: motionSelector

        choices: ["New data", "Pan", "Still"]
        // Pictures are taken only of traces that do not move.
        currentIndex: shell.takesPictures ? 2 : 0
        onActivated: function(index) { currentIndex = index; }
    }
}
