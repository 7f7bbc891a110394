import QtQuick 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

/*! \brief Names the traces of a chart beside their colours.

A child of a GraphView: it covers the plot area and shows its entries in one corner. A tap on an entry hides or shows that
trace. A Chart has one of its own, see Chart::legend. Entries that do not fit below each other start another column.
*/
Item {
    id: legend

    /*! The plots to name; the text is the \c name of a Trace, the \c label of the data of any other plot. Those without one
        are left out. */
    property var plots: []
    /*! Whose values are written behind the names; null by default. */
    property GraphCursor cursor: null
    /*! Whether the newest values are written there while there is no cursor; false by default. */
    property bool newest: false
    /*! The corner: at the right (true) and above (atBottom false) by default. */
    property bool atRight: true
    property bool atBottom: false
    /*! Entries one beside the other instead of one below the other; false by default. */
    property bool inARow: false
    readonly property var chart: Theme.chartOf(legend)
    readonly property var theme: chart ? chart.colors : null
    /*! Of the names and values, and what is behind them; inside of a Chart those of its theme, elsewhere white on
        translucent black, or a darker text on translucent white. */
    property color textColor: theme ? theme.textColor : "white"
    property color backgroundColor: theme ? Theme.translucent(theme.plotBackground, 0.85) : Theme.behind(textColor)
    /*! Of the names and values; inside of a Chart those of its theme. */
    property string fontFamily: theme ? theme.fontFamily : "Roboto"
    property int fontSize: theme ? theme.fontSize : 14
    /*! 40 pixels. */
    property real entryHeight: 40
    /*! Distance from the edges, 4 pixels. */
    property real inset: 4
    // What of it is painted.
    readonly property alias box: box
    readonly property int _rows: Math.max(1, Math.floor((height - 2 * inset) / entryHeight))

    // Of an entry, without its name.
    readonly property int _beforeName: inARow ? 21 : 32
    readonly property int _behindName: inARow ? 8 : 10
    readonly property real _widestName: inARow ? widestInRow() : Math.max(40, legend.width * 0.4)

    // Long names share what short ones leave.
    function widestInRow() {
        var widths = [], room = width - 2 * inset - (more.visible ? more.width : 0);
        for (var i = 0; i < entries.count; ++i) {
            var entry = entries.itemAt(i);
            widths.push(entry ? entry.nameWidth : 0);
            room -= entry ? entry.otherWidth : 0;
        }
        widths.sort((one, other) => one - other);
        for (var j = 0; j < widths.length; ++j) {
            var share = Math.max(16, Math.floor(room / (widths.length - j)));
            if (widths[j] > share)
                return share;
            room -= widths[j];
        }
        return Infinity;
    }

    function nameOf(plot) {
        return !plot ? "" : plot.name ? plot.name : plot.plotData ? plot.plotData.label : "";
    }

    // A trace without a name tells nobody anything.
    readonly property var _named: {
        var named = [];
        for (var i = 0; plots && i < plots.length; ++i) {
            if (nameOf(plots[i]) !== "")
                named.push(plots[i]);
        }
        return named;
    }

    // In a row, those that have room for some letters.
    readonly property int _fitting: Math.max(1, Math.floor((width - 2 * inset) / _leastWidth))
    readonly property real _leastWidth: _beforeName + _behindName + 2 * fontSize
    // Of a thousand names those that have room at all.
    readonly property var _shown: !inARow ? _named.slice(0, Math.max(200, _rows * Math.floor(width / 42)))
                                  : _named.length <= _fitting ? _named : _named.slice(0, Math.max(1, Math.floor((width - 2 * inset - 2 * fontSize) / _leastWidth)))

    // The ends of the axis, with a digit more, are as long as values get. Other changes of the texts are no matter for that.
    function longestValue(plot) {
        var axis = (cursor || newest) && chart && plot && plot.readings !== false && plot.plotData
                   && plot.plotData.size > 0 ? plot.axisY : null;
        if (!axis)
            return "";
        var longest = "";
        [axis.minVisible, axis.maxVisible, (axis.minVisible + axis.maxVisible) / 2].forEach(function (value) {
            var text = chart.bindingTexts.formatY(plot, value * 0.98765432);
            if (text.length > longest.length)
                longest = text;
        });
        return longest;
    }

    Rectangle {
        id: box

        x: legend.atRight ? legend.width - width - legend.inset : legend.inset
        y: legend.atBottom ? legend.height - height - legend.inset : legend.inset
        width: grid.width
        height: grid.height
        visible: entries.count > 0
        radius: 4
        color: legend.backgroundColor

        Grid {
            id: grid

            readonly property real widest: {
                var widest = 0;
                for (var i = 0; !legend.inARow && i < entries.count; ++i) {
                    var entry = entries.itemAt(i);
                    if (entry)
                        widest = Math.max(widest, entry.wantedWidth);
                }
                return widest;
            }

            flow: legend.inARow ? Grid.LeftToRight : Grid.TopToBottom
            rows: legend.inARow ? 1 : Math.min(Math.max(1, entries.count), legend._rows)

            Repeater {
                id: entries

                model: legend._shown

                Item {
                    id: entry

                    readonly property var plot: modelData
                    readonly property alias value: reader.text
                    // With the room that its values have needed, so that changing digits move nothing.
                    readonly property real wantedWidth: name.width + otherWidth
                    readonly property real otherWidth: name.x + (reader.room > 0 ? reader.room + 12 : 0) + legend._behindName
                    readonly property real nameWidth: Math.ceil(name.implicitWidth)

                    // All entries of a column are as wide as its widest.
                    width: legend.inARow ? wantedWidth : Math.max(wantedWidth, grid.widest)
                    height: legend.entryHeight

                    // Writes the value and places it.
                    LegendValue {
                        id: reader

                        chart: legend.chart
                        plot: entry.plot
                        cursor: legend.cursor
                        newest: legend.newest
                        label: reading
                        longest: widest.advanceWidth
                        end: entry.width - legend._behindName
                    }

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        x: legend.inARow ? 4 : 8
                        width: legend.inARow ? 12 : 16
                        height: 4
                        radius: 2
                        opacity: name.opacity
                        color: entry.plot ? entry.plot.penColor : "transparent"
                    }

                    Text {
                        id: name

                        anchors.verticalCenter: parent.verticalCenter
                        x: legend._beforeName
                        width: Math.min(entry.nameWidth, legend._widestName)
                        elide: Text.ElideRight
                        opacity: entry.plot && entry.plot.visible ? 1 : 0.4
                        text: legend.nameOf(entry.plot)
                        textFormat: Text.PlainText
                        color: legend.textColor
                        font.family: legend.fontFamily
                        font.pixelSize: legend.fontSize
                        renderType: Text.NativeRendering
                    }

                    Text {
                        id: reading

                        TextMetrics {
                            id: widest

                            font: reading.font
                            text: legend.longestValue(entry.plot)
                        }

                        anchors.verticalCenter: parent.verticalCenter
                        textFormat: Text.PlainText
                        color: legend.textColor
                        font.family: legend.fontFamily
                        font.pixelSize: legend.fontSize
                        renderType: Text.NativeRendering
                    }

                    MouseArea {
                        anchors.fill: parent
                        onClicked: if (entry.plot) entry.plot.visible = !entry.plot.visible
                    }
                }
            }

            // How many are left out.
            Text {
                id: more

                visible: legend.inARow && legend._shown.length < legend._named.length
                height: legend.entryHeight
                rightPadding: 4
                verticalAlignment: Text.AlignVCenter
                text: "+" + (legend._named.length - legend._shown.length)
                textFormat: Text.PlainText
                color: legend.textColor
                font.family: legend.fontFamily
                font.pixelSize: legend.fontSize
                renderType: Text.NativeRendering
            }
        }
    }
}
