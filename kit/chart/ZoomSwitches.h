#pragma once

#include "common/Export.h"

#include <QObject>

namespace graph {

// What a document says about zooming a chart by hand: the group `zoom`.
/*!
    \qmlproperty ZoomSwitches Chart::zoom
    What gestures, wheel and keys may do, by its switches: false in \c zoom.vertical keeps all of y in view.
*/
/*!
    \qmltype ZoomSwitches
    \brief What the user's hand may do to a Chart, its `zoom`.

    \qmlproperty bool ZoomSwitches::enabled
    Anything at all; true by default, as all of these.

    \qmlproperty bool ZoomSwitches::horizontal
    \qmlproperty bool ZoomSwitches::vertical
    Along x and along y.

    \qmlproperty bool ZoomSwitches::box
    Zoom to a box with the right button or a long press.

    \qmlproperty bool ZoomSwitches::axes
    Gestures over an axis, which move only that axis.

    \qmlproperty bool ZoomSwitches::wheel
    The wheel. False leaves it to what is around the chart, such as a list that scrolls; with Control or Shift it still
    zooms.

    \qmlproperty bool ZoomSwitches::keys
    The keyboard.
*/
class GRAPH_CHARTS_EXPORT ZoomSwitches : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY changed)
    Q_PROPERTY(bool horizontal MEMBER m_horizontal NOTIFY changed)
    Q_PROPERTY(bool vertical MEMBER m_vertical NOTIFY changed)
    Q_PROPERTY(bool box MEMBER m_box NOTIFY changed)
    Q_PROPERTY(bool axes MEMBER m_axes NOTIFY changed)
    Q_PROPERTY(bool wheel MEMBER m_wheel NOTIFY changed)
    Q_PROPERTY(bool keys MEMBER m_keys NOTIFY changed)

public:
    using QObject::QObject;

    bool horizontal() const { return m_horizontal; }
    bool vertical() const { return m_vertical; }

signals:
    void changed();

private:
    bool m_enabled = true;
    bool m_horizontal = true;
    bool m_vertical = true;
    bool m_box = true;
    bool m_axes = true;
    bool m_wheel = true;
    bool m_keys = true;
};

} // namespace graph
