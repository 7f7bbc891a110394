.pragma library

// The Chart that an item is in; null elsewhere.
function chartOf(item) {
    for (var above = item ? item.parent : null; above; above = above.parent) {
        if (above.colors && above.colors.plotBackground !== undefined)
            return above;
    }
    return null;
}

// Its colours and font.
function of(item) {
    var chart = chartOf(item);
    return chart ? chart.colors : null;
}

function translucent(color, opacity) {
    return Qt.rgba(color.r, color.g, color.b, opacity);
}
