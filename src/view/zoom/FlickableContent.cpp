#include "view/zoom/FlickableContent.h"

namespace graph {

FlickableContent::FlickableContent(const char *size, const char *position, Length length)
    : m_sizeName(size)
    , m_positionName(position)
    , m_length(length)
{
}

void FlickableContent::setFlickable(QQuickItem *flickable, const QQuickItem *plotArea)
{
    m_flickable = flickable;
    m_fitted = lengths(plotArea);
}

void FlickableContent::setSize(double size, const QQuickItem *plotArea)
{
    m_fitted = lengths(plotArea);
    if (m_flickable)
        m_flickable->setProperty(m_sizeName, size);
}

void FlickableContent::setPosition(double position)
{
    if (m_flickable)
        m_flickable->setProperty(m_positionName, position);
}

bool FlickableContent::isOutdated(const QQuickItem *plotArea) const
{
    return lengths(plotArea) != m_fitted;
}

void FlickableContent::refit(double size, double position, const QQuickItem *plotArea)
{
    setSize(size, plotArea);
    setPosition(position);
}

FlickableContent::Lengths FlickableContent::lengths(const QQuickItem *plotArea) const
{
    return {m_flickable ? (m_flickable->*m_length)() : 0.0, plotArea ? (plotArea->*m_length)() : 0.0};
}

} // namespace graph
