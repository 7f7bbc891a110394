#pragma once

#include <QPointer>
#include <QRectF>
#include <QVector>

class QQuickItem;

namespace graph {

class ChartTheme;
class ColorScale;

// The colour scales that a chart places at the right of its plot area, beyond the axes there.
class PlacedScales
{
public:
    // False for one to which the document gives a place or a size: it stays there.
    bool take(ColorScale *scale, const ChartTheme &theme);
    // The item may be in destruction, no more than a QQuickItem.
    void forget(const QQuickItem *item);
    void setTheme(const ChartTheme &theme);

    // Pixels that they take beyond the axes at the right; 0 without scales.
    int width(const QQuickItem *chart) const;
    // Beside that plot area of the chart; `left`: where the gap before the first one begins.
    void place(const QQuickItem *chart, const QRectF &area, double left) const;

private:
    QVector<ColorScale *> shown(const QQuickItem *chart) const;

    QVector<QPointer<ColorScale>> m_scales;
};

} // namespace graph
