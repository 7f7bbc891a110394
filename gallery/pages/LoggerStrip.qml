import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"

// One channel of a recording that grows, from `begin` to `end` in seconds.
GraphView {
    id: strip

    property string channel
    property color color
    property real begin: 0
    property real end: 1
    // Only the lowest strip names the times.
    property bool namesTimes: false
    readonly property alias samples: series
    readonly property real latest: series.size > 0 ? series.x(series.size - 1) : 0
    readonly property string reading: series.size > 0 ? series.formattedYValue(series.y(series.size - 1)) : ""
    readonly property alias timeMargin: time.margin
    readonly property real nameWidth: Theme.compact ? 52 : 60

    axes: [
        ValueAxis {
            id: time
            minValue: strip.begin
            maxValue: strip.end
            tickInterval: ValueAxis.DisplayDynamic
            axisStyle: strip.namesTimes ? ValueAxis.TicksAndLabels : ValueAxis.TicksOnly
            unit: "s"
            margin: strip.namesTimes ? requiredMargin : 0
            labelFont { family: Theme.family; pixelSize: Theme.axisText }
            labelColor: Theme.axisLabel
            lineColor: Theme.graticule
            labelsPlane: labels
            linesPlane: grid
        },
        ValueAxis {
            id: level
            alignment: Qt.AlignLeft
            minValue: series.yRangeBegin
            maxValue: series.yRangeEnd
            numTicks: 3
            // The same for all strips, so that their times line up.
            margin: strip.nameWidth + (Theme.compact ? 46 : 56)
            unit: series.yUnits.replace("deg", "\u00b0")
            labelFont { family: Theme.family; pixelSize: Theme.axisText }
            labelColor: strip.color
            lineColor: Theme.graticule
            labelsPlane: labels
            linesPlane: grid
        }
    ]
    series: PlotSeries {
        id: series
        dbusAddress: "logger," + strip.channel
        // Where the oldest sample that is kept was taken.
        xFirstValue: first.value || 0
        xInterval: 0.005
        axisX: time
        axisY: level
    }

    BusValue {
        id: first
        dbusAddress: "logger," + strip.channel
        // Clients know the key without its second t.
        key: "xFirsValue"
    }

    PlotBackground {
        z: -1
    }

    XYScale {
        id: grid
    }

    GraphPlot {
        z: 1
        renderTarget: Theme.plotTarget
        plotStyle: GraphPlot.LinePlot
        plotData: series
        penColor: strip.color
        minLineWidth: 2
        maxLineWidth: 2
    }

    XYScale {
        id: labels

        z: 2
    }

    Item {
        z: 3

        // Beside the numbers: the trace may be anywhere.
        Label {
            x: -level.margin
            anchors.verticalCenter: parent.verticalCenter
            width: strip.nameWidth
            text: series.label
            color: strip.color
            font.pixelSize: Theme.smallText
        }
    }
}
