#pragma once

class QObject;
class ValueAxis;

// Data objects refer to value axes without knowing their class, which is built on top of the data; the axis' own source
// file answers these questions for them.
namespace graph {

// The axis as a QObject, to watch its lifetime; null for null.
QObject *axisObject(ValueAxis *axis);

// The axis' baseline in axis units, 0 without an axis.
double axisBaseline(ValueAxis *axis);

} // namespace graph
