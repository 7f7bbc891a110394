import QtQuick 2.15
import QtQuick.Window 2.15
import graph_kit 1.0

Window {
    width: 800
    height: 480
    visible: true

    Chart {
        anchors.fill: parent
        follow: 1

        Trace { name: "Voltage"; unit: "V"; series: voltage }
    }
}
