#include "plots/GraphPointReflections.h"

#include "plots/ArrayElement.h"

#include <QDebug>
#include <QPainter>
#include <QStaticText>
#include <QUrl>

namespace {

constexpr int cachedIcons = 32;
// Larger icons than any screen would only cost memory.
constexpr int largestIcon = 1024;

// QML hands out resolved addresses, services plain paths.
QString localPath(const QString &path)
{
    if (path.startsWith(QLatin1String("qrc:")))
        return path.mid(3);
    return path.startsWith(QLatin1String("file:")) ? QUrl(path).toLocalFile() : path;
}

} // namespace

/*!
    \qmltype GraphPointReflections
    \inherits GraphPointMarker
    \brief A vertical line with the number of the point beside it, and an icon above it when the point is
    selected.

    The number is above the line, or below it when the point is selected or too near to the upper edge.
*/
GraphPointReflections::GraphPointReflections(QObject *parent)
    : GraphPointMarker(parent)
    , m_icons(cachedIcons)
{
}

void GraphPointReflections::paint(QPainter *painter, int x, int y)
{
    painter->save();
    drawMarkerLine(painter, x, y);
    if (isSelected())
        drawAnnotation(painter, x, y);
    drawLabel(painter, x, y, isSelected() || !hasRoomAbove(painter));
    painter->restore();
}

/*!
    \qmlproperty int GraphPointReflections::iconSize
    Width and height of the icon in pixels, 16 by default. No icon is drawn at 0 or less.
*/
void GraphPointReflections::setIconSize(int size)
{
    if (m_iconSize == size)
        return;
    m_iconSize = size;
    m_icons.clear();
    emit iconSizeChanged(size);
    emit pointChanged();
}

/*!
    \qmlproperty color GraphPointReflections::iconBackgroundColor
    Colour of the square behind the icon, transparent by default.
*/
void GraphPointReflections::setIconBackgroundColor(const QColor &color)
{
    if (m_iconBackgroundColor == color)
        return;
    m_iconBackgroundColor = color;
    emit iconBackgroundColorChanged(color);
    emit pointChanged();
}

/*!
    \qmlproperty bool GraphPointReflections::invertColors
    Whether the icon's colours are inverted, as a dark screen needs it; false by default.
*/
void GraphPointReflections::setInvertColors(bool invert)
{
    if (m_invertColors == invert)
        return;
    m_invertColors = invert;
    m_icons.clear();
    emit invertColorsChanged(invert);
    emit pointChanged();
}

/*!
    \qmlproperty OrnData GraphPointReflections::iconPaths
    Image files, one for each point; null by default. A single path serves every point. Without it, with an
    empty array, or when a file cannot be read, a warning is logged and the icon left out.
*/
void GraphPointReflections::setIconPaths(OrnData *paths)
{
    if (follow(m_iconPaths, paths, SLOT(ornDataValueChanged())))
        ornDataValueChanged();
}

void GraphPointReflections::drawAnnotation(QPainter *painter, int x, int y)
{
    if (!m_iconPaths) {
        qWarning() << "Icon path orn data is null";
        return;
    }
    if (graph::isEmptyArray(m_iconPaths->value())) {
        qWarning() << "Icon path array is empty";
        return;
    }
    const QVariant path = pointValue(m_iconPaths);
    const int side = qMin(m_iconSize, largestIcon);
    if (!path.isValid() || side <= 0)
        return;
    const QImage image = icon(path.toString(), side);
    if (image.isNull()) {
        qWarning() << "Image file" << path.toString() << "could not be opened";
        return;
    }
    QRect square(0, 0, side, side);
    square.moveTopLeft(QPoint(x - side / 2, y - size() / 2 - lineWidth() - side));
    painter->fillRect(square, m_iconBackgroundColor);
    QRect picture = image.rect();
    picture.moveCenter(square.center());
    painter->drawImage(picture.topLeft(), image);
}

void GraphPointReflections::drawLabel(QPainter *painter, int x, int y, bool below)
{
    if (!setTextStyle(painter, labelColor(), labelFontSize()))
        return;
    const int top = below ? y + size() : y - size() - painter->fontMetrics().height();
    painter->drawStaticText(x - lineWidth(), top, QStaticText(QString::number(pointIndex())));
}

void GraphPointReflections::ornDataValueChanged()
{
    emit iconPathsChanged(m_iconPaths);
    emit pointChanged();
}

bool GraphPointReflections::hasRoomAbove(QPainter *painter) const
{
    if (!setTextStyle(painter, labelColor(), labelFontSize()))
        return true;
    return marginTop() >= size() + painter->fontMetrics().height();
}

QImage GraphPointReflections::icon(const QString &path, int side)
{
    if (const QImage *known = m_icons.object(path))
        return *known;
    QImage image(localPath(path));
    // Not kept, so that a file that is written later is found.
    if (image.isNull())
        return image;
    image = image.convertToFormat(QImage::Format_ARGB32);
    if (m_invertColors)
        image.invertPixels();
    image = image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_icons.insert(path, new QImage(image));
    return image;
}
