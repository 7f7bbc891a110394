import QtQuick 2.15
import graph_plugin 1.0
import "../controls"
import "../theme"

// The map's image has a largest size: the chart gets that size, and a panel takes the room that is left.
Item {
    id: page

    property bool ready: series.size > 1 && mapCount > 0

    // Recorded sweeps instead of the analyzer's.
    readonly property bool isReplay: shell.pageInfo.service === "replay"
    readonly property var megahertz: ({ "Hz": 1e-6, "kHz": 1e-3, "MHz": 1, "GHz": 1e3 })
    property int mapCount: 0
    readonly property bool inMicrovolts: unitSelector.currentIndex === 1
    readonly property real panelWidth: Theme.compact ? 176 : 262

    function readMap() {
        if (shell.heatmaps.newestFile === "")
            return;
        map.dataFilePath = shell.heatmaps.newestFile;
        ++mapCount;
    }

    Component.onCompleted: readMap()

    Connections {
        target: shell.heatmaps
        function onNewestFileChanged() { page.readMap(); }
    }

    LiveSpectrum {
        id: series

        address: page.isReplay ? "replay,trace" : "analyzer,spectrum"
        xScale: page.isReplay ? page.megahertz[shell.recording.xUnit] || 1 : 1e-6
    }

    Row {
        id: row

        anchors { top: parent.top; topMargin: Theme.gap; bottom: parent.bottom; bottomMargin: Theme.gap / 2; horizontalCenter: parent.horizontalCenter }
        spacing: Theme.gap

        Item {
            width: Math.min(page.width - page.panelWidth - 3 * Theme.gap, 650 + chart.axisY.margin)
            height: Math.min(row.height, 525 + chart.axisX.margin)

            TraceChart {
                id: chart

                axisX {
                    minValue: series.xRangeBegin * series.xScale
                    maxValue: series.xRangeEnd * series.xScale
                    unit: "MHz"
                }
                axisY {
                    // The same for both units, so that the chart stays in its place.
                    margin: Theme.compact ? 46 : 52
                    minValue: series.yRangeBegin + levelAxis.offset
                    maxValue: series.yRangeEnd + levelAxis.offset
                    unit: page.isReplay ? shell.recording.yUnit : page.inMicrovolts ? "dB\u00b5V" : "dBm"
                }

                HeatmapPlot {
                    id: map

                    renderTarget: Theme.plotTarget
                    axisX: chart.axisX
                    axisY: chart.axisY
                    units: page.inMicrovolts ? "DBUV" : "DBM"
                    dataDirectory: shell.heatmaps.path
                }

                // The trace stays in dBm, whatever the labels say.
                ValueAxis {
                    id: levelAxis

                    // 0 dBm at 75 ohm.
                    readonly property real offset: page.inMicrovolts ? 108.7506 : 0

                    alignment: Qt.AlignLeft
                    minValue: series.yRangeBegin
                    maxValue: series.yRangeEnd
                }

                GraphPlot {
                    id: trace

                    z: 1
                    visible: traceSwitch.currentIndex === 0
                    renderTarget: Theme.plotTarget
                    plotStyle: GraphPlot.LinePlot
                    plotData: series
                    axisX: chart.axisX
                    axisY: levelAxis
                    penColor: Theme.text
                    opacity: 0.8
                    minLineWidth: 1
                    maxLineWidth: 1
                }
            }
        }

        Item {
            width: page.panelWidth
            height: row.height

            ZoomButtons {
                visible: y > panel.height
                anchors { bottom: parent.bottom; bottomMargin: chart.axisX.margin }
                zoomArea: chart.zoomArea
            }

            Column {
                id: panel

                spacing: Theme.compact ? 8 : 12

                SegmentedSelector {
                    id: unitSelector

                    visible: !page.isReplay
                    choices: ["dBm", "dB\u00b5V"]
                    onActivated: function(index) { currentIndex = index; }
                }

                SegmentedSelector {
                    id: traceSwitch

                    choices: ["Trace", "Map only"]
                    onActivated: function(index) { currentIndex = index; }
                }

                PushButton {
                    width: unitSelector.width
                    text: "Restart"
                    // Shows for a moment that the measurement starts again.
                    onClicked: {
                        map.testPointState = 2;
                        page.mapCount = 0;
                        restartEnd.start();
                    }

                    Timer {
                        id: restartEnd

                        interval: 300
                        onTriggered: map.testPointState = 0
                    }
                }

                Item {
                    width: 1
                    height: Theme.compact ? 0 : 8
                }

                Column {
                    spacing: Theme.compact ? 3 : 5

                    Label {
                        text: "Level seen in"
                        font.pixelSize: Theme.smallText
                        color: Theme.quietText
                    }

                    Repeater {
                        model: [["#ff0000", "more than half the sweeps"], ["#ffff00", "more than 1/4"],
                            ["#2f8000", "more than 1/8"], ["#5cff00", "more than 1/16"], ["#0044b3", "more than 1/32"],
                            ["#00a8e6", "more than 1/64"], ["#00e6e6", "fewer"]]

                        Row {
                            spacing: 10

                            Rectangle {
                                anchors.verticalCenter: parent.verticalCenter
                                width: 22
                                height: 14
                                radius: 2
                                color: modelData[0]
                            }

                            Label {
                                text: modelData[1]
                                font.pixelSize: Theme.smallText
                            }
                        }
                    }
                }

                Reading {
                    height: 28
                    label: "Maps"
                    value: page.mapCount
                    visible: !shell.takesPictures
                }
            }
        }
    }
}
