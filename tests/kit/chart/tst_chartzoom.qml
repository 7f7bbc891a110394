import QtQuick 2.15
import QtTest 1.2
import graph_kit 1.0

TestCase {
    id: testCase

    name: "chartzoom"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: chartComponent

        Chart {
            width: 640
            height: 400
            Trace { values: Array.from({ length: 101 }, (unused, i) => i % 2); interval: 0.1 }
        }
    }

    Component {
        id: traceComponent

        Trace {}
    }

    SignalSpy {
        id: rectSpy

        signalName: "rectChanged"
    }

    property var chart

    function init() {
        chart = createTemporaryObject(chartComponent, testCase);
        waitForRendering(chart);
        compare(shown(), "0 10");
        compare(all(), true);
    }

    function shown() {
        return [chart.axisX.minVisible, chart.axisX.maxVisible].map(x => Number(x.toPrecision(9))).join(" ");
    }

    function shownY() {
        return [chart.axisY.minVisible, chart.axisY.maxVisible].map(y => Number(y.toPrecision(9))).join(" ");
    }

    function all() {
        return chart.zoomRect.width === 1 && chart.zoomRect.height === 1;
    }

    function test_showRange_data() {
        return [
            { tag: "in order", from: 3, to: 7, shown: "3 7" },
            { tag: "the other way round", from: 7, to: 3, shown: "3 7" },
            { tag: "a millionth", from: 5, to: 5.00001, shown: "5 5.00001" },
            { tag: "beyond the data", from: -5, to: 25, shown: "-5 25", changes: 0 },
            { tag: "outside of it", from: 100, to: 200, shown: "100 200" },
            { tag: "too far", from: -1e308, to: 1e308, shown: "-7e+307 7e+307", changes: 0, told: /which counts as -7e\+307 to 7e\+307/ },
            { tag: "no number", from: NaN, to: 3, shown: "0 10", changes: 0, told: /ignores showRange\(nan, 3\), which is no range/ },
            { tag: "endless", from: 0, to: Infinity, shown: "0 10", changes: 0, told: /showRange\(0, inf\), which/ },
            { tag: "nothing", from: 4, to: 4, shown: "0 10", changes: 0, told: /showRange\(4, 4\), which/ }
        ];
    }

    // One step, whatever the order, and one back. A range around all of the data is all of the full range.
    function test_showRange(data) {
        rectSpy.target = chart.zoomRect;
        rectSpy.clear();
        var moved = data.shown !== "0 10";
        if (data.told)
            ignoreWarning(data.told);
        chart.showRange(data.from, data.to);
        compare(shown(), data.shown);
        compare(rectSpy.count, data.changes === undefined ? 1 : data.changes);
        compare(chart.canGoBack, moved);
        chart.showRangeY(0.75, 0.25);
        compare(shownY(), "0.25 0.75");
        chart.back();
        compare(shown() + " " + chart.zoomRect.height, data.shown + " 1");
        chart.back();
        compare(shown(), "0 10");
        verify(!chart.canGoBack && chart.canGoForward);
        chart.forward();
        compare(shown(), moved ? data.shown : "0 10");
        chart.forward();
        compare(shownY(), "0.25 0.75");
        chart.showAll();
        verify(all());
    }

    // In pixels of the chart, of fractions of its plot area.
    function at(x, y) {
        var area = chart.plotArea;
        return Qt.point(Math.round(area.x + x * (area.width - 1)), Math.round(area.y + y * (area.height - 1)));
    }

    function wheel(x, y, turns) {
        var place = at(x, y);
        mouseWheel(chart, place.x, place.y, 0, turns * 120);
    }

    function drag(x, y, toX, toY, button, pause) {
        var from = at(x, y);
        var to = at(toX, toY);
        mousePress(chart, from.x, from.y, button);
        if (pause)
            wait(pause);
        // At once: where it rests too long a rectangle is drawn.
        for (var i = 1; i <= 8; ++i)
            mouseMove(chart, from.x + (to.x - from.x) * i / 8, from.y + (to.y - from.y) * i / 8, i < 3 ? -1 : 10, button);
        // A hand that rests flicks nothing.
        mouseMove(chart, to.x, to.y, 150, button);
        mouseRelease(chart, to.x, to.y, button, Qt.NoModifier, 150);
    }

    function pinch(from, to, y) {
        var touch = touchEvent(chart);
        var fingers = at => [chart.plotArea.x + at * chart.plotArea.width, chart.plotArea.x + (1 - at) * chart.plotArea.width];
        var row = chart.plotArea.y + y * chart.plotArea.height;
        touch.press(1, chart, fingers(from)[0], row).press(2, chart, fingers(from)[1], row).commit();
        for (var i = 1; i <= 8; ++i) {
            var place = fingers(from + (to - from) * i / 8);
            touch.move(1, chart, place[0], row).move(2, chart, place[1], row).commit();
        }
        touch.release(1, chart, place[0], row).release(2, chart, place[1], row).commit();
    }

    // What is left of the zoom rectangle (left, width, bottom, height) after something that a hand does.
    function test_byHand_data() {
        var half = () => { chart.showRange(2, 6); chart.showRangeY(0.2, 0.6); };
        return [
            { tag: "wheel", hand: () => wheel(0.5, 0.5, 1), width: 0.8, height: 0.8, left: 0.1 },
            { tag: "wheel over the x axis", hand: () => wheel(0.5, 1.05, 1), width: 0.8, height: 1, left: 0.1 },
            { tag: "wheel over the y axis", hand: () => wheel(-0.03, 0.5, 1), width: 1, height: 0.8, left: 0 },
            { tag: "wheel at the begin of the y axis", hand: () => wheel(-0.03, 1, 1), width: 1, height: 0.8, left: 0, lowest: 0 },
            { tag: "drag of the y axis", before: half, hand: () => drag(-0.03, 0.5, -0.03, 0.25, Qt.LeftButton), width: 0.4,
              left: 0.2, lowest: 0.1 },
            { tag: "wheel at the begin", hand: () => wheel(0, 0.5, 1), width: 0.8, height: 0.8, left: 0 },
            { tag: "box", hand: () => drag(0.2, 0.2, 0.6, 0.7, Qt.RightButton), width: 0.4, height: 0.5, left: 0.2 },
            { tag: "box backwards", hand: () => drag(0.6, 0.7, 0.2, 0.2, Qt.RightButton), width: 0.4, height: 0.5, left: 0.2 },
            { tag: "flat box", hand: () => drag(0.2, 0.5, 0.6, 0.5, Qt.RightButton), width: 0.4, height: 1, left: 0.2 },
            { tag: "box of nothing", hand: () => drag(0.2, 0.2, 0.2, 0.2, Qt.RightButton), width: 1, height: 1, left: 0 },
            { tag: "box after a long press", hand: () => drag(0.2, 0.2, 0.6, 0.7, Qt.LeftButton, 1000), width: 0.4,
              height: 0.5, left: 0.2 },
            { tag: "pan", before: half, hand: () => drag(0.5, 0.5, 0.25, 0.5, Qt.LeftButton), width: 0.4, left: 0.3,
              slack: 0.03 },
            { tag: "drag of the x axis", before: half, hand: () => drag(0.5, 1.05, 0.25, 1.05, Qt.LeftButton), width: 0.4,
              left: 0.3 },
            { tag: "pinch", hand: () => pinch(0.4, 0.2, 0.5), width: 0.42, left: 0.29, slack: 0.1 },
            { tag: "double tap of the x axis", before: half, hand: () => { var p = at(0.5, 1.05); mouseDoubleClickSequence(chart, p.x, p.y); },
              width: 1, left: 0 },
            { tag: "double tap", before: half, hand: () => { var p = at(0.5, 0.5); mouseDoubleClickSequence(chart, p.x, p.y); },
              width: 1, height: 1, left: 0 },
            { tag: "key +", hand: () => keyClick(Qt.Key_Plus), width: 0.8, height: 0.8, left: 0.1 },
            { tag: "key Right", before: half, hand: () => keyClick(Qt.Key_Right), width: 0.4, left: 0.24 },
            { tag: "key End", before: half, hand: () => keyClick(Qt.Key_End), width: 0.4, left: 0.6 },
            { tag: "key 0", before: half, hand: () => keyClick(Qt.Key_0), width: 1, height: 1, left: 0 },
            { tag: "key Backspace", before: half, hand: () => keyClick(Qt.Key_Backspace), width: 0.4, height: 1, left: 0.2 }
        ];
    }

    function test_byHand(data) {
        chart.forceActiveFocus();
        if (data.before)
            data.before();
        var stood = shown() + " " + shownY();
        data.hand();
        tryVerify(() => !chart.zoomRect.moving);
        var rect = chart.zoomRect;
        var slack = data.slack || 0.01;
        verify(Math.abs(rect.width - data.width) < slack, "width " + rect.width);
        verify(data.height === undefined || Math.abs(rect.height - data.height) < slack, "height " + rect.height);
        verify(Math.abs(rect.left - data.left) < slack, "left " + rect.left);
        verify(data.lowest === undefined || Math.abs(chart.axisY.minVisible - data.lowest) < slack, "y " + shownY());
        if (data.tag.indexOf("nothing") >= 0 || data.tag.indexOf("Backspace") >= 0)
            return;
        chart.back();
        compare(shown() + " " + shownY(), stood);
    }

    function test_switchedOff_data() {
        return [
            { tag: "all", off: () => { chart.zoom.enabled = false; }, width: 1, height: 1 },
            { tag: "vertical", off: () => { chart.zoom.vertical = false; }, width: 0.8, height: 1 },
            { tag: "horizontal", off: () => { chart.zoom.horizontal = false; }, width: 1, height: 0.8 }
        ];
    }

    function test_switchedOff(data) {
        data.off();
        wheel(0.5, 0.5, 1);
        verify(Math.abs(chart.zoomRect.width - data.width) < 0.01);
        verify(Math.abs(chart.zoomRect.height - data.height) < 0.01);
    }

    // In a list that scrolls the chart takes what it can use, and nothing else.
    Component {
        id: listComponent

        Flickable {
            property alias chart: inner

            width: 640
            height: 400
            contentHeight: 1200
            Chart {
                id: inner

                width: 640
                height: 400
                cursor.hover: false
                Trace { values: Array.from({ length: 101 }, (unused, i) => i % 2); interval: 0.1 }
            }
        }
    }

    function test_insideAList_data() {
        var part = () => { chart.showRange(2, 6); chart.showRangeY(0.2, 0.6); };
        return [
            { tag: "swipe", scrolls: true, hand: () => drag(0.5, 0.9, 0.5, 0.3) },
            { tag: "swipe over a part", before: part, hand: () => drag(0.5, 0.9, 0.5, 0.3) },
            { tag: "not vertically", before: part, off: "vertical", scrolls: true, hand: () => drag(0.5, 0.9, 0.5, 0.3) },
            { tag: "along the y axis", scrolls: true, hand: () => drag(-0.03, 0.9, -0.03, 0.3) },
            { tag: "along the y axis, over a part", before: part, hand: () => drag(-0.03, 0.9, -0.03, 0.3) },
            { tag: "along an axis that is off", before: part, off: "vertical", scrolls: true, hand: () => drag(-0.03, 0.9, -0.03, 0.3) },
            { tag: "from the x axis", before: part, scrolls: true, hand: () => drag(0.5, 1.03, 0.5, 0.4) },
            { tag: "sideways, no tap", hand: () => drag(0.9, 0.5, 0.3, 0.5) },
            { tag: "wheel", hand: () => wheel(0.5, 0.5, -1) },
            { tag: "wheel off", off: "wheel", scrolls: true, hand: () => wheel(0.5, 0.5, -1) },
            { tag: "wheel off, y axis", off: "wheel", scrolls: true, hand: () => wheel(-0.03, 0.5, -1) },
            { tag: "no zoom", off: "enabled", scrolls: true, hand: () => wheel(0.5, 0.5, -1) },
            { tag: "key Up", before: part, off: "vertical", stays: true, hand: () => keyClick(Qt.Key_Up) }
        ];
    }

    function test_insideAList(data) {
        var list = createTemporaryObject(listComponent, testCase);
        chart = list.chart;
        waitForRendering(chart);
        chart.forceActiveFocus();
        if (data.before)
            data.before();
        if (data.off)
            chart.zoom[data.off] = false;
        var y = shownY();
        data.hand();
        tryVerify(() => !list.moving && !chart.zoomRect.moving);
        compare(list.contentY > 0, Boolean(data.scrolls));
        compare(shownY() === y, !data.before || Boolean(data.scrolls || data.stays));
        verify(isNaN(chart.cursor.posValue));
    }

    function test_shiftAndWheel() {
        var place = at(0.5, 0.5);
        chart.showRange(2, 6);
        mouseWheel(chart, place.x, place.y, 0, 120, Qt.NoButton, Qt.ShiftModifier);
        compare(shown(), "2 6");
        fuzzyCompare(chart.zoomRect.height, 0.8, 0.01);
    }

    // A hand that leaves while it moves, by the clock that the test gives to a mouse, not by that of the machine.
    function flick() {
        chart.showRange(0, 1);
        var from = at(0.9, 0.5);
        mousePress(chart, from.x, from.y);
        for (var i = 1; i <= 8; ++i)
            mouseMove(chart, from.x - 30 * i, from.y, i < 3 ? -1 : 8, Qt.LeftButton);
        mouseRelease(chart, from.x - 240, from.y);
        var left = chart.zoomRect.left;
        tryVerify(() => chart.zoomRect.left > left + 0.01);
    }

    // One step for all of its way.
    function test_flick() {
        flick();
        tryVerify(() => !chart.zoomRect.moving, 8000);
        chart.back();
        compare(shown(), "0 1");
    }

    // A box is drawn over what stays.
    function test_boxStopsFlick() {
        flick();
        verify(chart.zoomRect.moving);
        var place = at(0.5, 0.5);
        mousePress(chart, place.x, place.y, Qt.RightButton);
        var left = chart.zoomRect.left;
        verify(!chart.zoomRect.moving);
        wait(50);
        compare(chart.zoomRect.left, left);
        mouseRelease(chart, place.x, place.y, Qt.RightButton);
    }

    // What comes into view is fitted while the finger still moves.
    function test_fitsWhileMoved() {
        chart.axisY.autoRange = ChartAxis.FitVisible;
        traceComponent.createObject(chart, { values: Array.from({ length: 101 }, (unused, i) => i), interval: 0.1 });
        tryCompare(chart.axisX, "maxVisible", 10);
        chart.showRange(1, 2);
        tryVerify(() => chart.axisY.maxVisible < 40, 5000);
        var from = at(0.9, 0.5);
        mousePress(chart, from.x, from.y);
        for (var i = 1; i <= 20; ++i)
            mouseMove(chart, from.x - 25 * i, from.y, i < 3 ? -1 : 10);
        tryVerify(() => chart.axisX.maxVisible > 2.5 && chart.axisY.maxVisible > 10 * chart.axisX.maxVisible - 1);
        verify(chart.zoomRect.moving || chart.touched);
        mouseRelease(chart, from.x - 500, from.y);
    }

    // A further axis is moved alone, until everything is shown.
    function test_handOnAFurtherAxis() {
        var further = axisComponent.createObject(chart);
        traceComponent.createObject(chart, { values: [0, 100], interval: 10, axisY: further });
        tryVerify(() => further.maxVisible >= 100 && chart.plotArea.x + chart.plotArea.width < 610);
        var first = shownY();
        wheel(1.03, 0.5, 1);
        verify(further.maxVisible - further.minVisible < 100);
        compare(shownY(), first);
        verify(all());
        chart.showAll();
        tryVerify(() => further.maxVisible >= 100);
    }

    Component {
        id: axisComponent

        ChartAxis { alignment: Qt.AlignRight }
    }

    // As in a chart, those of a trace are drawn, and a margin that is written stays.
    function test_axesOfATrace_data() {
        return [{ tag: "of a trace", text: "Trace { values: [0, 100]; axisY: power; %1 }" },
                { tag: "of the chart", text: "%1 Trace { values: [0, 100]; axisY: power }" }];
    }

    function test_axesOfATrace(data) {
        var axis = "ChartAxis { id: power; alignment: Qt.AlignRight; unit: 'W'; margin: 77 }";
        var other = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 300; axisY.margin: 60; "
                                             + data.text.replace("%1", axis) + " Trace { values: [-0.001, 0.002, 0.0035] } }", testCase);
        tryVerify(() => other.plotArea.x === 60 && other.plotArea.x + other.plotArea.width === 640 - 77);
        other.axisY.unit = "V";
        other.axisY.range(-1e6, 1e6);
        wait(50);
        compare(other.plotArea.x, 60);
        other.axisY.margin = undefined;
        verify(other.axisY.margin > 0 && other.axisY.margin === other.axisY.requiredMargin + 6);
    }

    // Charts that share x have it at the same pixels, whatever is beside their plot areas.
    function test_alignedPlotAreas() {
        var other = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { id: chart; width: 640; height: 300; "
                                             + "Trace { values: [-1234567, 7] } ChartAxis { alignment: Qt.AlignRight; title: 'Power' } }", testCase);
        var left = () => other.plotArea.x, right = () => other.plotArea.x + other.plotArea.width;
        tryVerify(() => left() > chart.plotArea.x + 10 && right() < 600);
        var own = chart.plotArea.x, ownWidth = chart.plotArea.width;
        chart.zoomWith = other;
        var areAligned = () => chart.plotArea.x === left() && chart.plotArea.x + chart.plotArea.width === right();
        tryVerify(areAligned);
        other.axisY.title = "Level";
        chart.axisY.unit = "V";
        var before = left();
        chart.axisY.margin = 150;
        tryVerify(() => areAligned() && left() === 150);
        chart.axisY.margin = undefined;
        tryVerify(() => areAligned() && left() === before);
        other.visible = false;
        tryCompare(chart.plotArea, "x", own);
        other.visible = true;
        tryVerify(areAligned);
        other.destroy();
        tryCompare(chart.plotArea, "width", ownWidth);
    }

    // What the full ranges follow from changes under a zoom, which stays, and without a message.
    function test_axesUnderAZoom() {
        chart.traces[0].values = Array.from({ length: 101 }, (unused, i) => i);
        chart.showRange(-1, 6);
        chart.axisX.scale = ChartAxis.Logarithmic;
        tryVerify(() => shown() === "0.1 6");
        chart.showRange(2, 6);
        chart.axisX.scale = ChartAxis.Linear;
        tryCompare(chart.zoomRect, "width", 0.4);
        var whole = shownY();
        chart.axisY.autoRange = ChartAxis.FitVisible;
        tryVerify(() => chart.axisY.maxVisible < 70);
        chart.axisY.autoRange = ChartAxis.Fit;
        tryVerify(() => shownY() === whole);
        chart.axisY.range(-5, 5);
        chart.axisY.minValue = NaN;
        tryVerify(() => chart.axisY.minVisible === 0);
        chart.axisY.maxValue = NaN;
        tryVerify(() => shownY() === whole);
        chart.axisY.scale = ChartAxis.Logarithmic;
        tryVerify(() => chart.axisY.minVisible === 0.5);
        ignoreWarning(/is told showRangeY\(-1, 5\) on a logarithmic axis, which shows the part above 0/);
        chart.showRangeY(-1, 5);
        compare(shownY(), "0.5 5");
        chart.axisX.range(10, 0);
        chart.showRange(-5, 5);
        compare(shown(), "5 -5");
    }

    // A dialog or another page takes the chart away under two fingers.
    function test_lostFingers_data() {
        return [["visible", false], ["enabled", false], ["parent", null]].map(row => ({ tag: row[0], gone: row[1] }));
    }

    function test_lostFingers(data) {
        var touch = touchEvent(chart), there = chart[data.tag];
        touch.press(1, chart, 250, 200).press(2, chart, 350, 200).commit();
        for (var moved = 10; moved < 90; moved += 10)
            touch.move(1, chart, 250 - moved, 200).move(2, chart, 350 + moved, 200).commit();
        verify(chart.touched);
        chart[data.tag] = data.gone;
        tryCompare(chart, "touched", false);
        chart[data.tag] = there;
        touch.release(1, chart, 170, 200).release(2, chart, 430, 200).commit();
        verify(chart.flickable.interactive);
    }

    // A third finger, or the ball of the thumb, comes and goes: once all have left nothing is held.
    function test_threeFingers() {
        chart.showRange(3, 6);
        var touch = touchEvent(chart);
        var send = (...fingers) => {
            fingers.forEach((at, i) => touch[at[0]](i + 1, chart, at[1], at[2]));
            touch.commit();
        };
        send(["press", 184, 104]);
        send(["stationary"], ["press", 174, 136]);
        send(["move", 184, 124], ["move", 174, 116]);
        send(["move", 184, 104], ["move", 154, 116]);
        send(["stationary"], ["stationary"], ["press", 109, 90]);
        send(["move", 164, 124], ["move", 134, 116], ["stationary"]);
        send(["stationary"], ["stationary"], ["release", 109, 90]);
        send(["move", 144, 104], ["move", 154, 116]);
        send(["stationary"], ["stationary"], ["press", 168, 54]);
        send(["release", 144, 104], ["stationary"], ["stationary"]);
        touch.release(2, chart, 154, 116).stationary(3).commit();
        touch.release(3, chart, 168, 54).commit();
        tryVerify(() => !chart.touched && !chart.zoomRect.moving);
    }

    // New data do not move what somebody looks at, and are followed by a chart that shows everything.
    function test_dataUnderAZoom() {
        chart.showRange(2, 4);
        var other = traceComponent.createObject(chart, { values: [0, 50], interval: 100 });
        tryCompare(chart.axisX, "maxValue", 100);
        compare(shown(), "2 4");
        chart.back();
        compare(shown(), "0 100");
        other.destroy();
        tryVerify(() => shown() === "0 10");
    }
}
