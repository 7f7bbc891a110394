#pragma once

#include "common/Export.h"

#include <QQuickItem>

namespace graph {

// An item that changes others before a frame. What is changed while a frame is polished is part of it, but asks for
// one more frame in which nothing is new. So this is done from the event loop, behind all that waits there, but no more
// than once before each frame; what changes later is polished.
class GRAPH_CHARTS_EXPORT EarlyItem : public QQuickItem
{
public:
    using QQuickItem::QQuickItem;

protected:
    // Has prepare() called before the next frame.
    void prepareFrame();
    virtual void prepare() = 0;

    bool event(QEvent *event) override;
    void updatePolish() override;

private:
    bool m_isPosted = false; // since the last frame
};

} // namespace graph
