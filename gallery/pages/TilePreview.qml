import QtQuick 2.15
import graph_plugin 1.0
import "../theme"

// The picture of a tile, drawn by the chart items themselves: live where an instrument is there for it, else a still of
// the page's kind.
Rectangle {
    id: preview

    property string page
    // Null as long as the instruments are not there.
    property HomeFeeds feeds
    readonly property bool live: feeds !== null && ["spectrum", "persistence", "scope", "fibre"].indexOf(page) >= 0

    function noise(i) {
        var value = Math.sin(i * 12.9898) * 43758.5453;
        return value - Math.floor(value);
    }

    function spectrum(i) {
        var level = 0.12 + 0.06 * noise(i);
        for (var k = 0; k < 5; ++k)
            level = Math.max(level, [0.5, 0.85, 0.6, 0.42, 0.7][k] - Math.abs(i - 32 - k * 44) * 0.09 + 0.05 * noise(i));
        return level;
    }

    function fibre(i) {
        return i > 196 ? 0.06 + 0.08 * noise(i) : i > 192 ? 0.9 : (i > 118 && i < 121 ? 0.85 : 0)
            || 0.75 - i * 0.0011 - (i > 60 ? 0.07 : 0) - (i > 120 ? 0.09 : 0);
    }

    function damped(i) {
        return 0.5 - 0.32 * Math.cos(i / 18) * Math.exp(-i / 180);
    }

    function burst(i) {
        return 0.5 + 0.4 * Math.sin(i / 9) * Math.exp(-Math.abs(i - 110) / 50) + 0.05 * (noise(i) - 0.5);
    }

    function noisySine(i, center) {
        return center + 0.08 * Math.sin(i / 12 + 7 * center) + 0.09 * (noise(i + 1000 * center) - 0.5);
    }

    function samples(level) {
        var values = [];
        for (var i = 0; i < 240; ++i)
            values.push(level(i));
        return values;
    }

    color: Theme.plotArea
    radius: Theme.radius

    Loader {
        anchors { fill: parent; margins: 4 }
        sourceComponent: preview.live ? {
            spectrum: liveSpectrum,
            persistence: persistence,
            scope: liveScope,
            fibre: liveFibre
        }[preview.page] : {
            hold: hold,
            masks: masks,
            channels: channels,
            bands: bands,
            events: events,
            points: points,
            axes: axes,
            stress: stress,
            replay: replay
        }[preview.page]
    }

    Rectangle {
        anchors { right: parent.right; top: parent.top; margins: 8 }
        width: 8
        height: 8
        radius: 4
        color: Theme.good
        visible: preview.live
    }

    Component {
        id: liveSpectrum

        TileTrace {
            trace: preview.feeds.spectrum
            penColor: Theme.traces[0]
            plotStyle: GraphPlot.FillPlot
            // The fill stands on the baseline of the data's axis.
            Component.onCompleted: {
                trace.axisX = axisX;
                trace.axisY = axisY;
            }
            minX: trace.xRangeBegin
            maxX: trace.xRangeEnd
            minY: trace.yRangeBegin
            maxY: trace.yRangeEnd
        }
    }

    Component {
        id: persistence

        TileTrace {
            id: mapTile

            function readMap() {
                if (shell.heatmaps.newestFile)
                    map.dataFilePath = shell.heatmaps.newestFile;
            }

            // The map's axis is in MHz.
            minX: preview.feeds.spectrum.xRangeBegin / 1e6
            maxX: preview.feeds.spectrum.xRangeEnd / 1e6
            minY: preview.feeds.spectrum.yRangeBegin
            maxY: preview.feeds.spectrum.yRangeEnd
            Component.onCompleted: readMap()

            Connections {
                target: shell.heatmaps
                function onNewestFileChanged() { mapTile.readMap(); }
            }

            HeatmapPlot {
                id: map

                anchors.fill: parent
                renderTarget: Theme.plotTarget
                units: "DBM"
                dataDirectory: shell.heatmaps.path
                axisX: mapTile.axisX
                axisY: mapTile.axisY
            }
        }
    }

    Component {
        id: liveScope

        TileTrace {
            trace: preview.feeds.scope
            penColor: Theme.traces[1]
            minX: trace.xRangeBegin
            maxX: trace.xRangeBegin + 0.1 * (trace.xRangeEnd - trace.xRangeBegin)
            minY: trace.yRangeBegin
            maxY: trace.yRangeEnd
        }
    }

    Component {
        id: liveFibre

        TileTrace {
            trace: preview.feeds.fibre
            penColor: Theme.traces[2]
            minX: trace.xRangeBegin
            maxX: trace.xRangeEnd
            minY: trace.yRangeBegin
            maxY: trace.yRangeEnd
        }
    }

    Component {
        id: hold

        TileTrace {
            id: holdTile

            penColor: Theme.traces[1]
            trace: PlotSeries {
                id: highest
                yData: preview.samples(function (i) { return Math.min(0.95, preview.spectrum(i) + 0.1 + 0.06 * preview.noise(i + 7)); })
            }

            PlotSeries {
                id: lowest
                yData: preview.samples(function (i) { return preview.spectrum(i) * 0.75 - 0.06 * preview.noise(i + 3); })
            }

            AreaPlot {
                anchors.fill: parent
                renderTarget: Theme.plotTarget
                opacity: 0.6
                axisX: holdTile.axisX
                axisY: holdTile.axisY
                maxData: highest
                minData: lowest
                penColor: Theme.traces[4]
            }
        }
    }

    Component {
        id: masks

        TileTrace {
            id: maskTile

            penColor: Theme.traces[0]
            trace: PlotSeries {
                id: judged
                yData: preview.samples(preview.spectrum)
            }

            ContainerPlot {
                anchors.fill: parent
                renderTarget: Theme.plotTarget
                plotData: judged
                axisX: maskTile.axisX
                axisY: maskTile.axisY

                CustomPainter {
                    xData: [54, 58, 94, 98]
                    yData: [1, 0.5, 0.5, 1]
                    lineColor: Theme.bad
                    fillColor: Theme.bad
                }

                CustomPainter {
                    xData: [140, 144, 184, 188]
                    yData: [1, 0.55, 0.55, 1]
                    lineColor: Theme.good
                    fillColor: Theme.good
                }
            }
        }
    }

    Component {
        id: channels

        TileTrace {
            id: channelTile

            maxX: 20

            RegionTable {
                id: channelTable

                axisX: channelTile.axisX
                axisY: channelTile.axisY
                rows: preview.samples(preview.noise).slice(0, 18).map(function (value, i) {
                    return {begin: i + 1, end: i + 2, value: 0.5 + 0.35 * value - i * 0.012, name: "", style: PlotRegion.Rectangle,
                        color: i < 5 ? Theme.traces[1] : Theme.traces[0]};
                })
            }

            ChannelPlot {
                anchors.fill: parent
                renderTarget: Theme.plotTarget
                plotData: channelTable
            }
        }
    }

    Component {
        id: bands

        TileTrace {
            id: bandTile

            maxX: 10

            RegionTable {
                id: bandTable

                axisX: bandTile.axisX
                axisY: bandTile.axisY
                rows: [
                    {begin: 0.4, end: 3, value: 0.62, name: "", style: PlotRegion.Rectangle, color: Theme.traces[4]},
                    {begin: 2.6, end: 6.2, value: 0.86, name: "", style: PlotRegion.Trapezoid, color: Theme.traces[2]},
                    {begin: 5.4, end: 7.6, value: 0.55, name: "", style: PlotRegion.Ellipse, color: Theme.traces[3]},
                    {begin: 7.2, end: 9.6, value: 0.74, name: "", style: PlotRegion.Trapezoid, color: Theme.traces[1]}
                ]
            }

            GraphBands {
                anchors.fill: parent
                renderTarget: Theme.plotTarget
                plotData: bandTable
            }
        }
    }

    Component {
        id: events

        TileTrace {
            id: eventTile

            penColor: Theme.traces[2]
            trace: PlotSeries {
                yData: preview.samples(preview.fibre)
            }

            GraphPlot {
                anchors.fill: parent
                z: 2
                renderTarget: Theme.plotTarget
                plotStyle: GraphPlot.ScatterPlot
                plotData: PlotPoints {
                    xData: [60, 119, 193]
                    yData: [0.66, 0.62, 0.47]
                }
                axisX: eventTile.axisX
                axisY: eventTile.axisY
                penColor: Theme.traces[1]
                minLineWidth: 2
                maxLineWidth: 2
                graphPoint: GraphPointReflections {
                    pointSize: 24
                    labelFontSize: 0
                }
            }
        }
    }

    Component {
        id: points

        TileTrace {
            penColor: Theme.traces[3]
            plotStyle: GraphPlot.ScatterPlot
            graphPoint: GraphPointCircle {
                pointSize: 5
            }
            trace: PlotSeries {
                xInterval: 16
                xFirstValue: 8
                yData: [0.3, 0.42, 0.5, 0.72, 0.8, 0.7, 0.46, 0.36, 0.22, 0.34, 0.5, 0.6, 0.78, 0.66, 0.5]
            }
        }
    }

    Component {
        id: axes

        TileTrace {
            penColor: Theme.traces[4]
            trace: PlotSeries {
                yData: preview.samples(preview.damped)
            }
        }
    }

    Component {
        id: stress

        TileTrace {
            id: stressTile

            penColor: Theme.traces[0]
            trace: PlotSeries {
                yData: preview.samples(function (i) { return preview.noisySine(i, 0.8); })
            }

            Repeater {
                model: [0.5, 0.2]

                GraphPlot {
                    anchors.fill: parent
                    renderTarget: Theme.plotTarget
                    plotStyle: GraphPlot.LinePlot
                    plotData: PlotSeries {
                        yData: preview.samples(function (i) { return preview.noisySine(i, modelData); })
                    }
                    axisX: stressTile.axisX
                    axisY: stressTile.axisY
                    penColor: Theme.traces[index + 1]
                    minLineWidth: 1
                    maxLineWidth: 1
                }
            }
        }
    }

    Component {
        id: replay

        TileTrace {
            penColor: Theme.traces[1]
            plotStyle: GraphPlot.FillPlot
            trace: PlotSeries {
                yData: preview.samples(preview.burst)
            }
        }
    }
}
