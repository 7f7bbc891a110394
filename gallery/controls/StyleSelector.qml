import QtQuick 2.15
import graph_plugin 1.0

// How the plot draws its samples.
SegmentedSelector {
    property GraphPlot plot

    choices: ["Fill", "Line", "Max", "Min", "Bars", "Points"]
    currentIndex: plot.plotStyle
    onActivated: function(index) { plot.plotStyle = index; }
}
