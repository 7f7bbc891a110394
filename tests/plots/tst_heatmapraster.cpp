#include "plots/HeatmapRaster.h"

#include <QtTest>

#include <random>

using graph::Heatmap;
using graph::PixelMapping;

namespace {

const std::vector<unsigned int> colors{0, 11, 22, 33, 44, 55, 66, 77};

using Pixels = std::vector<unsigned int>;

Pixels raster(const Heatmap &map, double topLevel, const PixelMapping &mapping, int width, int height,
              const std::vector<unsigned int> &palette = colors)
{
    Pixels pixels(std::size_t(width * height));
    graph::rasterizeHeatmap(map, topLevel, mapping, palette, {pixels.data(), width, height});
    return pixels;
}

// Cell by cell and pixel by pixel.
Pixels plainRaster(const Heatmap &map, double topLevel, const PixelMapping &mapping, int width, int height)
{
    const auto cover = [](double a, double b, double last, int limit) {
        const double low = std::min(a, b);
        const double high = std::max(a, b);
        if (high < 0 || (high == 0 && low < 0) || low > last)
            return QPair<int, int>(0, 0);
        const int first = graph::pixel(low);
        return QPair<int, int>(std::max(first, 0), std::min(std::max(graph::pixel(high), first + 1), limit));
    };
    const auto frequency = [&](int i) { return map.columnFrequencies[std::size_t(i)] / 1e6; };
    const auto edge = [&](int c) {
        const int n = map.columnCount;
        const int inner = std::clamp(c, 1, std::max(1, n - 1)); // the outer edges mirror the ones inside
        const double border = n == 1 ? frequency(0) : (frequency(inner - 1) + frequency(inner)) / 2.0;
        return mapping.x(n == 1 || c == inner ? border : 2 * frequency(c == 0 ? 0 : n - 1) - border);
    };
    const float step = float(map.rowStep);
    const auto level = [&](int r) {
        return mapping.y(double(float(topLevel) + step / 2.0f - float(r) * step));
    };
    Pixels pixels(std::size_t(width * height));
    for (std::size_t i = 0; i < map.cells.size(); ++i) {
        const int r = int(i) / map.columnCount;
        const int c = int(i) % map.columnCount;
        const auto lines = cover(level(r), level(r + 1), mapping.height() - 1, height);
        const auto columns = cover(edge(c), edge(c + 1), mapping.width() - 1, width);
        for (int y = lines.first; y < lines.second; ++y) {
            for (int x = columns.first; x < columns.second; ++x) {
                unsigned int &pixel = pixels[std::size_t(y * width + x)];
                pixel = std::max(pixel, colors[map.cells[i]]);
            }
        }
    }
    return pixels;
}

} // namespace

class tst_heatmapraster : public QObject
{
    Q_OBJECT

private slots:
    void equalsPlainRaster()
    {
        std::mt19937 random(11);
        const auto uniform = [&](double low, double high) {
            return std::uniform_real_distribution<>(low, high)(random);
        };
        for (int round = 0; round < 1500; ++round) {
            Heatmap map;
            map.columnCount = std::uint16_t(uniform(1, round % 3 ? 300 : 9));
            map.rowCount = std::uint16_t(uniform(1, round % 5 ? 90 : 5));
            map.rowStep = uniform(-1, 3);
            unsigned int frequency = unsigned(uniform(0, 1e8));
            for (int c = 0; c < map.columnCount; ++c)
                map.columnFrequencies.push_back(
                    frequency += unsigned(uniform(0, 1) < 0.1 ? uniform(0, 5e7) : uniform(0, 1e6)));
            if (round % 7 == 0)
                std::reverse(map.columnFrequencies.begin(), map.columnFrequencies.end());
            map.cells.resize(std::size_t(map.columnCount * map.rowCount * (round % 4 ? 1.0 : uniform(0, 1))));
            std::generate(map.cells.begin(), map.cells.end(),
                          [&] { return random() % 3 ? 0 : random() % 8; });

            const QSizeF size(int(uniform(2, 120)), int(uniform(2, 90)) + 0.5 * (round % 2));
            const double rangeX = uniform(0.1, 300) * (round % 11 ? 1 : -1);
            const PixelMapping mapping(map.columnFrequencies.front() / 1e6 + uniform(-50, 50),
                                       uniform(-10, 60), rangeX, uniform(0.5, 150), size);
            const double top = uniform(-10, 60);
            // More colours than are looked up at once, and widths that are no multiple of what is.
            std::vector<unsigned int> palette = colors;
            palette.resize(round % 6 ? 8 : 20, 88);
            const int width = 80 - round % 20;
            if (raster(map, top, mapping, width, 60, palette) != plainRaster(map, top, mapping, width, 60))
                QFAIL(qPrintable(QStringLiteral("differs in round %1").arg(round)));
        }
    }

    void loneColumn()
    {
        // It has no width, and is seen at the very edge.
        const Heatmap lone{1, 1, 0, 1, {10000000}, {3}};
        QCOMPARE(raster(lone, 5.0, PixelMapping(10, 6, 60, 3, QSizeF(61, 31)), 61, 31)[10 * 61], 33u);
    }

    void nothingToDraw()
    {
        const auto draws = [](double topLevel, double rowStep, double rangeX, double width) {
            const Heatmap map{2, 2, 0, rowStep, {1000000, 2000000}, {1, 2, 3, 4}};
            return raster(map, topLevel, PixelMapping(1, 6, rangeX, 3, QSizeF(width, 20)), 20, 20) !=
                   Pixels(400);
        };
        QVERIFY(draws(5, 1, 10, 20));
        for (const double level : {qQNaN(), qInf(), -qInf(), 1e300})
            QVERIFY(!draws(level, 1, 10, 20));
        QVERIFY(!draws(5, qQNaN(), 10, 20));
        for (const double range : {0.0, qInf(), qQNaN()})
            QVERIFY(!draws(5, 1, range, 20));
        for (const double width : {0.0, 1.0, qQNaN()})
            QVERIFY(!draws(5, 1, 10, width));
    }

    void codesWithoutColor()
    {
        const PixelMapping mapping(0, 6, 10, 3, QSizeF(20, 20));
        Heatmap map{2, 1, 0, 1, {5000000, 50000000}, {1, 8}};
        QCOMPARE(raster(map, 5.0, mapping, 20, 20)[5 * 20 + 5], 11u); // the column of code 8 is not in view
        map.cells = {8, 1};
        QVERIFY_EXCEPTION_THROWN(raster(map, 5.0, mapping, 20, 20), std::out_of_range);
    }
};

QTEST_APPLESS_MAIN(tst_heatmapraster)
#include "tst_heatmapraster.moc"
