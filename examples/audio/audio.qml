// An audio analyser: 20 Hz to 20 kHz with a max hold, a cursor and two markers; S saves a picture, E the data.
import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0

Chart {
    width: 800; height: 480
    axisX { title: "Frequency"; unit: "Hz"; scale: ChartAxis.Logarithmic; minValue: 20; maxValue: 20000; minorGrid: true }
    axisY.title: "Level"
    onExportFinished: (file, error) => console.log(error || file)

    Trace { name: "Most"; unit: "dB"; series: MaxHold { source: now } }
    Trace { id: now; name: "Now"; unit: "dB"; start: 20; interval: 10; values: sweep.levels }
    ChartCursor {
        primaryPlot: now
        markers: [
            GraphMarker { posValue: 440; visible: true; MarkerGrab { text: "A" } },
            GraphMarker { posValue: 5000; visible: true; MarkerGrab { text: "B" } }
        ]
    }
    Shortcut { sequence: "S"; onActivated: exportImage("/tmp/spectrum.png", 2) }
    Shortcut { sequence: "E"; onActivated: exportData("/tmp/spectrum.csv", true) }
    Sweep { id: sweep }
}
