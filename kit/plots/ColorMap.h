#pragma once

#include "common/Export.h"

#include <QColor>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <optional>

namespace graph {

// The colours from the smallest to the largest level, always of this number.
constexpr int colorMapSize = 255;
using ColorMap = QVector<QRgb>;

// The named maps.
GRAPH_CHARTS_EXPORT QStringList colorMapNames();

// By name, or from a list of colours at equal distances; one colour is that of all levels. Nothing where it
// is neither, or the list is empty.
GRAPH_CHARTS_EXPORT std::optional<ColorMap> colorMap(const QVariant &description);

} // namespace graph
