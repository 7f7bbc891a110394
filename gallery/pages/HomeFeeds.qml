import QtQuick 2.15
import graph_plugin 1.0
import "../controls"

// What the live tiles of the opening page show. To be made when the instruments are on the bus.
QtObject {
    id: feeds

    readonly property PlotSeries spectrum: LiveSpectrum {}
    readonly property PlotSeries fibre: PlotSeries {
        dbusAddress: "otdr,trace"
        xFirstValue: xRangeBegin
        xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
    }
    readonly property PlotSeries scope: PlotSeries {
        dbusAddress: "scope,ch1"
        xFirstValue: xRangeBegin
        xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
    }
    readonly property bool ready: spectrum.size > 1 && fibre.size > 1 && scope.size > 1
}
