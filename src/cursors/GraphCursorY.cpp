#include "cursors/GraphCursorY.h"

#include "cursors/CursorDirection.h"

/*!
    \qmltype GraphCursorY
    \inqmlmodule graph_plugin
    \inherits GraphCursor
    \brief A horizontal line on the y axis of the primary plot.

    posValue and posIndex are the value on that axis, cut to whole units while staysOnScreen holds. Its child
    items use the attached properties of GraphCursor.
*/
GraphCursorY::GraphCursorY(QQuickItem *parent)
    : GraphCursor(graph::CursorDirection::alongY, parent)
{
}
