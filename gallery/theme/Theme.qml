pragma Singleton
import QtQuick 2.15
import graph_plugin 1.0

// Colours and sizes of the whole screen.
QtObject {
    // Set by the window: less room, smaller texts and gaps.
    property bool compact: false
    // For bright surroundings.
    readonly property bool light: shell.light

    readonly property string family: "Roboto"
    readonly property int smallText: compact ? 12 : 13
    readonly property int bodyText: compact ? 14 : 15
    readonly property int valueText: compact ? 15 : 17
    readonly property int axisText: compact ? 14 : 16
    readonly property int titleText: compact ? 18 : 21

    // With Qt 5 the software renderer draws plots that target a framebuffer one pixel off the grid.
    readonly property int plotTarget: shell.softwareRendering ? GraphPlot.Image : GraphPlot.FramebufferObject

    readonly property int touchSize: 44
    readonly property int footerHeight: compact ? 32 : 38
    readonly property int gap: compact ? 8 : 12
    readonly property int radius: 5

    readonly property color window: light ? "#e9edf1" : "#12171d"
    readonly property color bar: light ? "#dbe1e7" : "#1a2129"
    readonly property color raised: light ? "#f7f9fb" : "#26303a"
    readonly property color pressed: light ? "#c5ced7" : "#33404d"
    readonly property color hairline: light ? "#b9c3cd" : "#2e3944"
    readonly property color plotArea: light ? "#ffffff" : "#090c10"
    readonly property color graticule: light ? "#dde3e9" : "#222b34"
    readonly property color text: light ? "#10161c" : "#e9eef3"
    readonly property color quietText: light ? "#52606e" : "#93a1af"
    readonly property color axisLabel: light ? "#3a4651" : "#b9c4cf"
    // Behind texts that lie over a trace.
    readonly property color overlay: light ? "#c0ffffff" : "#c012171d"
    // Over what is not in use.
    readonly property color veil: light ? "#80ffffff" : "#8012171d"
    // The same for values that are read while the trace runs.
    readonly property color readoutOverlay: light ? "#e6ffffff" : "#e612171d"
    // On a flag in one of the colours of cursors and markers.
    readonly property color flagText: light ? "#ffffff" : "#12171d"
    readonly property color accent: light ? "#0a6fc2" : "#4db8ff"
    readonly property color good: light ? "#1d8a4e" : "#5fd38d"
    readonly property color warning: light ? "#b45f06" : "#ffb454"
    readonly property color bad: light ? "#c8201e" : "#ff6b6b"

    readonly property color cursor: light ? "#c81e1e" : "#ff6b6b"
    readonly property color secondCursor: light ? "#20262c" : "#f2f2f2"
    readonly property var markers: light ? ["#6a3fc4", "#15803f"] : ["#c6a5ff", "#8fe3a4"]

    // Can be told apart without red and green; the first is the main trace.
    readonly property var traces: light ? ["#0878b8", "#b06000", "#1c8c3c", "#c02580", "#6a45c8", "#7a6a00"]
                                        : ["#3fd0ff", "#ffb02e", "#62e08a", "#ff77c8", "#b79cff", "#fff176"]
}
