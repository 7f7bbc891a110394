#pragma once

#include "common/Export.h"
#include "data/MinMax.h"

#include <QVector>

#include <memory>

namespace graph {

class MinMaxPyramid;
class PyramidOnDemand;

// Samples of a data object in ascending order of x, seen in the object's own array without a copy. The view
// shares the array, so it stays valid, with the values it was made with, even after the data is gone.
// An array that samples are appended to is shared as well: what is appended lies behind the view, and the
// array moves elsewhere, not in place, while somebody else shares it.
//
// Samples are numbered 0..size()-1 within the view; x(), y(), at() and dataIndex() take only these numbers.
class GRAPH_CHARTS_EXPORT SampleSpan
{
public:
    SampleSpan() = default;

    // Values whose x is xFirst + index * xInterval. A negative interval makes the view run backwards through
    // the array; when either is not finite the view is empty.
    SampleSpan(const QVector<double> &values, double xFirst, double xInterval);

    // Points in ascending order of x, or pairs of points used as segments, in any order. indices: the index
    // of each in the data object; empty when these are 0, 1, 2...
    explicit SampleSpan(const QVector<QPointF> &points, const QVector<int> &indices = {});

    // A stretch of a longer array, which the owner keeps as it is. In a pyramid samples have the index that they
    // have in the array, in the data object they count from the first of the stretch, which has the x
    // xFirst + number * xInterval: x of a sample is the same number wherever it lies.
    template <typename Sample> struct Stretch
    {
        std::shared_ptr<const void> owner;
        const Sample *array = nullptr;
        int first = 0;
        int size = 0;
        double number = 0.0;
    };
    SampleSpan(const Stretch<double> &stretch, double xFirst, double xInterval);
    // In ascending order of x.
    explicit SampleSpan(const Stretch<QPointF> &stretch);

    // The samples first..end-1 of this view, clamped to those that exist.
    SampleSpan mid(int first, int end) const;
    // The samples with xMin <= x <= xMax. The ends may be swapped; NaN gives none.
    SampleSpan between(double xMin, double xMax) const;
    // This view and the sample before it and the one after it, where the array has them: what a line from the last
    // sample in sight runs on to.
    SampleSpan withNeighbours() const;

    // The same samples in the opposite order. Not to be searched by x.
    SampleSpan reversed() const;
    bool isReversed() const { return m_reversed; }

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }

    double x(int i) const
    {
        return m_points ? m_points[arrayIndex(i)].x() : m_xFirst + (m_number + arrayIndex(i)) * m_xInterval;
    }
    double y(int i) const { return m_points ? m_points[arrayIndex(i)].y() : m_values[arrayIndex(i)]; }
    QPointF at(int i) const { return QPointF(x(i), y(i)); }
    QPointF first() const { return isEmpty() ? QPointF() : at(0); }
    QPointF last() const { return isEmpty() ? QPointF() : at(m_size - 1); }

    // The index of a sample in the data object.
    int dataIndex(int i) const
    {
        return m_indices.isEmpty() ? arrayIndex(i) - m_dataFirst : m_indices[arrayIndex(i)];
    }

    // The samples one after the other in memory, the other way round where the view runs backwards; null where the
    // view is of the other kind.
    bool isBackwards() const { return m_step < 0; }
    // False where points were sorted.
    bool isInDataOrder() const { return m_indices.isEmpty(); }
    // From one equally spaced sample to the next of the view.
    double interval() const { return m_xInterval * m_step; }
    const double *values() const { return m_values && m_size > 0 ? m_values + lowest(0, m_size) : nullptr; }
    const QPointF *points() const { return m_points && m_size > 0 ? m_points + lowest(0, m_size) : nullptr; }

    // The extremes of y of the samples first..end-1, clamped to those that exist. One straight pass over the
    // array, or a few steps where there is a pyramid; NaN is ignored either way.
    MinMax minMax(int first, int end) const;

    // Whether y of one of the samples first..end-1, all of which exist, is NaN. At once where there is a pyramid
    // over an array without any.
    bool hasNaN(int first, int end) const;

    // How many samples, from the first on, have an x below `value`, or not above it: the samples of a pixel
    // column lie between two such counts. NaN gives 0. Found by division where x is equally spaced, else by a
    // search that is quick when the hint is near, as the answer for the column before is. Not for segments.
    int countBelow(double value, int hint = 0) const;
    int countUpTo(double value, int hint = 0) const;

    // Where to look for an x: by division where x is equally spaced, where it lands at most a few samples beside it;
    // else at the hint.
    int near(double value, int hint) const;

    QVector<QPointF> toVector() const;

    // True when x is computed from the index, false when each sample has an x of its own.
    bool isEquallySpaced() const { return m_points == nullptr; }

    // Over the array that the view was made of: one that is there, or one that is built when it pays.
    void setPyramid(std::shared_ptr<const MinMaxPyramid> pyramid) { m_pyramid = std::move(pyramid); }
    void setPyramid(std::shared_ptr<PyramidOnDemand> pyramid) { m_onDemand = std::move(pyramid); }
    bool hasPyramid() const { return pyramid() != nullptr; }

private:
    int arrayIndex(int i) const { return m_first + i * m_step; }
    // Backwards or forwards, samples that follow each other are one stretch of the array.
    int lowest(int first, int end) const { return std::min(arrayIndex(first), arrayIndex(end - 1)); }
    void takeValues(int first, int size);
    const MinMaxPyramid *pyramid() const;
    template <typename Sample> MinMax minMaxOf(const Sample *array, int first, int end) const;

    QVector<double> m_valueArray; // these three keep what m_values and m_points look into
    QVector<QPointF> m_pointArray;
    std::shared_ptr<const void> m_owner;
    QVector<int> m_indices;
    std::shared_ptr<const MinMaxPyramid> m_pyramid;
    std::shared_ptr<PyramidOnDemand> m_onDemand;
    const double *m_values = nullptr;
    const QPointF *m_points = nullptr;
    double m_xFirst = 0.0;
    double m_xInterval = 0.0;
    double m_number = 0.0; // that x is counted by, of the first element of the array
    int m_arraySize = 0;
    int m_dataFirst = 0; // the array index of the data object's first sample
    int m_first = 0;     // the array index of sample 0, and the way from one sample to the next
    int m_step = 1;
    int m_size = 0;
    bool m_reversed = false;
    int m_before = 0; // samples that the view leaves out, in its own order
    int m_after = 0;
};

} // namespace graph
