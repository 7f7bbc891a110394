import QtQuick 2.15

// Names the traces of a chart in their colours. Declare it as a child of a GraphView: it covers the plot area and shows
// its entries in one corner. A tap on an entry hides or shows that trace.
Item {
    id: legend

    // The plots to name; the text is the label of each plot's data.
    property var plots: []
    property bool atRight: true
    property bool atBottom: false
    // One beside the other instead of one below the other.
    property bool inARow: false
    property color textColor: "white"
    property color backgroundColor: "transparent"
    property int pixelSize: 14
    property string fontFamily: "Roboto"
    property real entryHeight: 40
    property real inset: 4

    Grid {
        columns: legend.inARow ? entries.count : 1
        horizontalItemAlignment: legend.atRight ? Grid.AlignRight : Grid.AlignLeft
        anchors {
            left: legend.atRight ? undefined : legend.left
            right: legend.atRight ? legend.right : undefined
            top: legend.atBottom ? undefined : legend.top
            bottom: legend.atBottom ? legend.bottom : undefined
            margins: legend.inset
        }

        Repeater {
            id: entries

            model: legend.plots

            Item {
                id: entry

                readonly property var plot: modelData

                width: chip.width
                height: legend.entryHeight
                opacity: plot && plot.visible ? 1 : 0.4

                Rectangle {
                    id: chip

                    anchors.verticalCenter: parent.verticalCenter
                    width: name.x + name.width + 10
                    height: name.height + 10
                    radius: 4
                    color: legend.backgroundColor

                    Rectangle {
                        id: swatch

                        anchors.verticalCenter: parent.verticalCenter
                        x: 10
                        width: 16
                        height: 4
                        radius: 2
                        color: entry.plot ? entry.plot.penColor : "transparent"
                    }

                    Text {
                        id: name

                        anchors.verticalCenter: parent.verticalCenter
                        x: 34
                        text: entry.plot && entry.plot.plotData ? entry.plot.plotData.label : ""
                        color: legend.textColor
                        font.family: legend.fontFamily
                        font.pixelSize: legend.pixelSize
                        renderType: Text.NativeRendering
                    }
                }

                MouseArea {
                    anchors.fill: parent
                    onClicked: entry.plot.visible = !entry.plot.visible
                }
            }
        }
    }
}
