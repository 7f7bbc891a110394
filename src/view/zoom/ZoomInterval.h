#pragma once

#include <QVarLengthArray>

namespace graph {

// One direction of a zoom rectangle: the visible part of an extent, between bounds. Every operation ignores
// NaN, clamps what is out of range, and returns what it changed.
class ZoomInterval
{
public:
    enum Part { Extent, Begin, End };
    // In the order in which the parts are to be announced.
    using Changes = QVarLengthArray<Part, 3>;

    double begin() const { return m_begin; }
    double end() const { return m_end; }
    double extent() const { return m_extent; }
    double leastExtent() const { return m_leastExtent; }
    double value(Part part) const { return part == Extent ? m_extent : part == Begin ? m_begin : m_end; }

    // What the visible part must stay inside from its next change on.
    static bool canBeBounds(double lowest, double room);
    void setBounds(double lowest, double room);
    double lowest() const { return m_lowest; }
    double room() const { return m_room; }
    // False when nothing changed. It wins over the bounds.
    bool setLeastExtent(double extent);

    // Resize: the begin stays, or for setBegin() the end.
    Changes setExtent(double extent);
    Changes setBegin(double begin);
    Changes setEnd(double end);

    // Pan.
    Changes moveBegin(double begin);
    Changes moveEnd(double end);

    // Resize so that `center` keeps its place, or comes to the middle; without effect where the extent stays
    // the same.
    Changes zoom(double extent, double center);
    Changes scale(double extent, double center);

    // Shows that much around `center`.
    Changes show(double extent, double center, Part firstEdge);

    // Shows that much from there on.
    Changes showFrom(double begin, double extent);

private:
    double highest() const { return m_lowest + m_room; }
    double allowedExtent(double extent) const;
    Changes resize(double extent, double begin);

    double m_begin = 0.0;
    double m_end = 1.0;
    // Near the bounds it can differ from the distance of the edges, see show().
    double m_extent = 1.0;
    double m_lowest = 0.0;
    double m_room = 1.0;
    double m_leastExtent = 0.01;
};

} // namespace graph
