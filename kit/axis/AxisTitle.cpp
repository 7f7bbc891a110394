#include "kit/axis/AxisTitle.h"

#include "axis/AxisLook.h"
#include "kit/axis/UnitText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

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

// One line; the unit stays, as numbers are nothing without it.
QString elided(const AxisTitle &title, double room)
{
    const QFontMetricsF metrics(title.font);
    const QString text = QString(title.text).replace(QLatin1Char('\n'), QLatin1Char(' '));
    // Of a unit longer than the axis half of the room is the text's.
    const double beside = std::max(room / 2.0, room - metrics.horizontalAdvance(text));
    const QString unit =
        metrics.elidedText(title.unit, Qt::ElideRight,
                           beside - metrics.horizontalAdvance(unitInBrackets(QStringLiteral(" "), text)));
    const QString behind = unitInBrackets(unit, text);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, room - metrics.horizontalAdvance(behind));
    // Without room for both it is the unit.
    const auto isLost = [](const QString &whole, const QString &part) {
        return part != whole && part.size() <= 1;
    };
    const bool hasNoRoom = !title.unit.isEmpty() && (isLost(text, shown) || isLost(title.unit, unit));
    return hasNoRoom ? metrics.elidedText(title.unit, Qt::ElideRight, room) : shown + behind;
}

} // namespace

void AxisTitle::paint(QPainter *painter, const AxisLook &look, const QRectF &plot, double outside) const
{
    const QRectF band = bandOf(look, plot, look.hasBand() ? outside : 0.0, QFontMetrics(font).height());
    painter->save();
    painter->setFont(font);
    painter->setPen(color);
    const int flags = Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine;
    const QString shown = elided(*this, look.isHorizontal() ? band.width() : band.height());
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
