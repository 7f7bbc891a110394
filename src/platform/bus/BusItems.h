#pragma once

#include <QHash>
#include <QVariant>
#include <QVector>

// Everything that a service publishes, by full item name.
struct BusItems
{
    QHash<QString, QVariant> values;
    QHash<QString, QVector<double>> vectors;
};
