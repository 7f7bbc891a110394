// A waterfall with its colour scale; the mouse or a tap brings the cursor.
import QtQuick 2.15
import graph_kit 1.0

Chart {
    width: 800; height: 480
    axisX { title: "Frequency"; unit: "MHz" }
    WaterfallPlot { id: waterfall; rows: 300; start: 88; interval: 0.02; unit: "dBm" }
    ColorScale { plot: waterfall }
    Sweep { onSwept: (levels) => waterfall.addRow(levels) }
}
