import QtQuick 2.15
import QtTest 1.2
import graph_kit 1.0

TestCase {
    id: testCase

    name: "chartlive"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: chartComponent

        Chart {
            property alias trace: trace

            width: 640
            height: 190
            Trace { id: trace; values: [0] }
        }
    }

    SignalSpy {
        id: rangeSpy

        signalName: "maxValueChanged"
    }

    function make(properties) {
        var chart = createTemporaryObject(chartComponent, testCase, properties || {});
        waitForRendering(chart);
        return chart;
    }

    function shown(chart) {
        return [chart.axisX.minVisible, chart.axisX.maxVisible].map(x => Number(x.toPrecision(9))).join(" ");
    }

    // Its diagnosis may have the time to tell of what is wrong, or not.
    function keepQuiet(chart) {
        Array.prototype.find.call(chart.overlay.children, child => child instanceof Diagnosis).enabled = false;
    }

    // Samples 0, 1, ... up to `last`, from `first` on.
    function feed(chart, first, last) {
        chart.trace.start = first;
        chart.trace.values = Array.from({ length: last - first + 1 }, (unused, i) => Math.sin((first + i) / 3));
        wait(20);
    }

    // Held before there are data, in a document in either order or later, it shows all of them.
    function test_heldFromTheStart_data() {
        return [{ tag: "following first", properties: "following: false; follow: 10" },
                { tag: "follow first", properties: "follow: 10; following: false" },
                { tag: "later", properties: "follow: 10", isLater: true }];
    }

    function test_heldFromTheStart(data) {
        var chart = createTemporaryQmlObject("import graph_kit 1.0; Chart { property alias trace: trace; width: 640;"
                                             + "height: 190; Trace { id: trace } " + data.properties + " }", testCase);
        waitForRendering(chart);
        if (data.isLater)
            chart.following = false;
        verify(!chart.following);
        feed(chart, 1000, 1040);
        tryVerify(() => shown(chart) === "1000 1040");
        chart.following = true;
        compare(shown(chart), "1030 1040");
    }

    function test_follow() {
        var chart = make({ follow: 10 });
        feed(chart, 0, 4);
        tryVerify(() => shown(chart) === "0 10");
        feed(chart, 0, 25);
        tryVerify(() => shown(chart) === "15 25");
        feed(chart, 5, 30);
        tryVerify(() => shown(chart) === "20 30");
        verify(chart.following);
        // A vertical zoom holds nothing.
        chart.zoomRect.zoomY(0.5, 0.5);
        verify(chart.following);
        chart.zoomRect.moveLeft(0.1);
        verify(!chart.following);
        var held = shown(chart);
        feed(chart, 15, 40);
        compare(shown(chart), held);
        // The button in the lower right corner.
        mouseClick(chart, chart.plotArea.x + chart.plotArea.width - 30, chart.plotArea.y + chart.plotArea.height - 20);
        verify(chart.following);
        tryVerify(() => shown(chart) === "30 40");
        chart.showRange(20, 25);
        verify(!chart.following);
        chart.back();
        verify(chart.following);
        compare(shown(chart), "30 40");
        // What was held has gone: later data of the stream leave the window where it was, those of another time do not.
        chart.showRange(20, 25);
        feed(chart, 35, 60);
        compare(shown(chart), "20 25");
        chart.showRange(40, 45);
        feed(chart, 1000, 1004);
        tryVerify(() => shown(chart) === "1000 1004");
        chart.follow = 0;
        verify(!chart.following);
    }

    // A chart that shows everything of data that grows gives them room, and moves now and then.
    function test_growthDoesNotJitter() {
        var chart = make();
        rangeSpy.target = chart.axisX;
        for (var i = 1; i < 100; ++i)
            feed(chart, 0, 100 + i);
        tryVerify(() => chart.axisX.maxValue >= 199);
        verify(rangeSpy.count < 15, rangeSpy.count);
        verify(chart.axisX.maxValue < 260);
    }

    // Bursts and pauses that take turns do not make the axis jump; what stays smaller does.
    function test_burstsDoNotJitter() {
        var chart = make();
        chart.trace.values = [0, 10];
        tryVerify(() => chart.axisY.maxVisible >= 10);
        rangeSpy.target = chart.axisY;
        rangeSpy.clear();
        for (var i = 0; i < 20; ++i) {
            chart.trace.values = [0, i % 4 == 0 ? 10 : 1 + i / 100];
            wait(30);
        }
        verify(rangeSpy.count <= 6, rangeSpy.count);
        compare(chart.axisY.maxVisible >= 10, true);
        tryVerify(() => chart.axisY.maxVisible < 2, 4000);
    }

    function test_zoomWith() {
        var first = make();
        var second = make({ y: 200, zoomWith: first });
        feed(first, 0, 10);
        feed(second, 5, 30);
        tryVerify(() => shown(first) === "0 30" && shown(second) === "0 30");
        first.showRange(2, 8);
        compare(shown(second), "2 8");
        second.showRange(10, 12);
        compare(shown(first), "10 12");
        first.follow = 5;
        compare(shown(first) + " " + shown(second), "25 30 25 30");
        first.showAllOf(Qt.Vertical);
        verify(first.following);
        first.showAllOf(Qt.Horizontal);
        verify(!first.following);
        first.following = true;
        var told = 0;
        first.followingChanged.connect(() => ++told);
        second.zoomRect.moveLeft(0);
        verify(!first.following && !second.following);
        compare(told, 1);
        compare(shown(first), shown(second));
        second.zoomWith = null;
        first.showAll();
        tryVerify(() => shown(first) === "0 10");
        first.destroy();
        wait(0);
    }

    // Nothing of this may print a line or stop the chart.
    Component {
        id: logarithmicComponent

        Chart {
            property alias levels: levels

            width: 640
            height: 190
            axisY.scale: ChartAxis.Logarithmic
            Trace { series: StreamSeries { id: levels; capacity: 3000 } }
        }
    }

    // A logarithmic axis begins at the least positive value that there is, also when others have come or gone.
    function test_leastPositive() {
        var chart = createTemporaryObject(logarithmicComponent, testCase);
        keepQuiet(chart);
        [{ add: [0, 40, 100, -5], least: 40 }, { add: [0.5, 0], least: 0.5 },
         { add: Array.from({ length: 3000 }, (unused, i) => i % 2 ? 0 : 20), least: 20 }].forEach(function (step) {
            chart.levels.append(step.add);
            tryVerify(() => chart.axisY.minVisible <= step.least && chart.axisY.minVisible > step.least / 10, 3000,
                      step.least + ": " + chart.axisY.minVisible);
        });
    }

    function test_badInput_data() {
        return [
            { tag: "no size", act: chart => { chart.width = 0; chart.height = 0; } },
            { tag: "negative size", act: chart => { chart.width = -5; chart.height = -5; } },
            { tag: "no values", act: chart => { chart.trace.values = []; } },
            { tag: "only NaN", act: chart => { chart.trace.values = [NaN, NaN]; } },
            { tag: "infinite", act: chart => { chart.trace.values = [Infinity, 1, -Infinity]; } },
            { tag: "all equal", act: chart => { chart.trace.values = [5, 5, 5]; }, inside: 5 },
            { tag: "all zero", act: chart => { chart.trace.values = [0, 0]; }, inside: 0 },
            { tag: "one", act: chart => { chart.trace.values = [-3]; }, inside: -3 },
            { tag: "huge", act: chart => { chart.trace.values = [-1e308, 1e308]; } },
            { tag: "tiny", act: chart => { chart.trace.values = [1e-300, 2e-300]; } },
            { tag: "far from 0", act: chart => { chart.trace.values = [1e9, 1e9 + 1]; }, inside: 1e9 },
            { tag: "null theme", act: chart => { chart.theme = null; } },
            { tag: "unknown theme", act: chart => { chart.theme = "blue"; } },
            { tag: "wrong theme", act: chart => { chart.theme = chart; } },
            { tag: "bad follow", told: [/has a follow of -1, which is ignored/, /has no window that could follow/],
              act: chart => { chart.follow = -1; chart.follow = NaN; chart.following = true; } },
            { tag: "zoom with itself", told: [/is zoomed with itself/], act: chart => { chart.zoomWith = chart; chart.showRange(1, 2); } },
            { tag: "axes without labels", act: chart => { chart.axisX.visible = false; chart.axisY.visible = false; } },
            { tag: "trace deleted under a finger", act: chart => {
                    mousePress(chart, 300, 100);
                    mouseMove(chart, 320, 100);
                    chart.trace.destroy();
                    wait(0);
                    mouseMove(chart, 350, 100);
                    mouseRelease(chart, 350, 100);
                } },
            { tag: "chart deleted under a finger", act: chart => { mousePress(chart, 300, 100); chart.destroy(); wait(0); } }
        ];
    }

    function test_badInput(data) {
        var chart = make();
        keepQuiet(chart);
        mouseMove(chart, 200, 90);
        (data.told || []).forEach(line => ignoreWarning(line));
        data.act(chart);
        wait(30);
        if (data.inside !== undefined)
            tryVerify(() => chart.axisY.minVisible < data.inside && data.inside < chart.axisY.maxVisible);
        if (chart && chart.axisX)
            verify(chart.axisX.minVisible < chart.axisX.maxVisible && chart.axisY.minVisible < chart.axisY.maxVisible);
    }

    Component {
        id: formatterComponent

        Formatter {}
    }

    function test_formatter_data() {
        return [
            { tag: "function", properties: { text: value => value > 2 ? "high" : "low" }, value: 3, text: "high" },
            { tag: "unknown unit", properties: { unit: "bar", precision: 1 }, value: 1.26, text: "1.3 bar" },
            { tag: "known unit", properties: { unit: "V", precision: 1 }, value: 1260, text: "1.3 kV" },
            { tag: "plain", properties: { precision: 2 }, value: 0.126, text: "0.13" }
        ];
    }

    function test_formatter(data) {
        compare(createTemporaryObject(formatterComponent, testCase, data.properties).formatValue(data.value), data.text);
    }

    // Texts of y of the first trace, and of x.
    function test_readings_data() {
        const trace = (unit, values) => "Trace { unit: '" + unit + "'; values: [" + values + "] }";
        return [
            { tag: "own unit", body: trace("bar", "-9, 9"), y: [1.234567], texts: ["1.23 bar"], axisUnit: "bar" },
            { tag: "unit of the axis", body: "axisY.unit: 'V';" + trace("", "-2e5, 2e5"), y: [-123456.789], texts: ["-123.5 kV"] },
            { tag: "axis without prefixes", body: "axisY.unit: 'degC';" + trace("", "-9, 9"), y: [5.25], texts: ["5.25 \u00b0C"] },
            // As the numbers of the axis, to be compared with them, but for what would be nothing but zeros.
            { tag: "prefix", body: trace("V", "1.33, -0.3336"), y: [1.33, -0.3336, 0, 4.5e-6, 0.0021, 0.0002785, 4.5e-9],
              texts: ["1.33 V", "-0.3336 V", "0 V", "0.0000045 V", "0.0021 V", "0.0002785 V", "4.5 nV"] },
            { tag: "prefix of x", body: "axisX { unit: 'Hz'; minValue: 700e6; maxValue: 1e9 }", x: [857.2e6, 1e9], texts: ["857.2 MHz", "1000 MHz"] },
            { tag: "unknown unit of x", body: "axisX.unit: 'furlong'", x: [0.5], texts: ["0.5 furlong"] },
            // What pixels beside each other show differs.
            { tag: "fine", body: trace("Hz", "12345.1, 12345.4, 12345.2"), y: [12345.1, 12345.4], texts: ["12.3451 kHz", "12.3454 kHz"] },
            { tag: "finer than labels", body: trace("Hz", "2.4e9, 2.4e9 + 5"), y: [2.4e9 + 5, 2.4e9 + 0.25], texts: ["2.400000005 GHz", "2.40000000025 GHz"] },
            { tag: "fine decibels", body: trace("dBm", "-0.01, 0.02"), y: [0.0123, -0.0001], texts: ["0.0123 dBm", "-0.0001 dBm"] },
            { tag: "fine without a unit", body: trace("", "70.0001, 70.0004"), y: [70.0003], texts: ["70.0003"] },
            { tag: "fine x", body: "axisX { unit: 's'; minValue: 1234.56781; maxValue: 1234.56789 }", x: [1234.56785], texts: ["1234.56785 s"] },
            { tag: "digits of the data", body: "Trace { unit: 'Hz'; series: PlotSeries { ySigDigs: 3; yData: [12345.1, 12345.4] } }", y: [12345.4], texts: ["12.3 kHz"] },
            { tag: "formatter", body: "axisX.formatter: Formatter { text: v => '<' + v + '>' } axisY.formatter: axisX.formatter;" + trace("V", "1, 8"),
              x: [2], y: [8], texts: ["<2>", "<8>"] },
            { tag: "formatter of time", body: "axisX { scale: ChartAxis.Time; formatter: Formatter { text: v => '<' + v + '>' } }", x: [2], texts: ["<2>"] }
        ];
    }

    function test_readings(data) {
        var chart = createTemporaryQmlObject("import QtQuick 2.15; import graph_plugin 1.0; import graph_kit 1.0; Chart { width: 640; height: 400; "
                                             + data.body + "}", testCase);
        var texts = () => (data.x || []).map(x => chart.formatX(x)).concat((data.y || []).map(y => chart.formatY(chart.traces[0], y))).join(" | ");
        // Until the axes are fitted.
        for (var i = 0; i < 100 && texts() !== data.texts.join(" | "); ++i)
            wait(10);
        compare(texts(), data.texts.join(" | "));
        if (data.axisUnit)
            compare(chart.axisY.unit, data.axisUnit);
    }

    // Nor are the first and the last bar cut.
    function test_bars() {
        var chart = make();
        chart.trace.interval = 2;
        chart.trace.values = [1, 2, 3];
        tryVerify(() => shown(chart) === "0 4");
        chart.trace.style = Trace.Bars;
        tryVerify(() => shown(chart) === "-1 5");
        chart.trace.start = 3;
        tryVerify(() => shown(chart) === "2 8");
        chart.axisX.scale = ChartAxis.Logarithmic;
        chart.trace.start = 1;
        tryVerify(() => Math.abs(chart.axisX.minVisible * Math.sqrt(3) - 1) < 1e-9 && Math.abs(chart.axisX.maxVisible - 5 * Math.sqrt(5 / 3)) < 1e-9);
    }

    function test_theme() {
        var chart = make();
        var dark = String(chart.colors.background);
        var color = String(chart.trace.color);
        chart.theme = Chart.Light;
        verify(String(chart.colors.background) !== dark && String(chart.trace.color) !== color);
        chart.trace.color = "red";
        chart.theme = Chart.Dark;
        compare(String(chart.colors.background), dark);
        compare(String(chart.trace.color), "#ff0000");
        ignoreWarning(/has "unheard of" among its traceColors/);
        var own = themeComponent.createObject(null);
        chart.theme = own;
        own.textColor = "lime";
        compare(String(chart.axisX.labelColor), "#00ff00");
        own.destroy();
        wait(0);
        compare(String(chart.colors.background), dark);
    }

    Component {
        id: themeComponent

        ChartTheme { traceColors: ["lime", "unheard of"] }
    }
}
