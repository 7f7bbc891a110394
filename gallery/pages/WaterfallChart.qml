import QtQuick 2.15
import graph_kit 1.0

Chart {
    width: 800; height: 480
    axisX { title: "Frequency"; unit: "MHz" }
    axisY { title: "Time"; unit: "s"; minValue: -15; maxValue: 0 }

    property int sweeps: 0
    property alias running: clock.running
    property alias colorMap: waterfall.colorMap

    WaterfallPlot {
        id: waterfall
        rows: 300; rowInterval: 0.05
        start: 88; interval: 0.04
        unit: "dBm"; from: -110; to: -30
    }
    ColorScale { plot: waterfall }

    Timer { id: clock; interval: 50; repeat: true; running: true; onTriggered: sweep() }

    // Three stations that fade, one that hops, and one that sweeps.
    function sweep() {
        const fade = 8 * Math.sin(0.05 * sweeps);
        const stations = [
            { at: 92.4, level: -42 + fade, width: 0.25 },
            { at: 99.1, level: -52 - fade, width: 0.2 },
            { at: 104.6, level: -40 + fade, width: 0.3 },
            { at: 90.5 + Math.floor(sweeps / 25) * 7 % 16, level: -58, width: 0.12 },
            { at: 98 + 6 * Math.sin(0.02 * sweeps), level: -48, width: 0.15 }
        ];
        const levels = [];
        for (let i = 0; i < 501; ++i) {
            const noise = Math.abs(43758.5 * Math.sin(12.9898 * i + 78.233 * sweeps) % 1);
            levels.push(stations.reduce(function (level, station) {
                const away = (88 + 0.04 * i - station.at) / station.width;
                return Math.max(level, station.level - 12 * away * away);
            }, -106 + 14 * noise));
        }
        waterfall.addRow(levels);
        ++sweeps;
    }
}
