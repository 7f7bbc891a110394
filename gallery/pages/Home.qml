import QtQuick 2.15
import "../controls"
import "../theme"

// One tile per page.
Item {
    id: home

    property bool ready: true

    readonly property int columns: width < 960 ? 3 : 4
    readonly property real tileWidth: Math.floor((width - (columns + 1) * Theme.gap) / columns)
    readonly property real previewHeight: Math.round(tileWidth * 0.44)
    readonly property real textHeight: Theme.compact ? 66 : 80

    Flickable {
        anchors.fill: parent
        contentHeight: tiles.height + 2 * Theme.gap
        boundsBehavior: Flickable.StopAtBounds

        Grid {
            id: tiles

            x: Theme.gap
            y: Theme.gap
            columns: home.columns
            spacing: Theme.gap

            Repeater {
                model: shell.pages.slice(1)

                PushButton {
                    width: home.tileWidth
                    height: home.previewHeight + home.textHeight
                    onClicked: shell.page = modelData.name

                    Item {
                        anchors.centerIn: parent
                        width: home.tileWidth
                        height: home.previewHeight + home.textHeight

                        TilePreview {
                            x: 1
                            y: 1
                            width: parent.width - 2
                            height: home.previewHeight
                            page: modelData.name
                            penColor: Theme.traces[index % Theme.traces.length]
                        }

                        Column {
                            x: Theme.gap
                            y: home.previewHeight + (Theme.compact ? 6 : 8)
                            width: parent.width - 2 * Theme.gap
                            spacing: 2

                            Label {
                                width: parent.width
                                text: modelData.title
                                font.pixelSize: Theme.compact ? 16 : 18
                            }

                            Label {
                                width: parent.width
                                wrapMode: Text.Wrap
                                maximumLineCount: 2
                                text: modelData.summary
                                font.pixelSize: Theme.smallText
                                color: Theme.quietText
                            }
                        }
                    }
                }
            }
        }
    }
}
