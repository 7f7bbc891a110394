#include "data/PlotBands.h"

#include "data/VectorStream.h"

/*!
    \qmltype PlotBands
    \inherits PlotPoints
    \inqmlmodule graph_plugin
    \brief Points with a name each.
*/
PlotBands::PlotBands(QObject *parent)
    : PlotPoints(parent)
{
    connect(this, SIGNAL(sizeChanged(int)), this, SLOT(dropNames()));
}

bool PlotBands::operator==(const PlotData &other) const
{
    return PlotPoints::operator==(other) && allNames() == static_cast<const PlotBands &>(other).allNames();
}

void PlotBands::sort()
{
    const QVector<QString> names = allNames();
    m_names.clear();
    for (int index : ascendingOrder())
        m_names.append(names.at(index));
    PlotPoints::sort();
}

/*!
    \qmlmethod void PlotBands::append(point point, string name)
    Adds a point with its name.
*/
void PlotBands::append(const QPointF &point, const QString &name)
{
    m_names = allNames();
    m_names.append(name);
    appendPoint(point);
}

/*!
    \qmlmethod list<string> PlotBands::names(rect rect)
    The names of the points in the x range of \a rect, in the order in which they are drawn.
*/
QStringList PlotBands::names(const QRectF &rect) const
{
    const graph::SampleSpan span = sampleSpan(rect);
    QStringList result;
    for (int i = 0; i < span.size(); ++i)
        result.append(m_names.value(span.dataIndex(i)));
    return result;
}

QVector<QString> PlotBands::allNames() const
{
    QVector<QString> names(m_names);
    names.resize(size());
    return names;
}

// Asks for the size itself: documents can emit the signal, too, with any number.
void PlotBands::dropNames()
{
    if (m_names.size() > size())
        m_names.resize(size());
}

void PlotBands::write(QDataStream &stream) const
{
    PlotPoints::write(stream);
    graph::writeVector(stream, allNames());
}

void PlotBands::read(QDataStream &stream)
{
    const QVector<QPointF> points = graph::readVector<QPointF>(stream);
    const QVector<QString> names = graph::readVector<QString>(stream);
    if (stream.status() != QDataStream::Ok)
        return;
    m_names = names.mid(0, points.size());
    setPoints(points);
}
