#include "benchmarks/OwnCharts.h"

#include <QString>

namespace benchmark {

namespace {

const char screen[] = R"(
    Rectangle {
        id: root
        property alias axis: horizontal
        property alias cursor: cursor
        property var colours: ["#56b4e9", "#e69f00", "#009e73", "#f0e442"]
        property font textFont: Qt.font({ family: "Roboto", pixelSize: 14 })
        color: "#12171c"
        GraphView {
            id: view
            zoomRect { minWidth: 1e-9 }
            anchors { fill: parent; leftMargin: 14; topMargin: 31; rightMargin: 21; bottomMargin: 7 }
            axes: [
                ValueAxis {
                    id: horizontal
                    margin: requiredMargin + 6; numTicks: 10; unit: "s"
                    lineColor: "#2c353e"; labelColor: "#c6ced6"; labelFont: root.textFont
                    linesPlane: grid; labelsPlane: labels
                },
                ValueAxis {
                    id: vertical
                    alignment: Qt.AlignLeft
                    minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50
                    margin: requiredMargin + 6; numTicks: 10; unit: "V"
                    lineColor: "#2c353e"; labelColor: "#c6ced6"; labelFont: root.textFont
                    linesPlane: grid; labelsPlane: labels
                }
            ]
            Rectangle { z: -2; color: "#171d24" }
            XYScale { id: grid; z: -1 }
            XYScale { id: labels; z: 1 }
            %1
            GraphCursor {
                id: cursor
                z: 2
                color: "#e8edf2"; paintedWidth: 1; font: root.textFont
                markers: [
                    GraphMarker { visible: true; color: "teal"; deltaY: 40 },
                    GraphMarker { visible: true; color: "brown"; deltaY: 60 }
                ]
                %2
                Rectangle {
                    id: tag
                    GraphCursor.plot: plot0
                    x: Math.max(0, Math.min(GraphCursor.xPosOnScreen - (width - 1) / 2, cursor.width - width))
                    y: cursor.height - height - 2
                    width: Math.ceil(place.implicitWidth + 10) | 1
                    height: Math.ceil(place.implicitHeight + 3) | 1
                    radius: 3
                    color: "#e8edf2"
                    Text {
                        id: place
                        anchors.centerIn: parent
                        text: tag.GraphCursor.formattedXValue
                        color: "#171d24"
                        font: root.textFont
                        renderType: Text.NativeRendering
                    }
                }
            }
        }
        Rectangle {
            x: parent.width - width - 25; y: 35
            width: legend.width; height: legend.height
            radius: 4
            color: "#d8171d24"
            Column { id: legend; %3 }
        }
    })";

const char plot[] = R"(
    GraphPlot {
        id: plot%1
        penColor: root.colours[%1 % 4]
        plotStyle: GraphPlot.LinePlot
        plotData: PlotSeries { axisX: horizontal; axisY: vertical; xUnits: "s"; yUnits: "V" }
    })";

const char reading[] = R"(
    Item {
        id: reading%1
        GraphCursor.plot: plot%1
        Rectangle {
            x: reading%1.GraphCursor.xPosOnScreen - 3
            y: reading%1.GraphCursor.yPosOnScreen - 3
            width: 7; height: 7; radius: 3.5
            color: root.colours[%1 % 4]
            border.color: "#d8171d24"
        }
        Rectangle {
            readonly property real line: reading%1.GraphCursor.xPosOnScreen
            x: line + 10 + width <= cursor.width ? line + 10 : line - 9 - width
            y: 80 + 21 * %1
            width: Math.ceil(value%1.implicitWidth) + 13
            height: Math.ceil(value%1.implicitHeight) + 2
            radius: 3
            color: "#d8171d24"
            Rectangle { width: 3; height: parent.height; radius: 1; color: root.colours[%1 % 4] }
            Text {
                id: value%1
                x: 8; y: 1
                text: reading%1.GraphCursor.formattedYValue
                color: "#c6ced6"
                font: root.textFont
                renderType: Text.NativeRendering
            }
        }
    })";

// The room for a value is that of the longest one.
const char legendEntry[] = R"(
    Item {
        width: 160; height: 31
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: 8; width: 16; height: 4; radius: 2
            color: root.colours[%1 % 4]
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            x: 32
            text: "Trace %1"
            color: "#c6ced6"
            font: root.textFont
            renderType: Text.NativeRendering
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            x: 150 - width
            text: reading%1.GraphCursor.formattedYValue
            color: "#c6ced6"
            font: root.textFont
            renderType: Text.NativeRendering
        }
    })";

QString repeated(const char *part, int count)
{
    QString all;
    for (int i = 0; i < count; ++i)
        all += QString::fromLatin1(part).replace(QLatin1String("%1"), QString::number(i));
    return all;
}

} // namespace

QByteArray chartByHand(int traces)
{
    return QString::fromLatin1(screen)
        .replace(QLatin1String("%1"), repeated(plot, traces))
        .replace(QLatin1String("%2"), repeated(reading, traces))
        .replace(QLatin1String("%3"), repeated(legendEntry, traces))
        .toLatin1();
}

} // namespace benchmark
