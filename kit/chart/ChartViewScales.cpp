#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/plots/ColorScale.h"
#include "view/base/XYScale.h"

// The colour scales at the right of the plot area.

namespace graph {

namespace {

int gapBeside(const ColorScale &scale)
{
    return scale.fontSize() * 3 / 4;
}

// A document that gives one a place or a size wants it there.
bool isPlacedByDocument(const ColorScale &scale)
{
    return scale.x() != 0.0 || scale.y() != 0.0 || scale.width() != scale.implicitWidth() ||
           scale.height() != scale.implicitHeight();
}

} // namespace

// Whether the child is one that the chart places.
bool ChartView::adoptScale(QQuickItem *child)
{
    auto *scale = qobject_cast<ColorScale *>(child);
    if (!scale)
        return false;
    const bool isPlaced = !isPlacedByDocument(*scale);
    scale->setDefaultLook(m_colors->textColor(), m_colors->font());
    if (!isPlaced)
        return false;
    m_colorScales.removeAll(nullptr);
    m_colorScales.append(scale);
    QObject *ears = m_ears.get();
    connect(scale, &QQuickItem::implicitWidthChanged, ears, [this] { makeRoom(); });
    connect(scale, &QQuickItem::visibleChanged, ears, [this] { makeRoom(); });
    connect(scale, &QObject::destroyed, ears, [this] { makeRoom(); });
    makeRoom();
    return true;
}

QList<ColorScale *> ChartView::standingScales() const
{
    QList<ColorScale *> scales;
    for (ColorScale *scale : m_colorScales) {
        if (scale && scale->isVisible() && scale->parentItem() == this)
            scales.append(scale);
    }
    return scales;
}

// With the axes between them and the plot area; 0 without any.
int ChartView::widthOfScales() const
{
    const QList<ColorScale *> scales = standingScales();
    if (scales.isEmpty())
        return 0;
    int width = m_labels->margins().right() + m_colors->fontSize() / 2;
    for (const ColorScale *scale : scales)
        width += gapBeside(*scale) + int(std::ceil(scale->implicitWidth()));
    return width;
}

void ChartView::makeRoom()
{
    handleMarginsChanged();
    placeScales();
}

void ChartView::placeScales()
{
    const QQuickItem *area = plotArea();
    if (!area)
        return;
    double x = area->x() + area->width() + m_labels->margins().right();
    const QList<ColorScale *> scales = standingScales();
    for (ColorScale *scale : scales) {
        x += gapBeside(*scale);
        scale->setPosition(QPointF(x, area->y()));
        scale->setHeight(area->height());
        x += std::ceil(scale->implicitWidth());
    }
}

} // namespace graph
