#pragma once

#include "platform/bus/BusMessage.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <chrono>

// The long arrays of one service of which some parts have arrived. They grow by what arrives, never by what a
// message announces, and the oldest ones go when there are too many.
class ArrayAssemblies
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    // `totalBytes` counts what all services' assemblies hold, and is kept up to date.
    explicit ArrayAssemblies(qint64 *totalBytes);
    ~ArrayAssemblies();

    enum Outcome { Complete, Unfinished, Malformed, NoRoom };
    // With Complete, `news->elements` are the whole array.
    Outcome add(graph::ItemNews *news);
    // Those whose next part does not come.
    void removeStale(TimePoint now);
    void clear();

private:
    Q_DISABLE_COPY(ArrayAssemblies)

    struct Assembly
    {
        quint64 serial = 0;
        TimePoint touched;
        QVector<double> elements;
    };

    bool isNextPart(const graph::ItemNews &news) const;
    bool makeRoom(const QString &itemName, qint64 bytes);
    void remove(const QString &itemName);

    QHash<QString, Assembly> m_assemblies;
    qint64 *m_totalBytes;
};
