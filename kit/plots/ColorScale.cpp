#include "kit/plots/ColorScale.h"

#include "common/SafeInteger.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/UnitText.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/HeatmapPlot.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace graph {

namespace {

constexpr int labelGap = 8;   // pixels between bar and labels
constexpr int tickLength = 3; // pixels
// Line heights from one label to the next.
constexpr double labelDistance = 2.2;
constexpr int largestFont = 1000;
constexpr int widestBar = 10000;
constexpr int highestBar = 1 << 16; // more than any screen, and labels that can be counted
// The share of the bar at each end that drags this end; what is between drags both.
constexpr double endShare = 1.0 / 3.0;
// Ends are not dragged nearer to each other than this share of their distance in one go.
constexpr double leastPlace = 0.05;

double rowOf(const QMouseEvent &event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.position().y();
#else
    return event.localPos().y();
#endif
}

} // namespace

/*!
    \qmltype ColorScale
    \inqmlmodule graph_kit
    \inherits Item
    \brief The colours of a WaterfallPlot with their levels, or the steps of a HeatmapPlot.

    \image waterfall.png A colour scale at the right of its waterfall

    \code
    Row {
        WaterfallPlot { id: waterfall; width: 700; height: 400 }
        ColorScale { plot: waterfall; height: 400 }
    }
    \endcode

    It is a bar with labels at its right, as wide as these need unless it is given a width. A Chart places a
    ColorScale that is its child, and has neither position nor size of its own, at the right of the plot area,
    in the colour and font of its theme; several of them are beside each other. The upper and the lower
    third of the bar can be dragged to move \c to and \c from of the plot, what is between to move both; a
    double click or tap lets both follow the levels again.

    \qmlproperty AbstractPlot ColorScale::plot
    A WaterfallPlot or a HeatmapPlot; null by default, and nothing is shown for any other plot.
*/
ColorScale::ColorScale(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setRenderTarget(Image);
    setImplicitHeight(200);
    handleLabelsChanged();
    setAcceptedMouseButtons(Qt::LeftButton);
}

void ColorScale::setPlot(AbstractPlot *plot)
{
    if (m_plot == plot)
        return;
    if (m_plot)
        disconnect(m_plot, nullptr, this, nullptr);
    m_plot = plot;
    m_grab = Grab::None;
    if (plot) {
        connect(plot, SIGNAL(destroyed()), this, SLOT(handlePlotGone()));
        if (waterfall()) {
            connect(plot, SIGNAL(levelsChanged()), this, SLOT(handleLabelsChanged()));
            connect(plot, SIGNAL(colorMapChanged()), this, SLOT(update()));
            connect(plot, SIGNAL(unitChanged()), this, SLOT(handleLabelsChanged()));
        }
    }
    measureAgain();
    emit plotChanged();
}

// It only grows: labels that change while levels are dragged do not move what is beside.
void ColorScale::handleLabelsChanged()
{
    update();
    const QFontMetrics metrics(font());
    int widest = 0;
    const auto labels = waterfall() ? levelLabels(*waterfall()) : stepLabels();
    for (const Label &label : labels)
        widest = std::max(widest, metrics.horizontalAdvance(label.text));
    setImplicitWidth(std::max(implicitWidth(), m_barWidth + labelGap + widest + 1.0));
}

void ColorScale::measureAgain()
{
    setImplicitWidth(0);
    handleLabelsChanged();
}

void ColorScale::GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::GRAPH_GEOMETRY_CHANGED(newGeometry, oldGeometry);
    if (newGeometry.height() != oldGeometry.height())
        handleLabelsChanged();
}

void ColorScale::handlePlotGone()
{
    m_grab = Grab::None;
    update();
    emit plotChanged();
}

/*!
    \qmlproperty bool ColorScale::draggable
    Whether the levels can be dragged; true by default.
*/
void ColorScale::setDraggable(bool draggable)
{
    if (m_draggable == draggable)
        return;
    m_draggable = draggable;
    m_grab = Grab::None;
    emit draggableChanged();
}

