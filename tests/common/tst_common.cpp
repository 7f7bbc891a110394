#include "common/FuzzyEqual.h"
#include "common/PixelMapping.h"

#include <QtTest>

#include <cmath>
#include <limits>

class tst_common : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreGuarded();
    void mappingEnds();
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
    const graph::PixelMapping mapping(10.0, 5.0, 20.0, 10.0, QSizeF(101, 51));
    QCOMPARE(mapping.column(10.0), 0);
    QCOMPARE(mapping.column(30.0), 100);
    QCOMPARE(mapping.row(5.0), 0);
    QCOMPARE(mapping.row(-5.0), 50);
    QVERIFY(mapping.isDrawable());
}

void tst_common::undrawableMappings()
{
    QVERIFY(!graph::PixelMapping(0, 1, 0, 1, QSizeF(100, 100)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, 1, QSizeF(1, 100)).isDrawable());
    QVERIFY(!graph::PixelMapping(0, 1, 1, std::nan(""), QSizeF(100, 100)).isDrawable());
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
