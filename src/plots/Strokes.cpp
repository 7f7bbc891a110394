#include "plots/Strokes.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Enough to make up for the lines that are drawn for two bands, few enough for the engine's sorting of edges.
constexpr int pointsOfBand = 16;

// In pixels. Outlines that reach farther are clipped by the engine before it fills them, each in a way of its own.
constexpr double nearPicture = 1 << 14;

// Whether each pixel is either painted or not, in device coordinates that are those of the item but for a whole number.
bool paintsWholePixels(const QPainter &painter)
{
    const QTransform &transform = painter.deviceTransform();
    const auto isWhole = [](double offset) { return offset == std::floor(offset); };
    return painter.paintEngine()->type() == QPaintEngine::Raster && !painter.testRenderHint(QPainter::Antialiasing)
           && transform.type() <= QTransform::TxTranslate && isWhole(transform.dx()) && isWhole(transform.dy());
}

bool isPlain(const QPen &pen)
{
    return pen.style() == Qt::SolidLine && pen.capStyle() == Qt::FlatCap;
}

// The raster engine fills the pixels whose centres lie inside an outline, and that of a flat-capped line of even width
// runs along pixel borders. Outlines of odd widths run through the centres, where rounding decides; thin lines have
// rules of their own, and are quick.
bool areLinesRectangles(const QPainter &painter)
{
    const int width = painter.pen().width();
    return paintsWholePixels(painter) && isPlain(painter.pen()) && width > 0 && width % 2 == 0;
}

struct Rows
{
    explicit Rows(const QLine &line)
        : top(std::min(line.y1(), line.y2()))
        , end(std::max(line.y1(), line.y2())) // the lower end is not drawn
    {
    }

    int count() const { return end - top; }
    Rows common(Rows other) const
    {
        other.top = std::max(top, other.top);
        other.end = std::min(end, other.end);
        return other;
    }

    int top;
    int end;
};

class Rectangles
{
public:
    Rectangles(const QVector<QLine> &lines, int width)
        : m_lines(lines)
        , m_width(width)
    {
        m_rects.reserve(2 * lines.size());
    }

    QVector<QRect> separate()
    {
        for (const QLine &line : m_lines)
            add(line.x1(), line.x1(), Rows(line));
        return m_rects;
    }

    // The rows that neighbours have in common are filled once across them, as long as more are saved than are lost by
    // what the next one does not share.
    QVector<QRect> merged()
    {
        for (int first = 0; first < m_lines.size();) {
            Rows shared(m_lines[first]);
            int end = first + 1;
            for (; end < m_lines.size() && m_lines[end].x1() == m_lines[end - 1].x1() + 1; ++end) {
                const Rows next = shared.common(Rows(m_lines[end]));
                if (next.count() <= qint64(end - first) * (shared.count() - next.count()))
                    break;
                shared = next;
            }
            addGroup(first, end, shared);
            first = end;
        }
        return m_rects;
    }

private:
    void add(int left, int right, const Rows &rows)
    {
        if (rows.count() > 0)
            m_rects.append(QRect(left - m_width / 2, rows.top, right - left + m_width, rows.count()));
    }

    void addGroup(int first, int end, const Rows &shared)
    {
        add(m_lines[first].x1(), m_lines[end - 1].x1(), shared);
        if (end - first == 1)
            return;
        for (int i = first; i < end; ++i) {
            Rows above(m_lines[i]);
            Rows below(m_lines[i]);
            above.end = shared.top;
            below.top = shared.end;
            add(m_lines[i].x1(), m_lines[i].x1(), above);
            add(m_lines[i].x1(), m_lines[i].x1(), below);
        }
    }

    const QVector<QLine> &m_lines;
    int m_width;
    QVector<QRect> m_rects;
};

bool isAscending(const QPainterPath &path)
{
    for (int i = 1; i < path.elementCount(); ++i) {
        if (path.elementAt(i).x < path.elementAt(i - 1).x)
            return false;
    }
    return true;
}

// The engine draws them by other rules, and quickly.
bool isOfSeparateLines(const QPainterPath &path)
{
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isMoveTo() != (i % 2 == 0))
            return false;
    }
    return true;
}

// Whether what follows a path looks the same when it is painted in upright bands, one after the other. bounds: of all
// that is painted.
bool isDivisible(const QPainter &painter, const QPainterPath &path, const QRectF &bounds)
{
    if (path.elementCount() <= pointsOfBand || painter.hasClipping() || !paintsWholePixels(painter)
        || !isAscending(path))
        return false;
    const QRectF mapped = painter.deviceTransform().mapRect(bounds);
    return mapped.left() > -nearPicture && mapped.right() < nearPicture && mapped.top() > -nearPicture
           && mapped.bottom() < nearPicture;
}

