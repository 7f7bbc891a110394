#include "fuzz/FuzzInput.h"
#include "plots/HeatmapRaster.h"

#include <QBuffer>

#include <stdexcept>

// A view of the chart, then the bytes of a heat map file.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    FuzzInput input(data, size);
    const int width = input.take<unsigned char>() % 64;
    const int height = input.take<unsigned char>() % 64;
    const auto colorCount = input.take<unsigned char>();
    const auto flags = input.take<unsigned char>();
    const bool followsFile = flags % 2 == 0;
    const bool isLarge = flags == 0xff;
    const double minX = input.take<float>(), rangeX = input.take<float>();
    const double maxY = input.take<float>(), rangeY = input.take<float>();

    QByteArray bytes = input.rest();
    if (!isLarge &&
        bytes.size() >= 4) { // mostly at most 512 columns and rows, which take a tenth of the time
        bytes[0] = bytes[0] & 1;
        bytes[2] = bytes[2] & 1;
    }
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    graph::Heatmap heatmap;
    try {
        heatmap = graph::readHeatmap(file);
    } catch (const std::length_error &) { // more cells than any map has
        return 0;
    }
    FUZZ_CHECK(heatmap.cells.size() <= std::size_t(bytes.size()));

    std::vector<unsigned int> pixels(std::size_t(width) * std::size_t(height));
    const std::vector<unsigned int> colors(colorCount, 0xff00ff00u);
    const double topLevel = followsFile ? heatmap.referenceLevel : maxY;
    try {
        graph::rasterizeHeatmap(heatmap, topLevel,
                                graph::PixelMapping(minX, maxY, rangeX, rangeY, QSizeF(width, height)),
                                colors, {pixels.data(), width, height});
    } catch (const std::out_of_range &) { // a code without a colour
    }
    return 0;
}
