#pragma once

#include "kit/plots/TraceCanvas.h"

class QPainter;

namespace graph {

class PainterCanvas : public TraceCanvas
{
public:
    explicit PainterCanvas(QPainter *painter);

    bool takesPixels() const override { return m_takesPixels; }
    void fill(const QVector<QRect> &rectangles, const QColor &color) override;
    void stroke(const QPainterPath &path, int lineWidth, const QColor &color) override;
    void fillToRow(const QPainterPath &path, double row, const QColor &color) override;
    void fillDots(const QVector<QPointF> &centers, int diameter, const QColor &color) override;

private:
    QPainter *m_painter;
    bool m_takesPixels;
};

} // namespace graph
