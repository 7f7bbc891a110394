#pragma once

#include <QVariant>
#include <QVector>

namespace graph {

// The value in one of the types that items hold: bool, int, uint, qlonglong, qulonglong, double, QString,
// QStringList. Smaller numbers are widened; invalid for every other type.
QVariant itemValue(const QVariant &value);

// Exact: the same type and the same value, two NaN counting as the same.
bool sameValue(const QVariant &a, const QVariant &b);

// Exact, bit by bit: -0 differs from 0, and a NaN equals itself.
bool sameContents(const QVector<double> &a, const QVector<double> &b);

} // namespace graph
