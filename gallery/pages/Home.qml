import QtQuick 2.15
import "../controls"
import "../theme"

// One tile per page with a picture of it, all of them on one screen. tools/update_tiles.sh takes the pictures.
Item {
    id: home

    readonly property bool ready: true

    readonly property var pages: shell.pages.slice(1)
    readonly property int columns: width < 640 ? 3 : 6
    readonly property int rows: Math.ceil(pages.length / columns)
    // Titles alone where there is little room.
    readonly property real textHeight: Theme.compact ? 30 : 88
    readonly property real tileWidth: Math.floor((width - (columns + 1) * Theme.gap) / columns)
    readonly property real tileHeight: Math.max(textHeight + 50, Math.floor((height - (rows + 1) * Theme.gap) / rows))

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

                        Rectangle {
                            x: 1
                            y: 1
                            width: parent.width - 2
                            height: home.tileHeight - home.textHeight
                            radius: Theme.radius
                            color: Theme.window

                            Image {
                                anchors { fill: parent; margins: 3 }
                                source: "qrc:/tiles/" + modelData.name + (Theme.light ? "-light.png" : ".png")
                                fillMode: Image.PreserveAspectCrop
                                smooth: true
                                cache: false // every picture is shown once
                            }
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
                                visible: !Theme.compact
                                wrapMode: Text.Wrap
                                maximumLineCount: 3
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
