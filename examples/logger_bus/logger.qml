// The same four voltages as the logger, taken from the program main.cpp over the bus.
import QtQuick 2.15
import graph_kit 1.0

Chart {
    id: chart
    width: 800; height: 480
    title: "Supply voltages"
    axisX { title: "Time"; unit: "s" }
    axisY { title: "Voltage"; autoRange: ChartAxis.FitVisible }
    follow: 30

    Repeater {
        model: ["battery", "motor", "logic", "sensor"]
        Trace { series: StreamSeries { dbusAddress: "supply," + modelData; interval: 1 / 200; capacity: 8 * 3600 * 200 } }
    }
    Text {
        x: 8; y: 8
        color: chart.colors.textColor; font.family: chart.colors.fontFamily; font.pixelSize: chart.colors.fontSize
        text: chart.following ? "Pause" : "Resume"
        TapHandler { onTapped: chart.following = !chart.following }
    }
}
