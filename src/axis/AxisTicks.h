#pragma once

#include "axis/AxisRange.h"

#include <QList>

namespace graph {

// Which ticks an axis has: of what kind, how many, and those that were last made.
class AxisTicks
{
public:
    // Any number may be written; those that name no kind count as Decimal.
    enum Kind : int { Decimal, Binary, Fixed, Dynamic };

    Kind kind() const { return m_kind; }
    double customInterval() const { return m_customInterval; }
    int number() const { return m_number; }
    double dynamicRatio() const { return m_dynamicRatio; }
    // The ticks of the fixed kind; the mantissas that a decimal spacing may have otherwise.
    const QList<qreal> &positions() const { return m_positions; }
    bool isDecreasing() const { return m_decreasing; }

    // True when there was something to change; the list then has to be made again.
    bool setKind(Kind kind) { return store(m_kind, kind); }
    bool setCustomInterval(double interval) { return store(m_customInterval, interval); }
    bool setNumber(int number) { return store(m_number, number); }
    bool setDynamicRatio(double ratio) { return store(m_dynamicRatio, ratio); }
    bool setPositions(const QList<qreal> &positions) { return store(m_positions, positions); }
    bool setDecreasing(bool decreasing) { return store(m_decreasing, decreasing); }

    // In the following, axis values times factor are the values that the labels show, in whose unit spacings
    // are round.

    // The distance of ticks when count of them share extent; 0 for fixed ticks and where there is none.
    double spacing(int count, double extent, double factor) const;
    double decimalSpacing(int count, double extent, double factor) const;
    static double binarySpacing(int count, double extent, double factor);

    // The ticks for about count of them in the visible range, or in its mirror image where the order is
    // decreasing; empty without a spacing.
    QList<qreal> build(int count, const AxisRange &range, double factor) const;

    // The last list, and whether it is out of date, or would be for another count.
    bool isDirty() const { return m_dirty; }
    void setDirty(bool dirty) { m_dirty = dirty; }
    bool isDirtyFor(int count);
    const QList<qreal> &list() const { return m_list; }
    void setList(const QList<qreal> &list);

private:
    template <typename T> bool store(T &member, const T &value)
    {
        if (member == value)
            return false;
        member = value;
        m_dirty = true;
        return true;
    }

    Kind m_kind = Decimal;
    double m_customInterval = 0.0;
    int m_number = 5;
    double m_dynamicRatio = 0.5;
    QList<qreal> m_positions{1.0, 1.5, 2.0, 2.5, 5.0, 10.0};
    bool m_decreasing = false;
    bool m_dirty = true;
    int m_listCount = 0;
    QList<qreal> m_list;
};

} // namespace graph
