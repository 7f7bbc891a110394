#include "plots/GraphPointPictogramMarker.h"

#include "plots/ArrayElement.h"

#include <QPainter>

/*!
    \qmltype GraphPointPictogramMarker
    \inherits GraphPointMarker
    \brief A text in a rounded frame at the lower edge of the plot, below the point.
*/
void GraphPointPictogramMarker::paint(QPainter *painter, int x, int y)
{
    const QString text = graph::valueText(pointValue(m_labels));
    if (text.isEmpty())
        return;
    painter->save();
    drawFramedText(painter, x, y, text);
    painter->restore();
}

/*!
    \qmlproperty OrnData GraphPointPictogramMarker::labels
    The texts, one for each point; null by default. A single value serves every point; nothing is drawn for a
    point without a text.
*/
void GraphPointPictogramMarker::setLabels(OrnData *labels)
{
    if (follow(m_labels, labels, SLOT(labelsValueChanged())))
        labelsValueChanged();
}

void GraphPointPictogramMarker::labelsValueChanged()
{
    emit labelsChanged(m_labels);
    emit pointChanged();
}

void GraphPointPictogramMarker::drawFramedText(QPainter *painter, int x, int y, const QString &text) const
{
    // The frame's distance from the text, and the radii of its corners in percent.
    constexpr int distance = 2;
    constexpr qreal radius = 75;

    QPen framePen = roundPen();
    framePen.setCapStyle(Qt::FlatCap);
    if (!setTextStyle(painter, labelColor(), labelFontSize()))
        return;
    const QFontMetrics metrics = painter->fontMetrics();
    const int width = metrics.horizontalAdvance(text);
    const int baseline = y + marginBottom() - metrics.height() - distance - lineWidth();
    const QRect textRect(x - width / 2, baseline - metrics.ascent(), width, metrics.height());
    painter->drawText(textRect.left(), baseline, text);

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(framePen);
    painter->drawRoundedRect(textRect.adjusted(-distance, -distance, distance, distance), radius, radius,
                             Qt::RelativeSize);
}
