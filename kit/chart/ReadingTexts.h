#pragma once

#include "platform/ui/BaseFormatter.h"
#include "platform/ui/NumberText.h"

#include <QString>

#include <map>
#include <memory>

class AbstractPlot;

namespace graph {

class ChartAxis;

// The texts of values at a cursor, with their units: with the digits that neighbouring pixels need to differ, unless the
// data have digits of their own. A formatter of the axis writes all of it.
class ReadingTexts
{
public:
    // With as many digits as tell it from the next pixel.
    QString position(const ChartAxis &axis, double value) const;
    // Between two positions; of a time in seconds, or in days and hours.
    QString distance(const ChartAxis &axis, double distance) const;
    // In the unit of its data or of its axis; empty for a plot without data.
    QString value(const AbstractPlot *plot, double value) const;
    // Between two of them: levels in dBm differ by dB.
    QString difference(const AbstractPlot *plot, double difference) const;

private:
    using UnitFor = QString (*)(const QString &unit);

    QString written(const AbstractPlot *plot, double value, UnitFor unitFor) const;
    QString number(const QString &unit, double value, const DigitLimits &digits) const;

    // Of each unit that was asked for; null for one without.
    mutable std::map<QString, std::unique_ptr<BaseFormatter>> m_formatters;
};

} // namespace graph
