#include "plots/RegionLabels.h"

#include <algorithm>

namespace graph {

namespace {

constexpr double gap = 2.0;
constexpr int mostSteps = 3;

QRectF centred(double middle, double top, const QSizeF &size)
{
    return QRectF(QPointF(middle - size.width() / 2.0, top), size);
}

} // namespace

ChannelLabel channelLabel(const QRectF &channel, const QSizeF &nameAndValue, const QSizeF &name,
                          const QSizeF &item)
{
    const double middle = channel.center().x();
    const double ceiling = std::max(channel.top(), 0.0) + gap;
    for (const auto style : {ChannelLabel::NameAndValue, ChannelLabel::Name}) {
        const QSizeF size = style == ChannelLabel::Name ? name : nameAndValue;
        if (size.isEmpty() || size.width() > channel.width())
            continue;
        const double above = channel.top() - gap - size.height();
        const QRectF rect = centred(middle, above >= 0.0 ? above : ceiling, size);
        if (rect.bottom() <= item.height())
            return {style, rect};
    }
    const QRectF upright = centred(middle, ceiling, name.transposed());
    if (!name.isEmpty() && upright.width() <= channel.width() &&
        upright.bottom() <= std::min(channel.bottom(), item.height()))
        return {ChannelLabel::UprightName, upright};
    return {};
}

QVector<QRectF> separatedLabels(const QVector<QRectF> &wanted, const QSizeF &item)
{
    QVector<QRectF> places;
    places.reserve(wanted.size());
    for (const QRectF &label : wanted) {
        QRectF place = shiftedInside(label, item);
        const auto meets = [&](const QRectF &other) { return place.intersects(other); };
        for (int step = 0; !place.isNull() && std::any_of(places.cbegin(), places.cend(), meets); ++step)
            place = step < mostSteps ? shiftedInside(place.translated(0.0, -place.height()), item) : QRectF();
        places.append(place);
    }
    return places;
}

QRectF shiftedInside(QRectF rect, const QSizeF &item)
{
    if (!(rect.width() <= item.width() && rect.height() <= item.height()) || qIsNaN(rect.x()) ||
        qIsNaN(rect.y()))
        return QRectF();
    rect.moveLeft(qBound(0.0, rect.left(), item.width() - rect.width()));
    rect.moveTop(qBound(0.0, rect.top(), item.height() - rect.height()));
    return rect;
}

} // namespace graph
