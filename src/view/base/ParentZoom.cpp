#include "view/base/ParentZoom.h"

#include "view/zoom/ZoomRect.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQuickItem>

namespace graph {

namespace {

constexpr char propertyName[] = "zoomRect";

} // namespace

ZoomRect *zoomRectOf(const QQuickItem *item)
{
    return item ? item->property(propertyName).value<ZoomRect *>() : nullptr;
}

void followZoomRect(const QQuickItem *item, QObject *follower, const char *slot)
{
    if (!item)
        return;
    const QMetaObject *type = item->metaObject();
    const QMetaProperty property = type->property(type->indexOfProperty(propertyName));
    const QMetaObject *followerType = follower->metaObject();
    if (property.hasNotifySignal()) {
        QObject::connect(item, property.notifySignal(), follower,
                         followerType->method(followerType->indexOfSlot(slot)), Qt::UniqueConnection);
    }
}

} // namespace graph
