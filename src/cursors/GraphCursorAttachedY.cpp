#include "cursors/GraphCursorAttachedY.h"

GraphCursorAttachedY::GraphCursorAttachedY(QObject *parent)
    : GraphCursorAttached(parent)
{
    m_followsX = false;
}