// Paints each band with all lines that reach into it, ends and joints outside, so that what falls into the band is the
// same as of the whole path. paintPart(first, end) is to paint what belongs to these elements.
template <typename PaintPart>
void paintInBands(QPainter *painter, const QPainterPath &path, double reach, PaintPart paintPart)
{
    constexpr int outside = 1 << 15;
    const int count = path.elementCount();
    const auto x = [&path](int i) { return path.elementAt(i).x; };
    int left = -outside;
    for (int begin = 0; begin < count;) {
        int end = std::min(begin + pointsOfBand, count);
        int right = outside;
        if (end < count) {
            right = int(std::floor(x(end)));
            // Points on the border belong to the band before it.
            while (end < count && x(end) <= right)
                ++end;
        }
        if (end == count)
            right = outside;
        int first = begin;
        while (first > 0 && x(first) > left - reach)
            --first;
        int last = end;
        while (last < count && x(last) < right + reach)
            ++last;
        painter->setClipRect(left, -outside, right - left, 2 * outside);
        paintPart(first, std::min(last + 1, count));
        begin = end;
        left = right;
    }
    painter->setClipping(false);
}

// A path to which parts are added. A bend outside the picture keeps it from being a mere line or rectangle, for which the
// engine has other rules.
QPainterPath beginOfPart(const QPainter &painter)
{
    const QPointF farLeft(-nearPicture - painter.deviceTransform().dx(), 0.0);
    QPainterPath part(farLeft);
    part.lineTo(farLeft.x() + 1.0, farLeft.y());
    part.lineTo(farLeft.x() + 2.0, farLeft.y());
    return part;
}

// Adds the lines between the elements first..end-1 of a path.
void addLines(QPainterPath &part, const QPainterPath &path, int first, int end)
{
    for (int i = first; i < end; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (i == first || element.isMoveTo())
            part.moveTo(element);
        else
            part.lineTo(element);
    }
}

// Adds the areas between the elements first..end-1 of a path and a row.
void addAreas(QPainterPath &part, const QPainterPath &path, int first, int end, double row)
{
    for (int i = first; i < end; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (i == first || element.isMoveTo())
            part.moveTo(element.x, row);
        part.lineTo(element);
        if (i + 1 == end || path.elementAt(i + 1).isMoveTo()) {
            part.lineTo(element.x, row);
            part.closeSubpath();
        }
    }
}

} // namespace

void drawUprightLines(QPainter *painter, const QVector<QLine> &lines)
{
    if (!areLinesRectangles(*painter)) {
        painter->drawLines(lines);
        return;
    }
    const QPen pen = painter->pen();
    const QBrush brush = painter->brush();
    const bool isOpaque = pen.brush().isOpaque() && painter->opacity() == 1.0
                          && painter->compositionMode() == QPainter::CompositionMode_SourceOver;
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen.brush());
    Rectangles rectangles(lines, pen.width());
    painter->drawRects(isOpaque ? rectangles.merged() : rectangles.separate());
    painter->setBrush(brush);
    painter->setPen(pen);
}

void drawLinePath(QPainter *painter, const QPainterPath &path)
{
    const QPen pen = painter->pen();
    if (!isPlain(pen) || pen.width() < 2 || isOfSeparateLines(path)
        || !isDivisible(*painter, path, path.controlPointRect())) {
        painter->strokePath(path, pen);
        return;
    }
    paintInBands(painter, path, pen.width() / 2.0 + 1.0, [&](int first, int end) {
        QPainterPath part = beginOfPart(*painter);
        addLines(part, path, first, end);
        painter->strokePath(part, pen);
    });
}

void fillToRow(QPainter *painter, const QPainterPath &path, double row, const QBrush &brush)
{
    const QRectF bounds = path.controlPointRect();
    const QRectF both = bounds.united(QRectF(bounds.left(), row, 1.0, 1.0));
    if (!isDivisible(*painter, path, both)) {
        QPainterPath areas;
        addAreas(areas, path, 0, path.elementCount(), row);
        painter->fillPath(areas, brush);
        return;
    }
    paintInBands(painter, path, 1.0, [&](int first, int end) {
        QPainterPath part = beginOfPart(*painter);
        addAreas(part, path, first, end, row);
        painter->fillPath(part, brush);
    });
}

} // namespace graph
