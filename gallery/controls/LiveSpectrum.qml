import QtQuick 2.15
import graph_plugin 1.0

// The live trace of the simulated analyzer, placed in the unit that `xScale` makes of its hertz.
PlotSeries {
    property real xScale: 1
    property string address: "analyzer,spectrum"

    dbusAddress: address
    xFirstValue: xRangeBegin * xScale
    xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) * xScale : 1
}
