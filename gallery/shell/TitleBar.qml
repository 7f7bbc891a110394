import QtQuick 2.15
import "../controls"
import "../theme"

// The home button, one tab per page, and whether an instrument feeds the page.
Rectangle {
    id: bar

    property bool live: false

    color: Theme.bar

    PushButton {
        id: home

        flat: true
        width: 52
        height: parent.height
        onClicked: shell.page = "home"

        Grid {
            anchors.centerIn: parent
            columns: 2
            spacing: 4

            Repeater {
                model: 4

                Rectangle {
                    width: 8
                    height: 8
                    radius: 2
                    color: shell.page === "home" ? Theme.accent : Theme.quietText
                }
            }
        }
    }

    Flickable {
        id: tabs

        readonly property var pages: shell.pages.slice(1)
        readonly property int openPage: pages.findIndex(function (page) { return page.name === shell.page; })

        // Keeps the open page's tab away from the ends, so that its neighbours can be seen.
        function showOpenTab() {
            var tab = tabItems.itemAt(openPage);
            if (!tab || width <= 0)
                return;
            var place = Math.max(tab.x + tab.width - 0.8 * width, Math.min(tab.x - 0.2 * width, contentX));
            contentX = Math.max(0, Math.min(place, contentWidth - width));
        }

        anchors { left: home.right; right: status.left; top: parent.top; bottom: parent.bottom }
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentWidth: tabRow.width
        onOpenPageChanged: showOpenTab()
        onWidthChanged: showOpenTab()
        onContentWidthChanged: showOpenTab()

        Row {
            id: tabRow

            Repeater {
                id: tabItems

                model: tabs.pages

                Item {
                    readonly property bool current: modelData.name === shell.page

                    width: tab.implicitWidth + 24
                    height: bar.height

                    Label {
                        id: tab

                        anchors.centerIn: parent
                        text: modelData.title
                        color: parent.current ? Theme.text : Theme.quietText
                    }

                    Rectangle {
                        visible: parent.current
                        anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
                        width: tab.implicitWidth + 12
                        height: 3
                        color: Theme.accent
                    }

                    MouseArea {
                        anchors.fill: parent
                        onClicked: shell.page = modelData.name
                    }
                }
            }
        }
    }

    TabFade {
        anchors { left: tabs.left; top: tabs.top; bottom: tabs.bottom }
        visible: !tabs.atXBeginning
    }

    TabFade {
        anchors { right: tabs.right; top: tabs.top; bottom: tabs.bottom }
        visible: !tabs.atXEnd
        mirrored: true
    }

    Row {
        id: status

        anchors { right: parent.right; rightMargin: visible ? Theme.gap : 0; verticalCenter: parent.verticalCenter }
        spacing: 8
        leftPadding: 8
        visible: Boolean(shell.pageInfo.service)
        width: visible ? implicitWidth : 0

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 9
            height: 9
            radius: 5
            color: bar.live ? Theme.good : Theme.warning
        }

        Label {
            text: shell.pageInfo.service || ""
            font.pixelSize: Theme.smallText
            color: Theme.quietText
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.hairline
    }
}
