#pragma once

#include "common/Export.h"

#include <QObject>

#include <optional>

namespace graph {

// What a document says about the legend of a chart: the group `legend`.
/*!
    \qmlproperty LegendSwitches Chart::legend
    The list of traces, by its switches.
*/
/*!
    \qmltype LegendSwitches
    \brief The list of traces in a Chart, its `legend`.

    \qmlproperty bool LegendSwitches::enabled
    Whether there is one; true by default. A chart that is small both ways, below about 400 by 300 pixels, needs
    the room for its traces and shows none; nor is there one that would cover more than half of the plot area.

    \qmlproperty int LegendSwitches::leastTraces
    With how many traces it appears; 2 by default.

    \qmlproperty bool LegendSwitches::atRight
    \qmlproperty bool LegendSwitches::atBottom
    Its corner of the plot area. By default the first one in which it covers no trace, beginning with the upper
    right one: it is chosen when traces get their first data, and when the size of the chart or of the legend changes.
    Where no corner is free, and in a small chart, its names are in a row above the plot area; those that have no room
    there are counted at its end. With \c follow it is in an upper corner, where the newest data are not: at the right
    until the window is half full, then at the left.

    \qmlproperty bool LegendSwitches::inARow
    Its names beside each other instead of below each other.

    \qmlproperty bool LegendSwitches::values
    Whether it tells the values at the cursor.

    \qmlproperty bool LegendSwitches::newest
    Whether it tells the newest values, those of the last samples, while there is no cursor; false by default.
*/
/*!
    \qmlproperty bool LegendSwitches::placed
    \qmlproperty bool LegendSwitches::withoutCorner
    \internal
*/
class GRAPH_CHARTS_EXPORT LegendSwitches : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(int leastTraces MEMBER m_leastTraces NOTIFY changed)
    Q_PROPERTY(bool atRight READ isAtRight WRITE setAtRight NOTIFY changed)
    Q_PROPERTY(bool atBottom READ isAtBottom WRITE setAtBottom NOTIFY changed)
    Q_PROPERTY(bool inARow MEMBER m_inARow NOTIFY changed)
    Q_PROPERTY(bool values MEMBER m_values NOTIFY changed)
    Q_PROPERTY(bool newest MEMBER m_newest NOTIFY changed)
    // For Chart.qml: whether the document says the corner, and whether there is none without a trace.
    Q_PROPERTY(bool placed READ isPlaced NOTIFY changed)
    Q_PROPERTY(bool withoutCorner READ isWithoutCorner NOTIFY changed)

public:
    using QObject::QObject;

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled)
    {
        m_enabled = enabled;
        m_isWritten = true;
        emit changed();
    }
    // Whether a document has said how the legend is to be.
    bool isWanted() const
    {
        return m_enabled && (m_isWritten || m_atRight || m_atBottom || m_inARow || m_leastTraces < 2);
    }
    bool isAtRight() const { return m_atRight.value_or(m_defaultAtRight); }
    void setAtRight(bool atRight)
    {
        m_atRight = atRight;
        emit changed();
    }
    bool isAtBottom() const { return m_atBottom.value_or(m_defaultAtBottom); }
    void setAtBottom(bool atBottom)
    {
        m_atBottom = atBottom;
        emit changed();
    }
    // Where the document says nothing of either.
    bool isPlaced() const { return m_atRight || m_atBottom; }
    void setDefaultCorner(bool atRight, bool atBottom)
    {
        if (m_defaultAtRight == atRight && m_defaultAtBottom == atBottom)
            return;
        m_defaultAtRight = atRight;
        m_defaultAtBottom = atBottom;
        emit changed();
    }
    bool isWithoutCorner() const { return m_isWithoutCorner; }
    void setWithoutCorner(bool without)
    {
        if (m_isWithoutCorner == without)
            return;
        m_isWithoutCorner = without;
        emit changed();
    }

signals:
    void changed();

private:
    bool m_enabled = true;
    bool m_isWritten = false; // that it is enabled
    int m_leastTraces = 2;
    std::optional<bool> m_atRight;
    bool m_defaultAtRight = true;
    std::optional<bool> m_atBottom;
    bool m_defaultAtBottom = false;
    bool m_isWithoutCorner = false;
    bool m_inARow = false;
    bool m_values = true;
    bool m_newest = false;
};

} // namespace graph
