#pragma once

#include "axis/AxisLook.h"
#include "axis/LabelTexts.h"
#include "axis/TickMarks.h"

namespace graph {

// A text to draw, at its upper left corner.
struct PlacedText
{
    QPointF corner;
    QString text;
    bool isUnit = false;
};

// What the labels of an axis are made of; all of it outlives the layout.
struct LabelSource
{
    const AxisLook &look;
    const TickMarks &marks;
    LabelTexts &texts;
    const LabelTexts::Format &format;
};

// Lays out the labels and the unit of an axis along the plot area, or in the margin beside it: whole, apart
// from each other and clear of the labels of the other axes. The unit never costs a number: without room of
// its own it is written behind the outermost one, or inside the plot area, or not at all.
QVector<PlacedText> layOutLabels(const LabelSource &source, const QRectF &plot,
                                 const LabelSurroundings &surroundings);

// The room beside the plot area that the labels of the full range need, in pixels. values: those to be named.
int requiredMargin(const AxisLook &look, const QList<qreal> &values, const LabelTexts::Format &format);

} // namespace graph
