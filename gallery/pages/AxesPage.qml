import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    readonly property int smallFont: Theme.compact ? 12 : 14

    Grid {
        id: cards

        readonly property real cardWidth: Math.floor((width - 2 * spacing) / 3)
        readonly property real cardHeight: Math.floor((height - spacing) / 2)

        anchors.fill: parent
        columns: 3
        spacing: Theme.compact ? 6 : 10

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "Decimal steps"

            AxisExample {
                id: decimal

                axisX: decimalX
                axisY: decimalY
                axes: [
                    ExampleAxis {
                        id: decimalX
                        example: decimal
                        maxValue: 7
                        unit: "ms"
                    },
                    ExampleAxis {
                        id: decimalY
                        example: decimal
                        alignment: Qt.AlignLeft
                        minValue: -1.2
                        maxValue: 1.2
                        unit: "V"
                    }
                ]
            }
        }

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "Binary steps, on the top and on the right"

            AxisExample {
                id: binary

                axisX: binaryX
                axisY: binaryY
                axes: [
                    ExampleAxis {
                        id: binaryX
                        example: binary
                        alignment: Qt.AlignTop
                        maxValue: 4096
                        tickInterval: ValueAxis.ScaledBinary
                        numTicks: 4
                        unit: "FFT bin"
                    },
                    ExampleAxis {
                        id: binaryY
                        example: binary
                        alignment: Qt.AlignRight
                        minValue: -128
                        maxValue: 128
                        tickInterval: ValueAxis.ScaledBinary
                        numTicks: 4
                    }
                ]
            }
        }

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "Fixed ticks with names"

            AxisExample {
                id: named

                axisX: namedX
                axisY: namedY
                axes: [
                    ExampleAxis {
                        id: namedX
                        example: named
                        maxValue: 10
                        tickInterval: ValueAxis.FixedTicks
                        ticks: [1, 3, 5, 7, 9]
                        tickLabels: ["CH 1", "CH 2", "CH 3", "CH 4", "CH 5"]
                    },
                    ExampleAxis {
                        id: namedY
                        example: named
                        alignment: Qt.AlignLeft
                        tickInterval: ValueAxis.FixedTicks
                        ticks: [0.1, 0.5, 0.9]
                        tickLabels: ["Low", "Mid", "High"]
                    }
                ]
            }
        }

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "As many as fit, staggered"

            AxisExample {
                id: dynamic

                axisX: dynamicX
                axisY: dynamicY
                axes: [
                    ExampleAxis {
                        id: dynamicX
                        example: dynamic
                        minValue: 470000
                        maxValue: 862000
                        tickInterval: ValueAxis.DisplayDynamic
                        dynamicTicksRatio: 1.5
                        staggered: true
                    },
                    ExampleAxis {
                        id: dynamicY
                        example: dynamic
                        alignment: Qt.AlignLeft
                        minValue: -120
                        maxValue: 0
                        tickInterval: ValueAxis.DisplayDynamic
                    }
                ]
            }
        }

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "Decreasing, large font, own step"

            AxisExample {
                id: decreasing

                axisX: decreasingX
                axisY: decreasingY
                axes: [
                    ExampleAxis {
                        id: decreasingX
                        example: decreasing
                        minValue: 600
                        maxValue: 4200
                        customInterval: 1000
                        rangeOrder: ValueAxis.Decreasing
                        labelFont.pixelSize: page.smallFont + 8
                    },
                    ExampleAxis {
                        id: decreasingY
                        example: decreasing
                        alignment: Qt.AlignLeft
                        minValue: 10
                        maxValue: 100
                        customInterval: 30
                        unit: "%"
                        labelFont.pixelSize: page.smallFont + 8
                    }
                ]
            }
        }

        AxisCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "Feet and metres, all four sides"

            PlotSeries {
                id: distance
                xUnits: "FeetFormatter"
            }

            AxisExample {
                id: sides

                axisX: feetX
                axisY: leftY
                secondAxisX: localX
                secondAxisY: rightY
                axes: [
                    ExampleAxis {
                        id: feetX
                        example: sides
                        maxValue: 8000
                        numTicks: 4
                        unit: "ft"
                    },
                    ExampleAxis {
                        id: leftY
                        example: sides
                        alignment: Qt.AlignLeft
                        maxValue: 50
                    },
                    // Values in feet, shown in the unit of the system's locale at round values of that unit.
                    ExampleAxis {
                        id: localX
                        example: sides
                        alignment: Qt.AlignTop
                        maxValue: 8000
                        numTicks: 4
                        formatter: distance.xFormatter
                        axisStyle: ValueAxis.LabelsOnly
                    },
                    ExampleAxis {
                        id: rightY
                        example: sides
                        alignment: Qt.AlignRight
                        maxValue: 100
                        unit: "%"
                        axisStyle: ValueAxis.LabelsOnly
                    }
                ]
            }
        }
    }
}
