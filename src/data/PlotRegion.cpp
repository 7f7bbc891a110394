#include "data/PlotRegion.h"

#include <QTimerEvent>

/*!
    \qmltype PlotRegion
    \inqmlmodule graph_plugin
    \brief A span of the x axis with a level, a name and a look; part of \l PlotRegions.
*/
PlotRegion::PlotRegion(QObject *parent)
    : QObject(parent)
{
    m_staticText.setTextFormat(Qt::PlainText);
    m_staticText.setPerformanceHint(QStaticText::AggressiveCaching);
    // Not the style: its change alone does not repaint.
    const char *const announced[] = {SIGNAL(validChanged()), SIGNAL(beginChanged()), SIGNAL(endChanged()),
                                     SIGNAL(valueChanged()), SIGNAL(nameChanged()),  SIGNAL(colorChanged())};
    for (const char *signal : announced)
        connect(this, signal, this, SLOT(emitRegionChanged()));
}

/*!
    \qmlproperty bool PlotRegion::valid
    The region's value is a measured one; plots draw other regions without it. Default: false.
*/
void PlotRegion::setValid(bool valid)
{
    if (m_valid == valid)
        return;
    m_valid = valid;
    emit validChanged();
}

/*!
    \qmlproperty double PlotRegion::begin
    \qmlproperty double PlotRegion::end
    The span, in units of x. Default: 0.
*/
void PlotRegion::setBegin(double begin)
{
    if (m_begin == begin)
        return;
    m_begin = begin;
    emit beginChanged();
}

void PlotRegion::setEnd(double end)
{
    if (m_end == end)
        return;
    m_end = end;
    emit endChanged();
}

/*!
    \qmlproperty double PlotRegion::value
    The level, in units of y. Default: 0.
*/
void PlotRegion::setValue(double value)
{
    if (m_value == value)
        return;
    m_value = value;
    emit valueChanged();
}

/*!
    \qmlproperty string PlotRegion::name
    The label. Default: empty.
*/
void PlotRegion::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    m_staticText.setText(name);
    emit nameChanged();
}

/*!
    \qmlproperty color PlotRegion::color
    The colour; without one the region has that of its plot. Default: none.
*/
void PlotRegion::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    emit colorChanged();
}

/*!
    \qmlproperty enumeration PlotRegion::plotStyle
    \c PlotRegion.Ellipse (default), \c Trapezoid, \c Rectangle or \c LabelOnly. A change alone does not
    repaint.
*/
void PlotRegion::setPlotStyle(PlotStyle style)
{
    if (m_plotStyle == style)
        return;
    m_plotStyle = style;
    emit plotStyleChanged(style);
}

void PlotRegion::prepareStaticText(const QTransform &transform, const QFont &font)
{
    m_staticText.prepare(transform, font);
}

bool PlotRegion::overlaps(double xMin, double xMax) const
{
    return (m_begin <= xMax && m_end >= xMin) || (m_end <= xMax && m_begin >= xMin);
}

bool PlotRegion::hasValuesOf(const PlotRegion &other) const
{
    return m_valid == other.m_valid && m_begin == other.m_begin && m_end == other.m_end &&
           m_value == other.m_value && m_name == other.m_name && m_color == other.m_color &&
           m_plotStyle == other.m_plotStyle;
}

/*!
    \qmlmethod void PlotRegion::emitRegionChanged()
    Announces a change of the region: one regionChanged() follows in the next pass of the event loop.

    \qmlsignal PlotRegion::regionChanged()
    Follows every change of the properties but plotStyle, once for all changes within one pass of the event loop.
*/
void PlotRegion::emitRegionChanged()
{
    // A pending timer is kept: one that is started again at every change would wait for as long as they come.
    if (m_regionChangedTimer == 0)
        m_regionChangedTimer = startTimer(0, Qt::CoarseTimer);
}

void PlotRegion::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_regionChangedTimer) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(m_regionChangedTimer);
    m_regionChangedTimer = 0;
    emit regionChanged();
}
