#include "axis/AxisPainting.h"

#include "common/SafeInteger.h"
#include "common/TextTaker.h"
#include "raster/PixelCentres.h"

#include <QPainter>

#include <algorithm>

namespace graph {

namespace {

// Dashes that cannot be drawn, or that are so short that a line would take forever, become a solid line.
QPen drawablePen(const AxisLook &look)
{
    QPen pen = look.linePen;
    if (pen.style() != Qt::CustomDashLine)
        return pen;
    QVector<qreal> dashes = look.dashes;
    double sum = 0.0;
    bool drawable = !dashes.isEmpty();
    for (const double length : qAsConst(dashes)) {
        drawable = drawable && length >= 0.0 && length <= 1e4;
        sum += length;
    }
    if (!drawable || sum < 0.5 * dashes.size()) {
        pen.setStyle(Qt::SolidLine);
        return pen;
    }
    if (dashes.size() % 2 == 1)
        dashes.append(1.0);
    pen.setDashPattern(dashes);
    return pen;
}

// The lines of minor ticks, which may be short ones at the side of the axis.
void paintMinorLines(QPainter *painter, const AxisLook &look, const TickMarks &marks, const QRectF &plot)
{
    QVector<QLineF> lines;
    const double across = look.isHorizontal() ? plot.height() : plot.width();
    const double length = look.minorLength > 0 ? std::min<double>(look.minorLength, across) : across;
    const double begin = look.side() == AxisSide::Begin ? 0.0 : across - length;
    for (const double minor : marks.set().minors) {
        const double place = marks.place(minor);
        if (!(place > -1.0 && place < marks.length()))
            continue;
        const QPointF from(pixel(place), begin);
        const QPointF to(pixel(place), begin + length - 1.0);
        if (look.isHorizontal())
            lines.append(QLineF(from, to).translated(plot.topLeft()));
        else
            lines.append(QLineF(from.y(), from.x(), to.y(), to.x()).translated(plot.topLeft()));
    }
    painter->setPen(look.minorPen);
    const PixelCentres centred(painter);
    painter->drawLines(lines);
}

} // namespace

void paintAxisLines(QPainter *painter, const AxisLook &look, const TickMarks &marks, const QRectF &plot)
{
    QVector<QLineF> lines;
    const QVector<TickMarks::Mark> visible = marks.visible();
    lines.reserve(visible.size());
    for (const TickMarks::Mark &mark : visible) {
        if (look.isHorizontal()) {
            const double x = plot.left() + pixel(mark.place);
            lines.append(QLineF(x, plot.top(), x, plot.bottom() - 1.0));
        } else {
            const double y = plot.top() + pixel(mark.place);
            lines.append(QLineF(plot.left(), y, plot.right() - 1.0, y));
        }
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    if (!marks.set().minors.isEmpty())
        paintMinorLines(painter, look, marks, plot);
    painter->setPen(drawablePen(look));
    const PixelCentres centred(painter);
    painter->drawLines(lines);
    painter->restore();
}

void paintAxisLabels(QPainter *painter, const LabelSource &source, const QRectF &plot,
                     const LabelSurroundings &surroundings)
{
    const AxisLook &look = source.look;
    const QFontMetrics metrics(look.labelFont);
    painter->save();
    painter->setFont(look.labelFont);
    for (const PlacedText &placed : layOutLabels(source, plot, surroundings)) {
        painter->setPen(placed.isUnit ? look.unitColor() : look.labelColor);
        drawText(painter, QPointF(placed.corner.x(), placed.corner.y() + metrics.ascent()), placed.text);
    }
    painter->restore();
}

} // namespace graph
