#pragma once

#include "common/Scale.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

namespace graph {

// What an axis draws: values of the axis in ascending order, and texts that are ready.
struct TickPlan
{
    QVector<double> majors;
    QStringList texts; // of the majors
    QVector<double> minors;
    // The unit of the texts with their common prefix; empty where each has its own.
    QString unit;
    // The decimal exponent of its prefix; none for units without prefixes.
    std::optional<int> prefix;
    // What all values have in common, to be added to what the texts say: "2.4 GHz +". Mostly empty.
    QString common;

    bool operator==(const TickPlan &other) const
    {
        return majors == other.majors && texts == other.texts && minors == other.minors &&
               unit == other.unit && common == other.common;
    }
};

// What a plan is made for.
struct TickRequest
{
    ScaleKind scale = ScaleKind::Linear;
    // The visible values.
    double lowest = 0.0;
    double highest = 1.0;
    // Pixels of the axis between them.
    double length = 0.0;
    // The least distance of ticks, and the least gap between texts that follow each other.
    double spacing = 0.0;
    double gap = 0.0;
    // That of ticks where there would be less than two otherwise; 0 for the usual one.
    double leastSpacing = 0.0;
    QString unit;
    // The distance of the values that are asked for; 0 for one that suits them.
    double interval = 0.0;
    // What values can differ by, where that is more than numbers of their size can; times are large ones.
    double resolution = 0.0;
    // Minor ticks between two major ones; negative: a number that suits them.
    int minorTicks = -1;
    // Pixels that a text takes along the axis.
    std::function<double(const QString &)> extent;

    bool isUsable() const
    {
        return std::isfinite(lowest) && std::isfinite(highest) && lowest < highest &&
               std::isfinite(highest - lowest) && length > 1.0 && spacing > 0.0 && extent;
    }
    Scale places() const { return Scale::between(scale, {lowest, highest}, highest - lowest, length); }
    // Whether ticks and texts keep their distances.
    bool hasRoomFor(const TickPlan &plan) const;
};

// From a number to the next one that a double can be.
double numberStep(double number);

// Round numbers with as many digits as their distance needs and one prefix for all.
TickPlan linearTicks(const TickRequest &request);

// Powers of ten, then 1, 2 and 5 of each decade; round numbers where less than a decade is visible.
TickPlan logarithmicTicks(const TickRequest &request);

// The minor ticks at multiples of an interval that are no major ones; none where they would be too dense.
QVector<double> minorMultiples(const TickRequest &request, const QVector<double> &majors, double interval);

} // namespace graph
