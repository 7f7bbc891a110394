#pragma once

#include "common/Export.h"
#include "cursors/GraphCursorAttached.h"

// The reading of a horizontal cursor.
class GRAPH_CHARTS_EXPORT GraphCursorAttachedY : public GraphCursorAttached
{
    Q_OBJECT

public:
    explicit GraphCursorAttachedY(QObject *parent = nullptr);
};
