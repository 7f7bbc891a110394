import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0

Chart {
    id: chart
    width: 800; height: 480
    axisX { title: "Frequency"; unit: "Hz"; minValue: 20; maxValue: 20000 }
    axisX { scale: ChartAxis.Logarithmic; minorGrid: true }
    axisY { title: "Level"; minValue: -120; maxValue: 0 }
    cursor.enabled: false
    legend { inARow: true; atBottom: true }

    property int sweeps: 0
    property alias running: clock.running

    Trace {
        name: "Max hold"; unit: "dBFS"; color: colors.traceColors[1]
        series: MaxHold { id: most; source: now.plotData }
    }
    Trace { id: now; name: "Now"; unit: "dBFS"; color: colors.traceColors[0]; start: 20; interval: 10 }
    Trace {
        name: "Average"; unit: "dBFS"; color: colors.textColor
        series: Average { id: average; source: now.plotData; count: 16; power: true }
    }

    GraphCursor {
        primaryPlot: now
        posValue: 440
        color: colors.cursorColor
        markers: [
            GraphMarker {
                posValue: 880; visible: true; deltaY: 40
                color: colors.markerColors[0]
                MarkerGrab { text: "A" }
            },
            GraphMarker {
                posValue: 5280; visible: true; deltaY: 62
                color: colors.markerColors[1]
                MarkerGrab { text: "B" }
            }
        ]
        CursorGrab { tapArea: chart }
        CursorReadout { plot: now }
        CursorTag {}
    }

    Timer { id: clock; interval: 50; repeat: true; running: true; onTriggered: sweep() }

    function clear() {
        average.clear();
        most.clear();
    }

    // A tone of 440 Hz with its harmonics over noise.
    function sweep() {
        const levels = [];
        for (let i = 0; i < 1999; ++i) {
            const f = 20 + 10 * i, harmonic = Math.max(1, Math.round(f / 440));
            const noise = Math.abs(43758.5 * Math.sin(12.9898 * i + 78.233 * sweeps) % 1) + 0.02;
            const power = Math.pow(10, -4 - 0.25 * harmonic + 0.4 * Math.sin(0.2 * sweeps + harmonic));
            const tone = power * Math.exp(-Math.pow((f - 440 * harmonic) / 12, 2));
            levels.push(10 * Math.log10(tone + 2e-8 * noise / Math.sqrt(f / 20)));
        }
        now.values = levels;
        ++sweeps;
    }
}
