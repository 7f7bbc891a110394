#include "raster/Strokes.h"

#include "common/VectorRegisters.h"
#include "raster/LineFill.h"
#include "raster/LinePoints.h"
#include "raster/OutlineFill.h"
#include "raster/PixelFill.h"
#include "raster/RectangleSweep.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace graph {

namespace {

// Shorter paths cost the engine little, and it has rules of its own for some of them.
constexpr int fewPoints = 16;

// Pixels of pen width up to which it is worth to look for rows that lines share.
constexpr int widestShared = 32;

// In pixels. Outlines that reach farther are clipped by the engine before it fills them, each in a way of its
// own.
constexpr double nearPicture = 1 << 14;

// Whether each pixel is either painted or not, in device coordinates that are those of the item but for a
// whole number.
bool paintsWholePixels(const QPainter &painter)
{
    const QTransform &transform = painter.deviceTransform();
    const auto isWhole = [](double offset) { return offset == std::floor(offset); };
    return isOnPixels(painter) && isWhole(transform.dx()) && isWhole(transform.dy());
}

// Whether what is painted twice looks as if it were painted once.
bool isOpaque(const QPainter &painter, const QBrush &brush)
{
    return brush.isOpaque() && painter.opacity() == 1.0 &&
           painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

QRect deviceRect(const QPainter &painter)
{
    return QRect(0, 0, painter.device()->width(), painter.device()->height());
}

bool isPlain(const QPen &pen)
{
    return pen.style() == Qt::SolidLine && pen.capStyle() == Qt::FlatCap;
}

// Which pixels a thin line paints may depend on the line before it, see rowsOf, if that is not beside the
// picture.
bool isSequenceClear(const QPainter &painter, const QVector<QLine> &lines)
{
    const QRect picture = painter.deviceTransform().inverted().mapRect(deviceRect(painter));
    const auto isVisible = [&picture](const QLine &line) {
        return line.x1() >= picture.left() && line.x1() <= picture.right() &&
               std::max(line.y1(), line.y2()) > picture.top() &&
               std::min(line.y1(), line.y2()) <= picture.bottom();
    };
    auto end = lines.end();
    while (end != lines.begin() && !isVisible(*(end - 1)))
        --end;
    const auto areAll = [&](auto is) { return std::all_of(lines.begin(), end, is); };
    return areAll([](const QLine &line) { return line.y2() <= line.y1(); }) ||
           areAll([](const QLine &line) { return line.y2() >= line.y1(); }) || areAll(isVisible);
}

// The outlines of flat-capped lines of even width run along pixel borders, between the centres that decide
// what is filled; those of odd widths run through the centres, where rounding decides. Thin lines are not
// outlined.
bool areLinesRectangles(const QPainter &painter, const QVector<QLine> &lines)
{
    const int width = painter.pen().width();
    return paintsWholePixels(painter) && isPlain(painter.pen()) &&
           (width == 1 ? isSequenceClear(painter, lines) : width > 0 && width % 2 == 0);
}

// The rows that each line paints: the lower end is not one of them, save for a thin line without length and
// for one that goes up after one that went down.
std::vector<Rows> rowsOf(const QVector<QLine> &lines, int width)
{
    std::vector<Rows> rows;
    rows.reserve(lines.size());
    bool wentDown = false;
    for (const QLine &line : lines) {
        Rows own{std::min(line.y1(), line.y2()), std::max(line.y1(), line.y2())};
        if (width == 1 && (own.isEmpty() || (wentDown && line.y2() < line.y1())))
            ++own.end;
        if (line.y1() != line.y2())
            wentDown = line.y2() > line.y1();
        rows.push_back(own);
    }
    return rows;
}

QVector<QRect> separateRectangles(const QVector<QLine> &lines, const std::vector<Rows> &rows, int width)
{
    QVector<QRect> rectangles;
    rectangles.reserve(lines.size());
    for (int i = 0; i < lines.size(); ++i) {
        if (!rows[i].isEmpty())
            rectangles.append(QRect(lines[i].x1() - width / 2, rows[i].top, width, rows[i].count()));
    }
    return rectangles;
}

// What lines in neighbouring columns that touch cover together: a run in each column, from the given one on.
void addChain(RectangleSweep &sweep, int column, const Rows *rows, int count, int width)
{
    for (int nearest = 0; nearest < count + width - 1; ++nearest, ++column) {
        const int leftmost = std::max(0, nearest - width + 1);
        Rows run = rows[leftmost];
        for (int i = leftmost + 1; i <= std::min(nearest, count - 1); ++i)
            run.unite(rows[i]);
        sweep.add(column, run);
    }
}

// For opaque lines, which may cover each other, and for disjoint ones.
QVector<QRect> sharedRectangles(const QVector<QLine> &lines, const std::vector<Rows> &rows, int width)
{
    const auto isChain = [&](int i) {
        return lines[i].x1() == lines[i - 1].x1() + 1 && !rows[i].isEmpty() && rows[i].touches(rows[i - 1]);
    };
    RectangleSweep sweep;
    for (int first = 0; first < lines.size();) {
        int end = first + 1;
        if (!rows[first].isEmpty()) {
            while (end < lines.size() && isChain(end))
                ++end;
            addChain(sweep, lines[first].x1() - width / 2, &rows[first], end - first, width);
        }
        first = end;
    }
    return sweep.takeRectangles();
}

// Whether no two lines paint the same pixel.
bool areDisjoint(const QVector<QLine> &lines, int width)
{
    for (int i = 1; i < lines.size(); ++i) {
        if (qint64(lines[i].x1()) - lines[i - 1].x1() < width)
            return false;
    }
    return true;
}

// Whether the engine fills what lies within bounds as filledRectangles does.
bool fillsByCentres(const QPainter &painter, const QRectF &bounds)
{
    if (painter.hasClipping() || !painter.paintEngine()->systemClip().isEmpty() ||
        !paintsWholePixels(painter))
        return false;
    const QRectF mapped = painter.deviceTransform().mapRect(bounds);
    return mapped.left() > -nearPicture && mapped.right() < nearPicture && mapped.top() > -nearPicture &&
           mapped.bottom() < nearPicture;
}

void drawRectangles(QPainter *painter, const QVector<QRect> &rectangles, const QBrush &brush)
{
    const QPen pen = painter->pen();
    const QBrush before = painter->brush();
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRects(rectangles);
    clearWideRegisters();
    painter->setBrush(before);
    painter->setPen(pen);
}

// rectanglesInside(offset, device) is to give them in device coordinates.
template <typename RectanglesInside>
void drawDeviceRectangles(QPainter *painter, const QBrush &brush, RectanglesInside rectanglesInside)
{
    const QTransform transform = painter->deviceTransform();
    const QPoint offset(int(transform.dx()), int(transform.dy()));
    QVector<QRect> rectangles = rectanglesInside(offset, deviceRect(*painter));
    for (QRect &rectangle : rectangles)
        rectangle.translate(-offset);
    drawRectangles(painter, rectangles, brush);
}

// The areas between the lines of a path and a row.
QPainterPath areasToRow(const QPainterPath &path, double row)
{
    QPainterPath areas;
    const int count = path.elementCount();
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            areas.moveTo(element.x, row);
        areas.lineTo(element);
        if (i + 1 == count || path.elementAt(i + 1).isMoveTo()) {
            areas.lineTo(element.x, row);
            areas.closeSubpath();
        }
    }
    return areas;
}

// Whether the outline of lines can be filled here, with the pixels of the engine's, if these are known.
bool isOutlined(const QPainter &painter, const QRectF &bounds)
{
    const QPen &pen = painter.pen();
    const double reach = pen.width() / 2.0 + 1.0;
    return isPlain(pen) && pen.joinStyle() == Qt::BevelJoin && pen.width() >= 2 &&
           painter.paintEngine()->type() != pathRecorder &&
           fillsByCentres(painter, bounds.adjusted(-reach, -reach, reach, reach));
}

// Draws an outlined line; false, with nothing drawn, where the painter does as well.
bool drawOutlined(QPainter *painter, const LinePoints &points)
{
    if (!haveKnownPixels(points))
        return false;
    const QPen pen = painter->pen();
    const bool isSolid = pen.brush().style() == Qt::SolidPattern && isOpaque(*painter, pen.brush());
    if (points.size() <= fewPoints || (isSolid && isQuickInRows(points, pen.width()))) {
        // What is taken down as a path is painted so later.
        const bool isTakenDown = painter->paintEngine()->type() == strokeRecorder;
        return !isTakenDown && isSolid && paintLine(painter, deviceRect(*painter), points, pen);
    }
    drawDeviceRectangles(painter, pen.brush(), [&](const QPoint &offset, const QRect &device) {
        return strokedRectangles(points, pen.width(), offset, device);
    });
    return true;
}

} // namespace

