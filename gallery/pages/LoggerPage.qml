import QtQuick 2.15
import "../controls"
import "../theme"

// A strip chart recorder: four channels that move on while they are recorded.
Page {
    id: page

    readonly property var spans: [5, 20, 60]
    readonly property real span: spans[spanSelector.currentIndex]
    property bool running: true
    // The right end of the strips while they are held.
    property real heldEnd: 0
    readonly property real latest: strips.count > 0 && strips.itemAt(0) ? strips.itemAt(0).latest : 0
    readonly property real end: Math.max(span, running ? latest : heldEnd)

    function hold(end) {
        heldEnd = Math.max(span, Math.min(latest, end));
        running = false;
    }

    ready: latest > 0

    controls: [
        NamedSelector {
            id: spanSelector

            name: "Seconds"
            choices: page.spans
            currentIndex: 1
        },
        ToggleButton {
            text: "Run"
            on: page.running
            onClicked: page.running ? page.hold(page.end) : page.running = true
        },
        PushButton {
            text: "\u2039"
            enabled: page.end > page.span
            onClicked: page.hold(page.end - page.span / 2)
        },
        PushButton {
            text: "\u203a"
            enabled: !page.running && page.end < page.latest
            onClicked: page.hold(page.end + page.span / 2)
        }
    ]

    readings: Repeater {
        model: strips.count

        Reading {
            readonly property LoggerStrip strip: strips.itemAt(index)

            label: strip ? strip.samples.label : ""
            value: strip ? strip.reading : ""
            textColor: strip ? strip.color : Theme.text
            widestValue: "888.88 \u00b0C"
            interval: shell.takesPictures ? 0 : 250
        }
    }

    Column {
        id: column

        readonly property real lowestMargin: strips.count > 3 && strips.itemAt(3) ? strips.itemAt(3).timeMargin : 0

        anchors.fill: parent
        spacing: Theme.compact ? 4 : 6

        Repeater {
            id: strips

            model: ["ch1", "ch2", "ch3", "ch4"]

            LoggerStrip {
                width: column.width
                height: Math.floor((column.height - column.lowestMargin - 3 * column.spacing) / 4) + timeMargin
                channel: modelData
                color: Theme.traces[index]
                begin: page.end - page.span
                end: page.end
                namesTimes: index === 3
            }
        }
    }
}
