import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

// A view with one plain trace, because it is about the axes. A second plot brings in further axes.
GraphView {
    id: example

    property ValueAxis axisX
    property ValueAxis axisY
    // Optional: a second pair of axes on the opposite sides.
    property ValueAxis secondAxisX
    property ValueAxis secondAxisY
    readonly property alias gridPlane: grid
    readonly property alias labelPlane: labels

    function curve() {
        var values = [];
        for (var i = 0; i <= 200; ++i)
            values.push(0.5 + 0.38 * Math.sin(i * Math.PI / 50) * Math.exp(-i / 120));
        return values;
    }

    anchors.fill: parent

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
        plotData: trace
        axisX: example.axisX
        axisY: example.axisY
        penColor: Theme.traces[0]
    }

    GraphPlot {
        axisX: example.secondAxisX
        axisY: example.secondAxisY
    }

    XYScale {
        id: labels

        z: 2
    }

    PlotPoints {
        id: trace

        function spread(axis, share) {
            return axis.minValue + share * (axis.maxValue - axis.minValue);
        }

        xData: example.curve().map(function (value, i) { return trace.spread(example.axisX, i / 200); })
        yData: example.curve().map(function (value) { return trace.spread(example.axisY, value); })
    }
}
