.pragma library

// What the controls do with cursors. Slots are called instead of writing properties: a binding of the application on
// that property stays in place.

function zoomRect(cursor) {
    return cursor && cursor.parent && cursor.parent.zoomRect ? cursor.parent.zoomRect : null;
}

// The plot that the cursor is on. A cursor without a chosen one tells of a new list of plots but not of a new first
// plot, so that a binding has to hear of the list.
function primaryPlot(cursor) {
    return cursor && cursor.plots.length >= 0 ? cursor.primaryPlot : null;
}

function primaryData(cursor) {
    var plot = primaryPlot(cursor);
    return plot ? plot.plotData : null;
}

function moveToColumn(cursor, column) {
    cursor.setPosOnScreen(Math.round(column));
}

// A horizontal cursor does not take a whole number that its value already starts with (0 after 0.4): a hair beside it
// is as good.
function moveToRow(cursor, row) {
    if (!cursor.primaryPlot)
        return;
    var value = cursor.primaryPlot.mapFromItemY(Math.round(row));
    cursor.setPosValue(value);
    if (cursor.posValue !== value)
        cursor.setPosValue(value + 1e-9 * cursor.primaryPlot.visibleRangeY());
}

// A marker that is moved out of the data disappears, hence the limits.
function moveMarker(cursor, marker, column) {
    var data = primaryData(cursor);
    if (!data || data.size < 1)
        return;
    var index = data.indexOf(cursor.primaryPlot.mapFromItemX(Math.round(column)));
    marker.setPosIndex(Math.max(0, Math.min(index, data.size - 1)));
}

// Places the cursor by `move`, also outside of what is visible, and pans the view to where it went.
function bringInto(cursor, move) {
    var stays = cursor.staysOnScreen;
    cursor.setStaysOnScreen(false);
    move();
    var rect = zoomRect(cursor);
    if (rect && (cursor.position < rect.left || cursor.position > rect.right))
        rect.moveLeft(cursor.position - rect.width / 2);
    cursor.setStaysOnScreen(stays);
}

function goToFirst(cursor) {
    bringInto(cursor, function () { cursor.setPosIndex(0); });
}

function goToLast(cursor) {
    var data = primaryData(cursor);
    if (data)
        bringInto(cursor, function () { cursor.setPosIndex(data.size - 1); });
}

function goToPeak(cursor) {
    bringInto(cursor, function () { cursor.setPeak(); });
}

// Whether something around an item that is dragged along a line, such as a list, is to have the swipes across it.
function isSwipedAcross(item, horizontal) {
    var across = false;
    for (var around = item.parent; around; around = around.parent) {
        if (around.flickableDirection === undefined || !around.interactive)
            continue;
        if (horizontal ? around.contentWidth > around.width : around.contentHeight > around.height)
            return false;
        across = across || (horizontal ? around.contentHeight > around.height : around.contentWidth > around.width);
    }
    return across;
}
