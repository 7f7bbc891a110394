// A logger of four voltages: a window that rolls over the last 30 s, pause, hours to scroll back to, fed from C++.
import QtQuick 2.15
import graph_kit 1.0

Chart {
    id: chart
    width: 800; height: 480
    title: "Supply voltages"
    axisX { title: "Time"; unit: "s" }
    axisY { title: "Voltage"; autoRange: ChartAxis.FitVisible }
    follow: 30

    Trace { name: "Battery"; unit: "V"; series: battery }
    Trace { name: "Motor"; unit: "V"; series: motor }
    Trace { name: "Logic"; unit: "V"; series: logic }
    Trace { name: "Sensor"; unit: "V"; series: sensor }
    Text {
        x: 8; y: 8
        color: chart.colors.textColor; font.family: chart.colors.fontFamily; font.pixelSize: chart.colors.fontSize
        text: chart.following ? "Pause" : "Resume"
        TapHandler { onTapped: chart.following = !chart.following }
    }
}
