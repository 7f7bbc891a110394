#pragma once

#include <QQuickItem>

namespace graph {

// Takes an item away from its parent and its children. For the destructors of item classes that others point to: Qt
// does the same later, in its own destructor, when such pointers are still set but only a plain item is left of the
// object, and a listener (a child that becomes visible, say) would use what is gone.
inline void leaveScene(QQuickItem *item)
{
    item->setParentItem(nullptr);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (child->parentItem() == item)
            child->setParentItem(nullptr);
    }
}

} // namespace graph
