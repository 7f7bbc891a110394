import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"
import "reflections.js" as Reflections

Page {
    id: page

    // The simulated fibre, or a recorded one.
    readonly property string service: shell.pageInfo.service
    readonly property string distanceUnit: series.xFormatter ? "" : shell.recording.xUnit || ""
    readonly property real metre: distanceUnit === "km" ? 0.001 : 1
    // Plain arrays, so that bindings see when the table changes.
    property var positions: []
    property var levels: []
    property var sections: []
    // What each event reflects.
    property var peaks: []
    property int chosen: 0
    readonly property var peak: peaks[chosen] || {x: 0, y: 0, end: 0, isHigh: false}
    // From afar numbers and notes of close events would overlap.
    readonly property bool isNear: chart.zoomRect.width * (series.xRangeEnd - series.xRangeBegin) < 3.5 * reach(chosen)

    function distanceText(distance) {
        return distanceUnit ? distance.toPrecision(5) + " " + distanceUnit : series.formattedXValue(distance);
    }

    function decibelText(value, digits) {
        return value === undefined || isNaN(value) ? "\u2014" : value.toFixed(digits) + " dB";
    }

    // The length of fibre that shows an event well.
    function reach(index) {
        return Math.max(700 * metre, peaks[index] && peaks[index].isHigh ? 3 * (peaks[index].end - positions[index]) : 0);
    }

    function showEvent(index) {
        var length = series.xRangeEnd - series.xRangeBegin;
        var span = series.yRangeEnd - series.yRangeBegin;
        if (index >= positions.length || length <= 0 || span <= 0)
            return;
        chosen = index;
        chart.zoomRect.setCenterAndZoom(Qt.vector2d(reach(index) / length, 0.42),
            Qt.point((positions[index] - series.xRangeBegin) / length, (levels[index] + 0.05 * span - series.yRangeBegin) / span));
        readTrace();
    }

    // Straight line by least squares through at most 150 samples between two places; null if they are too close.
    function fittedLine(begin, end) {
        var first = Math.max(0, series.indexOf(begin));
        var last = Math.min(series.size - 1, series.indexOf(end));
        var step = Math.max(1, Math.floor((last - first) / 150));
        var n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
        for (var i = first; i <= last; i += step) {
            var x = series.x(i) - begin, y = series.y(i);
            n += 1;
            sx += x;
            sy += y;
            sxx += x * x;
            sxy += x * y;
        }
        var spread = n * sxx - sx * sx;
        if (n < 4 || spread <= 0)
            return null;
        var slope = (n * sxy - sx * sy) / spread;
        var offset = (sy - slope * sx) / n;
        return {begin: begin, end: end, from: offset, to: offset + slope * (end - begin), slope: slope};
    }

    function readTable() {
        var xs = [], ys = [];
        for (var i = 0; i < events.size; ++i) {
            xs.push(events.x(i));
            ys.push(events.y(i));
        }
        positions = xs;
        levels = ys;
        readTrace();
    }

    function readTrace() {
        if (series.size < 2)
            return;
        var end = series.x(series.size - 1);
        peaks = positions.map(function (position, index) {
            var next = index + 1 < positions.length ? positions[index + 1] : end;
            return Reflections.reflectionAt(series, position, levels[index], next, metre);
        });
        sections = positions.slice(1).map(function (next, index) {
            // After a reflection the receiver needs time to recover, more of it after a longer one.
            var reflected = peaks[index].isHigh ? peaks[index].end - positions[index] : 0;
            var begin = positions[index] + Math.max(70 * metre, 1.5 * reflected);
            return next - 4 * metre - begin > 20 * metre ? fittedLine(begin, next - 4 * metre) : null;
        });
        placeMarks();
        nameEvents();
    }

    // On top of a reflection, so that the number does not cover it; the chosen event has its number below.
    function placeMarks() {
        marked.xData = positions;
        marked.yData = levels.map(function (level, index) {
            return index !== chosen && peaks[index] && peaks[index].isHigh ? peaks[index].y : level;
        });
    }

    // As many names as fit side by side without touching, the chosen one first.
    function nameEvents() {
        var texts = names.value || [];
        var order = chosen < positions.length ? [chosen] : [];
        for (var i = 0; i < positions.length; ++i) {
            if (i !== chosen)
                order.push(i);
        }
        var taken = [], shown = [];
        for (var k = 0; k < order.length; ++k) {
            var x = marks.mapToItemX(positions[order[k]]);
            var half = String(texts[order[k]]).length * 4 + 10;
            if (x - half < 0 || x + half > marks.width)
                continue;
            if (taken.some(function (other) { return Math.abs(other.x - x) < other.half + half; }))
                continue;
            taken.push({x: x, half: half});
            shown.push(order[k]);
        }
        shown.sort(function (a, b) { return a - b; });
        shownNames.value = shown.map(function (index) { return texts[index]; });
        namedEvents.xData = shown.map(function (index) { return positions[index]; });
        namedEvents.yData = shown.map(function (index) { return levels[index]; });
    }

    ready: positions.length > 1 && sections.length > 0
    onChosenChanged: readTrace()
    Component.onCompleted: {
        readTable();
        openingView.start();
    }

    // The zoom rectangle takes its pixel size from the laid-out chart.
    Timer {
        id: openingView

        interval: 0
        onTriggered: page.showEvent(Math.min(6, page.positions.length - 1))
    }

    controls: [
        Stepper {
            label: "Event"
            value: page.chosen
            to: page.positions.length - 1
            onActivated: function(value) { page.showEvent(value); }
        },
        PushButton {
            text: "Whole fibre"
            onClicked: chart.zoomArea.showAll()
        }
    ]
    endControls: ZoomButtons {
        zoomArea: chart.zoomArea
    }
    readings: [
        Reading {
            label: names.value && page.chosen < names.value.length ? names.value[page.chosen] : "Event"
            value: page.chosen < page.positions.length ? page.distanceText(page.positions[page.chosen]) : ""
            textColor: marks.penColor
        },
        Reading {
            label: "Loss"
            value: losses.value ? page.decibelText(losses.value[page.chosen], 2) : ""
            widestValue: "\u221288.88 dB"
        },
        Reading {
            label: "Reflectance"
            value: reflectances.value ? page.decibelText(reflectances.value[page.chosen], 1) : ""
            widestValue: "\u221288.8 dB"
        },
        Reading {
            label: "Reflected area"
            value: page.peak.isHigh ? (integral.value / page.metre).toFixed(0) + " dB\u00b7m" : "\u2014"
            widestValue: "8888 dB\u00b7m"
            textColor: integral.integralColor
            visible: !Theme.compact
        },
        Reading {
            readonly property var section: page.sections[page.chosen] || null

            label: "Section behind"
            value: section ? (section.slope * 1000 * page.metre).toFixed(3) + " dB/km" : "\u2014"
            widestValue: "\u22128.888 dB/km"
            textColor: Theme.traces[3]
        }
    ]

    BusValue {
        id: names
        dbusAddress: page.service + ",events"
        key: "labels"
    }

    BusValue {
        id: kinds
        dbusAddress: page.service + ",events"
        key: "icons"
    }

    BusValue {
        id: losses
        dbusAddress: page.service + ",events"
        key: "loss"
    }

    BusValue {
        id: reflectances
        dbusAddress: page.service + ",events"
        key: "reflectance"
    }

    // The icon of each kind; kinds without one get the general icon.
    BusValue {
        id: icons

        function iconPath(kind) {
            var known = ["launch", "splice", "connector", "bend", "end", "reflection", "loss"];
            var name = kind.indexOf("end") === 0 ? "end" : kind;
            return ":/icons/" + (known.indexOf(name) < 0 ? "event" : name) + ".png";
        }

        value: kinds.value ? kinds.value.map(iconPath) : []
    }

    BusValue {
        id: shownNames
    }

    WorldStrip {
        id: world

        anchors { left: parent.left; leftMargin: chart.axisY.margin; right: parent.right; bottom: parent.bottom }
        height: Theme.compact ? 46 : 58
        view: chart
        plot: trace
    }

    Item {
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: world.top; bottomMargin: Theme.compact ? 4 : 6 }

        TraceChart {
            id: chart

            axisX {
                minValue: series.xRangeBegin
                maxValue: series.xRangeEnd
                formatter: series.xFormatter
                unit: page.distanceUnit
            }
            axisY {
                minValue: series.yRangeBegin
                maxValue: series.yRangeEnd
                numTicks: Theme.compact ? 5 : 7
                unit: series.yUnits
            }
            zoomRect.minWidth: 0.0005
            series: [
                PlotSeries {
                    id: series
                    dbusAddress: page.service + ",trace"
                    xFirstValue: xRangeBegin
                    xInterval: size > 1 ? (xRangeEnd - xRangeBegin) / (size - 1) : 1
                    onPlotChanged: page.readTrace()
                },
                PlotPoints {
                    id: events
                    dbusAddress: page.service + ",events"
                    onPlotChanged: page.readTable()
                },
                PlotPoints {
                    id: marked
                },
                PlotPoints {
                    id: namedEvents
                }
            ]

            GraphPlot {
                id: trace

                renderTarget: Theme.plotTarget
                plotStyle: GraphPlot.LinePlot
                plotData: series
                axisX: chart.axisX
                axisY: chart.axisY
                penColor: Theme.traces[2]
                minLineWidth: 1
                maxLineWidth: 2
            }

            ContainerPlot {
                id: notes

                renderTarget: Theme.plotTarget
                plotData: series
                axisX: chart.axisX
                axisY: chart.axisY

                Repeater {
                    model: Math.max(0, page.positions.length - 1)

                    SegmentPainter {
                        readonly property var section: page.sections[index] || null

                        visible: section !== null
                        point1X: section ? section.begin : 0
                        point1Y: section ? section.from : 0
                        point2X: section ? section.end : 0
                        point2Y: section ? section.to : 0
                        segmentColor: Theme.traces[3]
                        lineWidth: 2
                        endSize: 6
                    }
                }

                IntegralPainter {
                    id: integral

                    visible: page.peak.isHigh
                    plotData: series
                    begin: page.positions[page.chosen] || 0
                    end: page.peak.end
                    baseLevel: page.levels[page.chosen] || 0
                    integralColor: Theme.traces[0]
                    fillOpacity: 0.45
                    lineWidth: 0
                }

                CrossPainter {
                    visible: page.isNear && page.peak.isHigh
                    point1X: page.peak.x
                    point1Y: page.peak.y
                    crossColor: Theme.text
                    crossSize: 14
                    lineWidth: 2
                }

                TextPainter {
                    plotParent: notes
                    visible: page.isNear && page.peak.isHigh
                    origin: Qt.point(page.peak.x, page.peak.y)
                    // Beside the cross.
                    label: page.decibelText(page.peak.y, 1) + "\u2003"
                    labelColor: Theme.text
                    font: Qt.font({family: Theme.family, pixelSize: Theme.smallText})
                    hTextAlignment: Qt.AlignRight
                    vTextAlignment: Qt.AlignVCenter
                }
            }

            GraphPlot {
                id: marks

                renderTarget: Theme.plotTarget
                plotStyle: GraphPlot.ScatterPlot
                plotData: marked
                axisX: chart.axisX
                axisY: chart.axisY
                penColor: Theme.traces[1]
                minLineWidth: 2
                maxLineWidth: 2
                selectedPoint: page.chosen
                onWidthChanged: page.nameEvents()
                graphPoint: GraphPointReflections {
                    pointSize: 40
                    labelColor: Theme.text
                    labelFontSize: page.isNear ? 10 : 0
                    iconPaths: icons
                    iconSize: 26
                    invertColors: Theme.light
                    iconBackgroundColor: Theme.raised
                }
            }

            GraphPlot {
                renderTarget: Theme.plotTarget
                plotStyle: GraphPlot.ScatterPlot
                plotData: namedEvents
                axisX: chart.axisX
                axisY: chart.axisY
                penColor: Theme.quietText
                minLineWidth: 1
                maxLineWidth: 1
                graphPoint: GraphPointPictogramMarker {
                    labels: shownNames
                    labelColor: Theme.traces[1]
                    labelFontSize: 10
                }
            }

            Connections {
                target: chart.zoomRect
                function onRectChanged() { page.nameEvents(); }
            }
        }
    }
}
