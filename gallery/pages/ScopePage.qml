import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "../controls"
import "../theme"

Page {
    id: page

    ready: first.size > 1 && second.size > 1

    // Whether missing samples stay empty. The plot has no signal for this and does not repaint by itself.
    property bool gaps: true

    onGapsChanged: secondTrace.update()

    // Shows this share of the capture around the middle of what is shown now.
    function showShare(share) {
        var rect = chart.zoomRect;
        rect.setCenterAndZoom(Qt.vector2d(share, rect.height),
                              Qt.point(rect.left + rect.width / 2, rect.top + rect.height / 2));
    }

    function placeCursors() {
        cursor.posIndex = 0; // a cursor that stays at its sample keeps what it said of it
        cursor.posValue = first.xRangeBegin + 0.4 * (first.xRangeEnd - first.xRangeBegin);
        levelCursor.posValue = 0.55 * first.yRangeEnd;
    }

    // The line stays where it is and reads on the axis of the other channel.
    function measureOn(plot) {
        var row = levelCursor.posOnScreen;
        levelCursor.primaryPlot = plot;
        levelCursor.posOnScreen = row;
    }

    Component.onCompleted: if (ready) placeCursors()
    // Again, as an instrument that took its time sends the ranges after the samples.
    readonly property var placed: [ready].concat([first, second].map(function (series) {
        return [series.xRangeBegin, series.xRangeEnd, series.yRangeEnd, series.xUnits, series.yUnits];
    }))
    onPlacedChanged: if (ready) Qt.callLater(placeCursors)

    CursorKeys {
        cursor: cursor
        horizontalCursor: levelCursor
        focus: true
    }

    controls: [
        SegmentedSelector {
            readonly property var shares: [1, 0.1, 0.01, 0.001]

            choices: shares.map(function (share) {
                return first.formattedXValue(share * (first.xRangeEnd - first.xRangeBegin));
            })
            currentIndex: shares.findIndex(function (share) { return Math.abs(chart.zoomRect.width / share - 1) < 0.01; })
            onActivated: function(index) { page.showShare(shares[index]); }
        },
        // Which channel the level is read on.
        SegmentedSelector {
            choices: ["CH1", "CH2"]
            currentIndex: levelCursor.primaryPlot === secondTrace ? 1 : 0
            onActivated: function(index) { page.measureOn(index === 1 ? secondTrace : firstTrace); }
        },
        ToggleButton {
            text: "Gaps"
            on: page.gaps
            onClicked: page.gaps = !page.gaps
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: "Cursor"
            value: first.formattedXValue(cursor.posValue)
            widestValue: "\u2212888.8 \u00b5s"
            textColor: Theme.cursor
        },
        Reading {
            label: "CH1"
            value: cursor.reading(firstTrace)
            widestValue: "\u2212888.88 mV"
            textColor: firstTrace.penColor
        },
        Reading {
            label: "CH2"
            value: cursor.reading(secondTrace)
            widestValue: "\u2212888.88 mA"
            textColor: secondTrace.penColor
        },
        Reading {
            label: "Level"
            value: levelCursor.primaryPlot ? levelCursor.primaryPlot.plotData.formattedYValue(levelCursor.posValue) : ""
            widestValue: "\u2212888.88 mA"
            textColor: Theme.secondCursor
        },
        Reading {
            label: "In view"
            value: first.formattedXValue(chart.axisX.maxVisible - chart.axisX.minVisible)
            widestValue: "888.888 ms"
        },
        Reading {
            label: "Samples per channel"
            value: first.size.toLocaleString(Qt.locale("en_US"), "f", 0)
            visible: !Theme.compact
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
            minValue: first.yRangeBegin
            maxValue: first.yRangeEnd
            unit: first.yUnits
            labelColor: firstTrace.penColor
        }
        axes: ValueAxis {
            id: rightAxis
            alignment: Qt.AlignRight
            minValue: second.yRangeBegin
            maxValue: second.yRangeEnd
            unit: second.yUnits
            numTicks: Theme.compact ? 6 : 8
            // The left axis has drawn the grid.
            axisStyle: ValueAxis.LabelsOnly
            // With room for the unit behind a number: in the plot the legend would cover it.
            margin: requiredMargin + 14
            labelFont { family: Theme.family; pixelSize: Theme.axisText }
            labelColor: secondTrace.penColor
            labelsPlane: chart.labelPlane
            linesPlane: chart.gridPlane
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
            useIntermittentPlot: page.gaps
            axisX: chart.axisX
            axisY: rightAxis
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
            // In a row, above the peaks of the first channel.
            inARow: true
            entryHeight: Theme.compact ? 30 : 40
            textColor: Theme.text
            backgroundColor: Theme.overlay
            fontSize: Theme.smallText
            fontFamily: Theme.family
        }

        LevelCursor {
            id: levelCursor

            primaryPlot: firstTrace
            tagAtRight: primaryPlot === secondTrace
        }

        ChartCursor {
            id: cursor

            zoomArea: chart.zoomArea
            primaryPlot: firstTrace

            TraceReadout {
                plot: firstTrace
            }

            TraceReadout {
                plot: secondTrace
            }
        }
    }
}
