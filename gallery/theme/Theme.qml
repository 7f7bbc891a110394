pragma Singleton
import QtQuick 2.15
import graph_plugin 1.0

// Colours and sizes of the whole screen.
QtObject {
    // Set by the window: less room, smaller texts and gaps.
    property bool compact: false

    readonly property string family: "Roboto"
    readonly property int smallText: compact ? 12 : 13
    readonly property int bodyText: compact ? 14 : 15
    readonly property int valueText: compact ? 15 : 17
    readonly property int axisText: compact ? 14 : 16
    readonly property int titleText: compact ? 18 : 21

    // The software renderer draws plots that target a framebuffer one pixel off the grid.
    readonly property int plotTarget: shell.softwareRendering ? GraphPlot.Image : GraphPlot.FramebufferObject

    readonly property int touchSize: 44
    readonly property int footerHeight: compact ? 32 : 38
    readonly property int gap: compact ? 8 : 12
    readonly property int radius: 5

    readonly property color window: "#12171d"
    readonly property color bar: "#1a2129"
    readonly property color raised: "#26303a"
    readonly property color pressed: "#33404d"
    readonly property color hairline: "#2e3944"
    readonly property color plotArea: "#090c10"
    readonly property color graticule: "#222b34"
    readonly property color text: "#e9eef3"
    readonly property color quietText: "#93a1af"
    readonly property color axisLabel: "#b9c4cf"
    // Behind texts that lie over a trace.
    readonly property color overlay: "#c012171d"
    // The same for values that are read while the trace runs.
    readonly property color readoutOverlay: "#e612171d"
    readonly property color accent: "#4db8ff"
    readonly property color good: "#5fd38d"
    readonly property color warning: "#ffb454"

    readonly property color cursor: "#ff6b6b"
    readonly property color secondCursor: "#f2f2f2"
    readonly property var markers: ["#c6a5ff", "#8fe3a4"]

    // Told apart also without red and green; the first is the main trace.
    readonly property var traces: ["#3fd0ff", "#ffb02e", "#62e08a", "#ff77c8", "#b79cff", "#fff176"]
}
