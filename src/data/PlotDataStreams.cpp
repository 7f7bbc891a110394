// Data objects as text and as bytes.
#include "data/PlotData.h"

#include <QDataStream>
#include <QTextStream>

#include <ostream>

QString PlotData::toString() const
{
    const int count = size();
    QString text = objectName() + QStringLiteral(" (%1):").arg(count);
    for (int i = 0; i < count; ++i)
        text += QStringLiteral(" (%1, %2)").arg(x(i)).arg(y(i));
    return text;
}

void PlotData::write(QDataStream &stream) const
{
    stream << qint32(size());
    for (int i = 0; i < size(); ++i)
        stream << sample(i);
}

void PlotData::read(QDataStream &stream)
{
    stream.setStatus(QDataStream::ReadCorruptData); // a class that cannot be written to
}

QTextStream &operator<<(QTextStream &stream, const PlotData &data)
{
    return stream << data.toString();
}

std::ostream &operator<<(std::ostream &stream, const PlotData &data)
{
    return stream << data.toString().toStdString();
}

QDataStream &operator<<(QDataStream &stream, const PlotData &data)
{
    data.write(stream);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, PlotData &data)
{
    data.read(stream);
    return stream;
}
