#include "plots/GraphBands.h"

#include "common/Opacity.h"
#include "data/PlotRegions.h"
#include "plots/RegionLabels.h"
#include "raster/PixelCentres.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QStaticText>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr int narrowestShape = 3; // pixels
constexpr double labelGap = 2.0;
constexpr double stemOpacity = 0.5;
constexpr double largestImageSide = 8192.0;

// The outline through the foot points (left, base) and (right, base) at whose middle, or along whose top, is
// `level`.
QPainterPath shapePath(PlotRegion::PlotStyle style, int left, int right, int base, int level)
{
    QPainterPath path(QPointF(left, base));
    if (style == PlotRegion::Ellipse) {
        const double height = std::abs(level - base);
        path.arcTo(QRectF(left, base - height, right - left, 2.0 * height), 180.0,
                   level < base ? -180.0 : 180.0);
    } else {
        const double slope = style == PlotRegion::Trapezoid ? (right - left) / 8.0 : 0.0;
        path.lineTo(left + slope, level);
        path.lineTo(right - slope, level);
        path.lineTo(right, base);
    }
    path.closeSubpath();
    return path;
}

} // namespace

/*!
    \qmltype GraphBands
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief Draws the regions of a PlotRegions as translucent bands with their names on top.

    Each region has a shape of its own, see PlotRegion::plotStyle, that reaches from the baseline to its
    value. Lower bands are drawn over taller ones. A name that would cover that of a stronger band, or run into it, moves
    up, or is left out; one without a band has a line to its place then.
*/

/*!
    \qmlproperty int GraphBands::lineWidth
    The width of the outlines in pixels, 1 by default; 0 draws none.
*/
void GraphBands::setLineWidth(int width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    update();
    emit lineWidthChanged(width);
}

/*!
    \qmlproperty bool GraphBands::renderToImage
    Keeps what was drawn as an image, for plans of many bands that seldom change; the pixels are the same.
    False by default.
*/
void GraphBands::setRenderToImage(bool on)
{
    if (m_renderToImage == on)
        return;
    m_renderToImage = on;
    update();
    emit renderToImageChanged(on);
}

void GraphBands::handlePlotChanged()
{
    m_dataChanged = true;
    RegionPlot::handlePlotChanged();
}

bool GraphBands::Look::operator==(const Look &other) const
{
    const auto isSame = [](const QRectF &a, const QRectF &b) { // exactly
        return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
    };
    const auto rest = [](const Look &look) {
        return std::tie(look.size, look.pixelRatio, look.baseline, look.font, look.labelPen, look.penColor,
                        look.opacity, look.lineWidth, look.styles);
    };
    return isSame(visible, other.visible) && rest(*this) == rest(other);
}

GraphBands::Look GraphBands::look(double pixelRatio) const
{
    Look look{QSizeF(width(), height()),
              pixelRatio,
              visibleRect(),
              baseline(),
              labelFont(),
              labelPen(),
              penColor(),
              fillOpacity(),
              m_lineWidth,
              {}};
    for (int i = 0; i < regions()->size(); ++i) {
        const PlotRegion *region = regions()->region(i);
        look.styles.append(region ? region->plotStyle() : -1);
    }
    return look;
}

void GraphBands::paintPlot(const graph::PlotFrame &frame)
{
    if (!regions())
        return;
    if (m_renderToImage && updateImage(frame)) {
        frame.painter->drawImage(QPointF(0.0, 0.0), m_image);
        return;
    }
    m_image = QImage();
    paintBands(frame.painter, frame.mapping);
}

