#pragma once

#include "platform/ui/BaseFormatter.h"

#include <QString>

#include <memory>

class AbstractPlot;

namespace graph {

class ChartAxis;

// The texts of values at a cursor, with their units.
class ReadingTexts
{
public:
    // Of an axis with its digits; of a time as much as tells apart what is visible.
    QString position(const ChartAxis &axis, double value) const;
    // Between two positions; of a time in seconds, or in days and hours.
    QString distance(const ChartAxis &axis, double distance) const;
    // Empty for a plot without data.
    static QString value(const AbstractPlot *plot, double value);

private:
    QString number(const QString &unit, double value) const;

    mutable std::unique_ptr<BaseFormatter> m_formatter; // of the unit that was asked for last
};

} // namespace graph
