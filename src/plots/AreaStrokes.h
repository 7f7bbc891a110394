#pragma once

#include "common/PixelMapping.h"
#include "data/SampleSpan.h"

#include <QLine>
#include <QVector>

namespace graph {

// One vertical line per pixel column from the least of `lower` to the greatest of `upper`, paired by index at
// the x of `upper`; rows truncated toward zero. Columns between two samples repeat the one before. A pair
// with one half that is not finite is missing. Columns outside the samples, or with missing pairs only, have no
// line.
QVector<QLine> areaStrokes(const SampleSpan &upper, const SampleSpan &lower, const PixelMapping &mapping,
                           int columns, bool ascending);

} // namespace graph
