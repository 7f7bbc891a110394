#include "plots/RegionLabels.h"

#include <QHash>

#include <algorithm>

namespace graph {

namespace {

constexpr double gap = 2.0;
constexpr int mostSteps = 3;

QRectF centred(double middle, double top, const QSizeF &size)
{
    return QRectF(QPointF(middle - size.width() / 2.0, top), size);
}

// Labels by the rows of pixels that they are in: one has few neighbours, however many there are.
class LabelRows
{
public:
    explicit LabelRows(const QVector<QRectF> &labels)
    {
        for (const QRectF &label : labels)
            m_height = std::max(m_height, label.height());
    }

    void add(const QRectF &label)
    {
        for (int row = rowAt(label.top()); row <= rowAt(label.bottom()); ++row)
            m_rows[row].append(label);
    }

    bool areFree(const QRectF &place) const
    {
        const auto meets = [&](const QRectF &other) { return place.intersects(other); };
        for (int row = rowAt(place.top()); row <= rowAt(place.bottom()); ++row) {
            const QVector<QRectF> labels = m_rows.value(row);
            if (std::any_of(labels.begin(), labels.end(), meets))
                return false;
        }
        return true;
    }

    // The first one that a way down from there meets before it is at `end`; null for none.
    QRectF firstBelow(double x, double top, double end) const
    {
        QRectF first;
        for (int row = rowAt(top); row <= rowAt(end) && first.isNull(); ++row) {
            const QVector<QRectF> labels = m_rows.value(row);
            for (const QRectF &label : labels) {
                const bool isMet =
                    label.left() < x && x < label.right() && label.bottom() > top && label.top() < end;
                if (isMet && (first.isNull() || label.top() < first.top()))
                    first = label;
            }
        }
        return first;
    }

private:
    int rowAt(double y) const { return int(y / m_height); }

    double m_height = 1.0;
    QHash<int, QVector<QRectF>> m_rows;
};

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
    LabelRows taken(wanted);
    for (const QRectF &label : wanted) {
        QRectF place = shiftedInside(label, item);
        const double beside = place.height() / 2.0;
        for (int step = 0; !place.isNull() && !taken.areFree(place.adjusted(-beside, 0.0, beside, 0.0));
             ++step)
            place = step < mostSteps ? shiftedInside(place.translated(0.0, -place.height()), item) : QRectF();
        if (!place.isNull())
            taken.add(place);
        places.append(place);
    }
    return places;
}

QVector<QLineF> labelStems(const QVector<QRectF> &places, const QVector<QPointF> &feet)
{
    LabelRows labels(places);
    for (const QRectF &place : places) {
        if (!place.isNull())
            labels.add(place);
    }
    QVector<QLineF> stems;
    for (int i = 0; i < places.size(); ++i) {
        const QPointF foot = feet.at(i);
        for (double top = places.at(i).bottom(); !places.at(i).isNull() && top < foot.y();) {
            const QRectF other = labels.firstBelow(foot.x(), top, foot.y());
            const double end = other.isNull() ? foot.y() : other.top();
            if (end > top)
                stems.append(QLineF(foot.x(), top, foot.x(), end));
            top = other.isNull() ? foot.y() : other.bottom();
        }
    }
    return stems;
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
