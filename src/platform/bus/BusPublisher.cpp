#include "platform/bus/BusPublisher.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusCourier.h"
#include "platform/bus/BusLimits.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusName.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ItemValue.h"
#include "platform/bus/PublishedObject.h"
#include "platform/bus/ServiceFeed.h"

#include <algorithm>

namespace {

constexpr int longestWait = 5000; // ms

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
    , m_isActive(BusRegistry::instance().addPublisher(serviceName, &m_items))
{
    BusClient *client = BusRegistry::instance().client(serviceName);
    if (m_isActive && client)
        client->enterProcess();
}

BusPublisher::~BusPublisher()
{
    if (!m_isActive)
        return;
    // When the application object has gone, the connection has gone with it.
    if (m_published && BusRegistry::instance().hasCourier())
        BusRegistry::instance().courier().thread().post(
            [published = std::move(m_published)](BusLink &link) { link.remove(published); });
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
    m_feed = std::make_shared<ServiceFeed>();
    m_feed->items().watchAll();
    for (auto it = m_items.values.cbegin(); it != m_items.values.cend(); ++it)
        m_feed->items().setValue(it.key(), it.value());
    for (auto it = m_items.vectors.cbegin(); it != m_items.vectors.cend(); ++it)
        m_feed->items().setVector(it.key(), it.value());
    m_published = std::make_shared<PublishedObject>(m_serviceName, m_feed);
    BusThread &thread = BusRegistry::instance().courier().thread();
    thread.post([published = m_published](BusLink &link) {
        published->setLink(&link);
        link.add(published);
    });
    const ServiceFeed::Status status = m_feed->waitFor(longestWait);
    if (status.state == ServiceFeed::Answered)
        return true;
    QString why = QLatin1String("the name ") + graph::busName(m_serviceName) + QLatin1String(" is taken");
    if (status.state == ServiceFeed::NoBus)
        why = QLatin1String("there is no session bus (dbus-run-session starts one): ") + status.text;
    else if (status.state == ServiceFeed::Asking)
        why = QStringLiteral("the session bus does not answer");
    qCWarning(busLog) << m_serviceName << "cannot be published," << qUtf8Printable(why);
    thread.post([published = std::move(m_published)](BusLink &link) { link.remove(published); });
    m_published.reset();
    m_feed.reset();
    return false;
}

void BusPublisher::setValue(const QString &itemName, const QVariant &value)
{
    if (!m_isActive)
        return;
    const QVariant accepted = graph::itemValue(value);
    if (!accepted.isValid() || textLength(accepted) > graph::maxTextLength ||
        itemName.size() > graph::maxNameLength || m_items.vectors.contains(itemName)) {
        qCWarning(busLog) << m_serviceName << "cannot publish" << value.typeName() << "as" << itemName;
        return;
    }
    const auto known = m_items.values.constFind(itemName);
    if (known != m_items.values.constEnd() && graph::sameValue(*known, accepted))
        return;
    m_items.values.insert(itemName, accepted);
    if (m_feed) {
        m_feed->items().setValue(itemName, accepted);
        BusRegistry::instance().courier().thread().rouse();
    }
    // Last: a listener may destroy the publisher.
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setValue(itemName, accepted);
}

void BusPublisher::setVector(const QString &itemName, const QVector<double> &vector)
{
    if (!m_isActive || !mayBeArray(itemName, int(vector.size())))
        return;
    const auto known = m_items.vectors.constFind(itemName);
    if (known != m_items.vectors.constEnd() && graph::sameContents(*known, vector))
        return;
    m_items.vectors.insert(itemName, vector);
    if (m_feed) {
        m_feed->items().setVector(itemName, vector);
        BusRegistry::instance().courier().thread().rouse();
    }
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setVector(itemName, vector);
}

void BusPublisher::append(const QString &itemName, const QVector<double> &elements, int capacity)
{
    if (!m_isActive || !mayBeArray(itemName, 0))
        return;
    capacity = std::clamp(capacity, 1, graph::maxElements);
    const QVector<double> newest =
        elements.size() > capacity ? elements.mid(elements.size() - capacity) : elements;
    QVector<double> &vector = m_items.vectors[itemName];
    const int size = int(vector.size());
    const int dropped = std::max(0, size + int(newest.size()) - capacity);
    if (newest.isEmpty() && dropped == 0 && size > 0)
        return;
    vector.remove(0, dropped);
    vector += newest;
    if (m_feed) {
        m_feed->items().append(itemName, quint64(dropped), quint64(size - dropped), newest);
        BusRegistry::instance().courier().thread().rouse();
    }
    if (BusClient *client = BusRegistry::instance().client(m_serviceName)) {
        const QVector<double> present = vector;
        client->setVector(itemName, present, newest.size());
    }
}

bool BusPublisher::mayBeArray(const QString &itemName, int size) const
{
    const bool isArray = !m_items.values.contains(itemName);
    if (isArray && size <= graph::maxElements && itemName.size() <= graph::maxNameLength)
        return true;
    qCWarning(busLog) << m_serviceName << "cannot publish an array as" << itemName
                      << (isArray ? "which is too large" : "which is a value");
    return false;
}
