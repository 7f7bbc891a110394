import QtQuick 2.15
import gallery 1.0
import graph_plugin 1.0

// The table of regions that is replayed, as rows for a RegionTable.
Item {
    id: recorded

    property var colors: []
    property var styles: []
    readonly property var rows: makeRows(begins.value, ends.value, values.value, names.value, types.value)

    function makeRows(from, to, levels, texts, kinds) {
        var rows = [];
        var knownKinds = [];
        for (var i = 0; from && to && levels && i < from.length; ++i) {
            var kind = kinds ? kinds[i] : "";
            if (knownKinds.indexOf(kind) < 0)
                knownKinds.push(kind);
            var place = knownKinds.indexOf(kind);
            rows.push({begin: from[i], end: to[i], value: levels[i], name: texts ? texts[i] : "",
                color: colors[place % colors.length], style: styles[place % styles.length]});
        }
        return rows;
    }

    BusValue {
        id: begins
        dbusAddress: "replay,regions"
        key: "begin"
    }

    BusValue {
        id: ends
        dbusAddress: "replay,regions"
        key: "end"
    }

    BusValue {
        id: values
        dbusAddress: "replay,regions"
        key: "value"
    }

    BusValue {
        id: names
        dbusAddress: "replay,regions"
        key: "names"
    }

    BusValue {
        id: types
        dbusAddress: "replay,regions"
        key: "types"
    }
}