void drawUprightLines(QPainter *painter, const QVector<QLine> &lines)
{
    if (!areLinesRectangles(*painter, lines)) {
        painter->drawLines(lines);
        return;
    }
    const QBrush brush = painter->pen().brush();
    const int width = painter->pen().width();
    const bool mayShare = width <= widestShared && (isOpaque(*painter, brush) || areDisjoint(lines, width));
    const std::vector<Rows> rows = rowsOf(lines, width);
    drawRectangles(painter,
                   mayShare ? sharedRectangles(lines, rows, width) : separateRectangles(lines, rows, width),
                   brush);
}

void drawLinePath(QPainter *painter, const QPainterPath &path)
{
    if (!isOutlined(*painter, path.controlPointRect()) || !drawOutlined(painter, LinePoints(path)))
        painter->strokePath(path, painter->pen());
}

void drawLinePath(QPainter *painter, const LinePoints &points)
{
    if (!isOutlined(*painter, points.bounds()) || !drawOutlined(painter, points))
        painter->strokePath(points.path(), painter->pen());
}

void fillOutline(QPainter *painter, const QPainterPath &path, const QBrush &brush)
{
    if (path.elementCount() <= fewPoints || !fillsByCentres(*painter, path.controlPointRect())) {
        painter->fillPath(path, brush);
        return;
    }
    drawDeviceRectangles(painter, brush, [&](const QPoint &offset, const QRect &device) {
        return filledRectangles(path, offset, device);
    });
}

void fillToRow(QPainter *painter, const QPainterPath &path, double row, const QBrush &brush)
{
    fillOutline(painter, areasToRow(path, row), brush);
}

} // namespace graph