/*!
    \qmlproperty color ColorScale::textColor
    The colour of labels and ticks; by default that of the theme in a Chart, and else grey.

    \qmlproperty int ColorScale::fontSize
    The height of the labels in pixels, 1 to 1000; by default that of the theme in a Chart, and else 12.

    \qmlproperty int ColorScale::barWidth
    The width of the bar in pixels, 14 by default, 1 to 10000.
*/
void ColorScale::setTextColor(const QColor &color)
{
    m_hasTextColor = true;
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
    emit textColorChanged();
}

void ColorScale::setDefaultLook(const QColor &textColor, const QFont &font)
{
    if (!m_hasTextColor && m_textColor != textColor) {
        m_textColor = textColor;
        emit textColorChanged();
    }
    m_fontFamily = font.family();
    if (!m_hasFontSize && m_fontSize != font.pixelSize() && font.pixelSize() > 0) {
        m_fontSize = font.pixelSize();
        emit fontSizeChanged();
    }
    measureAgain();
}

void ColorScale::setFontSize(int size)
{
    m_hasFontSize = true;
    if (!store(m_fontSize, bounded(this, "fontSize", size, 1, largestFont)))
        return;
    measureAgain();
    emit fontSizeChanged();
}

void ColorScale::setBarWidth(int width)
{
    if (!store(m_barWidth, bounded(this, "barWidth", width, 1, widestBar)))
        return;
    measureAgain();
    emit barWidthChanged();
}

WaterfallPlot *ColorScale::waterfall() const
{
    return qobject_cast<WaterfallPlot *>(m_plot.data());
}

QFont ColorScale::font() const
{
    QFont result;
    if (!m_fontFamily.isEmpty())
        result.setFamily(m_fontFamily);
    result.setPixelSize(m_fontSize);
    return result;
}

QRect ColorScale::bar() const
{
    return {0, 0, m_barWidth, std::min(pixel(height()), highestBar)};
}

double ColorScale::placeAt(double row) const
{
    const QRect area = bar();
    return area.height() > 1 ? (area.bottom() - row) / (area.height() - 1.0) : 0.0;
}

void ColorScale::paint(QPainter *painter)
{
    if (bar().height() < 2)
        return;
    painter->setFont(font());
    if (const WaterfallPlot *plot = waterfall())
        paintLevels(painter, *plot);
    else if (qobject_cast<HeatmapPlot *>(m_plot.data()))
        paintSteps(painter);
}

void ColorScale::paintLevels(QPainter *painter, const WaterfallPlot &plot) const
{
    const QRect area = bar();
    for (int row = area.top(); row <= area.bottom(); ++row) {
        const int index = int(std::lround(placeAt(row) * (colorMapSize - 1)));
        painter->fillRect(area.left(), row, area.width(), 1, QColor(plot.colors().at(index)));
    }
    const auto labels = levelLabels(plot);
    for (const Label &label : labels)
        paintLabel(painter, label);
}

QVector<ColorScale::Label> ColorScale::levelLabels(const WaterfallPlot &plot) const
{
    QVector<Label> labels;
    const QRect area = bar();
    const int lineHeight = QFontMetrics(font()).height();
    const int most = std::max(2, int(area.height() / (labelDistance * lineHeight)));
    const ScaleTicks ticks = scaleTicks(plot.from(), plot.to(), most);
    if (ticks.values.isEmpty())
        return labels;
    labels.append(
        {double(area.top()), withUnitBehind(ticks.labelOf(plot.to()), AxisUnit(plot.unit()).symbol())});
    labels.append({double(area.bottom()), ticks.labelOf(plot.from())});
    for (int i = 0; i < ticks.values.size(); ++i) {
        const double place = (ticks.values.at(i) - plot.from()) / (plot.to() - plot.from());
        const double row = area.bottom() - place * (area.height() - 1);
        // The ends, whose texts are inside of the bar, have their own.
        if (row - area.top() >= 1.5 * lineHeight && area.bottom() - row >= 1.5 * lineHeight)
            labels.append({row, ticks.labels.at(i)});
    }
    return labels;
}

