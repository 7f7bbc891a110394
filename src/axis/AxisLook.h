#pragma once

#include <QColor>
#include <QFont>
#include <QPen>
#include <QRectF>
#include <QString>
#include <QVector>

namespace graph {

// Left and top are the beginning.
enum class AxisSide { Begin, Middle, End };

// How an axis is drawn; its values play no part.
struct AxisLook
{
    Qt::Alignment alignment = Qt::AlignBottom;
    Qt::Orientation orientation = Qt::Horizontal;
    int margin = 0;
    int offset = 0; // between the plot area and the margin, which others have there
    bool staggered = false;
    bool hasLines = true;
    bool hasLabels = true;
    QPen linePen;
    QVector<qreal> dashes; // as written; counts where the pen has custom dashes
    QPen minorPen;
    int minorLength = 0; // from the axis' side on; 0: all across the plot area
    QColor labelColor = Qt::black;
    QColor verticalUnitColor;
    QFont labelFont;
    bool entersCorners = false; // numbers below those of another axis stay at their ticks
    QString unit;

    bool isHorizontal() const { return orientation == Qt::Horizontal; }
    // Combined alignments belong to the side that they name.
    AxisSide side() const;
    // Labels go into a margin only where the plane keeps one free: for the four plain alignments.
    bool hasBand() const;
    QColor unitColor() const;
};

// Where labels may be drawn, and what else is drawn there.
struct LabelSurroundings
{
    QRectF bounds;
    QVector<AxisLook> axes; // of the same plane
};

} // namespace graph
