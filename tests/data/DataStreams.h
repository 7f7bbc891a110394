#pragma once

#include "data/PlotData.h"

#include <QDataStream>

inline QByteArray written(const PlotData &data)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << data;
    return bytes;
}

inline bool isRead(const QByteArray &bytes, PlotData &data)
{
    QDataStream stream(bytes);
    stream >> data;
    return stream.status() == QDataStream::Ok;
}
