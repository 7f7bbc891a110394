import QtQuick 2.15
import QtQuick.Window 2.15
import graph_plugin 1.0
import graph_kit 1.0
import "theme.js" as Theme

// A chart that needs nothing but its traces. The chart itself is written in C++; here is what a user touches, each part
// loaded when it is needed for the first time.
ChartView {
    id: chart

    // A binding that calls one of these is evaluated again when the text may be another one.
    function formatX(value) { return bindingTexts.current.formatX(value); }
    function formatY(trace, value) { return bindingTexts.current.formatY(trace, value); }
    function formatDifferenceY(trace, difference) { return bindingTexts.current.formatDifferenceY(trace, difference); }

    property bool _axisTouched: false
    readonly property bool _zooms: zoom.enabled && (zoom.horizontal || zoom.vertical)

    /*! A tap on the plot area, in its pixels. */
    signal tapped(real x, real y)

    /*! \internal
        A ChartCursor of the document. */
    property GraphCursor declaredCursor: null
    readonly property bool _bringsCursor: cursor.enabled && !declaredCursor
    readonly property GraphCursor _shownCursor: declaredCursor ? declaredCursor : cursorLoader.shown ? cursorLoader.item : null
    // For the tags and flags of cursors, which keep clear of them.
    readonly property alias liveButton: liveLoader
    legendBox: legendLoader.item && !legendLoader.isAbove ? legendLoader.item.box : null
    legendRow: legendLoader.item && legendLoader.isAbove && legendLoader.item.box.visible ? legendRowItem : null
    // x runs to the right in every language, and so do the texts beside it.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    // What the document writes comes before what the cursor says.
    property bool _isComplete: false

    function _tellOfCursor() {
        if (_isComplete && (!_shownCursor || isNaN(_shownCursor._awaited)))
            cursor.posValue = _shownCursor && _shownCursor.posIndex >= 0 ? _shownCursor.posValue : NaN;
    }

    // Where the document, or a chart with the same x, wants it to be.
    function _placeCursor() {
        if (_shownCursor && _shownCursor.posValue === cursor.posValue)
            return;
        if (declaredCursor && !isNaN(cursor.posValue))
            declaredCursor.placeAtValue(cursor.posValue);
        else if (!declaredCursor)
            cursorLoader.bring(cursor.posValue);
        // It may be on that sample already.
        if (_shownCursor)
            _tellOfCursor();
    }

    on_ShownCursorChanged: {
        if (!_isComplete)
            return;
        if (declaredCursor && !isNaN(cursor.posValue))
            _placeCursor();
        else
            _tellOfCursor();
    }
    Connections {
        target: chart._shownCursor
        function onPosValueChanged() { chart._tellOfCursor(); }
        function on_AwaitedChanged() { chart._tellOfCursor(); }
    }
    Connections {
        target: chart.cursor
        function onPosValueChanged() { chart._placeCursor(); }
    }

    function _pan(x, y) {
        if (zoom.horizontal)
            zoomRect.moveLeft(zoomRect.left + x * zoomRect.width);
        if (zoom.vertical)
            zoomRect.moveBottom(zoomRect.bottom + y * zoomRect.height);
    }

    function _press(event) {
        if (event.key === Qt.Key_Escape && cursorLoader.pinned) {
            cursorLoader.pinned = false;
            return true;
        }
        if ((declaredCursor || cursorLoader.pinned && cursorLoader.shown) && cursorKeys.press(event.key, event.isAutoRepeat))
            return true;
        return _zooms && zoom.keys && _pressZoom(event);
    }

    function _pressZoom(event) {
        switch (event.key) {
        case Qt.Key_Left:
        case Qt.Key_Right:
            _pan(event.key === Qt.Key_Left ? -0.1 : 0.1, 0);
            return true;
        case Qt.Key_Up:
        case Qt.Key_Down:
            _pan(0, event.key === Qt.Key_Down ? -0.1 : 0.1);
            return true;
        case Qt.Key_Home:
        case Qt.Key_End:
            _pan(event.key === Qt.Key_Home ? -Infinity : Infinity, 0);
            return true;
        case Qt.Key_Plus:
        case Qt.Key_Equal:
        case Qt.Key_Minus:
            zoomRect.zoom(Qt.vector2d(zoomRect.width, zoomRect.height).times(event.key === Qt.Key_Minus ? 1.25 : 0.8),
                          Qt.point((zoomRect.left + zoomRect.right) / 2, (zoomRect.top + zoomRect.bottom) / 2));
            return true;
        case Qt.Key_0:
            showAll();
            return true;
        case Qt.Key_Backspace:
            if (event.modifiers & Qt.ShiftModifier)
                forward();
            else
                back();
            return true;
        }
        return false;
    }

    touched: _axisTouched || Boolean(areaLoader.item && (areaLoader.item.pinching || areaLoader.item.holding))
             || Boolean(boxLoader.item && boxLoader.item.drawing)
    Keys.onPressed: function(event) { event.accepted = _press(event); }
    // The only chart of a window need not be touched first.
    Component.onCompleted: {
        _isComplete = true;
        if (isNaN(cursor.posValue))
            _tellOfCursor();
        else
            _placeCursor();
        Qt.callLater(function () {
            if (chart && chart.Window.window && chart.Window.activeFocusItem === chart.Window.contentItem)
                chart.forceActiveFocus();
        });
    }

    Diagnosis { parent: chart.overlay }

    Text {
        parent: chart.underlay
        visible: chart.titleShown && width > 0 && chart.plotArea.height > 0
        // Above the plot area: beside it are the units of the axes.
        x: Math.round(chart.plotArea.x + (chart.plotArea.width - width) / 2)
        y: Math.round(chart.colors.fontSize * 0.7)
        width: Math.min(implicitWidth, chart.plotArea.width)
        elide: Text.ElideRight
        // One line, as there is room for one, and as axes write theirs.
        text: chart.title.replace(/\s*\n\s*/g, " ")
        textFormat: Text.PlainText
        color: chart.colors.textColor
        font.family: chart.colors.fontFamily
        font.pixelSize: Math.round(chart.colors.fontSize * 1.2)
        renderType: Text.NativeRendering
    }

    Item {
        id: touchPlane

        parent: chart.underlay
        x: chart.plotArea.x
        y: chart.plotArea.y
        width: chart.plotArea.width
        height: chart.plotArea.height

        Loader {
            id: areaLoader

            property bool renews: false

            active: (chart.zoom.enabled || chart.cursor.enabled) && !renews
            anchors.fill: parent

            sourceComponent: ZoomArea {
                onStuck: {
                    areaLoader.renews = true;
                    areaLoader.renews = false;
                }
                zoomRect: chart.zoomRect
                // A swipe along the only direction that may move, where all of it is in view, is for what is around the chart.
                interactive: chart._zooms && !pinching && !holding
                             && (_pans === (Qt.Horizontal | Qt.Vertical)
                                 || (_pans === Qt.Horizontal ? chart.zoomRect.width : chart.zoomRect.height) < 1)
                zooms: chart._zooms
                wheelDirections: chart.zoom.wheel ? Qt.Horizontal | Qt.Vertical : 0
                _pans: (chart.zoom.horizontal ? Qt.Horizontal : 0) | (chart.zoom.vertical ? Qt.Vertical : 0)
                boxZoom: boxLoader.item
                onPressed: {
                    chart.recordStep();
                    chart.forceActiveFocus(Qt.MouseFocusReason);
                }
                onTapped: function(x, y) {
                    cursorLoader.tap(x, y);
                    chart.tapped(x, y);
                }
                onDoubleTapped: {
                    cursorLoader.takeBackTap();
                    chart.showAll();
                }
                Component.onCompleted: chart.flickable = this
            }
        }

        Loader {
            id: boxLoader

            active: chart._zooms && chart.zoom.box
            anchors.fill: parent
            sourceComponent: BoxZoom { zoomRect: chart.zoomRect; color: chart.colors.cursorColor }
        }

        HoverHandler {
            id: hover

            enabled: chart._bringsCursor && chart.cursor.hover
            acceptedDevices: PointerDevice.Mouse
            onPointChanged: if (hovered) cursorLoader.hoverAt(point.position.x, point.position.y)
        }
    }

    Repeater {
        parent: chart.underlay
        model: chart._zooms && chart.zoom.axes ? [Qt.AlignLeft, Qt.AlignRight, Qt.AlignTop, Qt.AlignBottom] : []

        AxisArea {
            side: modelData
            view: chart
            onPressedChanged: chart._axisTouched = pressed
            Component.onDestruction: if (pressed && chart) chart._axisTouched = false
        }
    }

    Loader {
        id: cursorLoader

        property bool pinned: false
        readonly property bool shown: Boolean(item) && item.opacity > 0
        // Rolled out of the window with its sample.
        readonly property bool isLost: chart.following && Boolean(item) && !item.inView
        property var beforeTap: null

        function place(x, y) {
            active = true;
            if (item)
                item.placeAt(x, y);
        }

        function hoverAt(x, y) {
            if (!pinned && !chart.touched && !chart.zoomRect.moving && chart.traces.length > 0)
                place(x, y);
        }

        // Another tap on the line takes it away.
        function tap(x, y) {
            if (!chart._bringsCursor || chart.traces.length === 0)
                return;
            beforeTap = { pinned: pinned, value: item ? item.posValue : 0 };
            if (pinned && item && Math.abs(x - item.posOnScreen) < 12) {
                pinned = false;
                return;
            }
            place(x, y);
            pinned = true;
        }

        function bring(value) {
            if (isNaN(value)) {
                pinned = false;
                return;
            }
            active = true;
            if (item)
                item.placeAtValue(value);
            pinned = true;
        }

        // It was the first one of a double tap.
        function takeBackTap() {
            if (!beforeTap)
                return;
            pinned = beforeTap.pinned;
            if (pinned && item)
                item.setPosValue(beforeTap.value);
            beforeTap = null;
        }

        parent: chart.underlay
        active: false
        onIsLostChanged: if (isLost) pinned = false

        sourceComponent: ChartCursor {
            view: chart
            parent: chart
            isDeclared: false
            opacity: chart._bringsCursor && inView && isNaN(_awaited) && (cursorLoader.pinned || hover.hovered) ? 1 : 0
        }
    }

    CursorKeys {
        id: cursorKeys

        parent: chart.underlay
        cursor: chart.declaredCursor || cursorLoader.item
    }

    // The chart places it.
    Item {
        id: legendRowItem

        parent: chart.overlay
        width: parent ? parent.width : 0
        height: legendLoader.heightIn(chart.height / 16)
    }

    Loader {
        id: legendLoader

        // Not those that are all colours, which a ColorScale explains.
        readonly property var named: chart.traces.filter(plot => !(plot instanceof WaterfallPlot || plot instanceof HeatmapPlot))
        // A small chart has one row of names above its plot area, a tiny one needs all of its room for the traces. In a
        // larger one they are there where every corner is taken, as long as there is room for some letters of each.
        readonly property bool isLow: chart.width < chart.colors.fontSize * 28 && chart.height < chart.colors.fontSize * 21
        readonly property bool isAbove: !chart.legend.placed && (isLow || chart.legend.withoutCorner
                                        && chart.width > (named.length * 6 + 4) * chart.colors.fontSize)
        readonly property bool hasRoom: chart.width >= chart.colors.fontSize * 12 && chart.height >= chart.colors.fontSize * 9
        // Names only: the traces need the room.
        readonly property bool isSmall: chart.width < chart.colors.fontSize * 31
        readonly property int fontSize: Math.round(chart.colors.fontSize * (isSmall ? 0.85 : 1))

        // Those of a thousand traces would cover all of them: what is not to be seen is not laid out.
        readonly property bool areFew: named.length < 50 || 2 * 42 * 1.19 * chart.colors.fontSize
                                       * named.filter(plot => Boolean(plot.name)).length < width * height

        // For fingers where there is room, else as close as the text allows.
        function heightIn(room) {
            return Math.round(Math.max(fontSize * 1.4, Math.min(fontSize * 2.2, 40, room)));
        }

        parent: isAbove ? legendRowItem : chart.overlay
        active: chart.legend.enabled && named.length >= chart.legend.leastTraces && hasRoom && areFew
        anchors.fill: parent

        sourceComponent: Legend {
            readonly property bool hasRoomForValues: !legendLoader.isSmall
                                                     && (!legendLoader.isAbove || width > plots.length * fontSize * 10)

            readonly property size boxSize: Qt.size(box.width, box.height)

            function tellSize() {
                if (!cursor && !legendLoader.isAbove)
                    chart.legendSize = boxSize;
            }

            // Names that hide their traces are of no use.
            visible: legendLoader.isAbove || boxSize.width * boxSize.height < width * height / 2
            onBoxSizeChanged: tellSize()
            onCursorChanged: tellSize()
            plots: legendLoader.named
            cursor: !chart.legend.values || !hasRoomForValues ? null : chart.declaredCursor ? chart.declaredCursor : cursorLoader.shown ? cursorLoader.item : null
            newest: chart.legend.newest && hasRoomForValues
            atRight: chart.legend.atRight
            atBottom: chart.legend.atBottom
            inARow: chart.legend.inARow || legendLoader.isAbove || legendLoader.isLow
            inset: legendLoader.isAbove ? 0 : 4
            entryHeight: legendLoader.isAbove ? height : legendLoader.heightIn(height / (2 * Math.max(1, plots.length)))
            fontSize: legendLoader.fontSize
            backgroundColor: legendLoader.isAbove ? "transparent" : Theme.translucent(chart.colors.plotBackground, 0.85)
        }
    }

    Loader {
        id: liveLoader

        parent: chart.overlay
        active: chart.follow > 0
        visible: active && !chart.following
        anchors { right: parent.right; bottom: parent.bottom; margins: 8 }
        sourceComponent: LiveButton { view: chart }
    }
}
