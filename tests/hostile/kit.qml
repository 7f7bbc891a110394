import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0

// Every type of graph_kit in one document, connected to each other.
Item {
    id: root

    width: 400
    height: 500

    ChartTheme { id: colors; fontSize: 11 }
    StreamSeries { id: stream; capacity: 50; interval: 0.1; Component.onCompleted: append([1, 5, 3, 8, 2]) }
    StreamPoints { id: points; Component.onCompleted: append([0, 1, 4], [2, 1, 7]) }
    PlotSeries { id: series; yData: [1, 2, 4, 3, 7] }
    OrnData { id: item }
    Average { id: average; source: stream; count: 3 }
    MaxHold { id: highest; source: average }
    MinHold { id: lowest; source: upper }
    Smooth { id: smooth; source: highest; window: 3 }
    Difference { id: difference; source: upper; reference: smooth }
    Statistics { id: statistics; series: upper; from: 0; to: 3 }
    PeakList { id: peaks; series: smooth }

    Chart {
        id: upper_chart

        width: 400
        height: 250
        title: "Upper"
        theme: colors
        axisX.unit: "s"
        axisY.unit: "dBm"
        zoomWith: lower_chart
        cursor.shared: true
        Trace { id: upper; values: [1, 5, 3, 8, 2]; interval: 0.1; unit: "dBm"; style: Trace.LineAndPoints; curved: true }
        Trace { id: rolling; series: stream; axisY: volts; fillOpacity: 0.3 }
        Trace { id: dots; series: points; style: Trace.Points }
        Trace { series: smooth; style: Trace.Bars }
        Trace { series: difference; style: Trace.Steps }
        LimitLine { id: limit; positions: [0, 3]; values: [2, 6]; series: upper }
        ChartAxis { id: volts; alignment: Qt.AlignRight; autoRange: ChartAxis.Fit; unit: "V" }
        ChartCursor {
            id: cursor
            markers: GraphMarker { posValue: 2; visible: true; MarkerGrab { text: "A" } }
        }
    }
    ChartView {
        id: lower_chart

        y: 250
        width: 350
        height: 150
        follow: 3
        zoomWith: upper_chart
        axisX.scale: ChartAxis.Time
        WaterfallPlot {
            id: waterfall
            rows: 20; interval: 0.1; series: stream
            Component.onCompleted: { addRow([1, 2, 3]); addRow([3, NaN, 1]); }
        }
        GraphPlot { plotData: series }
    }
    ColorScale { plot: waterfall; x: 350; y: 250; width: 50; height: 150; draggable: true }
    Chart {
        y: 400
        width: 400
        height: 100
        axisX.scale: ChartAxis.Logarithmic
        cursor.readings: true
        legend.newest: true
        Trace { id: decades; values: [1, 10, 100]; start: 1 }
        Diagnosis { overlay: true }
    }
}
