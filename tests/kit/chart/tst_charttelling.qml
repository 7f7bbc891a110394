import QtQuick 2.15
import QtQml 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

// The diagnosis that each chart has: any line of it that is not announced fails the test.
TestCase {
    id: testCase

    name: "charttelling"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: sound

        Chart {
            id: chart

            anchors.fill: parent
            Trace { values: [1, 5, 3]; interval: 0.5 }
            Trace {}
            Repeater { model: 2; Trace { values: [0, 2 + index] } }
            Loader { sourceComponent: Trace { values: [0, 4] } }
            Instantiator { Trace { values: [0, 3] } }
            GraphPlot { plotStyle: GraphPlot.LinePlot; plotData: PlotSeries { yData: [1, 2] } }
        }
    }

    Component {
        id: wrong

        Chart {
            anchors.fill: parent
            Trace { id: level; address: "meter" }
        }
    }

    Component {
        id: later

        Trace { values: [2, 2, 2] }
    }

    function test_sound() {
        const chart = createTemporaryObject(sound, testCase);
        wait(1200);
        later.createObject(chart);
        chart.showRange(50, 60);
        wait(1200);
    }

    function test_wrong() {
        ignoreWarning(/^PlotSeries of Trace "level" \(tst_charttelling.qml:38\) cannot use the address "meter", which has no comma/);
        const chart = createTemporaryObject(wrong, testCase);
        wait(1200);
    }
}
