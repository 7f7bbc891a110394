#pragma once

#include "common/Export.h"

#include <QObject>
#include <QPointer>
#include <QString>

class ORNClientInterface;

// What a client tells of an array just before the array's own item does: that only its newest elements are
// new.
class GRAPH_CHARTS_EXPORT AppendedCount : public QObject
{
    Q_OBJECT

public:
    void setClient(ORNClientInterface *client);
    // The number of new elements of the item that has changed, -1 when all of them may be new. Once for each
    // change.
    int take(const QString &itemName);

private slots:
    void handleArrayAppended(const QString &itemName, int count);

private:
    QPointer<QObject> m_client;
    QString m_itemName;
    int m_count = -1;
};
