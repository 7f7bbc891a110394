#pragma once

#include "kit/axis/TickPlan.h"

#include <QFont>
#include <QString>

class BaseFormatter;

namespace graph {

class TextWidths;

// How an axis writes its numbers: what its ticks and texts depend on besides what is visible.
struct AxisNumbering
{
    enum class Kind { Linear, Logarithmic, Time };

    Kind kind = Kind::Linear;
    bool isUtc = false; // of times
    // Whether texts follow each other along the axis, or are above each other.
    bool isAlongText = true;
    QFont font;
    QString unit;
    double interval = 0.0; // of a linear axis; 0 for one that suits it
    int minorTicks = -1;
    BaseFormatter *formatter = nullptr; // writes the texts in place of the axis

    // For an axis of so many pixels.
    TickPlan plan(double lowest, double highest, double length, TextWidths *widths = nullptr) const;
    // A single tick.
    QString text(double value) const;
    // A value with its unit, as finely as the span of what is visible tells values apart.
    QString reading(double value, double span) const;

    bool operator==(const AxisNumbering &other) const;
};

} // namespace graph
