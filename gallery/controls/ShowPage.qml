import QtQuick 2.15
import graph_kit 1.0
import "../theme"

// A page around a chart that is a document of its own, and whose text can be shown. A chart that runs has `running` and,
// in `step`, the name of the function that its clock calls.
Page {
    id: page

    property string document
    property string step
    // How often pictures call it: its clock would never give two alike.
    property int stepsOfPicture: 0
    property int stepsTaken: 0
    property bool light: Theme.light
    property alias actions: actionRow.data
    readonly property Item shown: loader.item
    property bool showsCode: false

    ready: loader.status === Loader.Ready && (!shell.takesPictures || stepsTaken === stepsOfPicture)

    endControls: [
        Row {
            id: actionRow

            spacing: Theme.gap
        },
        ToggleButton {
            text: "Code"
            on: page.showsCode
            onClicked: page.showsCode = !page.showsCode
        }
    ]

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
        source: "../pages/" + page.document
        onLoaded: {
            item.focus = true;
            item.theme = Qt.binding(function () { return page.light ? Chart.Light : Chart.Dark; });
            if (shell.takesPictures && page.step !== "")
                item.running = false;
        }
    }

    // One at a time, for what is computed of the data takes part in between.
    Timer {
        interval: 1
        running: shell.takesPictures && loader.status === Loader.Ready && page.stepsTaken < page.stepsOfPicture
        repeat: true
        onTriggered: {
            page.shown[page.step]();
            ++page.stepsTaken;
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: page.showsCode
        radius: Theme.radius
        color: Theme.plotArea
        border.color: Theme.hairline

        Flickable {
            anchors { fill: parent; margins: Theme.gap }
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            contentWidth: code.width
            contentHeight: code.height

            Label {
                id: code

                font { family: "DejaVu Sans Mono"; pixelSize: Theme.smallText }
                lineHeight: 1.25
                elide: Text.ElideNone
                textFormat: Text.PlainText
                text: page.showsCode ? shell.source(page.document) : ""
            }
        }
    }
}
