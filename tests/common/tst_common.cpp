#include "common/FuzzyEqual.h"
#include "common/PixelMapping.h"
#include "support/Table.h"

#include <QtTest>

#include <cmath>
#include <limits>

class tst_common : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreGuarded();
    void mappingEnds();
    void wholePixels_data();
    void wholePixels();
    void logarithmicScale_data();
    void logarithmicScale();
    void undrawableMappings();
    void fuzzyEqualityAroundZero();
};

void tst_common::pixelsAreGuarded()
{
    const double inf = std::numeric_limits<double>::infinity();
    QCOMPARE(graph::pixel(-0.9), 0);
    QCOMPARE(graph::pixel(2.9), 2);
    QCOMPARE(graph::pixel(std::nan("")), 0);
    QCOMPARE(graph::pixel(inf), graph::pixelLimit);
    QCOMPARE(graph::pixel(-1e302), -graph::pixelLimit);
    QCOMPARE(graph::roundedPixel(-2.5), -3);
    QCOMPARE(graph::truncatedIndex(1e10), std::numeric_limits<int>::max());
    QCOMPARE(graph::roundedIndex(-1e10), std::numeric_limits<int>::min());
}

void tst_common::mappingEnds()
{
    for (const auto &mapping :
         {graph::PixelMapping(10.0, 5.0, 20.0, 10.0, QSizeF(101, 41)),
          graph::PixelMapping::fromScales(QRectF(10.0, -5.0, 20.0, 10.0), 5.0f, 4.0f)}) {
        QCOMPARE(mapping.column(10.0), 0);
        QCOMPARE(mapping.column(30.0), 100);
        QCOMPARE(mapping.row(5.0), 0);
        QCOMPARE(mapping.row(-5.0), 40);
        QVERIFY(mapping.isDrawable());
    }
}

void tst_common::wholePixels_data()
{
    columns<double, double, double, double, double>({"begin", "range", "size", "value", "coordinate"});
    QTest::newRow("rounded down") << 0.0 << 100.0 << 58.0 << 100.0 << 57.0;
    QTest::newRow("a sum short of its value") << 0.0 << 1.0 << 11.0 << 0.7999999999999999 << 8.0;
    QTest::newRow("a sum beyond its value") << 0.0 << 1.0 << 11.0 << 0.8000000000000003 << 8.0;
    QTest::newRow("downwards") << 100.0 << -100.0 << 58.0 << 0.0 << 57.0;
    QTest::newRow("left of the item") << 0.0 << 1.0 << 11.0 << -0.30000000000000004 << -3.0;
    QTest::newRow("far from zero") << 1e9 << 1.0 << 1001.0 << 1e9 + 0.3 << 300.0;
    QTest::newRow("a trillionth of a pixel is no rounding")
        << 0.0 << 1.0 << 11.0 << 0.79999999999 << 7.9999999999;
    QTest::newRow("nor is one beyond it") << 0.0 << 1.0 << 11.0 << 0.80000000001 << 8.0000000001;
    QTest::newRow("numbers as coarse as pixels") << 1e16 << 64.0 << 129.0 << 1e16 + 2.0 << 4.0;
    QTest::newRow("half a pixel") << 0.0 << 3.0 << 4.0 << 1.5 << 1.5;
    QTest::newRow("beyond whole numbers") << 0.0 << 1.0 << 2.0 << 1e300 << 1e300;
}

