import QtQuick 2.15
import graph_kit 1.0

Chart {
    width: 800; height: 480
    follow: 10
    axisY { title: "Voltage"; minValue: 0; maxValue: 12 }
    axisX { title: "Time"; unit: "s" }
    legend.inARow: true

    property int ticks: 0
    property alias running: clock.running

    Trace { name: "Supply"; unit: "V"; series: StreamSeries { id: supply; capacity: 720000; interval: 0.005 } }
    Trace { name: "Motor"; unit: "V"; series: StreamSeries { id: motor; capacity: 720000; interval: 0.005 } }
    Trace { name: "Valve"; unit: "V"; series: StreamSeries { id: valve; capacity: 720000; interval: 0.005 } }
    Trace { name: "Sensor"; unit: "V"; series: StreamSeries { id: sensor; capacity: 720000; interval: 0.005 } }

    Timer { id: clock; interval: 50; repeat: true; running: true; onTriggered: record() }

    // Ten samples of each channel.
    function record() {
        const values = [[], [], [], []];
        for (let i = 10 * ticks; i < 10 * ticks + 10; ++i) {
            const t = 0.005 * i, noise = Math.abs(43758.5 * Math.sin(12.9898 * i) % 1) - 0.5;
            values[0].push(9 - 0.6 * Math.exp(-(t % 4)) + 0.12 * noise);
            values[1].push(6 + 1.2 * Math.sin(5 * t) * Math.exp(-0.7 * (t % 4)) + 0.12 * noise);
            values[2].push((t % 4 < 1.5 ? 4.2 : 2.8) + 0.1 * noise);
            values[3].push(1 + 0.5 * Math.sin(0.8 * t) + 0.4 * noise);
        }
        [supply, motor, valve, sensor].forEach((stream, channel) => stream.append(values[channel]));
        ++ticks;
    }
}
