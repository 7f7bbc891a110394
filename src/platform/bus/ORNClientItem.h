#pragma once

#include "platform/bus/Export.h"

#include <QObject>
#include <QVariant>
#include <QVector>

// One published value of a service, as its clients see it. Items belong to their client object and live as
// long as it; when the service leaves the bus, or the bus goes, they keep their last value.
class GRAPH_BUS_EXPORT ORNClientItem : public QObject
{
    Q_OBJECT

public:
    explicit ORNClientItem(const QString &id, QObject *parent = nullptr);

    // The full name, as it was passed to ORNClientInterface::getItem.
    QString getId() const;
    QVariant getValue() const;

signals:
    void valueChanged();

private:
    friend class BusClient;

    void setValue(const QVariant &value);

    QString m_id;

protected:
    QVariant m_value;
};

// An item that holds an array.
class GRAPH_BUS_EXPORT ORNVecClientItem : public ORNClientItem
{
    Q_OBJECT

public:
    using ORNClientItem::ORNClientItem;

signals:
    // The contents changed, whether or not the number of elements did.
    void sizeChanged();
};

// An array of doubles.
class GRAPH_BUS_EXPORT ORNVecDoubleClientItem : public ORNVecClientItem
{
    Q_OBJECT

public:
    using ORNVecClientItem::ORNVecClientItem;

    QVector<double> vector() const;

private:
    friend class BusClient;

    void setVector(const QVector<double> &vector);

    QVector<double> m_vector;
};
