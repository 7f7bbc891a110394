#include "plots/ChannelPlot.h"

#include "common/Opacity.h"
#include "data/PlotRegions.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace {

constexpr int fpsInterval = 1000; // ms
constexpr int frameWidth = 1;
constexpr int selectedFrameWidth = 2;

constexpr int textFlags = Qt::AlignCenter | Qt::TextDontClip;

// A text that reads from the bottom to the top.
void drawUpright(QPainter *painter, const QRectF &rect, const QString &text)
{
    painter->save();
    painter->translate(rect.bottomLeft());
    painter->rotate(-90.0);
    painter->drawText(QRectF(QPointF(), rect.size().transposed()), textFlags, text);
    painter->restore();
}

// The border of a rectangle, inside it.
void fillFrame(QPainter *painter, const QRect &rect, int width, const QColor &color)
{
    const QRect inner = rect.adjusted(width, width, -width, -width);
    if (inner.isEmpty()) {
        painter->fillRect(rect, color);
        return;
    }
    painter->fillRect(QRect(rect.left(), rect.top(), rect.width(), width), color);
    painter->fillRect(QRect(rect.left(), inner.bottom() + 1, rect.width(), width), color);
    painter->fillRect(QRect(rect.left(), inner.top(), width, inner.height()), color);
    painter->fillRect(QRect(inner.right() + 1, inner.top(), width, inner.height()), color);
}

} // namespace

/*!
    \qmltype ChannelPlot
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief Draws the regions of a PlotRegions as channels with name and value.

    A channel reaches from the baseline to its value. One that is not valid, because it has not been measured,
    is a dashed frame over the full height without a value. Of several channels in the same pixel column the
    tallest is drawn. Labels that are too wide for their channel lose the value, are turned, or left out; that
    of the selected channel is always there.
*/
ChannelPlot::ChannelPlot(QQuickItem *parent)
    : RegionPlot(parent)
{
    m_fpsTimer.start(fpsInterval, this);
}

/*!
    \qmlproperty int ChannelPlot::selectedPoint
    The index of the region that is emphasised, -1, the default, for none.
*/
void ChannelPlot::setSelectedPoint(int index)
{
    if (m_selectedPoint == index)
        return;
    m_selectedPoint = index;
    update();
    emit selectedPointChanged(index);
}

/*!
    \qmlmethod int ChannelPlot::checkClickPosition(double x, double y, double threshold)
    The index of the channel under the click, the narrowest where there are several; without one the nearest
    that is at most \a threshold pixels away, else -1. The click is given in pixels of the whole data extent
    at the present zoom, as a Flickable's content has them.
*/
int ChannelPlot::checkClickPosition(double x, double y, double threshold) const
{
    const graph::PixelMapping mapping = pixelMapping();
    if (!mapping.isDrawable())
        return -1;
    const QPointF click = clickInItem(x, y, mapping);
    const auto distance = [](double coordinate, int first, int end) {
        return std::max({first - coordinate, coordinate - end, 0.0});
    };
    int found = -1;
    std::tuple<double, int> best(threshold, std::numeric_limits<int>::max());
    for (const Channel &channel : channels(mapping)) {
        const QRect &rect = channel.rect;
        const double away = std::max(distance(click.x(), rect.x(), rect.x() + rect.width()),
                                     distance(click.y(), rect.y(), rect.y() + rect.height()));
        const std::tuple<double, int> candidate(away, rect.width());
        if (away <= threshold && candidate < best) {
            best = candidate;
            found = channel.entry.index;
        }
    }
    return found;
}

/*!
    \qmlproperty int ChannelPlot::fps
    \readonly
    How often the plot was painted in the last second; 0 while it is hidden.
*/
void ChannelPlot::publishFps(int fps)
{
    if (m_fps == fps)
        return;
    m_fps = fps;
    emit fpsChanged(fps);
}

void ChannelPlot::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_fpsTimer.timerId())
        publishFps(m_paintCount.exchange(0));
    else
        RegionPlot::timerEvent(event);
}

void ChannelPlot::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemVisibleHasChanged) {
        m_paintCount = 0;
        if (data.boolValue) {
            m_fpsTimer.start(fpsInterval, this);
        } else {
            m_fpsTimer.stop();
            publishFps(0);
        }
    }
    RegionPlot::itemChange(change, data);
}

// Where the channels are, cut off just outside the item, in the order of their begins.
QVector<ChannelPlot::Channel> ChannelPlot::channels(const graph::PixelMapping &mapping) const
{
    const QRect area =
        QRect(0, 0, graph::pixel(std::ceil(width())), graph::pixel(std::ceil(height())))
            .adjusted(-selectedFrameWidth, -selectedFrameWidth, selectedFrameWidth, selectedFrameWidth);
    const int base = baseRow(mapping);
    QVector<Channel> channels;
    for (const Entry &entry : visibleRegions()) {
        const PlotRegion *region = entry.region;
        int left = mapping.column(region->begin());
        int right = mapping.column(region->end());
        if (left > right)
            std::swap(left, right);
        const bool isMeasured = region->valid() && std::isfinite(region->value());
        const int level = isMeasured ? mapping.row(region->value()) : area.top();
        const int foot = isMeasured ? base : area.bottom();
        // Two corners, each cut off by itself, so that the edges of what is far outside stay invisible.
        left = qBound(area.left(), left, area.right());
        right = qBound(left + 1, right, area.right() + 1);
        const int top = qBound(area.top(), qMin(level, foot), area.bottom());
        const int bottom = qBound(top + 1, qMax(level, foot), area.bottom() + 1);
        channels.append({entry, QRect(left, top, right - left, bottom - top), isMeasured});
    }
    return channels;
}

