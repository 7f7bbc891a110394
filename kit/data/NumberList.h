#pragma once

#include "common/Export.h"

#include <QVariant>
#include <QVector>

#include <optional>

namespace graph {

// Of a date the seconds since the beginning of 1970, as axes of time have them. NaN for what is no number.
GRAPH_CHARTS_EXPORT double numberIn(const QVariant &value);

// The numbers of a list as a document may write it: an array, a typed array, a list property of a C++ object.
// Dates are seconds since 1970; what is no number is NaN. Nothing where it is no list at all.
// Of an element that is a text and no number it tells once, naming the elements: "values".
GRAPH_CHARTS_EXPORT std::optional<QVector<double>> numberList(const QObject *owner, const char *elements,
                                                              const QVariant &list);

// The same for a property of an object: what is neither a list nor nothing at all is told, with the property's name.
GRAPH_CHARTS_EXPORT std::optional<QVector<double>> numberListOf(const QObject *owner, const char *property,
                                                                const QVariant &list);

// The same; nothing for what is no number, which is told, with the property's name.
GRAPH_CHARTS_EXPORT std::optional<double> numberOf(const QObject *owner, const char *property,
                                                   const QVariant &value);

// Whether the first element is a date.
GRAPH_CHARTS_EXPORT bool beginsWithDate(const QVariant &list);

} // namespace graph
