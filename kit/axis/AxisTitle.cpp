#include "kit/axis/AxisTitle.h"

#include "axis/AxisLook.h"

#include <QFontMetrics>
#include <QPainter>

namespace graph {

namespace {

QRectF bandOf(const AxisLook &look, const QRectF &plot, double outside, double height)
{
    const bool isBegin = look.side() == AxisSide::Begin;
    if (look.isHorizontal()) {
        const double top = isBegin ? plot.top() - outside : plot.bottom() + outside - height;
        return QRectF(plot.left(), top, plot.width(), height);
    }
    const double left = isBegin ? plot.left() - outside : plot.right() + outside - height;
    return QRectF(left, plot.top(), height, plot.height());
}

} // namespace

void AxisTitle::paint(QPainter *painter, const AxisLook &look, const QRectF &plot, double outside) const
{
    const QRectF band = bandOf(look, plot, look.hasBand() ? outside : 0.0, QFontMetrics(font).height());
    painter->save();
    painter->setFont(font);
    painter->setPen(color);
    const int flags = Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine;
    if (look.isHorizontal()) {
        painter->drawText(band, flags, text);
    } else {
        painter->translate(band.bottomLeft());
        painter->rotate(-90.0);
        painter->drawText(QRectF(QPointF(), band.size().transposed()), flags, text);
    }
    painter->restore();
}

} // namespace graph
