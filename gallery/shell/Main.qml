import QtQuick 2.15
import "../controls"
import "../theme"

Rectangle {
    id: main

    // The page that is open has everything on the screen that belongs there.
    readonly property bool pageReady: pageLoader.status === Loader.Ready && pageLoader.item.ready
    readonly property bool pageBroken: pageLoader.status === Loader.Error

    color: Theme.window

    Binding {
        target: Theme
        property: "compact"
        value: main.width < 960
    }

    TitleBar {
        id: titleBar

        width: parent.width
        height: Theme.touchSize
        live: pageLoader.status === Loader.Ready && shell.instrumentReady
    }

    Loader {
        id: pageLoader

        // Data objects look for their values when they are created, so the instrument has to be there first.
        readonly property bool mayLoad: shell.instrumentReady || loadedPage === shell.page
        property string loadedPage

        anchors { left: parent.left; right: parent.right; top: titleBar.bottom; bottom: parent.bottom }
        // So that pages get the keys.
        focus: true
        Keys.onEscapePressed: shell.page = "home"
        Keys.onBackPressed: shell.page = "home"
        source: mayLoad ? shell.pageInfo.document : ""
        onLoaded: loadedPage = shell.page
    }

    Column {
        anchors.centerIn: pageLoader
        width: pageLoader.width - 8 * Theme.gap
        spacing: Theme.gap
        visible: !pageLoader.mayLoad

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.titleText
            text: shell.instrumentError ? "No instrument" : "Waiting for the instrument\u2026"
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Theme.quietText
            text: shell.instrumentError
        }
    }
}