void tst_common::wholePixels()
{
    QFETCH(double, begin);
    QFETCH(double, range);
    QFETCH(double, size);
    QFETCH(double, value);
    QFETCH(double, coordinate);
    const graph::PixelScale scale(begin, range, size);
    if (coordinate == std::floor(coordinate))
        QVERIFY(scale.coordinate(value) == coordinate); // exactly: QCOMPARE is content with less
    else
        QVERIFY(scale.coordinate(value) != std::round(coordinate));
    QVERIFY(std::abs(scale.coordinate(value) - coordinate) <= 1e-12 * std::abs(coordinate));
    const int pixel = graph::pixel(scale.coordinate(value));
    QCOMPARE(scale.pixel(value), pixel);
    QCOMPARE(scale.roundedLinearPixel(value), graph::roundedPixel(scale.coordinate(value)));
    for (const int last : {pixel - 1, pixel, pixel + 1, -1, 0, 1})
        QCOMPARE(scale.upTo(last)(value), pixel <= last);
    QVERIFY(std::abs(scale.value(scale.coordinate(value)) - value) <= 1e-12 * std::max(1.0, std::abs(value)));
    // In single precision, as figures may be given their scales, a whole pixel is one as well.
    const auto single = graph::PixelMapping::fromScales({0.0, 0.0, 100.0, 100.0}, 0.57f, 0.57f);
    QCOMPARE(single.column(100.0), 57);
    QCOMPARE(single.row(0.0), 57);
}

void tst_common::logarithmicScale_data()
{
    // first: the values on the first, the middle and the last of 201 pixels
    columns<double, double, double, double, double>({"begin", "end", "first", "middle", "last"});
    QTest::newRow("decades") << 1.0 << 1e4 << 1.0 << 100.0 << 1e4;
    QTest::newRow("falling") << 1e4 << 1.0 << 1e4 << 100.0 << 1.0;
    QTest::newRow("audio") << 20.0 << 20000.0 << 20.0 << std::sqrt(20.0 * 20000.0) << 20000.0;
    QTest::newRow("less than a decade") << 900.0 << 1000.0 << 900.0 << std::sqrt(9e5) << 1000.0;
    QTest::newRow("tiny numbers") << 1e-300 << 1e-296 << 1e-300 << 1e-298 << 1e-296;
    QTest::newRow("from zero") << 0.0 << 1000.0 << 1.0 << std::sqrt(1000.0) << 1000.0;
    QTest::newRow("across zero") << -5.0 << 1000.0 << 1.0 << std::sqrt(1000.0) << 1000.0;
    QTest::newRow("falling to zero") << 1000.0 << 0.0 << 1000.0 << std::sqrt(1000.0) << 1.0;
    QTest::newRow("nothing positive") << -5.0 << 0.0 << 1.0 << std::sqrt(10.0) << 10.0;
}

void tst_common::logarithmicScale()
{
    QFETCH(double, begin);
    QFETCH(double, end);
    QFETCH(double, first);
    QFETCH(double, middle);
    QFETCH(double, last);
    const graph::PixelScale scale(graph::ScaleKind::Logarithmic, {begin, end}, end - begin, 201);
    QVERIFY(scale.value(0.0) == first); // exactly
    QCOMPARE(scale.value(200.0) - last, 0.0);
    QVERIFY(std::abs(scale.value(100.0) / middle - 1.0) < 1e-12);
    for (const auto &[value, pixel] : {std::make_pair(first, 0), {middle, 100}, {last, 200}})
        QCOMPARE(scale.coordinate(value), double(pixel));
    for (const double nowhere : {0.0, -1.0})
        QCOMPARE(scale.pixel(nowhere), first < last ? -graph::pixelLimit : graph::pixelLimit);
}

void tst_common::undrawableMappings()
{
    QVERIFY(!graph::PixelMapping(0, 1, 0, 1, QSizeF(100, 100)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, 1, QSizeF(1, 100)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, std::nan(""), QSizeF(100, 100)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, 1, QSizeF(100, 1)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, 1, QSizeF(0, 0)).isDrawable());
}

void tst_common::fuzzyEqualityAroundZero()
{
    QVERIFY(graph::fuzzyEqual(1.0, 1.0 + 1e-13));
    QVERIFY(!graph::fuzzyEqual(1.0, 1.0 + 1e-11));
    QVERIFY(graph::fuzzyEqual(0.0, 0.0));
    QVERIFY(!graph::fuzzyEqual(0.0, 1e-300));
    QVERIFY(graph::fuzzyEqualNearZero(0.0, 1e-14));
    QVERIFY(!graph::fuzzyEqual(std::nan(""), std::nan("")));
}

QTEST_APPLESS_MAIN(tst_common)
#include "tst_common.moc"
