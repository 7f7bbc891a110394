import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../controls"
import "../theme"

Page {
    id: page

    // Two levels in dBm differ by decibels.
    function delta(marker) {
        return marker.formattedDelta + "  " + marker.formattedDeltaY.replace("dBm", "dB");
    }

    ready: series.size > 1

    controls: StyleSelector {
        plot: trace
    }
    endControls: [
        PeakButtons {
            cursor: cursor
            color: Theme.raised
            pressedColor: Theme.pressed
            textColor: Theme.text
            fontFamily: Theme.family
            fontSize: Theme.bodyText
            radius: Theme.radius
        },
        ZoomButtons {
            zoomArea: zoomArea
        }
    ]
    readings: [
        Reading {
            label: "Cursor"
            value: series.formattedXValue(cursor.posValue) + "  " + cursor.reading(trace)
            widestValue: "888.888 MHz  \u2212100.00 dBm"
            textColor: Theme.cursor
            interval: page.readingInterval
            key: cursor.posIndex
        },
        Reading {
            label: "M1"
            value: page.delta(firstMarker)
            widestValue: "\u0394 888.888 MHz  \u0394 88.88 dB"
            textColor: firstMarker.color
            interval: page.readingInterval
            key: firstMarker.formattedDelta
        },
        Reading {
            label: "M2"
            value: page.delta(secondMarker)
            widestValue: "\u0394 888.888 MHz  \u0394 88.88 dB"
            textColor: secondMarker.color
            interval: page.readingInterval
            key: secondMarker.formattedDelta
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

    // Numbers that change with every sweep cannot be read: at most four a second.
    readonly property int readingInterval: shell.takesPictures ? 0 : 250
    property int sweeps: 0
    property real sweepRate: 0

    // Where there is something to see in the first sweep.
    function placeCursors() {
        cursor.setPeak();
        firstMarker.place(855e6);
        secondMarker.place(889.5e6);
    }

    Component.onCompleted: if (ready) placeCursors()
    // Again, as an instrument that took its time sends the ranges after the samples.
    readonly property var placed: [ready, series.xRangeBegin, series.xRangeEnd]
    onPlacedChanged: if (ready) Qt.callLater(placeCursors)

    CursorKeys {
        cursor: cursor
        focus: true
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
                // Where fills and bars start: at zero dBm they would hang from the top.
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
            onPlotChanged: ++page.sweeps
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

        // What the levels have to stay below.
        GraphPlot {
            id: limit

            renderTarget: Theme.plotTarget
            plotStyle: GraphPlot.LinePlot
            penColor: Theme.warning
            minLineWidth: 2
            maxLineWidth: 2
            plotData: PlotPoints {
                label: "Limit"
                yUnits: series.yUnits
                xData: [700e6, 756e6, 756e6, 825e6, 825e6, 878e6, 878e6, 1000e6]
                yData: [-30, -30, -48, -48, -42, -42, -38, -38]
                axisX: xAxis
                axisY: yAxis
            }
        }

        XYScale {
            id: labelPlane

            z: 2
        }

        Legend {
            z: 3
            plots: [trace, limit]
            inARow: true
            textColor: Theme.text
            backgroundColor: Theme.overlay
            fontSize: Theme.smallText
            fontFamily: Theme.family
        }

        ZoomArea {
            id: zoomArea
        }

        ChartCursor {
            id: cursor

            zoomArea: zoomArea
            primaryPlot: trace
            markers: [
                ChartMarker {
                    id: firstMarker
                    name: "M1"
                    color: Theme.markers[0]
                    deltaY: 44
                },
                ChartMarker {
                    id: secondMarker
                    name: "M2"
                    color: Theme.markers[1]
                    deltaY: 66
                }
            ]

            TraceReadout {
                plot: trace
                topInset: 76
            }

            TraceReadout {
                plot: limit
                topInset: 76
            }
        }
    }
}
