import QtQuick 2.15
import "../controls"
import "../theme"

// Four channels that are recorded while their last seconds roll by.
ShowPage {
    id: page

    readonly property bool following: Boolean(shown) && shown.following

    // Not beyond what is recorded.
    function scroll(part) {
        var axis = shown.axisX, width = axis.maxVisible - axis.minVisible;
        var begin = Math.max(axis.minValue, Math.min(axis.minVisible + part * width, axis.maxValue - width));
        shown.showRange(begin, begin + width);
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
            enabled: Boolean(page.shown) && page.shown.axisX.minVisible > page.shown.axisX.minValue
            onClicked: page.scroll(-0.5)
        },
        PushButton {
            text: "\u203a"
            enabled: !page.following
            onClicked: page.scroll(0.5)
        }
    ]
}
