#pragma once

#include <QLine>
#include <QQuickItem>

class AbstractPlot;
class ValueAxis;
class ZoomRect;

namespace graph {

// What a cursor with a vertical line, which moves along x, and one with a horizontal line, which moves along
// y, do differently.
struct CursorDirection
{
    ValueAxis *(AbstractPlot::*axis)() const;
    const char *axisChanged; // of a plot
    double (AbstractPlot::*toItem)(double) const;
    double (AbstractPlot::*fromItem)(double) const;
    double (ZoomRect::*fractionToItem)(double) const;
    qreal (QQuickItem::*extent)() const; // the pixels that it moves over
    qreal (QQuickItem::*lineLength)() const;
    QLine (*line)(int place, int length);
    // A horizontal line has no samples: its values are whole units of its axis, or any.
    bool snapsToSamples;

    static const CursorDirection alongX;
    static const CursorDirection alongY;
};

} // namespace graph
