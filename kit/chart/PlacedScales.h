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
    // One that a document gives a place or a size stays there, and is not taken: false.
    bool take(ColorScale *scale, const ChartTheme &theme);
    // The item may be no more than an item.
    void forget(const QQuickItem *item);
    void setTheme(const ChartTheme &theme);

    // From the right edge of the axes; 0 without any.
    int width(const QQuickItem *chart) const;
    // In a chart, beside its plot area; `left`: of the first one, with its gap.
    void place(const QQuickItem *chart, const QRectF &area, double left) const;

private:
    QVector<ColorScale *> shown(const QQuickItem *chart) const;

    QVector<QPointer<ColorScale>> m_scales;
};

} // namespace graph
