#pragma once

#include <QPointer>
#include <QQuickItem>

#include <utility>

namespace graph {

// One direction of the content of a flickable, which is the whole extent of a chart: its size and position
// say which part of the extent fills the plot area.
class FlickableContent
{
public:
    using Length = qreal (QQuickItem::*)() const;
    // Which direction it is: the names of the flickable's properties, and the length of an item.
    FlickableContent(const char *size, const char *position, Length length);

    // Nothing is written before the next change.
    void setFlickable(QQuickItem *flickable, const QQuickItem *plotArea);

    void setSize(double size, const QQuickItem *plotArea);
    void setPosition(double position);

    // Whether the flickable or the plot area has another length than when setSize() was called last.
    bool isOutdated(const QQuickItem *plotArea) const;
    // After such a change.
    void refit(double size, double position, const QQuickItem *plotArea);

private:
    using Lengths = std::pair<double, double>;
    Lengths lengths(const QQuickItem *plotArea) const;

    const char *m_sizeName;
    const char *m_positionName;
    Length m_length;
    QPointer<QQuickItem> m_flickable;
    // Of the flickable and the plot area when the content was last given its size.
    Lengths m_fitted;
};

} // namespace graph
