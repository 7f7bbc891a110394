import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

// Cursors, markers and the legend of a chart keep to its theme and out of each other's way.
TestCase {
    id: testCase

    name: "chartcursor"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: declared

        Chart {
            id: chart

            property alias line: line
            property alias own: own
            property alias reading: reading
            property alias tag: tag

            width: 640
            height: 400
            axisX.unit: "Hz"
            Trace { id: level; name: "Level"; values: Array.from({ length: 1001 }, (unused, i) => i < 500 ? 0 : 9); unit: "V" }
            GraphCursor {
                id: line
                markers: [GraphMarker { posValue: 440; visible: true }, GraphMarker { id: own; color: "lime" }]
                CursorReadout { id: reading; plot: level }
                CursorTag { id: tag }
            }
        }
    }

    Component {
        id: plain

        GraphView {
            id: view

            property color color: "white"
            readonly property var parts: [tag, flag, reading]

            width: 640
            height: 400
            axes: [
                ValueAxis { id: axisX; linesPlane: plane; labelsPlane: plane },
                ValueAxis { id: axisY; alignment: Qt.AlignLeft; linesPlane: plane; labelsPlane: plane }
            ]
            XYScale { id: plane }
            Trace { id: bars; color: view.color; style: Trace.Bars; axisX: axisX; axisY: axisY; values: [1, 2] }
            GraphCursor {
                color: view.color
                markers: GraphMarker { visible: true; color: view.color; MarkerGrab { id: flag; text: "A" } }
                CursorReadout { id: reading; plot: bars }
                CursorTag { id: tag }
            }
        }
    }

    Component {
        id: live

        Chart {
            property bool legendNewest: false

            width: 640
            height: 400
            follow: 30
            legend.newest: legendNewest
            Trace { name: "Battery"; unit: "V" }
            Trace { name: "Motor"; unit: "V" }
            Trace {}
        }
    }

    function make(component, properties) {
        var chart = createTemporaryObject(component, testCase, properties || {});
        waitForRendering(chart);
        return chart;
    }

    function find(item, name) {
        for (var i = 0; i < item.children.length; ++i) {
            var child = item.children[i];
            var found = child[name] !== undefined ? child : find(child, name);
            if (found)
                return found;
        }
        return null;
    }

    function rgb(color) {
        return Qt.rgba(color.r, color.g, color.b, 1).toString();
    }

    // Tags in names and units are no markup.
    function test_plainTexts() {
        var chart = make(withCursor, { place: 2 }), texts = [];
        chart.traces[0].values = [1, 2, 3, 4, 5];
        (function gather(item) {
            if (item.textFormat !== undefined)
                texts.push(item.textFormat);
            Array.from(item.children).forEach(gather);
        })(chart);
        verify(texts.length > 4 && texts.every(format => format === Text.PlainText));
    }

    function test_themeOfCursorAndMarkers() {
        var chart = make(declared);
        [Chart.Dark, Chart.Light].forEach(function (theme) {
            chart.theme = theme;
            compare(rgb(chart.line.color), rgb(chart.colors.cursorColor));
            compare(rgb(chart.line.markers[0].color), rgb(chart.colors.markerColors[0]));
            compare(rgb(chart.own.color), "#00ff00");
            compare(chart.line.paintedWidth + " " + chart.line.font.pixelSize, "1 " + chart.colors.fontSize);
        });
        chart.line.setPosValue(20);
        compare(chart.line.markers[0].formattedDelta, "\u0394 420 Hz");
        chart.line.color = "red";
        chart.theme = Chart.Dark;
        compare(rgb(chart.line.color), "#ff0000");
    }

    Component {
        id: withCursor

        Chart {
            width: 640
            height: 400
            Trace { name: "Level" }
            legend { leastTraces: 1; atRight: true }
            property real place: 0
            ChartCursor { posValue: parent.place; markers: GraphMarker { posValue: 4; visible: true; MarkerGrab { text: "A" } } }
        }
    }

    // A place that is written before the data have come.
    function test_awaitedPlace() {
        var chart = make(withCursor, { place: 30 });
        feed(chart, 98);
        var cursor = chart.declaredCursor, tag = find(cursor, "tagInset");
        compare(cursor.posIndex + " " + cursor.posValue, "30 30");
        // Its own tag is above a legend at the bottom.
        verify(tag.tagInset < 40);
        chart.legend.atBottom = true;
        chart.legend.atRight = false;
        cursor.posValue = 1;
        tryVerify(() => tag.tagInset > chart.plotArea.height - chart.legendBox.y + chart.colors.fontSize);
    }

    // It waits for data, hears taps and keys, and keeps the chart's own away.
    function test_declaredCursor() {
        var chart = make(withCursor), cursor = chart.declaredCursor;
        compare(cursor.view, chart);
        chart.traces[0].start = 2;
        feed(chart, 98);
        compare(cursor.posIndex + " " + cursor.posValue, "0 2");
        mouseClick(chart, chart.plotArea.x + chart.plotArea.width / 2, 200);
        fuzzyCompare(cursor.posValue, 51, 1.5);
        var place = cursor.posValue;
        keyClick(Qt.Key_Right);
        verify(cursor.posValue > place);
        cursor.setPosValue(44);
        compare(cursor.markers[0].formattedDelta, "\u0394 40");
        // The flag is not behind the legend.
        compare(cursor.markers[0].label._top, 0);
        cursor.markers[0].setPosValue(98);
        tryCompare(cursor.markers[0].label, "_top", chart.legendBox.y + chart.legendBox.height);
        var others = Array.prototype.filter.call(chart.children, child => child instanceof GraphCursor && child !== cursor);
        compare(others.length, 0);
    }

    function test_markerThatComesLater() {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { property alias line: line; width: 640; height: 300;"
                                             + "Trace { values: [1, 5, 3, 8] } ChartCursor { id: line } }", testCase);
        tryVerify(() => chart.line.posIndex >= 0);
        var marker = createTemporaryQmlObject("import graph_plugin 1.0; GraphMarker { posValue: 2; visible: true }", testCase);
        chart.line.markers = [marker];
        compare(marker.posIndex, 2);
    }

    // A marker is not to be taken for a trace.
    function test_colorsOfMarkers() {
        var chart = make(declared);
        [Chart.Dark, Chart.Light].forEach(function (theme) {
            chart.theme = theme;
            chart.colors.markerColors.forEach(marker => chart.colors.traceColors.forEach(trace =>
                verify(Math.hypot(marker.r - trace.r, marker.g - trace.g, marker.b - trace.b) > 0.2, marker + " " + trace)));
        });
    }

    // What WCAG 2 asks of lines is 3.
    function contrast(a, b) {
        const part = part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4);
        const [dark, light] = [a, b].map(color => 0.2126 * part(color.r) + 0.7152 * part(color.g) + 0.0722 * part(color.b)).sort();
        return (light + 0.05) / (dark + 0.05);
    }

    // Nor one of many traces for another one, nor for the background.
    function test_colorsOfManyTraces() {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { Repeater { model: 21; Trace {} } }", testCase);
        tryCompare(chart.traces, "length", 21);
        [Chart.Dark, Chart.Light].forEach(function (theme) {
            chart.theme = theme;
            const plane = chart.colors.plotBackground, colors = chart.traces.map(trace => trace.color).concat([plane]);
            colors.slice(0, 21).forEach((color, i) => verify(contrast(color, plane) >= 3, i + " " + color));
            colors.forEach((a, i) => colors.slice(0, i).forEach(
                b => verify(Math.hypot(a.r - b.r, a.g - b.g, a.b - b.b) > 0.12, a + " " + b)));
        });
    }

    // The x that the document wants, of the cursor that it declares and of the chart's own, with data now or later.
    function test_posValue_data() {
        var rows = [];
        ["", "ChartCursor {}"].forEach(cursor => ["cursor.posValue: 3.2", "Component.onCompleted: cursor.posValue = 3.2"].forEach(
            place => ["[1, 5, 3, 8, 2]", ""].forEach(
            values => rows.push({ tag: place.substring(0, 9) + cursor + values, body: place + ";" + cursor, values: values }))));
        return rows;
    }

    function test_posValue(data) {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 300; " + data.body
                                             + " Trace { " + (data.values ? "values: " + data.values : "") + "} }", testCase);
        waitForRendering(chart);
        chart.traces[0].values = [1, 5, 3, 8, 2];
        tryCompare(chart.cursor, "posValue", 3);
        var line = Array.prototype.find.call(chart.children, child => child instanceof GraphCursor);
        compare(line.posIndex + " " + line.opacity, "3 1");
        line.setPosIndex(1);
        compare(chart.cursor.posValue, 1);
        chart.cursor.posValue = NaN;
        compare(line.opacity, chart.declaredCursor ? 1 : 0);
    }

    // Beyond its samples a trace has no value, at either end and with one sample.
    function test_readingsBeyondTheEnds() {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 400; legend.atRight: true; ChartCursor {}
                                              Trace { name: 'long'; values: [1, 5, 3, 8, 2, 9] }
                                              Trace { name: 'short'; values: [6, 7] }
                                              Trace { name: 'late'; start: 3.6; interval: 0.8; values: [4, 3] }
                                              Trace { name: 'lone'; start: 2; values: [5] } }`, testCase);
        waitForRendering(chart);
        [[0, "1 6"], [1, "5 7"], [2, "3 5"], [3, "8"], [4, "2 4"], [5, "9"]].forEach(function (pair) {
            chart.cursor.posValue = pair[0];
            wait(20);
            const readings = Array.prototype.filter.call(chart.declaredCursor.children, child => child.wantedY !== undefined && child.shown);
            compare(readings.map(reading => reading.text).join(" "), pair[1]);
            compare(Array.prototype.map.call(chart.legendBox.children[0].children, entry => entry.value || "").filter(text => text).join(" "), pair[1]);
        });
    }

    // Without readings a trace has none at a cursor, which does not stop at its samples, and none in the legend.
    function test_traceWithoutReadings() {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 400
                                              cursor.posValue: 0; legend.values: true
                                              Trace { name: 'old'; readings: false; interval: 0.5; values: [6, 7, 8, 9] }
                                              Trace { name: 'new'; values: [1, 5, 3] } ChartCursor {} }`, testCase);
        waitForRendering(chart);
        const texts = function () {
            const readings = Array.prototype.filter.call(chart.declaredCursor.children, child => child.wantedY !== undefined && child.shown);
            const entries = Array.prototype.map.call(chart.legendBox.children[0].children, entry => entry.value || "").filter(text => text);
            return readings.map(reading => reading.text).concat(entries).join(" ");
        };
        chart.declaredCursor.setPosValue(0.6);
        tryVerify(() => texts() === "5 5", 5000, texts());
        compare(chart.cursor.posValue, 1);
        chart.traces[0].readings = true;
        tryVerify(() => texts() === "8 5 8 5", 5000, texts());
        chart.traces[1].readings = false;
        chart.declaredCursor.setPosValue(0.6);
        tryVerify(() => texts() === "7 7", 5000, texts());
        compare(chart.cursor.posValue, 0.5);
    }

    // Whose value is read: dot and value belong to each other wherever the line is, and where that sample is not in view
    // there is no dot.
    function test_dotOnSample_data() {
        const rows = [{ body: "positions: [1, 6, 8]; values: [2, 8, 9]", at: 4, sample: 6, text: "8 V" },
                      { body: "positions: [1, 6, 8]; values: [2, 8, 9]", at: 6, sample: 6, text: "8 V" },
                      { body: "positions: [1, 6, 8]; values: [2, 8, 9]", at: 3, sample: 1, text: "2 V" }];
        var all = [];
        ["Points", "Line", "Steps", "Bars"].forEach(style => ["false", "true"].forEach(reversed => rows.forEach(row =>
            all.push(Object.assign({ tag: style + " " + row.at + (reversed === "true" ? " reversed" : ""), style: style, reversed: reversed }, row)))));
        return all;
    }

    function test_dotOnSample(data) {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 400; legend.atRight: true; ChartCursor {}
                                              ${data.reversed === "true" ? "axisX { minValue: 9; maxValue: 0 }" : ""}
                                              Trace { values: [1, 2, 3, 4, 5, 6, 7, 8, 9, 10] }
                                              Trace { id: events; unit: "V"; style: Trace.${data.style}; ${data.body} } }`, testCase);
        waitForRendering(chart);
        chart.cursor.posValue = data.at;
        waitForRendering(chart);
        wait(20);
        const reading = Array.prototype.filter.call(chart.declaredCursor.children, child => child.wantedY !== undefined)[1], trace = chart.traces[1];
        compare(reading.text, data.text);
        fuzzyCompare(reading.crossingX, trace.mapToItemX(data.sample), 1);
        fuzzyCompare(reading.crossingY, trace.mapToItemY(reading.reading), 1);
        chart.showRange(data.at - 0.4, data.at + 0.4);
        tryCompare(reading.children[1], "visible", data.at === data.sample);
        compare(reading.text, data.text);
    }

    // Bands shade, and have nothing to read: no cursor, axis, colour or legend takes them for a trace.
    function test_bandsAreNoTraces() {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; Chart {
            width: 640; height: 400; ChartCursor {}
            GraphBands { plotData: PlotRegions { regions: PlotRegion { begin: -2; end: 8; value: 1000; valid: true; name: "Charge" } } }
            Trace { values: [1, 2, 3, 4, 5, 6, 7, 8, 9, 10] }
            GraphPlot { plotStyle: GraphPlot.ScatterPlot; graphPoint: GraphPointReflections {}
                        plotData: PlotPoints { xData: [1, 2]; yData: [2, 5] } } }`, testCase);
        waitForRendering(chart);
        chart.cursor.posValue = 5;
        wait(20);
        compare([chart.cursor.posValue, chart.traces.length, chart.axisX.minValue, chart.axisX.maxValue].join(), "5,2,0,9");
        verify(chart.axisY.maxValue < 20);
        compare(chart.traces[0].penColor, chart.colors.traceColors[0]);
        const bands = find(chart, "labelPen"), point = chart.traces[1].graphPoint;
        [Chart.Light, Chart.Dark].forEach(function (theme) {
            chart.theme = theme;
            compare([bands.labelPen, bands.penColor, point.labelColor].map(String).join(), Array(3).fill(String(chart.colors.textColor)).join());
        });
        compare([bands.labelFont.family, bands.labelFont.pixelSize].join(), [chart.colors.fontFamily, chart.colors.fontSize].join());
        chart.theme = createTemporaryQmlObject("import graph_kit 1.0; ChartTheme { fontFamily: 'DejaVu Serif'; fontSize: 30 }", testCase);
        compare([bands.labelFont.family, bands.labelFont.pixelSize].join(), "DejaVu Serif,30");
        bands.labelFont.pixelSize = 20;
        chart.theme = Chart.Dark;
        compare([bands.labelFont.family, bands.labelFont.pixelSize].join(), chart.colors.fontFamily + ",20");
        bands.labelPen = "red";
        chart.theme = Chart.Light;
        compare(bands.labelPen, "#ff0000");
        chart.traces.forEach(trace => trace.visible = false);
        tryVerify(() => chart.axisY.maxValue >= 1000);
    }

    // Levels above a reference differ by dB, whatever the reference.
    function test_differencesOfLevels() {
        var chart = createTemporaryQmlObject("import graph_kit 1.0; Chart { width: 640; height: 400; Trace { values: [-20, -25.5] } }", testCase);
        [["dBm", "dB"], ["dBuV", "dB"], ["dBFS", "dB"], ["dB", "dB"], ["dBW", "dB"], ["V", "V"]].forEach(function (pair) {
            chart.traces[0].unit = pair[0];
            compare(chart.formatDifferenceY(chart.traces[0], 5.5).split(" ").pop(), pair[1]);
            compare(chart.formatY(chart.traces[0], 5.5).split(" ").pop(), pair[0] === "dBuV" ? "dBµV" : pair[0]);
        });
    }

    // Of charts with the same x: each on a sample of its own, which moves no other.
    function test_sharedCursor() {
        var body = " width: 640; height: 200; Trace { values: Array.from({ length: 100 }, (unused, i) => i); interval: %1 } }";
        var charts = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Column { Chart { id: first;" + body.replace("%1", 1)
                                              + "Chart { zoomWith: first;" + body.replace("%1", 0.3) + "}", testCase).children;
        var places = () => charts[0].cursor.posValue + " " + charts[1].cursor.posValue.toPrecision(3);
        waitForRendering(charts[0]);
        charts[0].cursor.posValue = 10.4;
        tryVerify(() => places() === "10 9.90");
        charts[1].cursor.posValue = 20.4;
        tryVerify(() => places() === "20 20.4");
        mouseClick(charts[1], charts[1].plotArea.x + charts[1].plotArea.width / 2, 100);
        tryVerify(() => charts[0].cursor.posValue > 25 && Math.abs(charts[0].cursor.posValue - charts[1].cursor.posValue) <= 0.5);
        mouseMove(testCase, 1, 1);
        charts[1].cursor.posValue = NaN;
        tryVerify(() => places() === "NaN NaN");
        charts[1].cursor.shared = false;
        charts[0].cursor.posValue = 4;
        wait(50);
        compare(places(), "4 NaN");
    }

    // A time between two times is no date.
    function test_distanceInTime() {
        var chart = make(declared);
        chart.axisX.scale = ChartAxis.Time;
        [[20, "00:07:00"], [435, "5 s"]].forEach(function (pair) {
            chart.line.setPosValue(pair[0]);
            compare(chart.line.markers[0].formattedDelta, "\u0394 " + pair[1]);
        });
    }

    function test_tagKeepsClear() {
        var chart = make(declared, { follow: 1000 });
        chart.showRange(0, 1000);
        chart.line.setPosValue(100);
        var low = chart.tag.tagInset;
        verify(low > 10);
        tryVerify(() => chart.reading.labelY + chart.reading.labelHeight <= chart.plotArea.height - low);
        // Above the button in the corner.
        chart.line.setPosValue(1000);
        verify(chart.tag.tagInset > low + 20);
    }

    // That of a horizontal cursor is beside its name.
    function test_tagBesideFlag() {
        var cursor = createTemporaryQmlObject("import graph_plugin 1.0; import graph_kit 1.0; Chart { property alias cursorY: y; width: 640;"
            + "height: 400; Trace { values: [1, 5] } GraphCursorY { id: y; visible: true; CursorGrab { text: 'Limit' } CursorTag {} } }", testCase).cursorY;
        const grab = cursor.children[0], tag = cursor.children[1], box = () => Array.prototype.find.call(tag.children, child => child.radius);
        tryVerify(() => grab.flagWidth > 20 && box().x > grab.flagWidth);
        grab.text = "";
        tryVerify(() => box().x < 5);
    }

    // Readings make room for the distances of markers, which are below each other.
    function test_textsKeepClear() {
        var chart = make(crowded), line = chart.declaredCursor, markers = line.markers;
        tryVerify(() => markers[1].deltaY >= markers[0].deltaY + 16);
        [50, 52, 80, 99].forEach(function (place) {
            line.setPosValue(place);
            var labels = Array.prototype.filter.call(line.children, child => child.wantedY !== undefined);
            compare(labels.length, 3);
            var rows = labels.map(label => [label.labelY, label.labelY + label.labelHeight]);
            [0, 1].forEach(i => rows.push([markers[i].deltaY - 12, markers[i].deltaY + 3]));
            rows.sort((a, b) => a[0] - b[0]);
            for (var i = 1; i < rows.length; ++i)
                verify(rows[i][0] >= rows[i - 1][1], place + ": " + rows.join(" "));
        });
    }

    // However often the cursor moves before a frame, readings and tag are placed once; who asks between hears the truth.
    function test_placedOncePerFrame() {
        var chart = make(crowded), line = chart.declaredCursor, changes = 0;
        var labels = Array.prototype.filter.call(line.children, child => child.wantedY !== undefined);
        labels.forEach(label => label.crossingXChanged.connect(() => ++changes));
        for (var place = 10; place < 60; place += 10)
            line.setPosValue(place);
        compare(changes, 0);
        compare(labels[2].crossingX, line.posOnScreen);
        waitForRendering(chart);
        compare(changes, labels.length);
    }

    SignalSpy {
        id: frames

        signalName: "frameSwapped"
    }

    // Not a second one, in which nothing is new, because readings and legend are written while the first one is made.
    function test_oneFrameForAChange() {
        var chart = make(crowded);
        frames.target = chart.Window.window;
        [() => chart.declaredCursor.setPosValue(20), () => { chart.traces[1].values = Array.from({ length: 100 }, (unused, i) => 30 + i % 7); },
         () => chart.showRange(10, 60), () => { chart.declaredCursor.markers[0].posValue = 33; }].forEach(function (change, i) {
            tryVerify(() => { frames.clear(); wait(100); return frames.count === 0; });
            change();
            tryVerify(() => frames.count > 0);
            wait(100);
            compare(frames.count, 1, "change " + i);
        });
    }

    function test_readingsKeepClear_data() {
        const wave = "values: Array.from({ length: 500 }, (unused, i) => ";
        const flags = [1, 4.9, 1.55].map(x => "GraphMarker { posValue: " + x + "; visible: true; MarkerGrab { text: 'A' } }").join();
        return [
            { tag: "of a legend, in several columns", body: `width: 400; height: 240; legend.leastTraces: 1; title: 'Readings'; ChartCursor { posValue: 4 }
              Repeater { model: 8; Trace { name: 'ch' + index; unit: 'V'; values: [1, 2, 3, 4, 5 + index * 0.01] } }`, count: 8 },
            { tag: "of flags", body: `width: 560; height: 380; legend.atRight: true; ChartCursor { posValue: 1.5; markers: [${flags}] }
              Trace { name: 'a'; interval: 0.01; ${wave} Math.sin(i)) } Trace { name: 'b'; interval: 0.01; ${wave} 12 + Math.sin(i)) }`, count: 2 },
            { tag: "of a legend at the other side", body: `width: 400; height: 240; legend { atRight: false; values: false } ChartCursor { posValue: 0 }
              Repeater { model: 4; Trace { name: 'channel' + index; values: [5 + index, 9] } }`, count: 4 }
        ];
    }

    // Nothing in the plot area covers a reading.
    function test_readingsKeepClear(data) {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; Chart {" + data.body + "}", testCase);
        waitForRendering(chart);
        wait(50);
        const area = chart.plotArea, cursor = chart.declaredCursor, rectOf = item => item.mapToItem(area, 0, 0, item.width, item.height);
        const chips = Array.prototype.filter.call(cursor.children, child => child.wantedY !== undefined && child.shown)
                           .map(readout => Array.prototype.find.call(readout.children, child => child.children.length > 1));
        compare(chips.length, data.count);
        const others = [chart.legendBox].concat(Array.prototype.map.call(cursor.markers, marker => marker.label.flag));
        const rects = chips.concat(others).map(rectOf);
        for (var i = 0; i < chips.length; ++i) {
            verify(rects[i].left >= 0 && rects[i].right <= area.width && rects[i].top >= 0 && rects[i].bottom <= area.height, rects[i]);
            for (var j = i + 1; j < rects.length; ++j)
                verify(rects[i].left >= rects[j].right || rects[i].right <= rects[j].left || rects[i].top >= rects[j].bottom
                       || rects[i].bottom <= rects[j].top, rects[i] + " " + rects[j]);
        }
    }

    // However wide the legend is: readings below it are beside their line, at either side of the plot.
    function test_readingsBesideLine_data() {
        return [{ tag: "right", at: 94, atRight: true }, { tag: "left", at: 6, atRight: false }];
    }

    function test_readingsBesideLine(data) {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart {
            width: 760; height: 560; axisY { minValue: -100; maxValue: 0 } legend.atRight: ${data.atRight}
            ChartCursor { posValue: ${data.at} }
            Repeater { model: 3; Trace { name: "Trace number " + index; unit: "dBm"; values: Array.from({ length: 101 }, (unused, i) => i === ${data.at} ? -70 : -95) } } }`, testCase);
        waitForRendering(chart);
        wait(50);
        const cursor = chart.declaredCursor, readings = Array.prototype.filter.call(cursor.children, child => child.wantedY !== undefined && child.shown);
        compare(readings.length, 3);
        readings.forEach(function (readout) {
            const chip = Array.prototype.find.call(readout.children, child => child.children.length > 1);
            verify(Math.max(chip.x - cursor.posOnScreen, cursor.posOnScreen - chip.x - chip.width) < 12, chip.x + " beside " + cursor.posOnScreen);
        });
    }

    // Of a chart with little room: its tag is below the trace, and all of its reading is beside or across the line.
    function test_smallChart_data() {
        return [[200, 150, 5], [200, 150, 42], [160, 120, 30], [240, 130, 55]].map(row => ({ tag: row.join(), width: row[0], height: row[1], at: row[2] }));
    }

    function test_smallChart(data) {
        var chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart {
            width: ${data.width}; height: ${data.height}; ChartCursor { posValue: ${data.at} }
            Trace { unit: "l/s"; values: Array.from({ length: 61 }, (unused, i) => 0.002 + 0.0002 * Math.sin(i / 5)) } }`, testCase);
        waitForRendering(chart);
        wait(50);
        const parts = Array.prototype.slice.call(chart.declaredCursor.children), readout = parts.find(child => child.wantedY !== undefined);
        const chip = Array.prototype.find.call(readout.children, child => child.children.length > 1);
        const tag = parts.find(child => child.tagInset !== undefined).children[1], place = chip.mapToItem(chart, 0, 0);
        verify(place.x >= 0 && place.x + chip.width <= data.width && place.y >= 0, place + " " + chip.width);
        verify(tag.y >= chart.plotArea.height, tag.y);
        verify(tag.mapToItem(chart, 0, tag.height).y <= data.height);
    }

    // Over a bar, and whatever else there is in a view without a theme.
    function test_readableAnywhere() {
        var view = make(plain);
        ["white", "black", "orange", "darkblue", "red"].forEach(function (color) {
            view.color = color;
            const [tag, flag, reading] = view.parts;
            [[tag.textColor, tag.color], [flag.textColor, flag.color], [flag.color, flag.backgroundColor],
             [reading.textColor, reading.backgroundColor]].forEach(
                ([text, behind]) => verify(contrast(text, behind) >= 3 && behind.a > 0.6, color + " " + text + " " + behind));
        });
    }

    // Values of the last samples, as they come, until there is a cursor.
    function test_newestValues() {
        var chart = make(live, { legendNewest: true }), legend = find(chart.overlay, "inARow");
        var box = legend.box.children[0], readings = () => Array.prototype.filter.call(box.children, entry => entry.value !== undefined)
            .map(entry => entry.value).join();
        compare(readings(), ",");
        chart.traces[0].values = [1, 2.5];
        chart.traces[1].values = [7];
        tryVerify(() => readings() === "2.5 V,7 V");
        chart.traces[0].values = [1, 2.5, -3];
        chart.traces[1].values = [7, NaN];
        tryVerify(() => readings() === "-3 V,");
        chart.cursor.posValue = 1;
        tryVerify(() => readings() === "2.5 V,");
        chart.cursor.posValue = NaN;
        tryVerify(() => readings() === "-3 V,");
        // The digits are those of the zoom, also while nothing comes.
        chart.traces[0].values = [1, 2, 3.14159265];
        tryVerify(() => readings().startsWith("3.14"));
        wait(50);
        var before = readings();
        chart.showRangeY(3.1415, 3.1416);
        tryVerify(() => readings().includes("1.5927"));
        chart.showAll();
        tryVerify(() => readings() === before);
        chart.legend.newest = false;
        compare(readings(), ",");
    }

    Component {
        id: appended

        Chart {
            readonly property var texts: ({ count: 0 })
            property alias series: series

            width: 640
            height: 400
            follow: 60
            legend { newest: true; leastTraces: 1 }
            axisY.formatter: Formatter { text: value => { ++texts.count; return value } }
            Trace { name: "Level"; series: StreamSeries { id: series; interval: 0.1 } }
        }
    }

    // Texts and places of what is live are those of frames, not of samples, however these come.
    function test_appendsCostNoTexts() {
        var chart = make(appended);
        chart.series.append([0, 1]);
        wait(100);
        chart.cursor.posValue = 0.1;
        [NaN, 0.1].forEach(function (place) {
            chart.cursor.posValue = place;
            wait(50);
            chart.texts.count = 0;
            for (var i = 0; i < 500; ++i)
                chart.series.append(i / 500);
            compare(chart.texts.count, 0);
            wait(50);
            verify(chart.texts.count < 60, chart.texts.count);
        });
    }

    Component {
        id: crowded

        Chart {
            id: chart

            width: 640
            height: 400
            axisY { minValue: 0; maxValue: 100 }
            Repeater {
                model: [70, 72, 75]
                Trace { values: Array.from({ length: 100 }, (unused, i) => modelData) }
            }
            ChartCursor {
                markers: [GraphMarker { posValue: 47; visible: true; MarkerGrab { text: "A" } },
                          GraphMarker { posValue: 30; visible: true; MarkerGrab { text: "B" } }]
            }
        }
    }

    function feed(chart, last) {
        chart.traces.forEach(trace => { trace.values = Array.from({ length: last + 1 }, (unused, i) => 24 + Math.sin(i)); });
        wait(1);
    }

    function shown(chart) {
        return chart.axisX.minVisible + " " + chart.axisX.maxVisible;
    }

    function test_liveWindow() {
        var chart = make(live);
        compare(shown(chart), "0 30");
        // Data come in at the left of an empty window.
        feed(chart, 10);
        compare(chart.legend.atRight, true);
        feed(chart, 20);
        tryCompare(chart.legend, "atRight", false);
        for (var i = 0; i < 8; ++i)
            feed(chart, 125 + i);
        tryVerify(() => shown(chart) === "102 132");
        // Those with a name, at the side where nothing new comes in, without a gap for values that may come.
        var legend = find(chart.overlay, "inARow"), entries = find(legend, "flow");
        compare(entries.rows, 2);
        compare(legend.atRight, false);
        tryVerify(() => entries.width > 0 && entries.width < 110);
        var area = chart.plotArea;
        mouseClick(chart, area.x + 100, area.y + 200);
        var cursor = find(chart, "inView");
        tryCompare(cursor, "opacity", 1);
        tryVerify(() => legend.cursor);
        tryVerify(() => entries.width > 110);
        // With its sample the cursor leaves the window.
        mouseMove(testCase, 639, 399);
        feed(chart, 200);
        tryCompare(cursor, "opacity", 0);
        chart.showAll();
        tryVerify(() => shown(chart) === "0 200");
        wait(30);
        compare(cursor.opacity, 0);
        chart.legend.atRight = true;
        compare(legend.atRight, true);
    }

    function test_doubleTapLeavesNoCursor() {
        var chart = make(live);
        feed(chart, 10);
        mouseDoubleClickSequence(chart, chart.plotArea.x + 100, chart.plotArea.y + 200);
        mouseMove(testCase, 639, 399);
        var cursor = find(chart, "inView");
        verify(cursor);
        tryCompare(cursor, "opacity", 0);
    }

    // What has stopped growing ends where it ends.
    function test_roomGoes() {
        var chart = make(live, { follow: 0 });
        for (var i = 0; i < 8; ++i)
            feed(chart, 100 + i);
        verify(chart.axisX.maxVisible > 110);
        tryVerify(() => shown(chart) === "0 107", 4000);
    }
}
