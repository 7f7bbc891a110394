#pragma once

#include "data/MinMax.h"

#include <QVector>

#include <memory>

namespace graph {

class MinMaxPyramid;

// The samples of a data object that lie in an x range, in ascending order of x, seen in the object's own array without
// a copy. The view shares the array, so it stays valid, with the values it was made with, whatever becomes of the data.
//
// Samples are numbered 0..size()-1 within the view; x(), y(), at() and dataIndex() take only these numbers.
class SampleSpan
{
public:
    SampleSpan() = default;

    // Samples first..first+count-1 of values whose x is xFirst + index * xInterval; a negative xInterval makes the view
    // run backwards through the array. The range must lie in the array.
    SampleSpan(const QVector<double> &values, double xFirst, double xInterval, int first, int count,
               std::shared_ptr<const MinMaxPyramid> pyramid = nullptr);

    // Points first..first+count-1, already in their order. indices: for each of `points` its index in the data object;
    // empty when it is the same.
    SampleSpan(const QVector<QPointF> &points, int first, int count, const QVector<int> &indices = {},
               std::shared_ptr<const MinMaxPyramid> pyramid = nullptr);

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }

    // True when x(i) is that of an equally spaced series: then a bound of x is found by division, else by search.
    bool isEquallySpaced() const { return m_points == nullptr; }

    double x(int i) const { return m_points ? m_points[i].x() : m_xFirst + arrayIndex(i) * m_xInterval; }
    double y(int i) const { return m_points ? m_points[i].y() : m_values[arrayIndex(i)]; }
    QPointF at(int i) const { return m_points ? m_points[i] : QPointF(x(i), y(i)); }
    QPointF first() const { return isEmpty() ? QPointF() : at(0); }
    QPointF last() const { return isEmpty() ? QPointF() : at(m_size - 1); }

    // The index of a sample in the data object.
    int dataIndex(int i) const { return m_indices.isEmpty() ? arrayIndex(i) : m_indices[arrayIndex(i)]; }

    // The extremes of y of the samples first..end-1, clamped to those that exist. One straight pass over the array, or a
    // few steps where the data object keeps a pyramid; NaN is ignored either way.
    MinMax minMax(int first, int end) const;

    // How many of the samples, from the first on, have an x below `value`, or not above it. Between two such counts lie
    // the samples of one pixel column. NaN gives 0. A hint near the answer, such as the last answer, saves steps.
    int countBelow(double value, int hint = 0) const;
    int countUpTo(double value, int hint = 0) const;

    QVector<QPointF> toVector() const;

private:
    int arrayIndex(int i) const { return m_first + i * m_step; }

    QVector<double> m_valueArray;  // these two keep what m_values and m_points look into
    QVector<QPointF> m_pointArray;
    QVector<int> m_indices;
    std::shared_ptr<const MinMaxPyramid> m_pyramid;
    const double *m_values = nullptr;  // the whole array
    const QPointF *m_points = nullptr; // the first point of the view
    double m_xFirst = 0.0;
    double m_xInterval = 0.0;
    int m_first = 0;
    int m_step = 1;
    int m_size = 0;
};

} // namespace graph
