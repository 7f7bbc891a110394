import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0
import "../controls"
import "../theme"

Page {
    id: page

    readonly property var levels: [0.42, 0.66, 0.36, 0.62, 0.5]

    ready: bands.size > 0
    Component.onCompleted: {
        var texts = ["CH 21", "CH 24", "CH 30", "CH 33", "CH 38"];
        for (var i = 0; i < texts.length; ++i)
            bands.append(Qt.point(i, levels[i]), texts[i]);
        names.value = bands.names(bands.boundingRect());
    }

    PlotPoints {
        id: points
        xData: [0, 1, 2, 3, 4]
        yData: page.levels
    }

    // Points with names of their own.
    PlotBands {
        id: bands
    }

    BusValue {
        id: names
    }

    BusValue {
        id: values
        value: page.levels.map(function (y) { return (100 * y).toFixed(0) + " %"; })
    }

    BusValue {
        id: shortNames
        value: ["A", "B", "C", "D", "E"]
    }

    BusValue {
        id: icons
        value: ["launch", "splice", "connector", "bend", "end"].map(function (name) {
            return ":/icons/" + name + ".png";
        })
    }

    Grid {
        id: cards

        readonly property real cardWidth: Math.floor((width - 3 * spacing) / 4)
        readonly property real cardHeight: Math.floor((height - spacing) / 2)

        anchors.fill: parent
        columns: 4
        spacing: Theme.compact ? 6 : 10

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointDot"
            points: points
            penColor: Theme.traces[0]
            lineWidth: 6
            graphPoint: GraphPointDot {
                pointSize: 1
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointCircle"
            points: points
            penColor: Theme.traces[1]
            graphPoint: GraphPointCircle {
                pointSize: 7
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointCross"
            points: points
            penColor: Theme.traces[2]
            graphPoint: GraphPointCross {
                pointSize: 16
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointHorizontalLine"
            points: points
            penColor: Theme.traces[3]
            lineWidth: 4
            graphPoint: GraphPointHorizontalLine {
                pointSize: 20
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointVerticalLine"
            points: points
            penColor: Theme.traces[4]
            lineWidth: 4
            graphPoint: GraphPointVerticalLine {
                pointSize: 34
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointReflections"
            points: points
            penColor: Theme.traces[1]
            selectedPoint: 2
            graphPoint: GraphPointReflections {
                pointSize: 26
                labelColor: Theme.text
                labelFontSize: 10
                iconPaths: icons
                iconSize: 28
                invertColors: Theme.light
                iconBackgroundColor: Theme.raised
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointActiveMarker"
            points: bands
            penColor: Theme.traces[0]
            graphPoint: GraphPointActiveMarker {
                pointSize: 16
                firstLabels: names
                labelColor: Theme.text
                labelFontSize: 8
                secondLabels: values
                secondLabelColor: Theme.quietText
                secondLabelFontSize: 8
            }
        }

        PointCard {
            width: cards.cardWidth
            height: cards.cardHeight
            title: "GraphPointPictogramMarker"
            points: points
            penColor: Theme.traces[2]
            lineWidth: 1
            graphPoint: GraphPointPictogramMarker {
                labels: shortNames
                labelColor: Theme.text
                labelFontSize: 10
            }
        }
    }
}
