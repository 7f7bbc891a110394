import QtQuick 2.15
import QtQml 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

TestCase {
    id: testCase

    name: "chart"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: plain

        Chart {
            anchors.fill: parent
            Trace { name: "Level"; values: [1, 5, 3, 8, 2]; interval: 0.5; unit: "V" }
        }
    }

    Component {
        id: filled

        Chart {
            id: chart

            property alias repeater: repeater
            property alias instantiator: instantiator
            property alias loader: loader

            anchors.fill: parent
            Trace { name: "child"; values: [0, 1] }
            Repeater {
                id: repeater
                model: 0
                Trace { name: "repeated"; values: [0, 2] }
            }
            Instantiator {
                id: instantiator
                active: false
                Trace { name: "made"; values: [0, 3] }
            }
            Loader {
                id: loader
                active: false
                sourceComponent: Trace { name: "loaded"; values: [0, 4] }
            }
        }
    }

    Component {
        id: empty

        Chart { anchors.fill: parent }
    }

    Component {
        id: traceComponent

        Trace {}
    }

    Component {
        id: plotComponent

        GraphPlot {
            plotStyle: GraphPlot.LinePlot
            plotData: PlotSeries { label: "plain"; yData: [0, 6] }
        }
    }

    Component {
        id: bound

        Chart {
            id: chart

            property alias level: level
            property alias beside: beside
            readonly property var evaluations: ({ count: 0 })
            readonly property string texts: {
                ++evaluations.count;
                return [formatX(0.0123456), formatY(level, 2.0123456), formatDifferenceY(level, 0.0123456)].join(" | ");
            }

            anchors.fill: parent
            Trace { id: level; values: [1, 5, 3, 8, 2] }
            ChartAxis { id: beside; alignment: Qt.AlignRight; unit: "A"; minValue: 0; maxValue: 1e-4 }
            // Its ranges are far from the data, of which a slow processor would hear.
            Diagnosis { enabled: false }
        }
    }

    function make(component) {
        var chart = createTemporaryObject(component, testCase);
        verify(chart);
        waitForRendering(chart);
        return chart;
    }

    function names(chart) {
        return chart.traces.map(trace => trace.name !== undefined ? trace.name : trace.plotData.label).join(" ");
    }

    function ranges(chart) {
        return [chart.axisX.minVisible, chart.axisX.maxVisible, chart.axisY.minVisible, chart.axisY.maxVisible].join(" ");
    }

    function test_fiveLines() {
        var chart = make(plain);
        compare(ranges(chart), "0 2 0 8.5");
        compare(chart.axisY.unit, "V");
        var trace = chart.traces[0];
        compare(String(trace.color), String(chart.colors.traceColors[0]));
        compare(trace.width, chart.plotArea.width);
        // The only trace names its axis.
        compare(chart.axisY.title, "Level");
        trace.name = "Voltage";
        tryCompare(chart.axisY, "title", "Voltage");
        verify(chart.plotArea.x > 20 && chart.plotArea.y + chart.plotArea.height < 390 && chart.plotArea.width > 500 && chart.plotArea.height > 300);
    }

    // Bars and areas tell by their lengths: the range includes what they begin at, which is the lower edge for levels.
    function test_baseline_data() {
        return [
            { tag: "bars", values: [12, 15, 9, 11], range: "0 15.5" },
            { tag: "below zero", values: [-12, -15, -9, -11], range: "-15.5 0" },
            { tag: "area", style: Trace.Area, values: [12, 15, 9, 11], range: "0 15.5" },
            { tag: "line", style: Trace.Line, values: [12, 15, 9, 11], range: "8.5 15.5" },
            { tag: "written", baseline: 10, values: [12, 15, 11], range: "10 15.5" },
            { tag: "on both sides", baseline: 10, values: [12, 15, 9], range: "8.5 15.5" },
            { tag: "out of sight", baseline: -1e6, values: [12, 15, 9, 11], range: "8.5 15.5" },
            { tag: "what is visible", mode: ChartAxis.FitVisible, values: [12, 15, 9, 11], range: "0 15.5" },
            { tag: "growing", mode: ChartAxis.Grow, values: [12, 15, 9, 11], range: "0 15.5" },
            { tag: "decades", scale: ChartAxis.Logarithmic, values: [20, 50], range: "10 100" },
            { tag: "decades, written", scale: ChartAxis.Logarithmic, baseline: 4, values: [20, 50], range: "4 100" },
            { tag: "levels", unit: "dBm", values: [-80, -60, -70], range: "-82 -58" },
            { tag: "levels of the axis", unitOfAxis: "dBV", values: [-80, -60, -70], range: "-82 -58" },
            { tag: "levels, written", unit: "dBm", baseline: 0, values: [-80, -60, -70], range: "-82 0" },
            { tag: "ratios", unit: "dB", values: [12, 15, 9, 11], range: "0 15.5" }
        ];
    }

    function test_baseline(data) {
        var chart = make(empty);
        if (data.unitOfAxis)
            chart.axisY.unit = data.unitOfAxis;
        if (data.mode !== undefined)
            chart.axisY.autoRange = data.mode;
        if (data.scale !== undefined)
            chart.axisY.scale = data.scale;
        if (data.baseline !== undefined)
            chart.axisY.baseline = data.baseline;
        var trace = traceComponent.createObject(chart, { values: data.values, unit: data.unit || "", color: "#ff0000", fillOpacity: 1, lineWidth: 8 });
        waitForRendering(chart);
        // Also of a style that comes later.
        trace.style = data.style === undefined ? Trace.Bars : data.style;
        wait(50);
        compare([chart.axisY.minValue, chart.axisY.maxValue].join(" "), data.range);
    }

    // One end that is written leaves the other one to the data, on its own side of it; so does one that is none.
    function test_writtenEnd_data() {
        return [
            { tag: "end", axis: "axisY { maxValue: -5 }", values: [-100, -20], range: "0 1 -110 -5" },
            { tag: "begin", axis: "axisX { minValue: 3 }", values: [1, 2, 3, 4, 5, 6], range: "3 5 0 6.5" },
            { tag: "end before all data", axis: "axisX { maxValue: -2 }", values: [1, 2, 3], range: "-4 -2 0.8 3.2" },
            { tag: "begin beyond all data", axis: "axisY { minValue: 100 }", values: [1, 2, 3], range: "0 2 100 102.4" },
            { tag: "decades", axis: "axisY { minValue: 1000; scale: ChartAxis.Logarithmic }", values: [1, 100], range: "0 1 1000 400000" },
            { tag: "further axis", axis: "ChartAxis { id: right; alignment: Qt.AlignRight; minValue: 5 }", body: "axisY: right;", values: [10, 50], range: "0 1 5 55" },
            { tag: "switched off", axis: "ChartAxis { id: right; alignment: Qt.AlignRight; minValue: 20; maxValue: 30; autoRange: ChartAxis.Off }", body: "axisY: right;", then: axis => { axis.maxValue = NaN; },
              values: [10, 50], range: "0 1 20 30" },
            { tag: "none", axis: "axisY { minValue: -Infinity; maxValue: Infinity }", told: /maxValue/, values: [10, 50], range: "0 1 0 55" },
            { tag: "given back", axis: "axisY { minValue: 0; maxValue: 20 }", then: axis => { axis.maxValue = NaN; }, values: [10, 50], range: "0 1 0 55" },
            { tag: "both given back", axis: "axisY { minValue: 0; maxValue: 20 }", then: axis => axis.range(-Infinity, Infinity), told: /by range/, values: [10, 50], range: "0 1 0 55" },
            { tag: "reversed", axis: "axisY { minValue: 20; maxValue: 0 }", then: axis => { axis.minValue = NaN; }, values: [10, 50], range: "0 1 55 0" }
        ];
    }

    function test_writtenEnd(data) {
        if (data.told)
            ignoreWarning(data.told);
        if (data.tag === "none")
            ignoreWarning(/minValue/);
        const chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 400; " + data.axis
                                               + " Trace { " + (data.body || "") + "values: [" + data.values + "] } }", testCase);
        waitForRendering(chart);
        const trace = chart.traces[0];
        if (data.then)
            data.then(trace.axisY);
        tryVerify(() => [trace.axisX.minVisible, trace.axisX.maxVisible, trace.axisY.minVisible, trace.axisY.maxVisible].join(" ") === data.range, 500,
                  [trace.axisX.minVisible, trace.axisX.maxVisible, trace.axisY.minVisible, trace.axisY.maxVisible].join(" "));
    }

    // The bar under a tap, as the documentation finds it.
    function test_tappedBar() {
        const chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart { width: 640; height: 400; cursor.enabled: false
            property var hit: []
            onTapped: function(x, y) {
                const at = bars.mapFromItemX(x), level = bars.mapFromItemY(y), index = bars.plotData.indexOf(at), value = bars.plotData.y(index);
                hit = Math.abs(at - bars.plotData.x(index)) < 0.375 * bars.interval && level >= 0 && level <= value ? [index, value] : [];
            }
            Trace { id: bars; style: Trace.Bars; values: [12, 15, 9, 11, 14] } }`, testCase);
        waitForRendering(chart);
        const trace = chart.traces[0];
        [[3.3, 5, "3,11"], [2, 10, ""], [3.5, 5, ""], [0, 11, "0,12"]].forEach(function (tap) {
            mouseClick(chart, chart.plotArea.x + trace.mapToItemX(tap[0]), chart.plotArea.y + trace.mapToItemY(tap[1]));
            compare(chart.hit.join(), tap[2]);
            wait(600);
        });
    }

    // Dots at the ends of an automatic range are whole, and where charts share x it is the same for all.
    function test_wholeDots_data() {
        return [
            { tag: "points" }, { tag: "line", style: Trace.LineAndPoints, lineWidth: 1 }, { tag: "wide", lineWidth: 9 },
            { tag: "decades", scale: ChartAxis.Logarithmic }, { tag: "by a line only", style: Trace.Line, exact: true }
        ];
    }

    function test_wholeDots(data) {
        const column = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Column {
            Chart { id: upper; width: 640; height: 200; Trace { color: "#ff0000"; values: [0, 9, 0, 9]; start: 1 } }
            Chart { width: 640; height: 200; zoomWith: upper; Trace { values: [1, 9, 0]; start: 1 } } }`, testCase);
        const chart = column.children[0], trace = chart.traces[0];
        if (data.scale)
            chart.axisX.scale = chart.axisY.scale = column.children[1].axisX.scale = data.scale;
        trace.style = data.style === undefined ? Trace.Points : data.style;
        trace.lineWidth = data.lineWidth || 4;
        if (data.scale)
            trace.values = [1, 900, 1, 900];
        waitForRendering(chart);
        wait(50);
        const radius = Math.max(4, 2 * trace.lineWidth + 1) / 2, last = chart.plotArea.width - 1;
        [[trace.mapToItemX(1), 0], [last, trace.mapToItemX(4)]].forEach(function (pair) {
            const room = pair[0] - pair[1];
            verify(data.exact ? Math.abs(room) < 1e-6 : room >= radius - 0.5 && room < radius + 2, room);
        });
        const foot = chart.plotArea.height - 1 - trace.mapToItemY(trace.plotData.y(0));
        verify(data.exact ? Math.abs(foot) < 1e-6 : foot >= radius - 0.5, foot);
        compare([column.children[1].axisX.minVisible, column.children[1].axisX.maxVisible].join(), [chart.axisX.minVisible, chart.axisX.maxVisible].join());
    }

    // The legend is in the first corner without a trace, of its own width; values of a cursor make it wider, and move
    // it no more.
    function test_legendCorner_data() {
        return [
            { tag: "falling", one: [9, 5, 1], two: [8, 3, 0], corner: "right top" },
            { tag: "rising", one: [1, 5, 9], two: [0, 3, 8], corner: "left top" },
            { tag: "rising, written", one: [1, 5, 9], two: [0, 3, 8], atRight: true, corner: "right top" },
            { tag: "high", one: [9, 9, 9], two: [0, 9, 9], corner: "right bottom" },
            { tag: "falling at the end", one: [9, 9, 9], two: [9, 9, 0], corner: "left bottom" },
            { tag: "between samples", one: [0, 9, 0, 9, 0, 9, 0, 9], two: [0, 0], corner: "above" },
            { tag: "bars", one: [2, 9, 9], two: [2, 8, 8], style: Trace.Bars, corner: "left top" }
        ];
    }

    function test_legendCorner(data) {
        var chart = make(empty);
        if (data.atRight)
            chart.legend.atRight = true;
        traceComponent.createObject(chart, { values: data.one, name: "One", style: data.style || Trace.Line });
        traceComponent.createObject(chart, { values: data.two, name: "Two", style: data.style || Trace.Line });
        if (data.corner === "above") {
            // Its entries work there, and other data leave it there: it does not come and go with the room that it takes.
            tryVerify(() => !chart.legendBox && chart.legendRow);
            wait(700);
            const row = chart.legendRow;
            verify(row.y < -row.height && chart.plotArea.y + row.y >= 0);
            mouseClick(row, row.width - 20, row.height / 2);
            verify(!chart.traces[1].visible && chart.traces[0].visible);
            chart.traces[0].values = [0, 0];
            wait(50);
            verify(!chart.legendBox);
            return;
        }
        tryVerify(() => chart.legendBox && chart.legendBox.width > 50 && chart.legendBox.width < 100);
        wait(30);
        var box = chart.legendBox, corner = (box.x > 200 ? "right" : "left") + (box.y > 100 ? " bottom" : " top");
        compare(corner, data.corner);
        var x = box.x, width = box.width;
        mouseMove(chart, chart.plotArea.x + 200, chart.plotArea.y + 150);
        mouseMove(chart, chart.plotArea.x + 201, chart.plotArea.y + 150);
        tryVerify(() => box.width > width);
        compare(box.x < x, corner.startsWith("right"));
        mouseMove(testCase, 1, 1);
        tryCompare(box, "width", width);
    }

    // Data that come in parts leave it where it is when they come at once.
    function test_legendCornerOfParts() {
        var chart = make(empty), box = () => chart.legendBox;
        // The plot area keeps its size.
        chart.axisX.range(0, 4);
        chart.axisY.range(0, 10);
        var one = traceComponent.createObject(chart, { values: [1], name: "One" });
        var two = traceComponent.createObject(chart, { values: [1], name: "Two" });
        tryVerify(() => box() && box().width > 50 && box().x > 200);
        wait(100);
        verify(box().y < 100);
        one.values = [9, 9, 9, 9, 9];
        tryVerify(() => box().x > 200 && box().y > 100);
        // Once they have come, it does not jump.
        two.values = [9, 9, 0, 0, 0];
        wait(700);
        verify(box().x > 200 && box().y > 100);
    }

    // Below another axis the unit has room behind the highest number, outside of the plot area.
    function test_unitBelowAxis() {
        var chart = make(withTop);
        tryVerify(() => chart.plotArea.y > 20);
        chart.axisY.unit = "mmHg";
        wait(100);
        var room = chart.plotArea.x;
        chart.upper.visible = false;
        tryVerify(() => chart.plotArea.x < room - 20);
    }

    // So that the traces keep two fifths of the height, units go into the rows of the numbers, then titles go, then the
    // numbers of all horizontal axes but one.
    function test_rowsOfText_data() {
        return [{ tag: "all", height: 300, rows: "2 2 title" }, { tag: "without units", height: 200, rows: "2 1 title" },
                { tag: "without titles", height: 160, rows: "1 1" }, { tag: "one axis", height: 100, rows: "1 0" }];
    }

    function test_rowsOfText(data) {
        const chart = createTemporaryQmlObject(`import QtQuick 2.15; import graph_kit 1.0; Chart { id: view; width: 320; height: 300
                                                title: 'Title'; axisX { title: 'Frequency'; unit: 'Hz' } property alias other: second
                                                ChartAxis { id: second; alignment: Qt.AlignBottom; unit: 's' }
                                                Trace { values: [1, 2] } Trace { axisX: second; values: [1, 2] } }`, testCase);
        waitForRendering(chart);
        chart.height = data.height;
        const rows = () => [chart.axisX, chart.other].map(axis => Math.max(0, Math.round((axis.margin - 14) / metrics.height)))
                               .concat(chart.titleShown ? "title" : []).join(" ");
        tryVerify(() => rows() === data.rows, 1000, rows());
        verify(chart.plotArea.height >= 0.4 * data.height, chart.plotArea.height);
    }

    // A small one has its names in a row, a tiny one has none; the unit is beside the plot area, too, in a tiny one in the
    // rows of the numbers. Without axes the plot area is all of it.
    function test_smallChart_data() {
        return [{ tag: "large", width: 420, height: 310, legends: 1 }, { tag: "narrow", width: 200, height: 310, legends: 1 },
                { tag: "small", width: 300, height: 200, legends: 1, inARow: true }, { tag: "tiny", width: 160, height: 120, legends: 0, cramped: true }];
    }

    function test_smallChart(data) {
        var chart = make(plain), area = chart.plotArea, legends = 0;
        function count(item) {
            if (item.entryHeight !== undefined) {
                ++legends;
                compare(item.inARow, Boolean(data.inARow));
                verify(item.box.width <= area.width && item.box.height < area.height / 2);
                compare(item.mapToItem(chart, 0, item.height).y <= area.y, Boolean(data.inARow));
            }
            for (var i = 0; i < item.children.length; ++i)
                count(item.children[i]);
        }
        traceComponent.createObject(chart, { values: [1, 2], name: "With a name that is too long" });
        chart.anchors.fill = null;
        chart.width = data.width;
        chart.height = data.height;
        tryVerify(() => chart.traces.length === 2);
        count(chart);
        compare(legends, data.legends);
        // Half a number, a gap and the unit.
        tryVerify(() => data.cramped ? area.y < metrics.height && area.height > data.height * 0.6
                                     : area.y >= metrics.height * 1.6 && area.y < metrics.height * 2.5);
        chart.axisY.visible = chart.axisX.visible = false;
        tryVerify(() => area.x === 0 && area.y === 0 && area.width === data.width && area.height === data.height);
        chart.axisY.visible = chart.axisX.visible = true;
        chart.axisY.title = "Level";
        verify(area.y < metrics.height * (data.inARow ? 2 : 1));
        // One that covers the traces tells nothing of them.
        for (var i = 0; i < 38; ++i)
            traceComponent.createObject(chart, { values: [i, i], name: "Trace " + i });
        tryVerify(() => chart.traces.length === 40 && (!chart.legendBox || !chart.legendBox.visible));
    }

    // Texts that are far too long leave the traces their room.
    function test_longTexts() {
        var chart = make(empty);
        chart.title = "t".repeat(5000);
        chart.axisX.title = "x".repeat(5000);
        chart.axisY.unit = "u".repeat(500);
        traceComponent.createObject(chart, { values: [1, 2], name: "n".repeat(3000) });
        traceComponent.createObject(chart, { values: [2, 1] });
        waitForRendering(chart);
        waitForRendering(chart);
        verify(chart.plotArea.width > 400 && chart.plotArea.height > 200, chart.plotArea.width + " x " + chart.plotArea.height);
    }

    // Where the axes take all of it, nothing is written beyond it.
    function test_noRoom() {
        function texts(item) {
            var own = item.visible && item.opacity > 0 ? [item.font && item.text || ""] : [];
            return own.concat(own.length > 0 ? Array.from(item.children).map(texts) : []).join("");
        }
        var chart = make(plain);
        chart.title = "Title";
        chart.cursor.posValue = 1;
        tryVerify(() => texts(chart).includes("Title") && texts(chart).includes("3 V"));
        // It may have the time to tell of it, or not.
        Array.prototype.find.call(chart.overlay.children, child => child instanceof Diagnosis).enabled = false;
        chart.anchors.fill = null;
        [[1, 1], [0, 0], [300, 20], [20, 300]].forEach(function ([width, height]) {
            chart.width = width;
            chart.height = height;
            tryVerify(() => texts(chart) === "", 1000, width + " x " + height);
        });
    }

    // Not even what a layout from right to left turns round.
    function test_mirrored_data() {
        return [
            { tag: "chart", parts: "Chart { anchors.fill: parent; follow: 1; title: 'Title'; legend.values: true; "
                                   + "ChartAxis { id: beside; alignment: Qt.AlignRight; maxValue: 1e9 } Trace { name: 'One'; values: [1, 5, 3] }"
                                   + "Trace { name: 'Two'; axisY: beside; values: [1, 5, 3] } Component.onCompleted: following = false }" },
            { tag: "view", parts: "GraphView { anchors.fill: parent; axes: [ValueAxis { id: x; linesPlane: plane; labelsPlane: plane },"
                                  + "ValueAxis { id: y; alignment: Qt.AlignLeft; margin: 50; linesPlane: plane; labelsPlane: plane }]"
                                  + "XYScale { id: plane } Trace { axisX: x; axisY: y; values: [1, 5, 3] } }" }
        ];
    }

    function test_mirrored(data) {
        function places(item) {
            var all = [item.x, item.y, item.width, item.height].join(" ");
            return [all].concat(Array.from(item.children).map(places)).join("\n");
        }
        var views = [false, true].map(mirrored => createTemporaryQmlObject(
            "import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; Item { anchors.fill: parent; LayoutMirroring.enabled: "
            + mirrored + "; LayoutMirroring.childrenInherit: true; " + data.parts + "}", testCase));
        views.forEach(waitForRendering);
        verify(places(views[0]).length > 50);
        compare(places(views[1]), places(views[0]));
    }

    // A positioner is as large as its content, also when that comes later.
    function test_itemsWithContent() {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_kit 1.0; Chart { anchors.fill: parent; property Item column: Column {"
            + "parent: chart; x: 300; y: 100; Repeater { id: rows; model: 0; Item { width: 20; height: 10 } } property alias rows: rows } id: chart }", testCase);
        waitForRendering(chart);
        chart.column.rows.model = 3;
        tryCompare(chart.column, "height", 30);
        compare([chart.column.x, chart.column.y, chart.column.width].join(" "), "300 100 20");
    }

    // Texts in bindings follow what the functions read, and nothing else.
    function test_boundTexts() {
        const chart = make(bound), level = chart.level;
        const direct = () => [chart.formatX(0.0123456), chart.formatY(level, 2.0123456), chart.formatDifferenceY(level, 0.0123456)].join(" | ");
        const formatter = createTemporaryQmlObject("import graph_kit 1.0; Formatter { unit: 'bar' }", testCase);
        const series = createTemporaryQmlObject("import graph_plugin 1.0; PlotSeries { yData: [1, 2]; yUnits: 'A'; yPrecision: 1 }", testCase);
        tryVerify(() => chart.texts === direct());
        [() => chart.axisX.unit = "Hz", () => level.unit = "dBm", () => chart.axisX.range(0.0123, 0.0124), () => chart.axisY.range(2.012, 2.013),
         () => level.axisY = chart.beside, () => level.unit = "A", () => chart.beside.range(0, 1e-9), () => chart.beside.range(0, 40), () => chart.beside.formatter = formatter,
         () => formatter.precision = 1, () => formatter.text = value => "x", () => chart.beside.formatter = null, () => { level.values = undefined; level.series = series; },
         () => { series.yUnits = chart.beside.unit = "V"; }, () => series.yPrecision = 6, () => series.ySigDigs = 2, () => chart.axisX.range(900, 1100),
         () => { chart.anchors.fill = undefined; chart.width = 300; chart.height = 400; }, () => chart.axisX.scale = ChartAxis.Time].forEach(function (change, i) {
            const before = chart.texts;
            change();
            tryVerify(() => chart.texts === direct() && chart.texts !== before, 5000, "change " + i + ": " + chart.texts + " is not " + direct());
        });
        wait(50);
        chart.evaluations.count = 0;
        for (let i = 0; i < 5; ++i) {
            series.yData = [3, 2 + i / 10];
            level.color = ["red", "blue"][i % 2];
            wait(20);
        }
        compare(chart.evaluations.count, 0);
    }

    // An axis that no trace uses says nothing; the one in its place has the grid.
    function test_idleAxis() {
        var chart = make(withTop), area = chart.plotArea, top = chart.upper, trace = chart.traces[0];
        const room = () => chart.height - area.y - area.height, above = area.y;
        chart.title = "Title";
        tryVerify(() => area.y > above + metrics.height);
        chart.title = "";
        tryVerify(() => room() < metrics.height && area.y > metrics.height);
        tryCompare(top, "lineStyle", Qt.SolidLine);
        trace.axisX = chart.axisX;
        tryVerify(() => room() > metrics.height);
        tryCompare(top, "lineStyle", Qt.NoPen);
        trace.axisX = top;
        tryVerify(() => room() < metrics.height);
        // What the document writes is to be seen.
        chart.axisX.range(0, 7);
        traceComponent.createObject(chart, { axisX: top, values: [1, 2] });
        tryVerify(() => room() > metrics.height);
    }

    Component {
        id: withTop

        Chart {
            property alias upper: topAxis

            anchors.fill: parent
            ChartAxis { id: topAxis; alignment: Qt.AlignTop }
            Trace { values: [1, 5, 3]; axisX: topAxis }
        }
    }

    FontMetrics { id: metrics; font.family: "Roboto"; font.pixelSize: 14 }

    // However a trace comes, it is drawn, has a colour of its own, and counts in the ranges; when it goes, nothing of it
    // is left.
    Component {
        id: crowded

        Chart {
            property alias repeater: repeater

            // Small: on software each trace has an image as large as the plot area.
            width: 170
            height: 130
            legend.enabled: true
            Repeater { id: repeater; Trace { name: "no " + index; visible: index < 10; values: [index, index + 1] } }
        }
    }

    function timeOfTraces(count) {
        const begin = Date.now(), chart = createTemporaryObject(crowded, testCase);
        chart.repeater.model = count;
        tryVerify(() => chart.traces.length === count, 100000);
        wait(0);
        chart.destroy();
        wait(0);
        return Date.now() - begin;
    }

    // Eight times as many take eight times as long, and not hundreds of times.
    function test_manyTraces() {
        const few = Math.max(timeOfTraces(250), 30), many = timeOfTraces(2000);
        verify(many < 32 * few, many + " ms for 2000 traces, " + few + " ms for 250");
    }

    function test_tracesComeAndGo_data() {
        return [
            { tag: "Repeater", add: chart => { chart.repeater.model = 1; }, remove: chart => { chart.repeater.model = 0; },
              top: 2, name: "repeated" },
            { tag: "Instantiator", add: chart => { chart.instantiator.active = true; },
              remove: chart => { chart.instantiator.active = false; }, top: 3, name: "made" },
            { tag: "Loader", add: chart => { chart.loader.active = true; },
              remove: chart => { chart.loader.active = false; }, top: 4, name: "loaded" },
            { tag: "createObject", add: chart => traceComponent.createObject(chart, { name: "created", values: [0, 5] }),
              remove: (chart, trace) => trace.destroy(), top: 5, name: "created" },
            { tag: "plain plot", add: chart => plotComponent.createObject(chart),
              remove: (chart, plot) => plot.destroy(), top: 6, name: "plain" },
            { tag: "moved in", add: chart => traceComponent.createObject(testCase, { name: "moved", values: [0, 7] }),
              move: (chart, trace) => { trace.parent = chart; }, remove: (chart, trace) => { trace.parent = testCase; trace.visible = false; },
              top: 7, name: "moved" }
        ];
    }

    function test_tracesComeAndGo(data) {
        var chart = make(filled);
        compare(names(chart), "child");
        var made = data.add(chart);
        if (data.move)
            data.move(chart, made);
        tryVerify(() => chart.traces.length === 2);
        compare(names(chart).split(" ").sort().join(" "), ["child", data.name].sort().join(" "));
        tryVerify(() => chart.axisY.maxVisible >= data.top && chart.axisY.maxVisible <= data.top * 1.5);
        var own = chart.traces[0].name === "child" ? 0 : 1;
        var trace = chart.traces[1 - own];
        verify(String(trace.penColor) !== String(chart.traces[own].penColor));
        compare(trace.axisX, chart.axisX);
        compare(trace.zoomRect, chart.zoomRect);
        compare(trace.width, chart.plotArea.width);
        data.remove(chart, made);
        tryVerify(() => names(chart) === "child");
        wait(0);
        compare(chart.traces[0].name, "child");
        if (data.move) {
            compare(made.axisX, null);
            made.destroy();
        }
    }
}
