import QtQuick 2.15
import graph_kit 1.0

Chart {
    width: 800; height: 480
    title: "Step response"
    axisX { title: "Time"; unit: "s" }
    axisY.title: "Output"

    Repeater {
        model: [0.1, 0.3, 0.7]
        Trace {
            name: "Damping " + modelData; unit: "V"; lineWidth: 2; antialiasing: true
            interval: 0.02; values: response(modelData)
        }
    }

    function response(damping) {
        const frequency = 4 * Math.sqrt(1 - damping * damping);
        const values = [];
        for (let t = 0; t < 10; t += 0.02)
            values.push(1 - Math.exp(-4 * damping * t)
                            * (Math.cos(frequency * t) + 4 * damping / frequency * Math.sin(frequency * t)));
        return values;
    }
}
