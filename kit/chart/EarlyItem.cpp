#include "kit/chart/EarlyItem.h"

#include <QCoreApplication>
#include <QEvent>

namespace graph {

namespace {

QEvent::Type earlyEvent()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

} // namespace

void EarlyItem::prepareFrame()
{
    polish();
    if (!std::exchange(m_isPosted, true))
        QCoreApplication::postEvent(this, new QEvent(earlyEvent()), Qt::LowEventPriority);
}

bool EarlyItem::event(QEvent *event)
{
    if (event->type() != earlyEvent())
        return QQuickItem::event(event);
    prepare();
    return true;
}

void EarlyItem::updatePolish()
{
    m_isPosted = false;
    prepare();
}

} // namespace graph
