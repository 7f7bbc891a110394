#pragma once

#include <algorithm>
#include <cmath>

namespace graph {

// A stretch of an axis in its own unit, from < to unless something else is said.
struct Span
{
    double from = 0.0;
    double to = 0.0;

    double length() const { return to - from; }
    bool isFinite() const { return std::isfinite(from) && std::isfinite(to); }
    bool isEmpty() const { return !(from <= to); }
    Span ordered() const { return {std::min(from, to), std::max(from, to)}; }
    Span united(const Span &other) const { return {std::min(from, other.from), std::max(to, other.to)}; }
    bool meets(const Span &other) const { return from <= other.to && other.from <= to; }
    bool contains(const Span &other) const { return from <= other.from && other.to <= to; }
};

inline bool operator==(const Span &a, const Span &b)
{
    return a.from == b.from && a.to == b.to;
}

inline bool operator!=(const Span &a, const Span &b)
{
    return !(a == b);
}

} // namespace graph
