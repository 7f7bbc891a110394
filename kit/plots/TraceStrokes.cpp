#include "kit/plots/TraceStrokes.h"

#include "common/Opacity.h"
#include "common/SafeInteger.h"
#include "common/VectorRegisters.h"
#include "kit/plots/TraceShapes.h"
#include "raster/Strokes.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <cmath>

namespace graph {

namespace {

// Wider strokes on columns would be too thick where the line slopes.
constexpr int widestOnColumns = 4;

QPen penOf(const TraceLook &look)
{
    QPen pen(look.color, look.lineWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::BevelJoin);
    return pen;
}

int dotDiameter(const TraceLook &look)
{
    return std::max(4, 2 * look.lineWidth + 1);
}

// Whether whole pixels are asked for; a printer or a vector file gets lines.
bool takesPixels(const QPainter &painter)
{
    return painter.paintEngine()->type() == QPaintEngine::Raster &&
           painter.deviceTransform().type() <= QTransform::TxTranslate &&
           !painter.testRenderHint(QPainter::Antialiasing);
}

void drawRectangles(QPainter *painter, const QVector<QRect> &rectangles, const QColor &color)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    painter->drawRects(rectangles);
    painter->setBrush(Qt::NoBrush);
    clearWideRegisters();
}

QSize wholeSize(const PixelMapping &mapping)
{
    return {pixel(std::ceil(mapping.width())), pixel(std::ceil(mapping.height()))};
}

void drawDots(QPainter *painter, const QVector<QPoint> &centers, const TraceLook &look)
{
    const int diameter = dotDiameter(look);
    painter->setPen(Qt::NoPen);
    painter->setBrush(look.color);
    if (takesPixels(*painter)) {
        const QVector<QRect> dot = dotRectangles(diameter);
        QVector<QRect> dots;
        dots.reserve(dot.size() * centers.size());
        for (const QPoint &center : centers) {
            for (const QRect &part : dot)
                dots.append(part.translated(center));
        }
        painter->drawRects(dots);
    } else {
        for (const QPoint &center : centers)
            painter->drawEllipse(QRectF(center.x() + 0.5 - diameter / 2.0, center.y() + 0.5 - diameter / 2.0,
                                        diameter, diameter));
    }
    painter->setBrush(Qt::NoBrush);
    clearWideRegisters();
}

} // namespace

TraceStrokes::TraceStrokes(const TraceLook &look, const PixelMapping &mapping, const SampleSpan &samples)
    : m_look(look)
    , m_mapping(mapping)
    , m_samples(samples)
{
    m_look.lineWidth = penWidth(std::max(1, look.lineWidth));
    m_columns = traceColumns(samples, mapping);
}

void TraceStrokes::paint(QPainter *painter) const
{
    switch (m_look.style) {
    case TraceLook::Line:
    case TraceLook::Steps:
        paintLine(painter, false);
        break;
    case TraceLook::Area:
        paintLine(painter, true);
        break;
    case TraceLook::Bars:
        paintBars(painter);
        break;
    case TraceLook::Points:
        paintPoints(painter);
        break;
    case TraceLook::LineAndPoints:
        paintLine(painter, false);
        paintPoints(painter);
        break;
    }
}

void TraceStrokes::paintSegments(QPainter *painter, const TraceLook &look, const PixelMapping &mapping,
                                 const SampleSpan &samples)
{
    QPainterPath path;
    for (int i = 0; i + 1 < samples.size(); i += 2) {
        const std::vector<TraceColumn> ends = traceColumns(samples.mid(i, i + 2), mapping);
        path.addPath(linePath(ends, TraceCourse::Straight, Vertices::Whole,
                              QSizeF(mapping.width(), mapping.height())));
    }
    painter->strokePath(path, penOf(look));
}

