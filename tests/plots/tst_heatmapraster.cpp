#include "plots/HeatmapRaster.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

using graph::Heatmap;
using graph::PixelMapping;

namespace {

const std::vector<unsigned int> colors{0, 11, 22, 33, 44, 55, 66, 77};
const double notANumber = std::nan("");

using Pixels = std::vector<unsigned int>;

Pixels raster(const Heatmap &map, double topLevel, const PixelMapping &mapping, int width, int height)
{
    Pixels pixels(std::size_t(width * height));
    graph::rasterizeHeatmap(map, topLevel, mapping, colors, {pixels.data(), width, height});
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
    const auto border = [&](int c) {
        const auto f = [&](int i) { return map.columnFrequencies[std::size_t(i)] / 1e6; };
        const int n = map.columnCount;
        if (n == 1)
            return mapping.x(f(0));
        return mapping.x(c == 0       ? f(0) - (f(1) - f(0)) / 2.0
                             : c == n ? f(n - 1) + (f(n - 1) - f(n - 2)) / 2.0
                                      : (f(c - 1) + f(c)) / 2.0);
    };
    Pixels pixels(std::size_t(width * height));
    for (int r = 0; r < map.rowCount; ++r) {
        const float step = float(map.rowStep);
        const auto level = [&](int i) { return mapping.y(double((float(topLevel) + step / 2.0f) - float(i) * step)); };
        const auto lines = cover(level(r), level(r + 1), mapping.height() - 1, height);
        for (int c = 0; c < map.columnCount; ++c) {
            const std::size_t index = std::size_t(r) * map.columnCount + std::size_t(c);
            const int code = index < map.cells.size() ? map.cells[index] : 0;
            const auto columns = cover(border(c), border(c + 1), mapping.width() - 1, width);
            for (int y = lines.first; y < lines.second; ++y) {
                for (int x = columns.first; x < columns.second; ++x) {
                    unsigned int &pixel = pixels[std::size_t(y * width + x)];
                    pixel = std::max(pixel, colors.at(std::size_t(code)));
                }
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
    void equalsPlainRaster();
    void cellsMeetHalfWay();
    void nothingToDraw_data();
    void nothingToDraw();
    void codesWithoutColor();
};

void tst_heatmapraster::equalsPlainRaster()
{
    std::mt19937 random(11);
    const auto uniform = [&](double low, double high) { return std::uniform_real_distribution<>(low, high)(random); };
    for (int round = 0; round < 1500; ++round) {
        Heatmap map;
        map.columnCount = std::uint16_t(uniform(1, round % 3 ? 300 : 9));
        map.rowCount = std::uint16_t(uniform(1, round % 5 ? 90 : 5));
        map.rowStep = uniform(-1, 3);
        unsigned int frequency = unsigned(uniform(0, 1e8));
        for (int c = 0; c < map.columnCount; ++c)
            map.columnFrequencies.push_back(frequency += unsigned(uniform(0, 1) < 0.1 ? uniform(0, 5e7) : uniform(0, 1e6)));
        if (round % 7 == 0)
            std::reverse(map.columnFrequencies.begin(), map.columnFrequencies.end());
        map.cells.resize(std::size_t(map.columnCount * map.rowCount * (round % 4 ? 1.0 : uniform(0, 1))));
        std::generate(map.cells.begin(), map.cells.end(), [&] { return random() % 3 ? 0 : random() % 8; });

        const QSizeF size(int(uniform(2, 120)), int(uniform(2, 90)) + 0.5 * (round % 2));
        const double rangeX = uniform(0.1, 300) * (round % 11 ? 1 : -1);
        const PixelMapping mapping(map.columnFrequencies.front() / 1e6 + uniform(-50, 50), uniform(-10, 60), rangeX,
                                   uniform(0.5, 150), size);
        const double top = uniform(-10, 60);
        if (raster(map, top, mapping, 80, 60) != plainRaster(map, top, mapping, 80, 60))
            QFAIL(qPrintable(QStringLiteral("differs in round %1").arg(round)));
    }
}

void tst_heatmapraster::cellsMeetHalfWay()
{
    // Columns at 10, 20 and 40 MHz, rows at 5 and 4; 1 MHz and 0.1 of a level per pixel.
    const Heatmap map{3, 2, 0, 1, {10000000, 20000000, 40000000}, {1, 2, 3, 4, 5, 6}};
    const Pixels pixels = raster(map, 5.0, PixelMapping(0, 6, 60, 3, QSizeF(61, 31)), 61, 31);
    const auto runs = [&](int start, int step, int count) {
        QVector<int> ends; // where the colour changes along a line or column of the picture
        for (int i = 1; i < count; ++i) {
            if (pixels[std::size_t(start + i * step)] != pixels[std::size_t(start + (i - 1) * step)])
                ends.append(i);
        }
        return ends;
    };
    QCOMPARE(runs(10 * 61, 1, 61), (QVector<int>{5, 15, 30, 50}));
    QCOMPARE(runs(20, 61, 31), (QVector<int>{5, 15, 25}));
    QCOMPARE(pixels[10 * 61 + 20], 22u);
    QCOMPARE(pixels[20 * 61 + 40], 66u);
}

void tst_heatmapraster::nothingToDraw_data()
{
    QTest::addColumn<double>("topLevel");
    QTest::addColumn<double>("rowStep");
    QTest::addColumn<double>("rangeX");
    QTest::addColumn<double>("width");
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("level NaN") << notANumber << 1.0 << 10.0 << 20.0;
    QTest::newRow("level infinite") << inf << 1.0 << 10.0 << 20.0;
    QTest::newRow("level beyond single precision") << 1e300 << 1.0 << 10.0 << 20.0;
    QTest::newRow("step NaN") << 5.0 << notANumber << 10.0 << 20.0;
    QTest::newRow("range zero") << 5.0 << 1.0 << 0.0 << 20.0;
    QTest::newRow("range infinite") << 5.0 << 1.0 << inf << 20.0;
    QTest::newRow("no width") << 5.0 << 1.0 << 10.0 << 0.0;
    QTest::newRow("one pixel") << 5.0 << 1.0 << 10.0 << 1.0;
    QTest::newRow("far to the left") << 5.0 << 1.0 << 1e-9 << 20.0;
}

void tst_heatmapraster::nothingToDraw()
{
    QFETCH(double, topLevel);
    QFETCH(double, rowStep);
    QFETCH(double, rangeX);
    QFETCH(double, width);
    const Heatmap map{2, 2, 0, rowStep, {1000000, 2000000}, {1, 2, 3, 4}};
    QCOMPARE(raster(map, topLevel, PixelMapping(9, 6, rangeX, 3, QSizeF(width, 20)), 20, 20), Pixels(400));
}

void tst_heatmapraster::codesWithoutColor()
{
    const PixelMapping mapping(0, 6, 10, 3, QSizeF(20, 20));
    Heatmap map{2, 1, 0, 1, {5000000, 50000000}, {1, 8}};
    QCOMPARE(raster(map, 5.0, mapping, 20, 20)[5 * 20 + 5], 11u); // the column of code 8 is not in view
    map.cells = {8, 1};
    QVERIFY_EXCEPTION_THROWN(raster(map, 5.0, mapping, 20, 20), std::out_of_range);
}

QTEST_APPLESS_MAIN(tst_heatmapraster)
#include "tst_heatmapraster.moc"
