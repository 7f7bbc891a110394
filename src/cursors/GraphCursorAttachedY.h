#pragma once

#include "cursors/GraphCursorAttached.h"

// The reading of a horizontal cursor.
class GraphCursorAttachedY : public GraphCursorAttached
{
    Q_OBJECT

public:
    explicit GraphCursorAttachedY(QObject *parent = nullptr);
};
