#include "kit/axis/AxisTitle.h"

#include "axis/AxisLook.h"
#include "kit/axis/UnitText.h"

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
    const QString shown =
        titleWithUnit(text, unit, QFontMetricsF(font), look.isHorizontal() ? band.width() : band.height());
    if (look.isHorizontal()) {
        painter->drawText(band, flags, shown);
    } else {
        painter->translate(band.bottomLeft());
        painter->rotate(-90.0);
        painter->drawText(QRectF(QPointF(), band.size().transposed()), flags, shown);
    }
    painter->restore();
}

} // namespace graph
