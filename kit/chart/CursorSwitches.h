#pragma once

#include "common/Export.h"

#include <QObject>

namespace graph {

// What a document says about the cursor of a chart: the group `cursor`.
class GRAPH_CHARTS_EXPORT CursorSwitches : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool enabled MEMBER m_enabled NOTIFY changed)
    Q_PROPERTY(bool hover MEMBER m_hover NOTIFY changed)
    Q_PROPERTY(bool readings MEMBER m_readings NOTIFY changed)

public:
    using QObject::QObject;

signals:
    void changed();

private:
    bool m_enabled = true;
    bool m_hover = true;
    bool m_readings = true;
};

} // namespace graph
