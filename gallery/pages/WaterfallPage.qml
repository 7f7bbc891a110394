import QtQuick 2.15
import "../controls"

// Sweeps as rows of colours, with their scale.
ShowPage {
    id: page

    document: "WaterfallChart.qml"
    step: "sweep"
    stepsOfPicture: 300
    onShownChanged: if (shown) shown.colorMap = Qt.binding(function () { return colors.choices[colors.currentIndex]; })

    controls: [
        NamedSelector {
            id: colors

            name: "Colours"
            choices: ["viridis", "turbo", "inferno", "grey"]
        },
        ToggleButton {
            text: "Run"
            on: Boolean(page.shown) && page.shown.running
            onClicked: page.shown.running = !page.shown.running
        }
    ]
}
