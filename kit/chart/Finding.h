#pragma once

#include <QPointer>
#include <QString>
#include <QVector>

namespace graph {

// Why something in a chart does not show, and what to write instead.
struct Finding
{
    QPointer<const QObject> about;
    QString text; // continues the name of the object
};

} // namespace graph
