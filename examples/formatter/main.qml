import QtQuick 2.15
import QtQuick.Window 2.15
import graph_kit 1.0
import Example 1.0

Window {
    width: 800
    height: 480
    visible: true

    Chart {
        anchors.fill: parent
        axisX.formatter: HoursFormatter {}

        Trace { name: "Outside"; unit: "degC"; start: 6; interval: 0.5; values: [8, 9, 11, 13, 16, 18, 19, 19.5, 19, 17] }
    }
}
