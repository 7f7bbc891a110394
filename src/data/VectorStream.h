#pragma once

#include <QDataStream>
#include <QVector>

namespace graph {

// A vector as its length, a qint32, and its elements.
template <typename Element> void writeVector(QDataStream &stream, const QVector<Element> &elements)
{
    stream << qint32(elements.size());
    for (const Element &element : elements)
        stream << element;
}

// Empty, and the stream's status not Ok, when the stream does not hold what it says; a wrong length takes no
// more memory than the stream is long.
template <typename Element> QVector<Element> readVector(QDataStream &stream)
{
    qint32 count = 0;
    stream >> count;
    if (count < 0)
        stream.setStatus(QDataStream::ReadCorruptData);
    QVector<Element> elements;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        Element element{};
        stream >> element;
        elements.append(element);
    }
    return stream.status() == QDataStream::Ok ? elements : QVector<Element>();
}

} // namespace graph
