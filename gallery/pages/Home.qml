import QtQuick 2.15
import QtQml 2.15
import "../controls"
import "../theme"

// One tile per page, all of them on one screen.
Item {
    id: home

    property bool ready: feedLoader.item !== null && feedLoader.item.ready && shell.heatmaps.newestFile !== ""

    readonly property var pages: shell.pages.slice(1)
    readonly property int columns: width < 640 ? 3 : 4
    readonly property int rows: Math.ceil(pages.length / columns)
    readonly property real textHeight: Theme.compact ? 60 : 74
    readonly property real tileWidth: Math.floor((width - (columns + 1) * Theme.gap) / columns)
    readonly property real tileHeight: Math.max(textHeight + 50, Math.floor((height - (rows + 1) * Theme.gap) / rows))

    Loader {
        id: feedLoader

        property bool seen: false

        active: seen
        source: "HomeFeeds.qml"

        // Once made the data stay, also while an instrument starts again.
        Binding on seen {
            when: shell.instrumentReady
            value: true
            restoreMode: Binding.RestoreNone
        }
    }

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
                model: home.pages

                PushButton {
                    width: home.tileWidth
                    height: home.tileHeight
                    onClicked: shell.page = modelData.name

                    Item {
                        anchors.centerIn: parent
                        width: home.tileWidth
                        height: home.tileHeight

                        TilePreview {
                            x: 1
                            y: 1
                            width: parent.width - 2
                            height: home.tileHeight - home.textHeight
                            page: modelData.name
                            feeds: feedLoader.item
                        }

                        Column {
                            x: Theme.gap
                            y: home.tileHeight - home.textHeight + (Theme.compact ? 4 : 6)
                            width: parent.width - 2 * Theme.gap
                            spacing: Theme.compact ? 0 : 1

                            Label {
                                width: parent.width
                                text: modelData.title
                                font.pixelSize: Theme.compact ? 15 : 18
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
