import QtQuick 2.15
import QtTest 1.15
import graph_plugin 1.0

Item {
    id: root
    width: 101
    height: 51

    Component {
        id: chart

        GraphView {
            property alias cursor: cursor
            property alias marker: marker
            property alias reading: reading
            property alias plot: plot
            property alias other: other
            anchors.fill: parent
            axes: [
                ValueAxis { id: axisX; maxValue: 10; labelsPlane: scale; linesPlane: scale },
                ValueAxis { id: axisY; alignment: Qt.AlignLeft; maxValue: 50; labelsPlane: scale; linesPlane: scale }
            ]
            XYScale { id: scale }
            GraphPlot {
                id: plot
                plotData: PlotSeries { axisX: axisX; axisY: axisY; yData: [0, 10, 0, 20, 0, 30, 0, 40, 0, 10, 0] }
            }
            GraphPlot {
                id: other
                plotData: PlotPoints { axisX: axisX; axisY: axisY; xData: [6, 9]; yData: [5, 15] }
            }
            GraphCursor {
                id: cursor
                markers: GraphMarker {
                    id: marker
                    visible: true
                    Text { property GraphMarker _parentMarker; text: _parentMarker ? _parentMarker.formattedDelta : "" }
                }
                Text {
                    id: reading
                    GraphCursor.plot: other
                    text: GraphCursor.formattedXValue + ": " + GraphCursor.formattedYValue
                    x: GraphCursor.xPosOnScreen
                    y: GraphCursor.yPosOnScreen
                    property bool peak: GraphCursor.peak
                    property string name: GraphCursor.objectName
                }
            }
        }
    }

    TestCase {
        name: "cursor"
        when: windowShown

        function test_followsTheView() {
            const view = createTemporaryObject(chart, root)
            const cursor = view.cursor
            verify(cursor.visible)
            compare(cursor.plots.length, 2)
            cursor.posValue = 8.2
            compare(view.reading.text, "8: 15")
            compare(view.reading.x, 80)
            compare(view.reading.y, 35)
            verify(view.reading.peak)
            cursor.posValue = 7
            verify(!view.reading.peak)
            compare(cursor.findPeak(GraphCursor.PeakLeft), 5)
            verify(/^GCA\d+$/.test(view.reading.name))
            cursor.posValue = 8
            view.plot.visible = false
            compare(cursor.primaryPlot, view.other)
            compare(cursor.yValues, [15])
            view.other.visible = false
            verify(!cursor.visible)
            view.plot.visible = true
            view.plot.plotData.yData = [1, 2, 3]
            tryCompare(cursor, "formattedYValues", ["3"])
        }

        function test_givesReadingsToItemsAddedLater() {
            const view = createTemporaryObject(chart, root)
            const added = Qt.createQmlObject("import QtQuick 2.15; import graph_plugin 1.0\n"
                                             + "Text { text: GraphCursor.formattedXValue }", view.cursor)
            view.cursor.posValue = 3
            compare(added.text, "3")
        }

        function test_keepsItsSamplesWhenResized() {
            const view = createTemporaryObject(chart, root)
            view.cursor.posValue = 8
            view.marker.posValue = 5
            view.anchors.fill = undefined
            view.width = 201
            view.height = 101
            compare(view.cursor.posOnScreen, 160)
            compare(view.cursor.yPositions, [100, 70])
            compare([view.reading.x, view.reading.y], [160, 70])
            compare([view.marker.posOnScreen, view.marker.yPosOnScreen], [100, 40])
        }

        function test_marksDistances() {
            const view = createTemporaryObject(chart, root)
            const label = view.marker.label
            compare(label._parentMarker, view.marker)
            compare(label.parent, view.cursor)
            view.marker.posValue = 2
            view.cursor.posValue = 5
            compare(label.text, "\u0394 3")
            compare(view.marker.formattedDeltaY, "\u0394 30")
            view.marker.destroy()
            tryCompare(view, "marker", null)
            view.cursor.posValue = 6
            tryCompare(view.cursor, "color", Qt.rgba(1, 0, 0, 127 / 255))
        }
    }
}
