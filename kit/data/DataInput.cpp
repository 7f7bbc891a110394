#include "kit/data/DataInput.h"

#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"

namespace graph {

DataInput::DataInput(const QObject *owner, const char *property, const Take &take)
    : m_owner(owner)
    , m_property(property)
    , m_take(take)
{
}

void DataInput::give(QObject *object)
{
    m_isWritten = true;
    auto *plot = qobject_cast<AbstractPlot *>(object);
    auto *data = plot ? plot->plotData() : qobject_cast<PlotData *>(object);
    if (object && !plot && !data) {
        const QString property = QLatin1String(m_property);
        tellOnce(
            m_owner, m_property,
            QStringLiteral("has %1 as its %2, which is neither data nor a trace, and ignores it: write the "
                           "id of one")
                .arg(nameOf(object), property));
        return;
    }
    if (!m_take(data))
        return;
    if (m_given)
        m_given->disconnect(this);
    m_given = object;
    if (!plot)
        return;
    connect(plot, &AbstractPlot::plotDataChanged, this, [this](PlotData *other) { m_take(other); });
    connect(plot, &QObject::destroyed, this, [this] { m_take(nullptr); });
}

} // namespace graph
