#include "platform/bus/BusPublisher.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ItemValue.h"
#include "platform/bus/PublishedObject.h"

namespace {

// The characters of a text or of all texts of a list.
qint64 textLength(const QVariant &value)
{
    qint64 length = 0;
    for (const QString &text : value.toStringList())
        length += text.size();
    return length;
}

} // namespace

BusPublisher::BusPublisher(const QString &serviceName, QObject *parent)
    : QObject(parent)
    , m_serviceName(serviceName)
    , m_isActive(BusRegistry::instance().addPublisher(serviceName, this))
{
    BusClient *client = BusRegistry::instance().client(serviceName);
    if (m_isActive && client)
        client->enterProcess();
}

BusPublisher::~BusPublisher()
{
    if (!m_isActive)
        return;
    BusRegistry::instance().removePublisher(m_serviceName);
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->leaveProcess();
}

bool BusPublisher::publish()
{
    if (!m_isActive)
        return false;
    if (m_published)
        return true;
    m_published = new PublishedObject(m_serviceName, this);
    if (m_published->open())
        return true;
    delete std::exchange(m_published, nullptr);
    return false;
}

void BusPublisher::setValue(const QString &itemName, const QVariant &value)
{
    if (!m_isActive)
        return;
    const QVariant accepted = graph::itemValue(value);
    if (!accepted.isValid() || textLength(accepted) > graph::maxTextLength ||
        m_items.vectors.contains(itemName)) {
        qCWarning(busLog) << m_serviceName << "cannot publish" << value.typeName() << "as" << itemName;
        return;
    }
    const auto known = m_items.values.constFind(itemName);
    if (known != m_items.values.constEnd() && graph::sameValue(*known, accepted))
        return;
    m_items.values.insert(itemName, accepted);
    if (m_published)
        m_published->sendValue(itemName, accepted);
    // Last: whoever is told may destroy the publisher.
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setValue(itemName, accepted);
}

void BusPublisher::setVector(const QString &itemName, const QVector<double> &vector)
{
    if (!m_isActive)
        return;
    if (m_items.values.contains(itemName)) {
        qCWarning(busLog) << m_serviceName << "cannot publish an array as" << itemName << "which is a value";
        return;
    }
    const auto known = m_items.vectors.constFind(itemName);
    if (known != m_items.vectors.constEnd() && graph::sameContents(*known, vector))
        return;
    m_items.vectors.insert(itemName, vector);
    if (m_published)
        m_published->sendVector(itemName, vector);
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setVector(itemName, vector);
}
