#include "plots/GraphPointActiveMarker.h"

#include "plots/ArrayElement.h"

#include <QPainter>

namespace {

// Pixels between the line and the labels, and between the two labels.
constexpr int gap = 2;

QSize textSize(QPainter *painter, const QString &text)
{
    const QFontMetrics metrics = painter->fontMetrics();
    return text.isEmpty() ? QSize(0, 0) : QSize(metrics.horizontalAdvance(text), metrics.height());
}

} // namespace

/*!
    \qmltype GraphPointActiveMarker
    \inherits GraphPointMarker
    \brief A vertical line with up to two lines of text above it, or below it where they do not fit above.
*/
void GraphPointActiveMarker::paint(QPainter *painter, int x, int y)
{
    painter->save();
    drawMarkerLine(painter, x, y);
    const QRect firstRect = firstLabelRect(painter, x, y);
    drawFirstLabel(painter, x, y, firstRect);
    drawSecondLabel(painter, x, y, firstRect);
    painter->restore();
}

/*!
    \qmlproperty OrnData GraphPointActiveMarker::firstLabels
    The upper texts, one for each point; null by default. A single value serves every point.
*/
void GraphPointActiveMarker::setFirstLabels(OrnData *labels)
{
    if (follow(m_firstLabels, labels, SLOT(firstLabelsValueChanged())))
        firstLabelsValueChanged();
}

/*!
    \qmlproperty OrnData GraphPointActiveMarker::secondLabels
    The lower texts, one for each point; null by default. A single value serves every point.
*/
void GraphPointActiveMarker::setSecondLabels(OrnData *labels)
{
    if (follow(m_secondLabels, labels, SLOT(secondLabelsValueChanged())))
        secondLabelsValueChanged();
}

/*!
    \qmlproperty color GraphPointActiveMarker::secondLabelColor
    Colour of the lower text, black by default.
*/
void GraphPointActiveMarker::setSecondLabelColor(const QColor &color)
{
    if (m_secondLabelColor == color)
        return;
    m_secondLabelColor = color;
    emit secondLabelColorChanged(color);
    emit pointChanged();
}

/*!
    \qmlproperty int GraphPointActiveMarker::secondLabelFontSize
    Font size of the lower text in points, 12 by default. It is not drawn at 0 or less.
*/
void GraphPointActiveMarker::setSecondLabelFontSize(int size)
{
    if (m_secondLabelFontSize == size)
        return;
    m_secondLabelFontSize = size;
    emit secondLabelFontSizeChanged(size);
    emit pointChanged();
}

void GraphPointActiveMarker::drawFirstLabel(QPainter *painter, int, int, const QRect &firstRect)
{
    if (firstRect.isEmpty() || !setTextStyle(painter, labelColor(), labelFontSize()))
        return;
    painter->drawText(firstRect, Qt::AlignCenter | Qt::TextDontClip,
                      graph::valueText(pointValue(m_firstLabels)));
}

void GraphPointActiveMarker::drawSecondLabel(QPainter *painter, int x, int, const QRect &firstRect)
{
    const QSize text = secondTextSize(painter);
    if (text.isEmpty())
        return;
    const int top = firstRect.isEmpty() ? firstRect.top() : firstRect.top() + firstRect.height() + gap;
    painter->drawText(centred(text, x, top), Qt::AlignCenter | Qt::TextDontClip,
                      graph::valueText(pointValue(m_secondLabels)));
}

void GraphPointActiveMarker::firstLabelsValueChanged()
{
    emit firstLabelsChanged(m_firstLabels);
    emit pointChanged();
}

void GraphPointActiveMarker::secondLabelsValueChanged()
{
    emit secondLabelsChanged(m_secondLabels);
    emit pointChanged();
}

QSize GraphPointActiveMarker::firstTextSize(QPainter *painter) const
{
    if (!setTextStyle(painter, labelColor(), labelFontSize()))
        return QSize(0, 0);
    return textSize(painter, graph::valueText(pointValue(m_firstLabels)));
}

QSize GraphPointActiveMarker::secondTextSize(QPainter *painter) const
{
    if (!setTextStyle(painter, m_secondLabelColor, m_secondLabelFontSize))
        return QSize(0, 0);
    return textSize(painter, graph::valueText(pointValue(m_secondLabels)));
}

QRect GraphPointActiveMarker::firstLabelRect(QPainter *painter, int x, int y) const
{
    const QSize first = firstTextSize(painter);
    const QSize second = secondTextSize(painter);
    const int between = first.isEmpty() || second.isEmpty() ? 0 : gap;
    const int height = first.height() + between + second.height();
    const int distance = size() / 2 + lineWidth() + gap;
    const bool below = marginTop() < distance + height;
    return centred(first, x, below ? y + distance : y - distance - height);
}

// A text near the left or right edge is moved so far that it stays whole.
QRect GraphPointActiveMarker::centred(const QSize &text, int x, int top) const
{
    int left = x - text.width() / 2;
    if (text.width() <= marginLeft() + marginRight())
        left = qBound(x - marginLeft(), left, x + marginRight() - text.width());
    return QRect(QPoint(left, top), text);
}
