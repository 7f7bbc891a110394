// Levels in dBm of four stations in noise, 20 sweeps a second: put what you measure in its place.
import QtQuick 2.15

Timer {
    signal swept(var levels)
    interval: 50; running: true; repeat: true; triggeredOnStart: true
    onTriggered: {
        const levels = new Float64Array(1000);
        for (let i = 0; i < levels.length; ++i)
            levels[i] = -90 + 10 * Math.random() + 50 * Math.exp(-Math.pow((i % 250 - 125) / 8, 2));
        swept(levels);
    }
}
