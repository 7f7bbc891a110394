import QtQuick 2.15
import "../controls"
import "../theme"

// A spectrum from 20 Hz to 20 kHz with what it was at most and on average.
ShowPage {
    id: page

    property string message

    function write(type) {
        var file = shell.exportFile("audio." + type);
        message = "Writing " + file;
        if (type === "csv")
            shown.exportData(file, true);
        else
            shown.exportImage(file, 2);
    }

    document: "AudioChart.qml"
    step: "sweep"
    stepsOfPicture: 60

    controls: [
        ToggleButton {
            text: "Run"
            on: Boolean(page.shown) && page.shown.running
            onClicked: page.shown.running = !page.shown.running
        },
        PushButton {
            text: "Clear"
            onClicked: page.shown.clear()
        }
    ]
    actions: Repeater {
        model: ["png", "pdf", "csv"]

        PushButton {
            text: modelData.toUpperCase()
            onClicked: page.write(modelData)
        }
    }
    readings: Label {
        anchors.verticalCenter: parent.verticalCenter
        text: page.message || "Pictures and samples are written to " + shell.exportFile("")
        font.pixelSize: Theme.smallText
        color: Theme.quietText
    }

    Connections {
        target: page.shown
        function onExportFinished(file, error) { page.message = error || "Written: " + file; }
    }
}
