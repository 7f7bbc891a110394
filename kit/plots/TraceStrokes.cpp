#include "kit/plots/TraceStrokes.h"

#include "common/Opacity.h"
#include "common/SafeInteger.h"
#include "kit/plots/CurvedLine.h"
#include "kit/plots/TraceShapes.h"

#include <cmath>

namespace graph {

namespace {

// Of a sample that is alone, and is not to be taken for dust.
constexpr int leastLoneDot = 5;

int dotDiameter(int lineWidth)
{
    return std::max(4, 2 * lineWidth + 1);
}

QSize wholeSize(const PixelMapping &mapping)
{
    return {pixel(std::ceil(mapping.width())), pixel(std::ceil(mapping.height()))};
}

QSizeF sizeOf(const PixelMapping &mapping)
{
    return {mapping.width(), mapping.height()};
}

void drawDots(TraceCanvas &canvas, const QVector<QPoint> &centers, const TraceLook &look, int diameter,
              const QSize &size)
{
    if (canvas.takesPixels()) {
        canvas.fill(dotRectangles(centers, diameter, size), look.color);
        return;
    }
    QVector<QPointF> exact;
    for (const QPoint &center : centers)
        exact.append(QPointF(center) + QPointF(0.5, 0.5));
    canvas.fillDots(exact, diameter, look.color);
}

} // namespace

TraceStrokes::TraceStrokes(const TraceLook &look, const PixelMapping &mapping, const SampleSpan &samples)
    : m_look(look)
    , m_mapping(mapping)
    , m_samples(samples)
{
    m_look.lineWidth = std::min(std::max(look.lineWidth, 1), widestLine);
    m_columns = traceColumns(samples, mapping);
}

void TraceStrokes::paint(TraceCanvas &canvas) const
{
    switch (m_look.style) {
    case TraceLook::Line:
    case TraceLook::Steps:
        paintLine(canvas, false);
        break;
    case TraceLook::Area:
        paintLine(canvas, true);
        break;
    case TraceLook::Bars:
        paintBars(canvas);
        break;
    case TraceLook::Points:
        paintPoints(canvas);
        break;
    case TraceLook::LineAndPoints:
        paintLine(canvas, false);
        paintPoints(canvas);
        break;
    }
}

int TraceStrokes::reachOfDots(int lineWidth)
{
    return dotDiameter(lineWidth) / 2;
}

void TraceStrokes::paintSegments(TraceCanvas &canvas, const TraceLook &look, const PixelMapping &mapping,
                                 const SampleSpan &samples)
{
    const Vertices vertices = canvas.takesPixels() ? Vertices::Whole : Vertices::Exact;
    QPainterPath path;
    for (int i = 0; i + 1 < samples.size(); i += 2) {
        const std::vector<TraceColumn> ends = traceColumns(samples.mid(i, i + 2), mapping);
        path.addPath(linePath(ends, TraceCourse::Straight, vertices, sizeOf(mapping)));
    }
    canvas.stroke(path, std::min(std::max(look.lineWidth, 1), widestLine), look.color);
}

void TraceStrokes::paintLine(TraceCanvas &canvas, bool isFilled) const
{
    const bool isDense = std::size_t(m_samples.size()) > m_columns.size();
    const bool isCurve = m_look.curved && m_look.style != TraceLook::Steps;
    std::vector<TraceColumn> curve;
    if (isCurve)
        curve = curvedColumns(m_columns, m_mapping.width());
    const std::vector<TraceColumn> &columns = isCurve ? curve : m_columns;
    // Strips of a path overlap at their joints, which a translucent colour would show.
    const bool isTranslucent = m_look.color.alpha() < 255;
    bool mayHaveLone = true;
    if (canvas.takesPixels() && (isDense || isCurve || isTranslucent) && m_look.lineWidth <= widestOnColumns)
        mayHaveLone = !paintRows(canvas, columns, isFilled) || isCurve;
    else
        paintPath(canvas, columns, isFilled);
    if (mayHaveLone)
        paintLoneSamples(canvas);
}

bool TraceStrokes::paintRows(TraceCanvas &canvas, const std::vector<TraceColumn> &columns,
                             bool isFilled) const
{
    const QSize size = wholeSize(m_mapping);
    const TraceRows rows(columns, course(), size);
    if (isFilled)
        canvas.fill(areaRectangles(rows, baseRow(), size.height()),
                    translucent(m_look.color, m_look.fillOpacity));
    canvas.fill(lineRectangles(rows, m_look.lineWidth, size.height()), m_look.color);
    return rows.isInOne();
}

void TraceStrokes::paintPath(TraceCanvas &canvas, const std::vector<TraceColumn> &columns,
                             bool isFilled) const
{
    const Vertices vertices = canvas.takesPixels() ? Vertices::Whole : Vertices::Exact;
    const QPainterPath path = linePath(columns, course(), vertices, sizeOf(m_mapping));
    if (isFilled)
        canvas.fillToRow(path, baseRow(), translucent(m_look.color, m_look.fillOpacity));
    canvas.stroke(path, m_look.lineWidth, m_look.color);
}

void TraceStrokes::paintBars(TraceCanvas &canvas) const
{
    double loneRoom = std::numeric_limits<double>::infinity();
    if (m_samples.size() == 1) {
        const double x = m_mapping.x(m_samples.x(0));
        for (const double neighbour : {m_look.loneBar.left, m_look.loneBar.right})
            loneRoom = std::min(loneRoom, std::abs(m_mapping.x(neighbour) - x));
    }
    canvas.fill(barRectangles(m_columns, baseRow(), wholeSize(m_mapping), loneRoom), m_look.color);
}

// Each pixel that has a sample, once: a million of them are no more dots than the item has pixels.
void TraceStrokes::paintPoints(TraceCanvas &canvas) const
{
    const QSize size = wholeSize(m_mapping);
    const int reach = dotDiameter(m_look.lineWidth);
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
            const int slot = row + reach;
            if (!isTaken[std::size_t(slot)])
                centers.append(QPoint(column.column, row));
            isTaken[std::size_t(slot)] = true;
        }
        for (int i = before; i < centers.size(); ++i) {
            const int slot = centers.at(i).y() + reach;
            isTaken[std::size_t(slot)] = false;
        }
        first = end;
    }
    drawDots(canvas, centers, m_look, reach, wholeSize(m_mapping));
}

// A sample without a line to another one.
void TraceStrokes::paintLoneSamples(TraceCanvas &canvas) const
{
    QVector<QPoint> centers;
    const bool holds = course() == TraceCourse::Steps;
    const bool holdsToLeft = course() == TraceCourse::StepsToLeft;
    bool isJoined = false; // to the column before
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const TraceColumn &column = m_columns[i];
        const bool isLast = i + 1 == m_columns.size();
        const bool isJoinedToNext = !isLast && areJoined(column, m_columns[i + 1]);
        const bool isHeld = (holds && !isLast) || (holdsToLeft && i > 0);
        if (!isJoined && !isJoinedToNext && !isHeld && !column.isGap() &&
            pixel(column.top) == pixel(column.bottom))
            centers.append(QPoint(pixel(column.x), pixel(column.top)));
        isJoined = isJoinedToNext;
    }
    if (!centers.isEmpty())
        drawDots(canvas, centers, m_look, std::max(dotDiameter(m_look.lineWidth), leastLoneDot),
                 wholeSize(m_mapping));
}

TraceCourse TraceStrokes::course() const
{
    if (m_look.style != TraceLook::Steps)
        return TraceCourse::Straight;
    return m_samples.isReversed() ? TraceCourse::StepsToLeft : TraceCourse::Steps;
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
