import QtQuick 2.15
import "../controls"
import "../theme"

// What a chart of a few lines gives.
ShowPage {
    id: page

    document: "ResponseChart.qml"
    light: colors.currentIndex === 1

    controls: [
        NamedSelector {
            id: colors

            name: "Colours"
            choices: ["Dark", "Light"]
            currentIndex: Theme.light ? 1 : 0
        }
    ]
    actions: [
        PushButton {
            text: "All"
            onClicked: page.shown.showAll()
        },
        PushButton {
            text: "Back"
            enabled: Boolean(page.shown) && page.shown.canGoBack
            onClicked: page.shown.back()
        }
    ]
}
