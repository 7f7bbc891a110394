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

// As WCAG 2 defines it.
function luminance(color) {
    var parts = [color.r, color.g, color.b].map(part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4));
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
}

function contrast(one, two) {
    var a = luminance(one), b = luminance(two);
    return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
}

var black = Qt.rgba(0, 0, 0, 1);
var white = Qt.rgba(1, 1, 1, 1);

function opposite(color) {
    return contrast(color, black) > contrast(color, white) ? black : white;
}

// On which a text of this colour can be read above anything.
function behind(color) {
    return translucent(opposite(color), 0.7);
}

// For a text on a colour: that of the theme, if it can be read there.
function onto(color, theme) {
    return theme && contrast(color, theme.plotBackground) >= 3 ? theme.plotBackground : opposite(color);
}