void ChannelPlot::paint(QPainter *painter)
{
    ++m_paintCount;
    RegionPlot::paint(painter);
}

void ChannelPlot::paintPlot(const graph::PlotFrame &frame)
{
    QVector<Channel> shown = tallestInColumn(channels(frame.mapping));
    // The selected one on top.
    std::stable_partition(shown.begin(), shown.end(),
                          [this](const Channel &channel) { return !isSelected(channel); });
    for (const Channel &channel : qAsConst(shown))
        paintChannel(frame.painter, channel);
    paintLabels(frame.painter, shown);
}

// Without the channels of one pixel that share their column with a taller one; the selected one counts as
// tallest.
QVector<ChannelPlot::Channel> ChannelPlot::tallestInColumn(const QVector<Channel> &channels) const
{
    const auto rank = [this](const Channel &channel) {
        return std::make_tuple(isSelected(channel), channel.isMeasured, channel.rect.height());
    };
    QHash<int, int> tallest; // by column
    for (int i = 0; i < channels.size(); ++i) {
        if (channels[i].rect.width() > 1)
            continue;
        const int former = tallest.value(channels[i].rect.left(), -1);
        if (former < 0 || rank(channels[i]) > rank(channels[former]))
            tallest.insert(channels[i].rect.left(), i);
    }
    QVector<Channel> shown;
    for (int i = 0; i < channels.size(); ++i) {
        if (channels[i].rect.width() > 1 || tallest.value(channels[i].rect.left()) == i)
            shown.append(channels[i]);
    }
    return shown;
}

void ChannelPlot::paintChannel(QPainter *painter, const Channel &channel) const
{
    const QColor color = colorOf(channel.entry.region);
    const int lineWidth = isSelected(channel) ? selectedFrameWidth : frameWidth;
    if (channel.isMeasured) {
        painter->fillRect(channel.rect, graph::translucent(color, fillOpacity()));
        fillFrame(painter, channel.rect, lineWidth, color);
        return;
    }
    painter->setPen(QPen(color, lineWidth, Qt::DashLine, Qt::FlatCap, Qt::MiterJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(channel.rect.adjusted(0, 0, -1, -1));
}

void ChannelPlot::paintLabels(QPainter *painter, QVector<Channel> channels) const
{
    // Where channels overlap, the first label stays: the selected one, then the tallest measured ones.
    const auto rank = [this](const Channel &channel) {
        return std::make_tuple(!isSelected(channel), !channel.isMeasured, channel.rect.top());
    };
    std::stable_sort(channels.begin(), channels.end(),
                     [&](const Channel &a, const Channel &b) { return rank(a) < rank(b); });
    painter->setFont(labelFont());
    painter->setPen(labelPen());
    const QFontMetricsF metrics(labelFont(), painter->device());
    QVector<QRectF> taken;
    for (const Channel &channel : qAsConst(channels)) {
        const QString name = channel.entry.region->name();
        const QString text = labelText(channel);
        const graph::ChannelLabel label = placedLabel(channel, metrics.size(0, text), metrics.size(0, name));
        const auto meets = [&](const QRectF &other) { return label.rect.intersects(other); };
        if (label.style == graph::ChannelLabel::None || std::any_of(taken.cbegin(), taken.cend(), meets))
            continue;
        taken.append(label.rect);
        if (label.style == graph::ChannelLabel::UprightName)
            drawUpright(painter, label.rect, name);
        else
            painter->drawText(label.rect, textFlags, label.style == graph::ChannelLabel::Name ? name : text);
    }
}

QString ChannelPlot::labelText(const Channel &channel) const
{
    const PlotRegion *region = channel.entry.region;
    if (!channel.isMeasured)
        return region->name();
    const QString value = plotData()->formattedYValue(region->value());
    return region->name().isEmpty() ? value : region->name() + QLatin1Char('\n') + value;
}

graph::ChannelLabel ChannelPlot::placedLabel(const Channel &channel, const QSizeF &text,
                                             const QSizeF &name) const
{
    const QSizeF item(width(), height());
    QRectF visible = channel.rect;
    visible.setLeft(qMax(visible.left(), 0.0));
    visible.setRight(qMin(visible.right(), item.width()));
    const graph::ChannelLabel label = graph::channelLabel(visible, text, name, item);
    if (!isSelected(channel) || label.style == graph::ChannelLabel::NameAndValue)
        return label;
    const QPointF corner(visible.center().x() - text.width() / 2.0, visible.top() - text.height());
    const QRectF rect = graph::shiftedInside(QRectF(corner, text), item);
    return rect.isEmpty() ? label : graph::ChannelLabel{graph::ChannelLabel::NameAndValue, rect};
}
