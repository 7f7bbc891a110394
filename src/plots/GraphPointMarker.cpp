#include "plots/GraphPointMarker.h"

#include "plots/ArrayElement.h"

#include <QPainter>

/*!
    \qmltype GraphPointMarker
    \inherits GraphPoint
    \brief A vertical line of \c pointSize at the point, and the base of the labelled markers.
*/
void GraphPointMarker::paint(QPainter *painter, int x, int y)
{
    painter->save();
    drawMarkerLine(painter, x, y);
    painter->restore();
}

/*!
    \qmlproperty color GraphPointMarker::labelColor
    Colour of the label, black by default.
*/
void GraphPointMarker::setLabelColor(const QColor &color)
{
    if (m_labelColor == color)
        return;
    m_labelColor = color;
    emit labelColorChanged(color);
    emit pointChanged();
}

/*!
    \qmlproperty int GraphPointMarker::labelFontSize
    Font size of the label in points, 12 by default. No label is drawn at 0 or less.
*/
void GraphPointMarker::setLabelFontSize(int size)
{
    if (m_labelFontSize == size)
        return;
    m_labelFontSize = size;
    emit labelFontSizeChanged(size);
    emit pointChanged();
}

void GraphPointMarker::drawMarkerLine(QPainter *painter, int x, int y) const
{
    painter->setPen(roundPen());
    drawVerticalLine(painter, x, y);
}

void GraphPointMarker::setDefaultFont(const QFont &font)
{
    if (m_defaultFont == font)
        return;
    m_defaultFont = font;
    emit pointChanged();
}

bool GraphPointMarker::setTextStyle(QPainter *painter, const QColor &color, int fontSize) const
{
    // Larger glyphs than any screen would only cost memory.
    constexpr int largestFontSize = 1000;
    if (fontSize <= 0)
        return false;
    QFont font = m_defaultFont.value_or(painter->font());
    if (!m_defaultFont || fontSize != defaultFontSize)
        font.setPointSize(qMin(fontSize, largestFontSize));
    painter->setFont(font);
    painter->setPen(color);
    return true;
}

bool GraphPointMarker::follow(QPointer<OrnData> &stored, OrnData *data, const char *slot)
{
    if (stored == data)
        return false;
    // Only this role is disconnected: one object may carry several of a marker's values.
    if (stored)
        disconnect(stored, nullptr, this, slot);
    stored = data;
    if (data) {
        connect(data, SIGNAL(valueChanged()), this, slot);
        connect(data, SIGNAL(destroyed()), this, slot);
    }
    return true;
}

QVariant GraphPointMarker::pointValue(const OrnData *data) const
{
    return data ? graph::arrayElement(data->value(), pointIndex()) : QVariant();
}
