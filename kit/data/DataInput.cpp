#include "kit/data/DataInput.h"

#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"

#include <QVariant>
#include <QVector>

namespace graph {

namespace {

// What an object shows or computes from, as its document has it.
QVector<const QObject *> inputsOf(const QObject &object)
{
    QVector<const QObject *> inputs;
    for (const char *property : {"series", "source", "reference"})
        inputs.append(object.property(property).value<QObject *>());
    const auto *plot = qobject_cast<const AbstractPlot *>(&object);
    inputs.append(plot ? plot->plotData() : nullptr);
    return inputs;
}

// Whether it is the other one, or made of it, directly or through others.
bool comesFrom(const QObject *object, const QObject *origin)
{
    QVector<const QObject *> found{object};
    for (int i = 0; i < found.size(); ++i) {
        if (found.at(i) == origin)
            return true;
        const QVector<const QObject *> inputs = inputsOf(*found.at(i));
        for (const QObject *input : inputs) {
            if (input && !found.contains(input))
                found.append(input);
        }
    }
    return false;
}

} // namespace

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
        tellOnce(
            m_owner, m_property,
            QStringLiteral("has %1 as its %2, which is neither data nor a trace, and ignores it: write the "
                           "id of one")
                .arg(nameOf(object), QLatin1String(m_property)));
        return;
    }
    if (object && comesFrom(object, m_owner)) {
        tell(m_owner,
             QStringLiteral("has %1 as its %2, whose data are its own or made of them, and ignores it: "
                            "write the id of another trace, or of data")
                 .arg(nameOf(object), QLatin1String(m_property)));
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
