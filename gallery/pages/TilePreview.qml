import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

// The picture of a tile: a trace of the page's kind, drawn by the chart items themselves.
Rectangle {
    id: preview

    property string page
    property alias penColor: plot.penColor

    function noise(i) {
        var value = Math.sin(i * 12.9898) * 43758.5453;
        return value - Math.floor(value);
    }

    function spectrum(i) {
        var level = 0.12 + 0.06 * noise(i);
        for (var k = 0; k < 5; ++k)
            level = Math.max(level, [0.5, 0.85, 0.6, 0.42, 0.7][k] - Math.abs(i - 32 - k * 44) * 0.09 + 0.05 * noise(i));
        return level;
    }

    function level(i) {
        switch (page) {
        case "spectrum":
            return spectrum(i);
        case "scope":
            return 0.5 + 0.36 * Math.sin(i / 6) * (0.6 + 0.4 * Math.cos(i / 34));
        case "fibre":
            return i > 196 ? 0.06 + 0.08 * noise(i) : i > 192 ? 0.9 : (i > 118 && i < 121 ? 0.85 : 0)
                || 0.75 - i * 0.0011 - (i > 60 ? 0.07 : 0) - (i > 120 ? 0.09 : 0);
        case "replay":
            return 0.5 + 0.4 * Math.sin(i / 9) * Math.exp(-Math.abs(i - 110) / 50) + 0.05 * (noise(i) - 0.5);
        default:
            return 0.5 - 0.32 * Math.cos(i / 18) * Math.exp(-i / 180);
        }
    }

    function levels() {
        var values = [];
        for (var i = 0; i < 240; ++i)
            values.push(level(i));
        return values;
    }

    color: Theme.plotArea
    radius: Theme.radius

    ValueAxis {
        id: xAxis
        maxValue: 239
    }

    ValueAxis {
        id: yAxis
        alignment: Qt.AlignLeft
    }

    PlotSeries {
        id: series
        yData: preview.levels()
    }

    GraphPlot {
        id: plot

        anchors { fill: parent; margins: 4 }
        renderTarget: Theme.plotTarget
        plotStyle: preview.page === "scope" || preview.page === "axes" ? GraphPlot.LinePlot : GraphPlot.FillPlot
        plotData: series
        axisX: xAxis
        axisY: yAxis
    }
}
