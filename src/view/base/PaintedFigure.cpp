#include "view/base/PaintedFigure.h"

#include "common/SafeInteger.h"
#include "common/TextTaker.h"
#include "raster/RecordingEngine.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// With more of them one picture of the whole costs less.
constexpr int mostMarks = 200;

class Recorder : public RecordingEngine, public TextTaker
{
public:
    Recorder(const QSize &size, PaintedTexts &texts, double oddLineOffset)
        : RecordingEngine(size)
        , m_texts(texts)
        , m_oddLineOffset(oddLineOffset)
    {
    }

    PaintedFigure figure;

    Type type() const override { return User; }

    void updateState(const QPaintEngineState &now) override
    {
        RecordingEngine::updateState(now);
        const DirtyFlags changed = now.state();
        m_text.clear();
        if (changed & DirtyFont)
            m_font = now.font();
        if (changed & DirtyHints)
            m_isPlain = !(now.renderHints() & QPainter::Antialiasing);
    }

    using RecordingEngine::drawLines;
    void drawLines(const QLineF *lines, int count) override
    {
        if (pen().style() == Qt::NoPen)
            return;
        m_text.clear();
        const double reach = 0.5 * pen().widthF() + 2.0;
        const double offset = std::max(1, pen().width()) % 2 == 1 ? m_oddLineOffset : 0.0;
        for (int i = 0; i < count && isRecordable(); ++i) {
            const QLineF line = lines[i].translated(transform().dx() + offset, transform().dy() + offset);
            const QRectF bounds =
                QRectF(line.p1(), line.p2()).normalized().adjusted(-reach, -reach, reach, reach);
            if (isBesideLast(line)) {
                joinToLast(line, bounds);
                continue;
            }
            PaintedMark mark;
            mark.lines = {{line, pen()}};
            const bool isThinLine = isThin(pen());
            const bool isAdded = append(mark, bounds, isThinLine ? surroundings() : picture());
            m_lastLine = isAdded && isThinLine ? line : QLineF();
        }
    }

    void drawTextItem(const QPointF &place, const QTextItem &item) override
    {
        if (!isRecordable())
            return;
        const QPointF at(place.x() + transform().dx(), place.y() + transform().dy());
        // A text comes in pieces, for example at its spaces, which have their places within pixels from the
        // whole.
        const bool continues = !m_text.isNull() && at.y() == m_textAt.y() &&
                               std::abs(at.x() - m_textAt.x() - m_textWidth) < 1e-3;
        if (continues && m_isTextRecorded)
            figure.marks.removeLast();
        if (!continues) {
            m_text.clear();
            m_textAt = at;
            m_textWidth = 0.0;
        }
        m_text += item.text();
        m_textWidth += item.width();
        const int before = figure.marks.size();
        m_extent = {m_textWidth, item.ascent(), item.ascent() + item.descent()};
        appendText(pen(), m_font, m_text, m_textAt, m_extent);
        m_isTextRecorded = figure.marks.size() > before;
    }

    void takeText(QPainter *painter, const QPointF &at, const QString &text) override
    {
        m_text.clear();
        const PaintedTexts::Extent *known = m_texts.find(painter->font(), text);
        const bool isPlain =
            painter->transform().type() <= QTransform::TxTranslate && painter->opacity() == 1.0 &&
            !painter->hasClipping() && painter->compositionMode() == QPainter::CompositionMode_SourceOver &&
            painter->pen().brush().style() == Qt::SolidPattern &&
            !painter->testRenderHint(QPainter::Antialiasing) && figure.marks.size() < mostMarks;
        if (known && isPlain) {
            const QPointF offset(painter->transform().dx(), painter->transform().dy());
            appendText(painter->pen(), painter->font(), text, at + offset, *known);
            return;
        }
        painter->drawText(at, text);
        // Not so where parts of it come from other fonts.
        if (m_text == text)
            m_texts.add(painter->font(), text, m_extent);
        m_text.clear();
    }

private:
    bool isRecordable()
    {
        if (!m_isPlain || transform().type() > QTransform::TxTranslate ||
            pen().brush().style() != Qt::SolidPattern || figure.marks.size() >= mostMarks)
            refuse();
        return isComplete();
    }

    static bool isThin(const QPen &pen) { return pen.widthF() <= 1.0 && pen.style() == Qt::SolidLine; }

