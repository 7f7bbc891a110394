#pragma once

#include <QImage>
#include <QPainter>

// What the function draws with the painter that it is given.
template <typename Draw>
QImage picture(Draw draw, const QSize &size = QSize(101, 101), const QColor &background = Qt::white)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(background);
    QPainter painter(&image);
    draw(&painter);
    return image;
}

inline bool isInk(const QColor &pixel)
{
    return pixel != QColor(Qt::white);
}

// The smallest rectangle around the pixels of such a colour.
template <typename IsWanted = bool(const QColor &)>
QRect inkBox(const QImage &image, IsWanted isWanted = isInk)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isWanted(image.pixelColor(x, y)))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}
