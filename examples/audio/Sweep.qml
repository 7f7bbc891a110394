// Levels in dB of three tones in noise, 20 sweeps a second: put what you measure in its place.
import QtQuick 2.15

Timer {
    property var levels: []
    interval: 50; running: true; repeat: true; triggeredOnStart: true
    onTriggered: {
        const tones = [[440, 60], [880, 48], [5000, 30]], next = new Float64Array(1999);
        for (let i = 0; i < next.length; ++i)
            next[i] = tones.reduce((level, tone) => level + tone[1] * Math.exp(-Math.pow((20 + 10 * i - tone[0]) / 30, 2)),
                                   -90 + 6 * Math.random());
        levels = next;
    }
}
