import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../controls"
import "../theme"

Page {
    id: page

    ready: series.size > 1 && events.size > 1

    // Shows a tenth of the fibre, around an event.
    function showEvent(index) {
        var length = series.xRangeEnd - series.xRangeBegin;
        var rect = chart.zoomRect;
        var middle = rect.top + rect.height / 2;
        rect.setCenterAndZoom(Qt.vector2d(0.1, rect.height), Qt.point((events.x(index) - series.xRangeBegin) / length, middle));
        chosenEvent.value = index;
    }

    // The markers on both sides of a splice and a bend, the cursor away from them.
    function placeCursors() {
        cursor.posValue = 13300;
        markerA.place(5750);
        markerB.place(9000);
    }

    readonly property real distance: Math.abs(markerB.posValue - markerA.posValue)
    // What the light loses on its way from the nearer marker to the farther one.
    readonly property real loss: (markerA.yValue - markerB.yValue) * (markerA.posValue <= markerB.posValue ? 1 : -1)

    Component.onCompleted: if (ready) placeCursors()
    // Again, as an instrument that took its time sends the ranges after the samples.
    readonly property var placed: [ready, series.xRangeBegin, series.xRangeEnd]
    onPlacedChanged: if (ready) Qt.callLater(placeCursors)

    CursorKeys {
        cursor: cursor
        focus: true
    }

    controls: [
        Stepper {
            id: chosenEvent

            label: "Event"
            to: events.size - 1
            onActivated: function(value) { page.showEvent(value); }
        },
        PushButton {
            text: "Set A"
            onClicked: markerA.place(cursor.posValue)
        },
        PushButton {
            text: "Set B"
            onClicked: markerB.place(cursor.posValue)
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Event at"
            value: events.size > 0 ? series.formattedXValue(events.x(chosenEvent.value)) : ""
            widestValue: "88.888 km"
        },
        Reading {
            label: "Level"
            value: events.size > 0 ? series.formattedYValue(events.y(chosenEvent.value)) : ""
            widestValue: "\u221288.88 dB"
        },
        Reading {
            label: "A\u2013B"
            value: series.formattedXValue(page.distance)
            widestValue: "88.888 km"
            textColor: Theme.markers[0]
        },
        Reading {
            label: "Loss A\u2013B"
            value: series.formattedYValue(page.loss)
            widestValue: "\u221288.888 dB"
            textColor: Theme.markers[0]
            interval: shell.takesPictures ? 0 : 250
            key: page.distance
        },
        Reading {
            label: "Cursor"
            value: series.formattedXValue(cursor.posValue)
            widestValue: "88.888 km"
            textColor: Theme.cursor
        },
        Reading {
            label: "Points"
            value: series.size
            visible: !Theme.compact
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
        zoomRect.minWidth: 0.0005
        series: [
            PlotSeries {
                id: series
                dbusAddress: "otdr,trace"
                xFirstValue: xRangeBegin
                xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
            },
            PlotPoints {
                id: events
                dbusAddress: "otdr,events"
            }
        ]

        GraphPlot {
            id: trace

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            plotData: series
            axisX: chart.axisX
            axisY: chart.axisY
            penColor: Theme.traces[2]
            minLineWidth: 1
            maxLineWidth: 2
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

        Legend {
            z: 4
            plots: [trace, marks]
            textColor: Theme.text
            backgroundColor: Theme.overlay
            fontSize: Theme.smallText
            fontFamily: Theme.family
        }

        ChartCursor {
            id: cursor

            zoomArea: chart.zoomArea
            primaryPlot: trace
            markers: [
                ChartMarker {
                    id: markerA
                    name: "A"
                    color: Theme.markers[0]
                    showDelta: false
                },
                ChartMarker {
                    id: markerB
                    name: "B"
                    color: Theme.markers[1]
                    showDelta: false
                }
            ]

            TraceReadout {
                plot: trace
                topInset: 28
            }
        }
    }
}