QVector<ColorScale::Label> ColorScale::stepLabels() const
{
    QVector<Label> labels;
    const QRect area = bar();
    const int steps = qobject_cast<HeatmapPlot *>(m_plot.data()) ? int(HeatmapPlot::colors().size()) - 1 : 0;
    for (int step = 0; step < steps; ++step) {
        const int top = area.bottom() + 1 - area.height() * (step + 1) / steps;
        const int end = area.bottom() + 1 - area.height() * step / steps;
        labels.append({(top + end - 1) / 2.0, QString::number(step + 1)});
    }
    return labels;
}

void ColorScale::paintSteps(QPainter *painter) const
{
    const QRect area = bar();
    const std::vector<unsigned int> &colors = HeatmapPlot::colors();
    const int steps = int(colors.size()) - 1; // the first is that of cells without a level
    for (int step = 0; step < steps; ++step) {
        const int top = area.bottom() + 1 - area.height() * (step + 1) / steps;
        const int end = area.bottom() + 1 - area.height() * step / steps;
        painter->fillRect(area.left(), top, area.width(), end - top, QColor(colors[std::size_t(step) + 1]));
    }
    const auto labels = stepLabels();
    for (const Label &label : labels)
        paintLabel(painter, label);
}

void ColorScale::paintLabel(QPainter *painter, const Label &label) const
{
    const QRect area = bar();
    const int y = int(std::lround(label.row));
    painter->fillRect(area.right() + 1, y, tickLength, 1, m_textColor);
    painter->setPen(m_textColor);
    const int left = area.right() + 1 + labelGap;
    const int lineHeight = QFontMetrics(font()).height();
    // At the ends beside their tick rather than cut off.
    const int top = std::max(0, std::min(y - lineHeight / 2, area.height() - lineHeight));
    painter->drawText(QRect(left, top, pixel(width()) - left, lineHeight),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, label.text);
}

void ColorScale::mousePressEvent(QMouseEvent *event)
{
    const WaterfallPlot *plot = waterfall();
    if (!plot || !m_draggable || bar().height() < 2) {
        event->ignore();
        return;
    }
    const double place = placeAt(rowOf(*event));
    m_grab = place > 1.0 - endShare ? Grab::Top : place < endShare ? Grab::Bottom : Grab::Middle;
    m_grabbedLevel = plot->from() + (plot->to() - plot->from()) * place;
    setKeepMouseGrab(true);
}

void ColorScale::mouseMoveEvent(QMouseEvent *event)
{
    drag(placeAt(rowOf(*event)));
}

// The level that was grabbed stays under the finger.
void ColorScale::drag(double place)
{
    WaterfallPlot *plot = waterfall();
    if (!plot || m_grab == Grab::None)
        return;
    const double from = plot->from();
    const double to = plot->to();
    switch (m_grab) {
    case Grab::Top:
        plot->setTo(from + (m_grabbedLevel - from) / std::max(place, leastPlace));
        break;
    case Grab::Bottom:
        plot->setFrom(to - (to - m_grabbedLevel) / std::max(1.0 - place, leastPlace));
        break;
    case Grab::Middle: {
        const double shift = m_grabbedLevel - (from + (to - from) * place);
        plot->setFrom(from + shift);
        plot->setTo(to + shift);
        break;
    }
    case Grab::None:
        break;
    }
}

void ColorScale::mouseReleaseEvent(QMouseEvent *)
{
    mouseUngrabEvent();
}

void ColorScale::mouseUngrabEvent()
{
    m_grab = Grab::None;
    setKeepMouseGrab(false);
}

void ColorScale::mouseDoubleClickEvent(QMouseEvent *event)
{
    WaterfallPlot *plot = waterfall();
    if (!plot || !m_draggable) {
        event->ignore();
        return;
    }
    plot->resetFrom();
    plot->resetTo();
}

} // namespace graph
