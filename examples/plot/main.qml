import QtQuick 2.15
import QtQuick.Window 2.15
import graph_plugin 1.0
import graph_kit 1.0
import Example 1.0

Window {
    width: 800
    height: 480
    visible: true

    Chart {
        anchors.fill: parent

        StemPlot {
            penColor: "orange"
            plotData: PlotSeries { yData: [0.1, 0.4, 0.9, 1, 0.8, 0.2, -0.3, -0.6, -0.4, 0] }
        }
    }
}
