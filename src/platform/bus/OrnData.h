#pragma once

#include "platform/bus/Export.h"

#include <QObject>
#include <QVariant>

// A value or an array of values taken from the bus, handed to QML types as a property.
class GRAPH_BUS_EXPORT OrnData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)

public:
    explicit OrnData(QObject *parent = nullptr);

    QVariant value() const { return m_value; }

public slots:
    void setValue(const QVariant &value);

signals:
    void valueChanged();

private:
    QVariant m_value;
};
