import QtQuick 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

TestCase {
    id: testCase

    name: "controls"
    width: 401
    height: 301
    visible: true
    when: windowShown

    Component {
        id: chartComponent

        // A value per 2.5 pixels horizontally, a value per 3 pixels vertically.
        GraphView {
            readonly property alias area: area
            readonly property alias plot: plot
            readonly property alias other: other
            readonly property alias cursor: cursor
            readonly property alias level: level
            readonly property alias marker: marker
            readonly property alias reading: reading
            readonly property alias otherReading: otherReading
            readonly property alias keys: keys

            anchors.fill: parent
            zoomRect.zoomAxis: Qt.Horizontal | Qt.Vertical
            axes: [
                ValueAxis { id: axisX; maxValue: 160; labelsPlane: plane; linesPlane: plane },
                ValueAxis { id: axisY; alignment: Qt.AlignLeft; maxValue: 100; labelsPlane: plane; linesPlane: plane }
            ]

            XYScale { id: plane }

            GraphPlot {
                id: plot
                plotData: PlotSeries { label: "Level"; axisX: axisX; axisY: axisY; yData: testCase.levels(50) }
            }

            GraphPlot {
                id: other
                plotData: PlotSeries { axisX: axisX; axisY: axisY; yData: testCase.levels(48) }
            }

            ZoomArea { id: area }

            Legend { plots: [plot] }

            GraphCursorY {
                id: level
                staysOnScreen: false
                CursorGrab {}
            }

            GraphCursor {
                id: cursor
                markers: GraphMarker { id: marker; MarkerGrab { text: "A" } }

                CursorGrab { tapArea: area }
                CursorReadout { id: reading; plot: plot }
                CursorReadout { id: otherReading; plot: other }
            }

            CursorKeys { id: keys; cursor: cursor; horizontalCursor: level; focus: true }
        }
    }

    Component { id: peakButtons; PeakButtons {} }
    Component { id: steadyText; SteadyText { source: "first"; interval: 400 } }

    property GraphView view

    // A level with peaks 30 above it at 40 and 120.
    function levels(base) {
        var values = [];
        for (var i = 0; i <= 160; ++i)
            values.push(base + Math.max(0, 30 - 10 * Math.min(Math.abs(i - 40), Math.abs(i - 120))));
        return values;
    }

    function init() {
        view = createTemporaryObject(chartComponent, testCase);
        waitForRendering(view);
        view.cursor.posIndex = 80;
        view.level.posValue = 20.5;
        view.marker.posValue = 100;
        view.marker.visible = true;
    }

    function valueAt(x, y) {
        return Qt.point(view.plot.mapFromItemX(x), view.plot.mapFromItemY(y));
    }

    function compareValue(actual, expected, pixels) {
        fuzzyCompare(actual.x, expected.x, 1e-6 + pixels * view.plot.visibleRangeX() / view.plot.width);
        fuzzyCompare(actual.y, expected.y, 1e-6 + pixels * view.plot.visibleRangeY() / view.plot.height);
    }

    function drag(fromX, fromY, toX, toY) {
        mousePress(view, fromX, fromY);
        for (var step = 1; step <= 10; ++step)
            mouseMove(view, fromX + (toX - fromX) * step / 10, fromY + (toY - fromY) * step / 10);
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
        mouseWheel(view.area, 100, 60, 0, 120, Qt.NoButton, data.modifier);
        fuzzyCompare(view.zoomRect.width, data.width, 1e-9);
        fuzzyCompare(view.zoomRect.height, data.height, 1e-9);
        compareValue(valueAt(100, 60), before, 0);
    }

    function pinch(x, y, spreadX, spreadY, factor) {
        var touch = touchEvent(view.area);
        function points(action, share) {
            var scale = 1 + share * (factor - 1);
            touch[action](0, view.area, x - spreadX * scale / 2, y - spreadY * scale / 2);
            touch[action](1, view.area, x + spreadX * scale / 2, y + spreadY * scale / 2);
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
        var before = valueAt(100, 120);
        var changes = 0;
        var moves = 0;
        view.zoomRect.rectChanged.connect(function () { ++changes; });
        var sizeChanged = data.zoomsX ? view.zoomRect.widthChanged : view.zoomRect.heightChanged;
        sizeChanged.connect(function () { ++moves; });
        pinch(100, 120, data.spreadX, data.spreadY, 2);
        // The first move only starts the pinch, so the zoom is a little less than the fingers' way.
        compare(view.zoomRect.width < 0.6, data.zoomsX);
        compare(view.zoomRect.height < 0.6, data.zoomsY);
        // Half a pixel of rounding at the start of a pinch has grown by the zoom at its end.
        compareValue(valueAt(100, 120), before, 1.5);
        verify(!view.area.pinching);
        // However many edges a move of the fingers moves, the chart hears of it once. The moves of one frame arrive
        // as one, so a fast machine has few of them.
        verify(moves > 0);
        compare(changes, moves);
    }

    function test_tapOnALegendEntryHidesItsTrace() {
        verify(view.plot.visible);
        mouseClick(view, view.width - 20, 20);
        verify(!view.plot.visible);
    }

    function test_dragMoves_data() {
        return [
            { tag: "cursor on its line", fromX: 200, fromY: 150, toX: 150, toY: 150, moved: "cursor" },
            { tag: "cursor beside its line", fromX: 183, fromY: 20, toX: 133, toY: 70, moved: "cursor" },
            { tag: "horizontal cursor", fromX: 60, fromY: 238, toX: 60, toY: 168, moved: "level" },
            { tag: "marker", fromX: 255, fromY: 150, toX: 305, toY: 150, moved: "marker" },
            { tag: "nearer one of two", fromX: 231, fromY: 150, toX: 281, toY: 150, moved: "marker" }
        ];
    }

    function test_dragMoves(data) {
        var before = { cursor: view.cursor.posOnScreen, level: view.level.posOnScreen, marker: view.marker.posOnScreen };
        drag(data.fromX, data.fromY, data.toX, data.toY);
        mouseRelease(view, data.toX, data.toY);
        for (var name in before) {
            var way = Math.abs(view[name].posOnScreen - before[name]);
            // The drag only starts after a few pixels.
            if (name === data.moved)
                verify(way > 25 && way <= 70, name + " moved by " + way);
            else
                compare(way, 0, name);
        }
        compare(view.zoomRect.left, 0);
    }

    function test_dragNearAnEdgePansUntilTheFingerLeaves() {
        view.area.zoomAt(200, 150, 0.25, 1);
        var left = view.zoomRect.left;
        drag(200, 150, 396, 150);
        tryVerify(function () { return view.zoomRect.left > left + 0.1; });
        verify(view.cursor.posOnScreen > 300);
        mouseMove(view, 200, 150);
        left = view.zoomRect.left;
        wait(100);
        compare(view.zoomRect.left, left);
        // To the end of the data and not beyond.
        mouseMove(view, 400, 150);
        tryCompare(view.zoomRect, "right", 1);
        verify(view.cursor.posIndex > 150 && view.cursor.posIndex <= 160);
        mouseRelease(view, 400, 150);
        compare(view.zoomRect.width, 0.25);
    }

    function test_horizontalDragPansVertically() {
        view.area.zoomAt(200, 150, 1, 0.5);
        view.level.posOnScreen = 250;
        var top = view.zoomRect.top;
        drag(60, 250, 60, 299);
        tryVerify(function () { return view.zoomRect.top < top - 0.1; });
        mouseRelease(view, 60, 299);
    }

    function test_restOfThePlotStaysTheZoomAreas() {
        view.area.zoomAt(200, 150, 0.5, 0.5);
        view.level.posOnScreen = 20;
        view.cursor.posOnScreen = 100;
        var index = view.cursor.posIndex;
        var left = view.zoomRect.left;
        drag(360, 150, 290, 150);
        mouseRelease(view, 290, 150);
        verify(view.zoomRect.left > left);
        compare(view.cursor.posIndex, index);
        fuzzyCompare(view.zoomRect.width, 0.5, 1e-9);
        mouseDoubleClickSequence(view, 90, 200);
        for (var [side, value] of [["left", 0], ["top", 0], ["width", 1], ["height", 1]])
            compare(view.zoomRect[side], value);
    }

    function test_tapMovesTheCursor() {
        for (var column of [60, 75, 375]) {
            mouseClick(view, column, 100);
            verify(Math.abs(view.cursor.posOnScreen - column) <= 2);
        }
        compare(view.marker.posIndex, 100);
    }

    function test_markersStayInTheData() {
        view.plot.plotData.yData = levels(50).slice(0, 120);
        view.marker.posIndex = 118;
        drag(295, 150, 395, 150);
        mouseRelease(view, 395, 150);
        compare(view.marker.posIndex, 119);
        verify(view.marker.visible);
        var grab = view.marker.label;
        view.marker.destroy();
        tryVerify(function () { return view.cursor.children.length > 0 && Array.from(view.cursor.children).indexOf(grab) < 0; });
    }

    function test_keysMove() {
        keyClick(Qt.Key_Right);
        var index = view.cursor.posIndex;
        verify(index > 80);
        for (var i = 0; i < 6; ++i)
            view.keys.press(Qt.Key_Left, true);
        // 2, 4, 6, 9, 13 and 19 pixels, each to the nearest sample.
        fuzzyCompare(view.cursor.posIndex, index - 53 / 2.5, 3);
        keyClick(Qt.Key_BracketLeft);
        compare(view.cursor.posIndex, 40);
        keyClick(Qt.Key_BracketRight);
        compare(view.cursor.posIndex, 120);
        var row = view.level.posOnScreen;
        keyClick(Qt.Key_Up);
        compare(view.level.posOnScreen, row - 1);
        // The horizontal cursor takes a whole number that its value starts with, too.
        view.level.posOnScreen = 150;
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Up);
        compare(view.level.posOnScreen, 150);
    }

    function test_keysBringWhatIsNotInView() {
        view.area.zoomAt(200, 150, 0.1, 1);
        for (var target of [[Qt.Key_P, 40], [Qt.Key_End, 160], [Qt.Key_Home, 0]]) {
            keyClick(target[0]);
            compare(view.cursor.posIndex, target[1]);
            verify(view.zoomRect.left <= view.cursor.position && view.zoomRect.right >= view.cursor.position);
        }
        fuzzyCompare(view.zoomRect.width, 0.1, 1e-9);
    }

    function test_peakButtons() {
        var buttons = createTemporaryObject(peakButtons, testCase, { cursor: view.cursor });
        waitForRendering(buttons);
        for (var press of [[1, 40], [2, 120], [0, 40]]) {
            mouseClick(buttons.children[press[0]]);
            compare(view.cursor.posIndex, press[1]);
        }
    }

    function test_liveTextsHoldStill() {
        var text = createTemporaryObject(steadyText, testCase);
        text.source = "second";
        compare(text.text, "first");
        tryCompare(text, "text", "second");
        text.interval = 1000000;
        text.source = "third";
        text.key = 1;
        tryCompare(text, "text", "third");
    }

    function test_readingsFollow() {
        compare(view.reading.text, "50");
        compare(view.otherReading.text, "48");
        // A live trace.
        view.plot.plotData.yData = levels(60);
        tryCompare(view.reading, "text", "60");
        compare(view.reading.crossingY, 120);
        // A zoom.
        view.area.zoomAt(0, 120, 1, 0.5);
        compare(view.reading.crossingY, 120);
        compare(view.otherReading.crossingY, 192);
        // A missing sample, a hidden plot, an empty one and one that dies.
        var values = levels(60);
        values[80] = NaN;
        view.plot.plotData.yData = values;
        tryVerify(function () { return !view.reading.shown; });
        view.other.visible = false;
        verify(!view.otherReading.shown);
        view.other.visible = true;
        verify(view.otherReading.shown);
        view.other.plotData.yData = [];
        tryVerify(function () { return !view.otherReading.shown; });
        view.plot.destroy();
        tryCompare(view, "plot", null);
        verify(!view.reading.shown);
    }

    function test_labelsStayInsideAndApart_data() {
        return [
            { tag: "in the middle", first: 50, second: 48 },
            { tag: "same value", first: 50, second: 50 },
            { tag: "at the top", first: 100, second: 99 },
            { tag: "at the bottom", first: 0, second: 1 },
            { tag: "out of sight", first: 130, second: -40 }
        ];
    }

    function test_labelsStayInsideAndApart(data) {
        view.plot.plotData.yData = levels(data.first);
        view.other.plotData.yData = levels(data.second);
        tryCompare(view.cursor, "yValues", [data.first, data.second]);
        var labels = [view.reading, view.otherReading];
        verify(Math.abs(labels[0].labelY - labels[1].labelY) >= labels[0].labelHeight);
        for (var label of labels)
            verify(label.labelY >= 0 && label.labelY + label.labelHeight <= view.height);
    }
}
