#pragma once

#include "data/PlotData.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace graph {

// What a document writes as a property that takes data: data, or a plot, which gives the data that it has now and
// later.
class GRAPH_CHARTS_EXPORT DataInput : public QObject
{
public:
    // take: uses other data from now on, or refuses them.
    using Take = std::function<bool(PlotData *)>;
    DataInput(const QObject *owner, const char *property, const Take &take);

    // As it was written; null once it is gone.
    QObject *given() const { return m_given; }
    // Whether something was written, be it null.
    bool isWritten() const { return m_isWritten; }
    // Of anything else than data and plots it tells, and of what is made of the owner's own data.
    void give(QObject *object);

private:
    const QObject *m_owner;
    const char *m_property;
    Take m_take;
    QPointer<QObject> m_given;
    bool m_isWritten = false;
};

} // namespace graph
