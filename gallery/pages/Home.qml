import QtQuick 2.15
import "../controls"
import "../theme"

// One tile per page.
Item {
    id: home

    property bool ready: true

    readonly property int columns: width < 960 ? 3 : 4
    readonly property real tileWidth: Math.floor((width - (columns + 1) * Theme.gap) / columns)

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
                    height: Math.round(width * 0.7)
                    onClicked: shell.page = modelData.name

                    Item {
                        anchors.centerIn: parent
                        width: home.tileWidth
                        height: Math.round(width * 0.7)

                        TilePreview {
                            x: 1
                            y: 1
                            width: parent.width - 2
                            height: Math.round(parent.height * 0.56)
                            page: modelData.name
                            penColor: Theme.traces[index % Theme.traces.length]
                        }

                        Label {
                            x: Theme.gap
                            y: Math.round(parent.height * 0.56) + 8
                            width: parent.width - 2 * Theme.gap
                            text: modelData.title
                            font.pixelSize: Theme.compact ? 16 : 18
                        }

                        Label {
                            x: Theme.gap
                            y: Math.round(parent.height * 0.56) + (Theme.compact ? 30 : 36)
                            width: parent.width - 2 * Theme.gap
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