    // One pixel to the right of the last line that was taken down, or below it, and as long.
    bool isBesideLast(const QLineF &line) const
    {
        if (m_lastLine.isNull() || figure.marks.constLast().mark.isText() || !isThin(pen()))
            return false;
        const QPointF first = line.p1() - m_lastLine.p1();
        return first == line.p2() - m_lastLine.p2() && ((line.dx() == 0.0 && first == QPointF(1.0, 0.0)) ||
                                                        (line.dy() == 0.0 && first == QPointF(0.0, 1.0)));
    }

    void joinToLast(const QLineF &line, const QRectF &reach)
    {
        PlacedMark &last = figure.marks.last();
        const QRect part = reach.toAlignedRect() & surroundings();
        last.mark.size = (QRect(last.origin, last.mark.size) | part).size();
        last.mark.lines.append({line.translated(-last.origin), pen()});
        m_lastLine = line;
    }

    void appendText(const QPen &pen, const QFont &font, const QString &text, const QPointF &at,
                    const PaintedTexts::Extent &extent)
    {
        PaintedMark mark;
        mark.text = text;
        mark.fraction = at;
        mark.font = font;
        mark.pen = pen;
        // Letters may reach out of their own boxes.
        append(mark,
               QRectF(at.x(), at.y() - extent.ascent, extent.width, extent.height)
                   .adjusted(-extent.height / 2, -2, extent.height / 2, 2),
               picture());
    }

    // Thin lines near the edge are taken down whole, so that one that leaves the picture goes on as the same. Qt paints wide
    // ones at the edge with other rows.
    QRect surroundings() const
    {
        constexpr int room = 64;
        return picture().adjusted(-room, -room, room, room);
    }

    // False where there is nothing of it within the bounds.
    bool append(PaintedMark &mark, const QRectF &reach, const QRect &bounds)
    {
        if (!(reach.width() < pixelLimit) || !(reach.height() < pixelLimit)) {
            refuse();
            return false;
        }
        const QRect part = reach.toAlignedRect() & bounds;
        if (part.isEmpty())
            return false;
        mark.size = part.size();
        for (PaintedLine &line : mark.lines)
            line.line.translate(-part.topLeft());
        mark.fraction -= part.topLeft();
        figure.marks.append({std::move(mark), part.topLeft()});
        return true;
    }

    PaintedTexts &m_texts;
    double m_oddLineOffset;
    QFont m_font;
    // Which the next one may be beside.
    QLineF m_lastLine;
    // The text that the next piece may belong to.
    QString m_text;
    QPointF m_textAt;
    double m_textWidth = 0.0;
    PaintedTexts::Extent m_extent{};
    bool m_isTextRecorded = false;
    bool m_isPlain = true;
};

} // namespace

bool PaintedMark::operator==(const PaintedMark &other) const
{
    if (size != other.size || isText() != other.isText())
        return false;
    return isText()
               ? text == other.text && fraction == other.fraction && font == other.font && pen == other.pen
               : lines == other.lines;
}

bool PaintedMark::isTranslucent() const
{
    const auto isClear = [](const QPen &any) { return any.color().alpha() < 255; };
    return isText() ? isClear(pen) : std::any_of(lines.begin(), lines.end(), [&](const PaintedLine &line) {
        return isClear(line.pen);
    });
}

void PaintedMark::paint(QPainter *painter, const QPoint &origin) const
{
    for (const PaintedLine &line : lines) {
        painter->setPen(line.pen);
        painter->drawLine(line.line.translated(origin));
    }
    if (!isText())
        return;
    painter->setPen(pen);
    painter->setFont(font);
    painter->drawText(fraction + origin, text);
}

const PaintedTexts::Extent *PaintedTexts::find(const QFont &font, const QString &text) const
{
    if (font != m_font)
        return nullptr;
    const auto found = m_extents.constFind(text);
    return found != m_extents.constEnd() ? &*found : nullptr;
}

void PaintedTexts::add(const QFont &font, const QString &text, const Extent &extent)
{
    constexpr int most = 200;
    if (font != m_font || m_extents.size() >= most) {
        m_extents.clear();
        m_font = font;
    }
    m_extents.insert(text, extent);
}

PaintedFigure recordedFigure(const QSize &size, PaintedTexts &texts, double oddLineOffset,
                             const std::function<void(QPainter *)> &paint)
{
    Recorder recorder(size, texts, oddLineOffset);
    QPainter painter(&recorder);
    paint(&painter);
    painter.end();
    recorder.figure.isComplete = recorder.isComplete();
    return recorder.figure;
}

} // namespace graph
