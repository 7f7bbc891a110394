#include "kit/chart/ReadingLayout.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace graph {

namespace {

// Between the line and the labels at both sides of it.
constexpr double gapRight = 10.0;
constexpr double gapLeft = 9.0;
// Between labels, and to what else is there.
constexpr double gap = 2.0;
constexpr double boxGap = 4.0;
constexpr int mostColumns = 4;

double heightOf(const ReadingLabel &label)
{
    return label.size.height() + gap;
}

// Whether they share columns of pixels.
bool isBeside(const ReadingLabel &label, const QRectF &obstacle)
{
    return obstacle.left() < label.place.x() + label.size.width() && obstacle.right() > label.place.x();
}

} // namespace

ReadingLayout::ReadingLayout(double line, const QSizeF &area, double bottom)
    : m_line(line)
    , m_area(area)
    , m_bottom(bottom)
{
}

void ReadingLayout::keepClearOf(const QRectF &obstacle)
{
    const auto isAbove = [](const QRectF &a, const QRectF &b) { return a.top() < b.top(); };
    m_obstacles.insert(std::upper_bound(m_obstacles.begin(), m_obstacles.end(), obstacle, isAbove), obstacle);
}

// Columns that are used together, those to be preferred first.
QVector<ReadingLayout::Columns> ReadingLayout::families(double widest) const
{
    const Columns both = sides(widest);
    QVector<Columns> families{beyond(both, widest), beyond({both.at(1)}, widest)};
    if (!m_box.isEmpty()) {
        families.append(beyond({{std::min(m_box.left() - boxGap, m_line - gapLeft), false}}, widest));
        families.append(beyond({{std::max(m_box.right() + boxGap, m_line + gapRight), true}}, widest));
    }
    for (Columns &family : families)
        family.erase(std::remove_if(family.begin(), family.end(),
                                    [&](const Column &column) { return !isInside(column, widest); }),
                     family.end());
    // There has to be one.
    if (families.first().isEmpty())
        families.first().append(both.first());
    return families;
}

// At the right of the line if there is room; across the line where neither side has any.
ReadingLayout::Columns ReadingLayout::sides(double widest) const
{
    const Column right{m_line + gapRight, true};
    const Column left{m_line - gapLeft, false};
    const Column across{m_area.width() - widest, true};
    if (!isInside(right, widest) && !isInside(left, widest))
        return {across, across};
    return !isInside(right, widest) && isInside(left, widest) ? Columns{left, right} : Columns{right, left};
}

bool ReadingLayout::isInside(const Column &column, double widest) const
{
    const double left = column.left(widest);
    return left >= 0.0 && left + widest <= m_area.width();
}

// Behind each column others, farther from the line.
ReadingLayout::Columns ReadingLayout::beyond(const Columns &columns, double widest) const
{
    Columns all;
    for (int distance = 0; distance < mostColumns; ++distance) {
        for (const Column &column : columns) {
            const double away = distance * (widest + boxGap);
            all.append({column.beginsThere ? column.x + away : column.x - away, column.beginsThere});
        }
    }
    return all;
}

void ReadingLayout::place(std::vector<ReadingLabel> *labels) const
{
    double widest = 0.0;
    for (const ReadingLabel &label : *labels)
        widest = std::max(widest, label.size.width());
    // In most cases that is all.
    const Columns usual{sides(widest).first()};
    if (areBesideBox(usual, widest) && placeIn(usual, labels))
        return;
    const QVector<Columns> all = families(widest);
    for (int count = 1; count <= mostColumns; ++count) {
        // Where a side of the line is free of the box in all rows, live data let no label jump.
        const auto isFree = [&](const Columns &columns) { return areBesideBox(columns, widest); };
        for (int side = 0; side < 2; ++side) {
            const Columns columns = all.at(side).mid(0, count);
            if (columns.size() == count && isFree(columns) && placeIn(columns, labels))
                return;
        }
        if (placeNearest(all, count, labels))
            return;
    }
    // Some cover others.
    placeIn(all.first().mid(0, mostColumns), labels);
    for (ReadingLabel &label : *labels)
        label.place.ry() = std::max(label.place.y(), 0.0);
}

// In so many columns of one of the families: where the labels are nearest to where they belong.
bool ReadingLayout::placeNearest(const QVector<Columns> &families, int count,
                                 std::vector<ReadingLabel> *labels) const
{
    constexpr double leastGain = 24.0; // of a later family, in pixels
    std::optional<double> least;
    std::vector<ReadingLabel> nearest;
    for (const Columns &family : families) {
        const Columns columns = family.mid(0, count);
        if (columns.size() < count || !placeIn(columns, labels))
            continue;
        const double distance = farthest(*labels);
        if (least && distance > *least - leastGain)
            continue;
        least = distance;
        nearest = *labels;
    }
    if (least)
        *labels = std::move(nearest);
    return least.has_value();
}

// How far a label is from the line and from its row, at most.
double ReadingLayout::farthest(const std::vector<ReadingLabel> &labels) const
{
    double farthest = 0.0;
    for (const ReadingLabel &label : labels) {
        const double left = label.place.x();
        const double right = left + label.size.width();
        const double across = std::max({left - m_line, m_line - right, 0.0});
        farthest = std::max(farthest, across + std::abs(label.place.y() - label.wantedY));
    }
    return farthest;
}

bool ReadingLayout::areBesideBox(const Columns &columns, double widest) const
{
    return m_box.isEmpty() || std::all_of(columns.begin(), columns.end(), [&](const Column &column) {
               const double left = column.left(widest);
               return left + widest <= m_box.left() || left >= m_box.right();
           });
}

bool ReadingLayout::placeIn(const Columns &columns, std::vector<ReadingLabel> *labels) const
{
    bool isPlaced = true;
    for (int i = 0; i < columns.size(); ++i) {
        std::vector<ReadingLabel *> own;
        for (std::size_t j = std::size_t(i); j < labels->size(); j += std::size_t(columns.size()))
            own.push_back(&(*labels)[j]);
        isPlaced = placeColumn(columns.at(i), own) && isPlaced;
    }
    return isPlaced;
}

// From the top down each one moves below the one above it and below obstacles; those that do not fit any more move up
// again. Whether the uppermost is still inside.
bool ReadingLayout::placeColumn(const Column &column, const std::vector<ReadingLabel *> &labels) const
{
    double free = 0.0;
    for (ReadingLabel *label : labels) {
        label->place.setX(column.left(label->size.width()));
        label->place.setY(below(*label, std::max({label->wantedY, free, label->topInset})));
        free = label->place.y() + heightOf(*label);
    }
    free = m_bottom;
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        free = above(**label, std::min((*label)->place.y(), free - heightOf(**label)));
        (*label)->place.setY(free);
    }
    return free >= 0.0;
}

// The next row from y on where the label covers no obstacle.
double ReadingLayout::below(const ReadingLabel &label, double y) const
{
    for (const QRectF &obstacle : m_obstacles) {
        if (isBeside(label, obstacle) && y < obstacle.bottom() && y + heightOf(label) > obstacle.top())
            y = obstacle.bottom();
    }
    return y;
}

double ReadingLayout::above(const ReadingLabel &label, double y) const
{
    for (auto obstacle = m_obstacles.rbegin(); obstacle != m_obstacles.rend(); ++obstacle) {
        if (isBeside(label, *obstacle) && y < obstacle->bottom() && y + heightOf(label) > obstacle->top())
            y = obstacle->top() - heightOf(label);
    }
    return y;
}

} // namespace graph
