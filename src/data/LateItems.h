#pragma once

#include "common/Export.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

class ORNClientInterface;

// The items that a client was asked for in vain. Gives notice when one of them comes, as far as the bus library
// tells of it.
class GRAPH_CHARTS_EXPORT LateItems : public QObject
{
    Q_OBJECT

public:
    using Notice = std::function<void()>;

    // Forgets all names.
    void setClient(ORNClientInterface *client);
    void await(const QString &itemName, const Notice &notice);
    QStringList names() const { return m_expected.keys(); }

private slots:
    void handleItemAdded(const QString &itemName);

private:
    QPointer<QObject> m_client;
    QHash<QString, Notice> m_expected;
};
