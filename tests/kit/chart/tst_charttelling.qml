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
        id: misplaced

        Item {
            anchors.fill: parent
            Trace { id: alone; width: 300; height: 200; values: [1, 2] }
            Chart {
                id: chart

                follow: -10
                zoomWith: chart
                Trace { id: first; axisY: flat; values: [1, 2] }
                Trace { id: second; axisX: upright; values: [1, 2] }
                ChartAxis { id: flat }
                ChartAxis { id: upright; alignment: Qt.AlignRight }
                CursorReadout { id: readout; plot: first }
                CursorTag { id: tag; cursor: null }
                GraphCursor { CursorReadout { plot: first } CursorTag {} }
            }
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

    function test_misplaced() {
        [/^Trace "alone" \(tst_charttelling.qml:\d+\) is in no chart and draws nothing/,
         /^Chart "chart" .* has a follow of -10/,
         /^Chart "chart" .* is zoomed with itself/,
         /^Trace "first" .* because ChartAxis "flat", given as its axisY, is horizontal: write alignment: Qt.AlignLeft/,
         /^Trace "second" .* because ChartAxis "upright", given as its axisX, is vertical/,
         /^CursorReadout "readout" .* is not in a cursor/,
         /^CursorTag "tag" .* is not in a cursor/].forEach(function (line) { ignoreWarning(line); });
        const item = createTemporaryObject(misplaced, testCase);
        wait(1200);
    }

    function test_wrong() {
        ignoreWarning(/^Trace "level" \(tst_charttelling.qml:38\) cannot use the address "meter", which has no comma/);
        const chart = createTemporaryObject(wrong, testCase);
        wait(1200);
    }
}
