#pragma once

#include "simulator/SweepTimes.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace simulation {

// What is published beside the samples, in the words of the data objects that are bound to it.
struct TraceDescription
{
    QString label;
    QString xLabel;
    QString yLabel;
    QString xUnits;
    QString yUnits;
    int xSigDigs = 6;
    int ySigDigs = 4;
    int xPrecision = 3;
    int yPrecision = 2;
    double xRangeBegin = 0.0;
    double xRangeEnd = 0.0;
    double yRangeBegin = 0.0;
    double yRangeEnd = 0.0;
    bool equallySpaced = false;
    double xFirst = 0.0;
    double xIncrement = 0.0;
};

struct NamedVector
{
    QString key;
    QVector<double> values;
};

struct NamedList
{
    QString key;
    QStringList names;
};

// One data object's worth of items, all under one prefix. The arrays here are those that no sweep changes.
struct Trace
{
    QString prefix;
    TraceDescription description;
    QVector<NamedVector> vectors;
    QVector<NamedList> lists;
};

// The y values that one sweep gives a trace: all of them, or those that follow what is there already.
struct SweptTrace
{
    QString prefix;
    QVector<double> y;
};

// A measuring instrument without its bus: a sweep depends on its number and on nothing that happened before.
class Instrument
{
public:
    virtual ~Instrument() = default;

    virtual QString serviceName() const = 0;
    virtual QVector<Trace> traces() const = 0;
    virtual QVector<SweptTrace> sweep(quint64 number) const = 0;
    virtual SweepTimes times() const = 0;
    // Above 0: a sweep goes on where the one before it ended, and this is how many of the newest samples
    // stay.
    virtual int capacity() const { return 0; }
};

} // namespace simulation
