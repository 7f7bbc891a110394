import QtQuick 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_controls 1.0

TestCase {
    id: testCase

    name: "controls"
    width: 401
    height: 301
    visible: true
    when: windowShown

    Component {
        id: chartComponent

        GraphView {
            id: view

            readonly property alias zoomArea: area
            readonly property alias plot: trace

            anchors.fill: parent
            zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
            axes: [
                ValueAxis {
                    id: xAxis
                    maxValue: 1000
                    labelsPlane: plane
                    linesPlane: plane
                },
                ValueAxis {
                    id: yAxis
                    alignment: Qt.AlignLeft
                    minValue: -100
                    labelsPlane: plane
                    linesPlane: plane
                }
            ]

            XYScale {
                id: plane
            }

            GraphPlot {
                id: trace
                plotData: PlotPoints { label: "Trace 1"; xData: [0, 1000]; yData: [0, 0]; axisX: xAxis; axisY: yAxis }
            }

            ZoomArea {
                id: area
            }

            Legend {
                plots: [trace]
            }
        }
    }

    property GraphView view

    function init() {
        view = createTemporaryObject(chartComponent, testCase);
        waitForRendering(view);
    }

    function valueAt(x, y) {
        return Qt.point(view.plot.mapFromItemX(x), view.plot.mapFromItemY(y));
    }

    function compareValue(actual, expected, pixels) {
        fuzzyCompare(actual.x, expected.x, 1e-6 + pixels * view.plot.visibleRangeX() / view.plot.width);
        fuzzyCompare(actual.y, expected.y, 1e-6 + pixels * view.plot.visibleRangeY() / view.plot.height);
    }

    function test_wheelKeepsTheValueUnderThePointer_data() {
        return [
            { tag: "horizontally", modifier: Qt.NoModifier, width: 0.8, height: 1 },
            { tag: "vertically", modifier: Qt.ShiftModifier, width: 1, height: 0.8 },
            { tag: "both ways", modifier: Qt.ControlModifier, width: 0.8, height: 0.8 }
        ];
    }

    function test_wheelKeepsTheValueUnderThePointer(data) {
        var before = valueAt(100, 60);
        mouseWheel(view.zoomArea, 100, 60, 0, 120, Qt.NoButton, data.modifier);
        fuzzyCompare(view.zoomRect.width, data.width, 1e-9);
        fuzzyCompare(view.zoomRect.height, data.height, 1e-9);
        compareValue(valueAt(100, 60), before, 0);
    }

    function pinch(x, y, spreadX, spreadY, factor) {
        var touch = touchEvent(view.zoomArea);
        function points(action, share) {
            var scale = 1 + share * (factor - 1);
            touch[action](0, view.zoomArea, x - spreadX * scale / 2, y - spreadY * scale / 2);
            touch[action](1, view.zoomArea, x + spreadX * scale / 2, y + spreadY * scale / 2);
            touch.commit();
        }
        points("press", 0);
        for (var step = 1; step <= 20; ++step)
            points("move", step / 20);
        points("release", 1);
    }

    function test_pinchZoomsWhereTheFingersAre_data() {
        return [
            { tag: "side by side", spreadX: 100, spreadY: 10, zoomsX: true, zoomsY: false },
            { tag: "one above the other", spreadX: 10, spreadY: 90, zoomsX: false, zoomsY: true },
            { tag: "diagonal", spreadX: 90, spreadY: 90, zoomsX: true, zoomsY: true }
        ];
    }

    function test_pinchZoomsWhereTheFingersAre(data) {
        var before = valueAt(200, 150);
        pinch(200, 150, data.spreadX, data.spreadY, 2);
        // The first move only starts the pinch, so the zoom is a little less than the fingers' way.
        compare(view.zoomRect.width < 0.6, data.zoomsX);
        compare(view.zoomRect.height < 0.6, data.zoomsY);
        // Half a pixel of rounding at the start of a pinch has grown by the zoom at its end.
        compareValue(valueAt(200, 150), before, 1.5);
        verify(!view.zoomArea.pinching);
    }

    function test_doubleTapShowsEverything() {
        view.zoomArea.zoomAt(30, 30, 0.2, 0.2);
        mouseDoubleClickSequence(view.zoomArea, 200, 150);
        compare(view.zoomRect.width, 1);
        compare(view.zoomRect.left, 0);
        compare(view.zoomRect.height, 1);
        compare(view.zoomRect.top, 0);
    }

    function test_dragPansAZoomedView() {
        view.zoomArea.zoomAt(200, 150, 0.25, 1);
        var left = view.zoomRect.left;
        mouseDrag(view.zoomArea, 200, 150, 120, 0);
        verify(view.zoomRect.left < left);
        fuzzyCompare(view.zoomRect.width, 0.25, 1e-9);
    }

    function test_tapOnALegendEntryHidesItsTrace() {
        verify(view.plot.visible);
        mouseClick(view, view.width - 20, 20);
        verify(!view.plot.visible);
    }
}
