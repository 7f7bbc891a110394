#pragma once

#include <QString>
#include <QVariant>

namespace graph {

// One element of a value taken from the bus. value: a list, a string list or an array of numbers, read at the
// index; any other valid value serves for every index. Invalid when the index is out of range or there is no
// value.
QVariant arrayElement(const QVariant &value, int index);

// True for an invalid value and for an array without elements.
bool isEmptyArray(const QVariant &value);

// The text of a value: floating-point numbers with six significant digits, others as QVariant converts them.
QString valueText(const QVariant &value);

} // namespace graph
