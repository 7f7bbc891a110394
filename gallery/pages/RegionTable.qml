import QtQuick 2.15
import QtQml 2.15
import graph_plugin 1.0

// Regions made from a list of {begin, end, value, name, color, style}. A value that is not a number marks a region
// without a measurement.
PlotRegions {
    id: table

    property var rows: []
    // The level of regions without a measurement in plots that draw all regions alike.
    property real missingValue: 0
    property Instantiator maker: Instantiator {
        model: table.rows
        onObjectAdded: function(index, object) { table.append(object); }
        onObjectRemoved: function(index, object) { table.remove(object); }

        PlotRegion {
            valid: !isNaN(modelData.value)
            begin: modelData.begin
            end: modelData.end
            value: valid ? modelData.value : table.missingValue
            name: modelData.name
            color: modelData.color
            plotStyle: modelData.style
        }
    }
}
