import QtQuick 2.15
import "../controls"
import "../theme"

// Four channels that are recorded while their last seconds roll by.
ShowPage {
    id: page

    readonly property bool following: Boolean(shown) && shown.following

    function scroll(part) {
        var axis = shown.axisX, way = part * (axis.maxVisible - axis.minVisible);
        shown.showRange(axis.minVisible + way, axis.maxVisible + way);
    }

    document: "RecorderChart.qml"
    step: "record"
    stepsOfPicture: 300
    onShownChanged: if (shown) shown.follow = Qt.binding(function () { return seconds.choices[seconds.currentIndex]; })

    controls: [
        NamedSelector {
            id: seconds

            name: "Seconds"
            choices: [5, 10, 60]
            currentIndex: 1
        },
        ToggleButton {
            text: "Follow"
            on: page.following
            onClicked: page.shown.following = !page.following
        },
        PushButton {
            text: "\u2039"
            onClicked: page.scroll(-0.5)
        },
        PushButton {
            text: "\u203a"
            enabled: !page.following
            onClicked: page.scroll(0.5)
        }
    ]
}
