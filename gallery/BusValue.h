#pragma once

#include "platform/bus/OrnData.h"

#include <QPointer>

class ORNClientInterface;
class ORNClientItem;

namespace gallery {

// An item of a service as a value that point decorations take; without an address it holds what QML writes to it.
class BusValue : public OrnData
{
    Q_OBJECT
    Q_PROPERTY(QString dbusAddress READ dbusAddress WRITE setDbusAddress NOTIFY addressChanged)
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY addressChanged)

public:
    using OrnData::OrnData;

    // Service and prefix with a comma between them, as data objects take it.
    QString dbusAddress() const { return m_dbusAddress; }
    QString key() const { return m_key; }

public slots:
    void setDbusAddress(const QString &address);
    void setKey(const QString &key);

signals:
    void addressChanged();

private slots:
    void findItem();
    void takeValue();

private:
    QString m_dbusAddress;
    QString m_key;
    QPointer<ORNClientInterface> m_client;
    QPointer<ORNClientItem> m_item;
};

} // namespace gallery
