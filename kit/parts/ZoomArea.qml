import QtQuick 2.15
import QtQuick.Window 2.15
import graph_plugin 1.0

/*! \brief Panning and zooming of a chart by hand: drag, flick, pinch, wheel and double tap.

A child of a GraphView, above the plots; a Chart has one of its own. A drag or flick pans, a pinch zooms, the wheel
zooms at the pointer, with Shift vertically and with Control both ways, and a double tap shows everything again. Which
directions may be zoomed is the \c zoomAxis of the view's ZoomRect, which allows none unless the document sets it.
*/
Flickable {
    id: area

    /*! What it moves: the zoom rectangle of the view that it is in, unless another one is written. */
    property ZoomRect zoomRect: parent && parent.zoomRect ? parent.zoomRect : null
    /*! Zoom factor of one notch of the wheel, 1.25. */
    property real wheelFactor: 1.25
    /*! Fingers closer to each other than this in one direction do not zoom in it, 48 pixels. */
    property real leastSpread: 48
    /*! Directions that the wheel zooms in without a key, Qt.Horizontal; with 0 it is for what is around the view. */
    property int wheelDirections: Qt.Horizontal
    /*! False leaves nothing but taps; true by default. */
    property bool zooms: true
    /*! A BoxZoom that draws its rectangle after a long press; null by default. */
    property BoxZoom boxZoom: null
    /*! Whether two fingers are zooming. */
    readonly property bool pinching: pinchArea.started
    /*! Whether a long press is drawing the rectangle of boxZoom. */
    readonly property bool holding: touch.holding

    /*! \internal
        Of three fingers Qt may lose the one that drags, and then drags when all of them have left. */
    signal stuck()

    /*! A tap that was not the start of anything else, in pixels of the plot area. */
    signal tapped(real x, real y)
    /*! After two taps, which show everything. */
    signal doubleTapped(real x, real y)
    /*! The beginning of any touch. */
    signal pressed()

    /*! Zooms by the factors, of which those above 1 show more, and keeps the values at the pixel (px, py) in their
        place. */
    function zoomAt(px, py, factorX, factorY) {
        if (!zoomRect)
            return;
        zoomRect.zoomX(zoomRect.width * factorX, fractionAtX(px));
        zoomRect.zoomY(zoomRect.height * factorY, fractionAtY(py));
    }

    // Directions in which fingers may move what is visible.
    property int _pans: Qt.Horizontal | Qt.Vertical

    // The part that is visible once the fingers have moved apart, or towards each other, from one distance to another.
    function pinchedPart(part, startSpread, spread, least, most) {
        return Math.max(least, Math.min(part * startSpread / Math.max(1, spread), most));
    }

    /*! Shows everything. */
    function showAll() {
        if (zoomRect)
            zoomRect.setCenterAndZoom(Qt.vector2d(1, 1), Qt.point(0.5, 0.5));
    }

    // As the plots map it: the last pixel is the end of the visible range.
    function fractionAtX(px) {
        return zoomRect.left + px / Math.max(1, width - 1) * zoomRect.width;
    }

    function fractionAtY(py) {
        return zoomRect.bottom - py / Math.max(1, height - 1) * zoomRect.height;
    }

    // What a rectangle is drawn over is to stay.
    Connections {
        target: area.boxZoom
        function onDrawingChanged() {
            if (area.boxZoom.drawing)
                area.cancelFlick();
        }
    }

    boundsBehavior: Flickable.StopAtBounds
    interactive: zooms && !pinchArea.started && !holding
    flickableDirection: _pans === Qt.Horizontal ? Flickable.HorizontalFlick
                        : _pans === Qt.Vertical ? Flickable.VerticalFlick : Flickable.AutoFlickDirection

    PinchArea {
        id: pinchArea

        property bool started: false
        property var start
        // Qt says nothing of fingers that an item loses when it goes.
        readonly property bool isThere: area.visible && area.enabled && area.Window.window !== null

        // Not in the content, which moves under the fingers.
        parent: area
        anchors.fill: parent

        onIsThereChanged: if (!isThere) started = false
        onPinchStarted: function(pinch) {
            if (!area.zoomRect || !area.zooms)
                return;
            start = {
                width: area.zoomRect.width,
                height: area.zoomRect.height,
                spreadX: Math.abs(pinch.startPoint1.x - pinch.startPoint2.x),
                spreadY: Math.abs(pinch.startPoint1.y - pinch.startPoint2.y),
                x: area.fractionAtX(pinch.startCenter.x),
                y: area.fractionAtY(pinch.startCenter.y)
            };
            started = true;
        }
        onPinchUpdated: function(pinch) {
            if (!started || !area.zoomRect)
                return;
            var rect = area.zoomRect;
            var width = rect.width;
            var height = rect.height;
            if (start.spreadX >= area.leastSpread && rect.zoomAxis & Qt.Horizontal)
                width = area.pinchedPart(start.width, start.spreadX, Math.abs(pinch.point1.x - pinch.point2.x),
                                         rect.minWidth, rect.boundingRect.width);
            if (start.spreadY >= area.leastSpread && rect.zoomAxis & Qt.Vertical)
                height = area.pinchedPart(start.height, start.spreadY, Math.abs(pinch.point1.y - pinch.point2.y),
                                          rect.minHeight, rect.boundingRect.height);
            // The values that were between the fingers stay there, also while both fingers move. All in one change, for
            // which every axis, plot and cursor of the chart does its work once.
            var left = start.x - pinch.center.x / Math.max(1, area.width - 1) * width;
            var bottom = start.y + pinch.center.y / Math.max(1, area.height - 1) * height;
            if (!(area._pans & Qt.Horizontal))
                left = rect.left;
            if (!(area._pans & Qt.Vertical))
                bottom = rect.bottom;
            rect.setCenterAndZoom(Qt.vector2d(width, height), Qt.point(left + width / 2, bottom - height / 2));
        }
        onPinchFinished: started = false

        component Finger: PointHandler {
            acceptedDevices: PointerDevice.TouchScreen
            onActiveChanged: if (!active) Qt.callLater(touch.lookAround)
        }

        Finger { id: one }
        Finger { id: two }
        Finger { id: three }

        MouseArea {
            id: touch

            function lookAround() {
                if (area.dragging && !one.active && !two.active && !three.active)
                    area.stuck();
            }

            property bool holding: false
            property bool mayRest: false
            property bool rested: false
            property point start

            // A process that was busy hears of the time before it hears what the finger did in it: moved on, or left.
            function rest(x, y) {
                if (!pressed || !mayRest)
                    return;
                rested = true;
                if (!area.boxZoom || area.moving || Math.hypot(mouseX - x, mouseY - y) > Qt.styleHints.startDragDistance)
                    return;
                holding = true;
                area.boxZoom.begin(mouseX, mouseY);
            }

            anchors.fill: parent
            preventStealing: holding
            onPressed: function(mouse) {
                mayRest = rested = false;
                start = Qt.point(mouse.x, mouse.y);
                area.pressed();
            }
            onClicked: function(mouse) {
                // A swipe that nothing takes is no tap.
                if (!rested && Math.hypot(mouse.x - start.x, mouse.y - start.y) < 2 * Qt.styleHints.startDragDistance)
                    area.tapped(mouse.x, mouse.y);
            }
            onDoubleClicked: function(mouse) {
                if (area.zooms)
                    area.showAll();
                area.doubleTapped(mouse.x, mouse.y);
            }
            onPressAndHold: function(mouse) {
                mouse.accepted = false; // may still become a tap
                mayRest = true;
                Qt.callLater(rest, mouse.x, mouse.y);
            }
            onPositionChanged: function(mouse) {
                if (holding && area.boxZoom)
                    area.boxZoom.move(mouse.x, mouse.y);
            }
            onReleased: {
                if (holding && area.boxZoom)
                    area.boxZoom.end();
                holding = false;
            }
            onCanceled: {
                if (holding && area.boxZoom)
                    area.boxZoom.cancel();
                holding = false;
            }
            onWheel: function(wheel) {
                var directions = wheel.modifiers & Qt.ControlModifier ? Qt.Horizontal | Qt.Vertical
                               : wheel.modifiers & Qt.ShiftModifier ? Qt.Vertical : area.wheelDirections;
                // What does not zoom here is for what is around the chart, such as a list.
                wheel.accepted = area.zooms && area.zoomRect && (directions & area.zoomRect.zoomAxis) !== 0;
                if (!wheel.accepted)
                    return;
                var factor = Math.pow(area.wheelFactor, -wheel.angleDelta.y / 120);
                area.zoomAt(wheel.x, wheel.y, directions & Qt.Horizontal ? factor : 1,
                            directions & Qt.Vertical ? factor : 1);
            }
        }
    }
}
