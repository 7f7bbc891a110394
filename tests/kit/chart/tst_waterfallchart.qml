import QtQuick 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

TestCase {
    id: testCase

    name: "waterfallchart"
    width: 640
    height: 400
    visible: true
    when: windowShown

    Component {
        id: component

        Chart {
            property alias plot: plot
            property alias scale: first
            property alias second: second
            property alias placed: placed

            anchors.fill: parent
            WaterfallPlot { id: plot; rows: 8; rowInterval: 0.5; unit: "dBm"; from: -100; to: 0; start: 20; interval: 10 }
            ColorScale { id: first; plot: plot }
            ColorScale { id: second; plot: HeatmapPlot {} }
            ColorScale { id: placed; plot: plot; x: 200; y: 50; height: 80 }
        }
    }

    function make() {
        var chart = createTemporaryObject(component, testCase);
        for (var row = 0; row < 4; ++row)
            chart.plot.addRow([-80, -70 + row, -60, -50]);
        tryCompare(chart.axisX, "maxVisible", 55);
        return chart;
    }

    function ranges(chart) {
        return [chart.axisX.minVisible, chart.axisX.maxVisible, chart.axisY.minVisible, chart.axisY.maxVisible].join(" ");
    }

    function test_ranges() {
        var chart = make();
        compare(ranges(chart), "15 55 -4 0");
        compare(chart.axisY.unit, "");
        chart.plot.direction = WaterfallPlot.Up;
        tryVerify(() => ranges(chart) === "15 55 0 4");
        chart.plot.rows = 20;
        tryVerify(() => ranges(chart) === "15 55 0 10");
    }

    function test_scales() {
        var chart = make(), area = chart.plotArea, first = chart.scale, second = chart.second;
        verify(first.x > area.x + area.width && second.x > first.x + first.width && second.x + second.width <= chart.width);
        compare([first.y, first.height, second.height].join(" "), [area.y, area.height, area.height].join(" "));
        compare([chart.placed.x, chart.placed.y, chart.placed.height].join(" "), "200 50 80");
        compare(String(first.textColor), String(chart.colors.textColor));
        // Longer labels get their room from the plot area.
        var width = area.width;
        chart.plot.unit = "dB(µV/m)";
        verify(area.width < width && first.x > area.x + area.width && second.x + second.width <= chart.width);
        first.visible = false;
        second.visible = false;
        verify(area.width > width && area.x + area.width > chart.width - 40);
    }

    // The level under the pointer, which goes with the colours when the view moves, not that of the newest row.
    function test_cursor() {
        function find(item, property) {
            var found = item[property] !== undefined ? item : null;
            for (var i = 0; !found && i < item.children.length; ++i)
                found = find(item.children[i], property);
            return found;
        }
        var chart = make(), area = chart.plotArea;
        // The first tap makes the cursor.
        find(chart, "hoverAt").tap(area.width * 0.375, area.height * 0.3);
        var readout = find(chart, "levelY");
        tryVerify(() => readout.shown && readout.GraphCursor.xValue === 30);
        fuzzyCompare(readout.levelY, -1.2, 0.02);
        compare(readout.reading, -69);
        compare(readout.text, "-69 dBm, row 2");
        chart.axisY.unit = "s";
        compare(readout.text, "-69 dBm, -1.000 s");
        verify(Math.abs(readout.crossingY - area.height * 0.3) < 2);
        chart.plot.addRow([-80, -1, -60, -50]);
        tryCompare(readout, "reading", -68);
        chart.showRangeY(-2, 0);
        verify(Math.abs(readout.crossingY - area.height * 0.6) < 2);
        // Of one row alone.
        chart.plot.clear();
        chart.plot.addRow([-80, -70, -60, -50]);
        readout.levelY = -0.2;
        tryCompare(readout, "reading", -70);
        verify(readout.shown);
    }

    // One that goes over both axes, with its texts.
    function test_lineOverTheRows() {
        var chart = make();
        var line = lineComponent.createObject(chart, { primaryPlot: chart.plot });
        tryVerify(() => line.plots.length === 1);
        line.setPosOnScreen(Math.round(chart.plotArea.height * 1.6 / 4));
        fuzzyCompare(line.posValue, -1.6, 0.02);
        verify(line.tag.visible && line.tag.text.indexOf("-1.6") === 0, line.tag.text);
    }

    Component {
        id: lineComponent

        GraphCursorY {
            property alias tag: tag

            staysOnScreen: false
            CursorTag { id: tag }
        }
    }
}
