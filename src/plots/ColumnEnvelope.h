#pragma once

#include "common/PixelMapping.h"
#include "data/SampleSpan.h"

#include <QLine>
#include <QVector>

#include <vector>

namespace graph {

// The extremes of those values among samples first..end-1 that have a place: finite ones, positive ones only
// on a logarithmic axis.
MinMax drawableMinMax(const SampleSpan &samples, int first, int end, bool positiveOnly = false);

// The extremes, in data units, of the samples in each pixel column of an item.
struct ColumnEnvelope
{
    enum State : unsigned char {
        Empty,  // no sample falls into the column; its extremes are the baseline
        Gap,    // samples do, but none with a value that has a place; its extremes are the baseline
        Filled, // at least one such sample, or taken over from the column before
    };

    int columns() const { return static_cast<int>(state.size()); }

    std::vector<double> max;
    std::vector<double> min;
    std::vector<State> state;
    std::vector<int> firstSample; // of the column; where the state is not empty
    int firstColumn =
        -1; // the smallest column of any finite sample, also one outside the item; -1 without samples
    int lastColumn = -1; // the largest of them inside the item
};

// Reduces samples in the order of columns to the extremes of each of `columns` columns; those outside are dropped. With
// bridgeGaps, columns skipped between two filled ones repeat the one before. Values without a place do not count.
ColumnEnvelope columnEnvelope(const SampleSpan &samples, const PixelMapping &mapping, int columns,
                              double baseline, bool bridgeGaps);

// Fills columns without a sample between two filled ones with the straight line between the samples beside them, where
// no missing value ends the trace. samples, mapping: those of the envelope.
void bridgeStraight(ColumnEnvelope &envelope, const SampleSpan &samples, const PixelMapping &mapping);

// Stretches columns that lie wholly on one side of the baseline so that their strokes touch those of the neighbours;
// with wholeWidth the columns outside the samples count as neighbours too.
void joinColumns(ColumnEnvelope &envelope, double baseline, bool wholeWidth);

// One vertical line per column, at least minSpan (data units; pixels where the axis is not linear) long, rows rounded to
// the nearest. Unless keepEmpty, columns exactly at the baseline, such as those without a sample, give none.
QVector<QLine> envelopeStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, double minSpan,
                               double baseline, bool keepEmpty);

// Vertical lines from the baseline's row to the top of each column, for the area below a trace; none where the top is
// in that row.
QVector<QLine> fillStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, int baseRow);

struct BarStrokes
{
    QVector<QLine> bars;    // from the baseline to the minimum, or across the baseline
    QVector<QLine> spreads; // from the minimum to the maximum
};

// The bars of an envelope; rows truncated toward zero.
BarStrokes barStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, int baseRow);

} // namespace graph