// False when the item is too large to be kept.
bool GraphBands::updateImage(const graph::PlotFrame &frame)
{
    const QTransform transform = frame.painter->deviceTransform();
    const double ratio = std::hypot(transform.m11(), transform.m12());
    const QSizeF pixels(std::ceil(width() * ratio), std::ceil(height() * ratio));
    if (!(pixels.width() <= largestImageSide && pixels.height() <= largestImageSide) || pixels.isEmpty())
        return false;
    const Look wanted = look(ratio);
    if (!m_dataChanged.exchange(false) && !m_image.isNull() && wanted == m_imageLook)
        return true;
    m_image = QImage(pixels.toSize(), QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(ratio);
    m_image.fill(Qt::transparent);
    m_imageLook = wanted;
    QPainter imagePainter(&m_image);
    imagePainter.setRenderHints(frame.painter->renderHints());
    paintBands(&imagePainter, frame.mapping);
    return true;
}

void GraphBands::paintBands(QPainter *painter, const graph::PixelMapping &mapping)
{
    QVector<Band> all = bands(mapping);
    std::stable_sort(all.begin(), all.end(),
                     [](const Band &a, const Band &b) { return a.height() > b.height(); });
    painter->save();
    for (const Band &band : qAsConst(all))
        paintShape(painter, band);
    paintLabels(painter, all);
    painter->restore();
}

QVector<GraphBands::Band> GraphBands::bands(const graph::PixelMapping &mapping) const
{
    QVector<Band> bands;
    for (const Entry &entry : visibleRegions()) {
        const PlotRegion *region = entry.region;
        if (!std::isfinite(region->value()))
            continue;
        const int begin = mapping.column(region->begin());
        const int end = mapping.column(region->end());
        bands.append(
            {region, qMin(begin, end), qMax(begin, end), baseRow(mapping), mapping.row(region->value())});
    }
    return bands;
}

void GraphBands::paintShape(QPainter *painter, const Band &band) const
{
    const PlotRegion::PlotStyle style = band.region->plotStyle();
    if (style < PlotRegion::Ellipse || style > PlotRegion::Rectangle)
        return;
    const QColor color = colorOf(band.region);
    if (band.right - band.left < narrowestShape) {
        painter->setPen(QPen(color, 1, Qt::SolidLine, Qt::FlatCap));
        const graph::PixelCentres across(painter, {1, 0});
        painter->drawLine(band.left, band.base, band.left, band.level);
        return;
    }
    const QPainterPath path = shapePath(style, band.left, band.right, band.base, band.level);
    painter->setRenderHint(QPainter::Antialiasing, style != PlotRegion::Rectangle);
    painter->fillPath(path, graph::translucent(color, fillOpacity()));
    const int outline = graph::penWidth(m_lineWidth);
    if (outline > 0)
        painter->strokePath(path, QPen(color, outline, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter->setRenderHint(QPainter::Antialiasing, false);
}

void GraphBands::paintLabels(QPainter *painter, const QVector<Band> &bands)
{
    QVector<Band> named;
    std::copy_if(bands.cbegin(), bands.cend(), std::back_inserter(named),
                 [](const Band &band) { return !band.region->name().isEmpty(); });
    std::stable_sort(named.begin(), named.end(),
                     [](const Band &a, const Band &b) { return a.region->value() > b.region->value(); });

    const QFontMetricsF metrics(labelFont(), painter->device());
    QVector<QRectF> wanted;
    QVector<QPointF> feet; // of annotations
    for (const Band &band : qAsConst(named)) {
        const QSizeF size(metrics.horizontalAdvance(band.region->name()), metrics.height());
        const double middle = (qMax(band.left, 0) + qMin<double>(band.right, width() - 1.0)) / 2.0;
        const bool isAnnotation = band.region->plotStyle() == PlotRegion::LabelOnly;
        const double top =
            isAnnotation ? band.level - size.height() / 2.0 : band.top() - labelGap - size.height();
        wanted.append(QRectF(QPointF(middle - size.width() / 2.0, top), size));
        feet.append(QPointF(std::floor(middle), isAnnotation && band.level < height() ? band.level : 0.0));
    }
    const QVector<QRectF> places = graph::separatedLabels(wanted, QSizeF(width(), height()));
    painter->setPen(graph::translucent(labelPen(), stemOpacity));
    {
        const graph::PixelCentres across(painter, {1, 0});
        painter->drawLines(graph::labelStems(places, feet));
    }
    painter->setFont(labelFont());
    painter->setPen(labelPen());
    for (int i = 0; i < named.size(); ++i) {
        if (places[i].isNull())
            continue;
        // Not the region's: a font engine that it keeps goes with the thread that painted it first.
        QStaticText text(named[i].region->name());
        text.setTextFormat(Qt::PlainText);
        painter->drawStaticText(places[i].topLeft().toPoint(), text);
    }
}
