#include "painters/TextPainter.h"

#include "common/SafeInteger.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

/*!
    \qmltype TextPainter
    \inherits BasePainter
    \brief A text at a data point.

    With \c plotParent set, a text that would reach over the first or last value of the horizontal axis is
    moved inwards by half its width. A text is drawn up to 10 data units outside the visible range, as it may
    reach into it.
*/
TextPainter::TextPainter(QQuickItem *parent)
    : BasePainter(parent)
{
    connect(this, SIGNAL(originChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(fontChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(labelChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(hTextAlignmentChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(vTextAlignmentChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(labelColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(labelOffsetChanged()), this, SIGNAL(updateNeeded()));
}

void TextPainter::paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY)
{
    constexpr double tolerance =
        10.0; // in data units on any scale: it decides what is worth painting, not where
    const double top = visibleRect.y() + visibleRect.height();
    const bool visible = m_origin.x() >= visibleRect.x() - tolerance &&
                         m_origin.x() <= visibleRect.x() + visibleRect.width() + tolerance &&
                         m_origin.y() >= visibleRect.y() - tolerance && m_origin.y() <= top + tolerance;
    if (!visible || m_label.isEmpty())
        return;
    const QPen formerPen = painter->pen();
    const QFont formerFont = painter->font();
    painter->setPen(m_labelColor);
    painter->setFont(m_font);

    const graph::PixelMapping place = mapping(visibleRect, scaleX, scaleY);
    int x = place.column(m_origin.x());
    if (plotParent())
        x += nudge(x, QFontMetrics(m_font).horizontalAdvance(m_label), place);
    const int y = graph::pixel(place.y(m_origin.y()) - m_labelOffset);
    const QPoint anchor(x, y);
    painter->drawText(QRect(anchor, anchor), int(m_hTextAlignment | m_vTextAlignment | Qt::TextDontClip),
                      m_label);

    painter->setFont(formerFont);
    painter->setPen(formerPen);
}

int TextPainter::nudge(int x, int textWidth, const graph::PixelMapping &place) const
{
    const AbstractPlot *plot = plotParent();
    if (!place.isLinearX() || plot->visibleRangeX() < 0.0) {
        const auto [left, right] = std::minmax({place.x(plot->minValueX()), place.x(plot->maxValueX())});
        return left >= x - textWidth ? textWidth / 2 : right <= x + textWidth ? -(textWidth / 2) : 0;
    }
    const double scale = (plot->width() - 1.0) / plot->visibleRangeX();
    // Whole pixels, yet kept as double: counted from data value 0 they exceed an int when a far range is
    // magnified.
    const double column = std::trunc(scale * plot->minVisibleX()) + x;
    if (std::trunc(scale * plot->minValueX()) >= column - textWidth)
        return textWidth / 2;
    if (std::trunc(scale * plot->maxValueX()) <= column + textWidth)
        return -(textWidth / 2);
    return 0;
}

/*!
    \qmlproperty point TextPainter::origin
    The data point at which the text is anchored, (0, 0) by default.
*/
void TextPainter::setOrigin(const QPointF &origin)
{
    // Qt compares points with a tolerance, which would swallow small moves near zero.
    if (m_origin.x() == origin.x() && m_origin.y() == origin.y())
        return;
    m_origin = origin;
    emit originChanged();
}

/*!
    \qmlproperty font TextPainter::font
    Verdana with 12 points by default. As the size is one in points, QML warns when only font.pixelSize is written; use
    font.pointSize, or assign a whole font with Qt.font().
*/
void TextPainter::setFont(const QFont &font)
{
    if (m_font == font)
        return;
    m_font = font;
    emit fontChanged();
}

/*!
    \qmlproperty string TextPainter::label
    The text, empty by default.
*/
void TextPainter::setLabel(const QString &label)
{
    if (m_label == label)
        return;
    m_label = label;
    emit labelChanged();
}

/*!
    \qmlproperty uint TextPainter::hTextAlignment
    Which side of the text is at the origin: Qt.AlignLeft (the default), Qt.AlignHCenter or Qt.AlignRight.
*/
void TextPainter::setHTextAlignment(uint alignment)
{
    if (m_hTextAlignment == alignment)
        return;
    m_hTextAlignment = alignment;
    emit hTextAlignmentChanged();
}

/*!
    \qmlproperty uint TextPainter::vTextAlignment
    Which edge of the text is at the origin: Qt.AlignBottom (the default), Qt.AlignVCenter or Qt.AlignTop.
*/
void TextPainter::setVTextAlignment(uint alignment)
{
    if (m_vTextAlignment == alignment)
        return;
    m_vTextAlignment = alignment;
    emit vTextAlignmentChanged();
}

/*!
    \qmlproperty color TextPainter::labelColor
    Colour of the text, black by default.
*/
void TextPainter::setLabelColor(const QColor &color)
{
    if (m_labelColor == color)
        return;
    m_labelColor = color;
    emit labelColorChanged();
}

/*!
    \qmlproperty double TextPainter::labelOffset
    Pixels by which the text is lifted above the origin, 0 by default.
*/
void TextPainter::setLabelOffset(double offset)
{
    if (m_labelOffset == offset)
        return;
    m_labelOffset = offset;
    emit labelOffsetChanged();
}