void TraceStrokes::paintLine(QPainter *painter, bool isFilled) const
{
    const bool isDense = std::size_t(m_samples.size()) > m_columns.size();
    if (takesPixels(*painter) && isDense && m_look.lineWidth <= widestOnColumns)
        paintRows(painter, isFilled);
    else
        paintPath(painter, isFilled);
    paintLoneSamples(painter);
}

void TraceStrokes::paintRows(QPainter *painter, bool isFilled) const
{
    const QSize size = wholeSize(m_mapping);
    const TraceRows rows(m_columns, course(), size);
    if (isFilled)
        drawRectangles(painter, areaRectangles(rows, baseRow(), size.height()),
                       translucent(m_look.color, m_look.fillOpacity));
    drawRectangles(painter, lineRectangles(rows, m_look.lineWidth, size.height()), m_look.color);
}

void TraceStrokes::paintPath(QPainter *painter, bool isFilled) const
{
    const Vertices vertices = takesPixels(*painter) ? Vertices::Whole : Vertices::Exact;
    const QPainterPath path =
        linePath(m_columns, course(), vertices, QSizeF(m_mapping.width(), m_mapping.height()));
    if (isFilled)
        fillToRow(painter, path, baseRow(), QBrush(translucent(m_look.color, m_look.fillOpacity)));
    painter->setPen(penOf(m_look));
    drawLinePath(painter, path);
}

void TraceStrokes::paintBars(QPainter *painter) const
{
    drawRectangles(painter, barRectangles(m_columns, baseRow(), wholeSize(m_mapping)), m_look.color);
}

// Each pixel that has a sample, once: a million of them are no more dots than the item has pixels.
void TraceStrokes::paintPoints(QPainter *painter) const
{
    const QSize size = wholeSize(m_mapping);
    const int reach = dotDiameter(m_look);
    const int rows = size.height() + 2 * reach;
    QVector<QPoint> centers;
    std::vector<bool> isTaken(std::size_t(std::max(rows, 0)), false);
    int first = 0;
    for (const TraceColumn &column : m_columns) {
        const int end = first + column.samples;
        const bool isNear = column.column >= -reach && column.column < size.width() + reach;
        const int before = int(centers.size());
        for (int i = first; isNear && !column.isGap() && i < end; ++i) {
            const double place = m_mapping.y(m_samples.y(i));
            const int row = pixel(place);
            if (!std::isfinite(place) || row < -reach || row >= size.height() + reach)
                continue;
            const auto slot = std::size_t(row + reach);
            if (!isTaken[slot])
                centers.append(QPoint(column.column, row));
            isTaken[slot] = true;
        }
        for (int i = before; i < centers.size(); ++i)
            isTaken[std::size_t(centers.at(i).y() + reach)] = false;
        first = end;
    }
    drawDots(painter, centers, m_look);
}

// A sample without a line to another one.
void TraceStrokes::paintLoneSamples(QPainter *painter) const
{
    QVector<QPoint> centers;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const TraceColumn &column = m_columns[i];
        const bool isHeld = course() == TraceCourse::Steps && i + 1 < m_columns.size();
        const bool isJoined = isHeld || (i > 0 && areJoined(m_columns[i - 1], column)) ||
                              (i + 1 < m_columns.size() && areJoined(column, m_columns[i + 1]));
        if (!isJoined && !column.isGap() && pixel(column.top) == pixel(column.bottom))
            centers.append(QPoint(pixel(column.left), pixel(column.top)));
    }
    if (!centers.isEmpty())
        drawDots(painter, centers, m_look);
}

TraceCourse TraceStrokes::course() const
{
    return m_look.style == TraceLook::Steps ? TraceCourse::Steps : TraceCourse::Straight;
}

int TraceStrokes::baseRow() const
{
    switch (m_look.fill) {
    case TraceLook::ToTop:
        return 0;
    case TraceLook::ToBottom:
        return wholeSize(m_mapping).height();
    case TraceLook::ToBaseline:
        break;
    }
    return m_mapping.row(std::isfinite(m_look.baseline) ? m_look.baseline : 0.0);
}

} // namespace graph
