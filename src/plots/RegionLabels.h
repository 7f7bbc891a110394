#pragma once

#include <QLineF>
#include <QRectF>
#include <QVector>

namespace graph {

struct ChannelLabel
{
    enum Style {
        None,
        NameAndValue, // two lines
        Name,
        UprightName, // turned by 90 degrees
    };
    Style style = None;
    QRectF rect;
};

// The fullest label that is no wider than `channel`, the visible part of a channel's frame: above it if there
// is room in the item, else inside. Extents of the unrotated texts; all lengths in pixels.
ChannelLabel channelLabel(const QRectF &channel, const QSizeF &nameAndValue, const QSizeF &name,
                          const QSizeF &item);

// Places for labels, the most important first: shifted into the item, and up by their own height, three times
// at most, where they meet one before them or leave no gap beside it. A null rectangle for a label that finds no place.
QVector<QRectF> separatedLabels(const QVector<QRectF> &wanted, const QSizeF &item);

// From each label in one of the places down to its foot, if that is below it: what other labels leave to be seen of it.
QVector<QLineF> labelStems(const QVector<QRectF> &places, const QVector<QPointF> &feet);

// The rectangle moved as little as possible to lie in the item; null when it is too large or not finite.
QRectF shiftedInside(QRectF rect, const QSizeF &item);

} // namespace graph
