#pragma once

#include "common/Export.h"

#include <QObject>

#include <limits>

namespace graph {

// What a document says about the cursor of a chart: the group `cursor`.
/*!
    \qmlproperty CursorSwitches Chart::cursor
    The cursor that a tap or the mouse brings, by its switches.
*/
/*!
    \qmltype CursorSwitches
    \brief The cursor that a Chart has of its own, its `cursor`.

    \qmlproperty bool CursorSwitches::enabled
    Whether there is one; true by default, as all of these.

    \qmlproperty bool CursorSwitches::hover
    Whether it follows the mouse, not only taps.

    \qmlproperty bool CursorSwitches::readings
    Whether the values at the cursor are shown.

    \qmlproperty bool CursorSwitches::shared
    Whether it is at the same x in all charts that are joined by \c zoomWith and have this true.

    \qmlproperty real CursorSwitches::posValue
    The x of the cursor, or of the ChartCursor that the document declares, in units of the data; NaN, the default, while
    none is shown. Writing it brings the cursor to the sample next to it, as soon as there are samples, and NaN takes the
    chart's own one away.
*/
class GRAPH_CHARTS_EXPORT CursorSwitches : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY changed)
    Q_PROPERTY(bool hover MEMBER m_hover NOTIFY changed)
    Q_PROPERTY(bool readings MEMBER m_readings NOTIFY changed)
    Q_PROPERTY(bool shared READ isShared WRITE setShared NOTIFY changed)
    Q_PROPERTY(double posValue READ posValue WRITE setPosValue NOTIFY posValueChanged)

public:
    using QObject::QObject;

    bool isShared() const { return m_shared; }
    double posValue() const { return m_posValue; }

    void setShared(bool shared)
    {
        m_shared = shared;
        emit changed();
    }
    void setPosValue(double value)
    {
        if (value == m_posValue || (value != value && m_posValue != m_posValue)) // no number
            return;
        m_posValue = value;
        emit posValueChanged();
    }

signals:
    void changed();
    void posValueChanged();

private:
    bool m_enabled = true;
    bool m_hover = true;
    bool m_readings = true;
    bool m_shared = true;
    double m_posValue = std::numeric_limits<double>::quiet_NaN();
};

} // namespace graph
