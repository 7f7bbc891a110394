#pragma once

#include <QByteArray>
#include <QRectF>
#include <QTransform>

#include <functional>
#include <memory>

class QImage;
class QPainter;
class QString;

namespace graph {

// Where an item's own content goes: its coordinates in those of the chart, what of the chart it may cover,
// and its opacity with that of all items around it.
struct Placement
{
    QTransform transform;
    QRectF clip; // in the chart's coordinates
    double opacity = 1.0;
};

// What a chart is drawn on to become a file, item by item in the order of painting.
class Canvas
{
public:
    using Content = std::function<void(QPainter *)>;

    virtual ~Canvas() = default;

    // Calls the function with a painter in the item's coordinates. smooth: whether edges may be antialiased.
    virtual void draw(const Placement &placement, bool smooth, const Content &content) = 0;
    // The complete file; empty when there is none. Of a PNG in any thread.
    virtual QByteArray finish() = 0;
};

// Charts of that size, in their own pixels, enlarged by scale.
std::unique_ptr<Canvas> makePngCanvas(const QSizeF &size, double scale);
std::unique_ptr<Canvas> makePdfCanvas(const QSizeF &size, double scale);
// On a page or picture of somebody else, who finishes it.
std::unique_ptr<Canvas> makePainterCanvas(QPainter *painter);
// Null, and why, where the library that writes SVG cannot be loaded; it lies in the module's folder in one of
// the paths.
std::unique_ptr<Canvas> makeSvgCanvas(const QSizeF &size, double scale, const QStringList &importPaths,
                                      QString *error);

} // namespace graph
