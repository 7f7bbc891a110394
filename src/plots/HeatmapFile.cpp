#include "plots/HeatmapFile.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <stdexcept>

namespace graph {

namespace {

// Reads until the bytes are there or the device has no more. Gives the number read.
std::size_t readBytes(QDataStream &stream, char *bytes, std::size_t count)
{
    constexpr std::size_t largestRead = 1 << 30;
    std::size_t done = 0;
    while (done < count) {
        const int read = stream.readRawData(bytes + done, int(std::min(count - done, largestRead)));
        if (read <= 0)
            break;
        done += std::size_t(read);
    }
    return done;
}

} // namespace

Heatmap readHeatmap(QIODevice &device)
{
    QDataStream stream(&device);
    Heatmap heatmap;
    qint16 columnCount = 0;
    qint16 rowCount = 0;
    stream >> columnCount >> rowCount >> heatmap.referenceLevel >> heatmap.rowStep;
    heatmap.columnCount = std::uint16_t(columnCount);
    heatmap.rowCount = std::uint16_t(rowCount);
    const std::size_t claimed = std::size_t(heatmap.columnCount) * heatmap.rowCount;
    if (claimed > largestCellCount)
        throw std::length_error("the file claims too many cells");

    heatmap.columnFrequencies.resize(heatmap.columnCount);
    readBytes(stream, reinterpret_cast<char *>(heatmap.columnFrequencies.data()),
              heatmap.columnFrequencies.size() * sizeof(unsigned int));

    // The header is not to be trusted with the size of an allocation.
    const auto available = std::size_t(std::max<qint64>(device.bytesAvailable(), 0));
    heatmap.cells.resize(std::min(claimed, available));
    heatmap.cells.resize(
        readBytes(stream, reinterpret_cast<char *>(heatmap.cells.data()), heatmap.cells.size()));
    return heatmap;
}

} // namespace graph
