#pragma once

#include "common/Export.h"
#include "cursors/GraphCursor.h"

// The horizontal cursor: the value written is the position, on the y axis of the primary plot.
class GRAPH_CHARTS_EXPORT GraphCursorY : public GraphCursor
{
    Q_OBJECT

public:
    explicit GraphCursorY(QQuickItem *parent = nullptr);
};
