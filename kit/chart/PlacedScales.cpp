#include "kit/chart/PlacedScales.h"

#include "kit/chart/ChartTheme.h"
#include "kit/plots/ColorScale.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

int gapBeside(const ColorScale &scale)
{
    return scale.fontSize() * 3 / 4;
}

bool isPlacedByDocument(const ColorScale &scale)
{
    return scale.x() != 0.0 || scale.y() != 0.0 || scale.width() != scale.implicitWidth() ||
           scale.height() != scale.implicitHeight();
}

} // namespace

bool PlacedScales::take(ColorScale *scale, const ChartTheme &theme)
{
    const bool isTaken = !isPlacedByDocument(*scale);
    scale->setDefaultLook(theme.textColor(), theme.font());
    if (isTaken) {
        m_scales.removeAll(nullptr);
        m_scales.append(scale);
    }
    return isTaken;
}

void PlacedScales::forget(const QQuickItem *item)
{
    const auto isGone = [item](const QQuickItem *scale) { return !scale || scale == item; };
    m_scales.erase(std::remove_if(m_scales.begin(), m_scales.end(), isGone), m_scales.end());
}

void PlacedScales::setTheme(const ChartTheme &theme)
{
    for (ColorScale *scale : qAsConst(m_scales)) {
        if (scale)
            scale->setDefaultLook(theme.textColor(), theme.font());
    }
}

QVector<ColorScale *> PlacedScales::shown(const QQuickItem *chart) const
{
    QVector<ColorScale *> scales;
    for (ColorScale *scale : m_scales) {
        if (scale && scale->isVisible() && scale->parentItem() == chart)
            scales.append(scale);
    }
    return scales;
}

int PlacedScales::width(const QQuickItem *chart) const
{
    const QVector<ColorScale *> scales = shown(chart);
    int width = 0;
    for (const ColorScale *scale : scales)
        width += gapBeside(*scale) + int(std::ceil(scale->implicitWidth()));
    return width;
}

void PlacedScales::place(const QQuickItem *chart, const QRectF &area, double left) const
{
    const QVector<ColorScale *> scales = shown(chart);
    double x = left;
    for (ColorScale *scale : scales) {
        x += gapBeside(*scale);
        scale->setPosition(QPointF(x, area.y()));
        scale->setHeight(area.height());
        x += std::ceil(scale->implicitWidth());
    }
}

} // namespace graph
