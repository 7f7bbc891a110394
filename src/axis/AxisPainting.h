#pragma once

#include "axis/AxisTexts.h"
#include "axis/LabelLayout.h"
#include "common/PixelMapping.h"

#include <QFontMetrics>
#include <QRectF>

class QPainter;
class ValueAxis;

namespace graph {

// Draws one axis into the plot rectangle of a plane and the margins around it.
class AxisPainting
{
public:
    AxisPainting(ValueAxis &axis, const QRectF &rect);

    void paintLines(QPainter *painter);
    void paintLabels(QPainter *painter, AxisTexts &texts);

    // The room beside the plot rectangle that the labels of the full range need, in pixels.
    static int requiredMargin(const ValueAxis &axis);

private:
    struct Mark
    {
        int index;
        double place; // from the left or top of the rectangle, not rounded
    };

    QVector<Mark> marks(const QList<qreal> &ticks) const;
    double place(double value) const;
    int tickCount() const;
    const AxisTexts::Text &text(double tick);
    double labelledValue(double tick) const;
    void checkTexts();

    void paintHorizontalLabels(QPainter *painter);
    void paintVerticalLabels(QPainter *painter);
    QVector<LabelSpan> spans(const QVector<Mark> &marks, double stride, int rows);
    QVector<LabelSpan> chosenSpans(const QVector<Mark> &marks, int rows, const LabelRoom &room);
    double gridStride(const QVector<Mark> &marks, int rows, int gap);
    double listStride(int rows, int gap);
    bool isExtreme(double tick) const;
    int extent(double tick);

    bool labelStandsOnLine() const;
    double labelCenter(double place, int extent) const;
    QRectF roomForHorizontalLabels() const;
    QRectF roomForVerticalLabels(bool band) const;
    void drawText(QPainter *painter, double left, double top, const QString &text) const;

    ValueAxis &m_axis;
    QRectF m_rect;
    QRectF m_bounds;
    bool m_horizontal;
    PixelMapping m_mapping;
    QFontMetrics m_metrics;
    double m_interval = 0.0;
    QList<qreal> m_ticks;
    QList<qreal> m_positions; // all ticks that the visible ones were taken from, when these are no grid
    QVector<double> m_ordinals;
    AxisTexts *m_texts = nullptr;
};

} // namespace graph
