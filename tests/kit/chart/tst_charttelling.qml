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

    // Until what waits before it tells has told: items one second, a diagnosis nine tenths and then one more. Each wait for
    // 0 ms sees to timers that were due while the process did not run.
    function waitForLines() {
        [950, 0, 150, 0].forEach(time => wait(time));
    }

    function test_sound() {
        const chart = createTemporaryObject(sound, testCase);
        waitForLines();
        later.createObject(chart);
        chart.showRange(50, 60);
        waitForLines();
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
        const diagnosis = Array.prototype.find.call(item.children[1].overlay.children, child => child instanceof Diagnosis);
        tryVerify(() => diagnosis.messages.length === 2);
        waitForLines();
    }

    // One in the braces of a chart speaks in place of the chart's own, or not at all.
    function test_diagnosis_data() {
        return [
            { tag: "declared", part: "Diagnosis {}", told: true },
            { tag: "within", part: "Item { Diagnosis {} }", told: true },
            { tag: "of another view", part: "Item { Chart { visible: false; Diagnosis { enabled: false } } }", told: true },
            { tag: "off", part: "Diagnosis { enabled: false }", told: false }
        ];
    }

    function test_diagnosis(data) {
        if (data.told)
            ignoreWarning(/^Trace "level" .* has no sample in the visible range/);
        const text = "import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0;"
            + "Chart { anchors.fill: parent; axisX { autoRange: ChartAxis.Off; minValue: 5; maxValue: 9 }"
            + "Trace { id: level; values: [1, 2] } " + data.part + "}";
        createTemporaryQmlObject(text, testCase);
        waitForLines();
    }

    // A trace that has just left a chart is on its way to the next, also where it came a second ago.
    function test_justMoved() {
        const chart = createTemporaryObject(sound, testCase), trace = later.createObject(chart), end = Date.now() + 1100;
        while (Date.now() < end);
        trace.parent = testCase;
        wait(0);
        trace.destroy();
    }

    // What no property takes as it is written, or none at all: each is told once, though written twice.
    function test_values_data() {
        return [
            ["Trace { lineWidth: 0 }", /^Trace .* has lineWidth set to 0, which counts as 1: write 1 to 64/],
            ["Trace { Component.onCompleted: style = 6 }", /has style set to 6, which counts as 5: write 0 to 5/],
            ["Trace { fillOpacity: 25 }", /has fillOpacity set to 25, which counts as 1: write 0 to 1/],
            ["LimitLine { lineWidth: 100 }", /has lineWidth set to 100, which counts as 64/],
            ["LimitLine { Component.onCompleted: kind = 2 }", /has kind set to 2, which counts as 1/],
            ["LimitLine { fillOpacity: NaN }", /has fillOpacity set to nan, which counts as 0/],
            ["ColorScale { fontSize: 0 }", /has fontSize set to 0, which counts as 1: write 1 to 1000/],
            ["ColorScale { barWidth: 2147483647 }", /barWidth .* counts as 10000/],
            ["ColorScale { barWidth: -2 }", /has barWidth set to -2, which counts as 1/],
            ["WaterfallPlot { rows: 0 }", /has rows set to 0/],
            ["WaterfallPlot { Component.onCompleted: direction = 7 }", /has direction set to 7, which counts as 1/],
            ["WaterfallPlot { rowInterval: 0 }", /has a rowInterval of 0, which is ignored/],
            ["WaterfallPlot { from: NaN }", /has a from of nan, which is ignored/],
            ["WaterfallPlot { to: Infinity }", /has a to of inf, which is ignored/],
            ["WaterfallPlot { readRow: -1 }", /has readRow set to -1/],
            ["Average { count: 0 }", /has count set to 0, which counts as 1/],
            ["Average { Component.onCompleted: mode = 2 }", /has mode set to 2, which counts as 1/],
            ["Smooth { window: -3 }", /has window set to -3/],
            ["PeakList { limit: -1; series: null }", /has limit set to -1, which counts as 0/],
            ["PeakList { prominence: NaN; series: null }", /has prominence set to nan/],
            ["ChartTheme { gridWidth: -1 }", /has gridWidth set to -1/],
            ["ChartTheme { gridWidth: 100 }", /has gridWidth set to 100, which counts as 16: write 0 to 16/],
            ["Formatter { text: v => {} Component.onCompleted: console.assert(formatValue(3) === '3') }", /has a text that gives nothing back/],
            ["Formatter { text: v => { throw new Error('boom'); } Component.onCompleted: formatValue(3) }", /has a text that ends with "Error: boom" in line 1/],
            ["ChartTheme { fontSize: 0 }", /has fontSize set to 0/],
            ["ChartTheme { lineWidth: 65 }", /has lineWidth set to 65/],
            ["ChartTheme { traceColors: ['bleu'] }", /has "bleu" among its traceColors/],
            ["ChartTheme { markerColors: ['rad'] }", /has "rad" among its markerColors/],
            ["Formatter { text: 'abc' }", /has a text that is no function/],
            ["Formatter { sigDigs: 0 }", /has sigDigs set to 0, which counts as 1: write 1 to 17/],
            ["Formatter { precision: 18 }", /has precision set to 18/],
            ["ChartAxis { minValue: -1e308; maxValue: 1 }", /has minValue set to -1e\+308, which counts as -7e\+307/],
            ["ChartAxis { minValue: -Infinity }", /is given -inf by minValue, where no range can end, .* write a number, or nothing/],
            ["ChartAxis { Component.onCompleted: range(0, Infinity) }", /is given inf by range/],
            ["Trace { id: a; Component.onCompleted: series = a }", /^Trace "a" .* has Trace "a" as its series, whose data are its own or made of them, and ignores it/],
            ["Chart { Trace { id: a; series: b } Trace { id: b; series: c } GraphPlot { id: c; axisX: b.axisX; plotData: Smooth { source: a } } }", /has \w+ "\w" as its (series|source), whose data are its own/],
            ["Item { WaterfallPlot { id: a; series: a } }", /^WaterfallPlot "a" .* as its series, whose data are its own/],
            ["WaterfallPlot { plotData: PlotSeries {} }", /^WaterfallPlot .* ignores its plotData/],
            ["LimitLine { plotData: PlotSeries {} }", /^LimitLine .* draws its positions and values, and ignores its plotData/],
            ["Chart { Trace { values: [1, 2]; plotData: PlotSeries { yData: [1, 2] } } }", /^Trace .* is given plotData beside series, address or values/],
            ["Chart { Trace { start: 1e300; values: [1, 2, 3] } }", /has samples 1 apart at x = 1e\+300/],
            ["Chart { Trace { plotStyle: GraphPlot.ScatterPlot; values: [1, 2, 3] } }", /has plotStyle or graphPoint written, .* write style: Trace.Points/],
            ["Chart { LimitLine { positions: [0, 1] } }", /^LimitLine .* has positions and no values/],
            ["Chart { Trace { id: a; values: [1, 2] } LimitLine { id: b; series: a; positions: [5, 6]; values: [3, 3] } property bool ok: b.passed; theme: Chart.Dark }", /^LimitLine "b" .* compares nothing: its positions go from 5 to 6, and the samples of its series from 0 to 1/],
            ["Chart { axisX { tickInterval: ChartAxis.FixedTicks; ticks: [100, 200] } Trace { values: [1, 2, 3] } }", /has none of its 2 ticks between 0 and 2/],
            ["ChartAxis { Component.onCompleted: scale = 3 }", /has scale set to 3, which counts as 2/],
            ["ChartAxis { Component.onCompleted: autoRange = -1 }", /has autoRange set to -1, which counts as 0/],
            ["ChartAxis { minorTicks: -2 }", /has minorTicks set to -2/],
            ["ChartAxis { Component.onCompleted: range(NaN, 3) }", /is given a range from nan to 3, which is ignored/],
            ["Chart { follow: NaN }", /has a follow of nan, which is ignored/],
            ["Chart { Component.onCompleted: showRangeY(NaN, 5) }", /ignores showRangeY\(nan, 5\)/],
            ["Trace { values: [1, 'two'] }", /is given the text "two" among its values, which leaves a gap/],
            ["Trace { values: [[0, 1], [1, 5]] }", /is given points or lists among its values, .* write x and y in a list each, positions: \[0, 1\]; values: \[5, 3\]/],
            ["Chart { Trace { values: [{ x: 0, y: 1 }] } }", /is given points or lists among its values/],
            ["Trace { values: [Qt.point(0, 1)] }", /is given points or lists among its values/],
            ["StreamSeries { Component.onCompleted: append([[0, 1]]) }", /is given points or lists among its samples, .* StreamPoints and append/],
            ["Trace { values: { let a = []; a[4000000000] = 1; return a; } }", /is given values of the length 4000000001, and takes none/],
            ["Chart { Trace { values: [new Date(), new Date()] } }", /has dates as its values, .* write them as positions/],
            ["Chart { Trace { positions: [new Date(2024, 0, 1), null, new Date('bad'), undefined]; values: [1, 2, 3, 4] } }", /has 3 of 4 positions that are no numbers and no dates/],
            ["Chart { theme: ({ background: 'red' }); Trace { values: [1, 2] } }", /has an object of JavaScript as its theme .* write theme: ChartTheme \{ background/],
            ["Chart { axisX { tickInterval: ChartAxis.FixedTicks; ticks: Array.from({ length: 500000 }, (u, i) => i / 1e5) } Trace { values: [1, 2, 3] } }", /has 500000 ticks, more than there are pixels/],
            ["StreamSeries { Component.onCompleted: append(['a']) }", /is given the text "a" among its samples/],
            ["StreamPoints { Component.onCompleted: append([1, 2], [3]) }", /is given 2 x and 1 y, of which the shorter list/],
            ["StreamPoints { Component.onCompleted: append([1, 2]) }", /is given one list to append, and ignores it/],
            ["Trace { start: 'x' }", /is given "x" as its start: write a number, or a date/],
            ["StreamSeries { start: undefined }", /is given nothing as its start/],
            ["WaterfallPlot { start: new Date(NaN) }", /is given nothing as its start/],
            ["Statistics { property int n: 1 }", /^Statistics .* has no series and finds nothing/],
            ["PeakList { property int n: 1 }", /^PeakList .* has no series and finds nothing/],
            ["Chart { legend.enabled: true; Trace { values: [1, 2] } }", /^Chart .* has a legend without entries/],
            ["Chart { Trace { id: a; Trace { id: b; values: [1, 2] } } }", /Trace "b" .* is in Trace "a" instead of a chart/],
            ["Chart { Trace { id: a; values: [1, 2] } Trace { id: b; values: [1, 2] } Legend { plots: [a, b] } }", /^Legend .* has no entries/],
            ["Chart { Trace { values: [1, 2] } GraphCursor { CursorReadout {} } }", /^CursorReadout .* has no plot/],
            ["Item { ChartCursor {} }", /^ChartCursor .* is in no view and has no plots: move it/],
            ["Chart { Trace { values: [1, 2] } PeakButtons {} }", /^PeakButtons .* has no cursor/]
        ].map(row => ({ tag: row[0], told: row[1] }));
    }

    function test_values(data) {
        const head = "import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; ";
        ignoreWarning(data.told);
        const object = createTemporaryQmlObject(head + data.tag, testCase);
        const clamped = /^\w+ \{ (\w+): [-\d]+ \}$/.exec(data.tag);
        if (clamped)
            object[clamped[1]] = -1000000;
        if (/ Trace | ChartCursor | property |theme:|Chart \{ LimitLine/.test(data.tag))
            waitForLines();
    }

    // What has no place on a scale that is written later.
    function test_scaleLater() {
        const chart = createTemporaryQmlObject("import graph_kit 1.0; Chart { width: 400; height: 300; Trace { values: [-1, -2] } }", testCase);
        waitForLines();
        ignoreWarning(/^Trace .* has 2 of 2 values at 0 or below, which have no place on a logarithmic axis/);
        chart.axisY.scale = ChartAxis.Logarithmic;
        waitForLines();
    }

    // A text that is a number counts as one; dates are values on an axis of time; a stream may run backwards.
    function test_silent_data() {
        return ["Chart { Trace { values: ['1', '2'] } }", "Chart { axisY.scale: ChartAxis.Time; Trace { values: [new Date(2024, 0, 1), new Date(2024, 0, 2)] } }",
                "Chart { Trace { values: [5e-324, 1e-323, 2e-323] } }",
                "Chart { Trace { series: StreamSeries { interval: -1; Component.onCompleted: append([1, 2, 3]) } } }"].map(row => ({ tag: row }));
    }

    function test_silent(data) {
        const chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; " + data.tag, testCase);
        waitForLines();
        verify(chart.axisY.minVisible < chart.axisY.maxVisible);
        const shown = chart.traces[0].plotData;
        verify(shown.y(0) < shown.y(1) && shown.y(1) < chart.axisY.maxVisible);
    }

    // Where there are seconds, a date is the number of its own.
    function test_dates() {
        ["Trace", "StreamSeries", "WaterfallPlot"].forEach(type => compare(createTemporaryQmlObject(
            "import graph_kit 1.0; " + type + " { start: new Date(1700000000500) }", testCase).start, 1700000000.5));
        const chart = createTemporaryQmlObject("import graph_kit 1.0; Chart { Trace { start: new Date(1.7e12); values: [1, 2, 3] } }", testCase);
        chart.axisX.range(new Date(1.7e12), new Date(1.7e12 + 3000));
        compare(chart.axisX.maxVisible, 1.7e9 + 3);
        chart.showRange(new Date(1.7e12), new Date(1.7e12 + 1000));
        fuzzyCompare(chart.axisX.maxVisible, 1.7e9 + 1, 1e-3);
    }

    function test_wrong() {
        ignoreWarning(/^Trace "level" \(tst_charttelling.qml:38\) cannot use the address "meter", which has no comma/);
        const chart = createTemporaryObject(wrong, testCase);
        waitForLines();
    }
}
