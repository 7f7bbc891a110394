#pragma once

#include <QString>

class QObject;

namespace graph {

// How a message names an object of a document: its type and its id, or else its objectName. What has neither
// and is no item of a document is named by the object that it belongs to.
QString nameOf(const QObject *object);

// The type as documents write it.
QString typeNameOf(const QObject *object);

} // namespace graph
