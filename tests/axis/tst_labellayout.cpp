#include "axis/LabelLayout.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace graph;

class tst_labellayout : public QObject
{
    Q_OBJECT

private slots:
    void strides();
    void ordinals();
    void gapsCountPerRow();
    void movedLabelsGiveWay();
    void takenRoomStaysFree();
};

void tst_labellayout::strides()
{
    QCOMPARE(labelStride(40.0, 40.0), 1.0);
    QCOMPARE(labelStride(39.9, 40.0), 2.0);
    QCOMPARE(labelStride(10.0, 40.0), 5.0);
    QCOMPARE(labelStride(1.0, 40.0), 50.0);
    QCOMPARE(labelStride(0.0004, 40.0), 100000.0);
    // Too far apart or too near to count.
    for (const double distance : {0.0, std::nan(""), std::numeric_limits<double>::infinity(), 1e-300})
        QCOMPARE(labelStride(distance, 40.0), 0.0);
}

void tst_labellayout::ordinals()
{
    double sum = 2.4e9;
    QList<qreal> grid;
    for (int i = 0; i < 100; ++i, sum += 0.2)
        grid.append(sum);
    QCOMPARE(tickOrdinals(grid, 0.2).last(), 1.2e10 + 99);
    QCOMPARE(tickOrdinals({-2, 0, 2}, 2.0), (QVector<double>{-1, 0, 1}));
    QVERIFY(tickOrdinals({0, 1, 2.5}, 1.0).isEmpty());
    QVERIFY(tickOrdinals({1.0}, 0.0).isEmpty());
    QCOMPARE(tickOrdinals({1, 2, 2}, QList<qreal>{3, 1, 7, 2, 2}), (QVector<double>{1, 3, 4}));
    QCOMPARE(tickOrdinals({1, 9}, QList<qreal>{3, 1, 7}), (QVector<double>{0, 1}));
}

void tst_labellayout::gapsCountPerRow()
{
    QVERIFY(keepsGap({{0, 0.0, 20, 0}, {1, 25.0, 20, 0}}, 5));
    QVERIFY(!keepsGap({{1, 24.9, 20, 0}, {0, 0.0, 20, 0}}, 5));
    QVERIFY(keepsGap({{0, 0.0, 20, 0}, {1, 10.0, 20, 1}, {2, 25.0, 20, 0}}, 5));
    QVERIFY(keepsGap({{0, 10.0, 20, 0}, {1, 10.5, 20, 0}}, 5));
}

void tst_labellayout::movedLabelsGiveWay()
{
    LabelRoom room;
    room.end = 100;
    room.gap = 4;
    // Both ends are moved inside; only the right one is where the axis ends for good.
    const auto placed = placedLabels(
        {{0, 0.0, 20, 0}, {1, 22.0, 16, 0}, {2, 50.0, 16, 0}, {3, 78.0, 16, 0}, {4, 99.0, 20, 0, true}},
        room);
    QCOMPARE(placed.size(), 3);
    QCOMPARE(placed.at(0).start, 14);
    QCOMPARE(placed.at(1).start, 42);
    QCOMPARE(placed.at(2).start, 80);
    // With room beyond the ends nothing moves.
    room.begin = -10;
    room.end = 110;
    QCOMPARE(placedLabels({{0, 0.0, 20, 0}, {1, 99.0, 20, 0}}, room).at(0).start, -10);
    QCOMPARE(placedLabels({{0, 50.0, 200, 0}}, room).size(), 0);
    QCOMPARE(placedLabels({}, room).size(), 0);
}

void tst_labellayout::takenRoomStaysFree()
{
    LabelRoom room;
    room.end = 100;
    room.gap = 4;
    room.takenRow = 1;
    room.takenBegin = 70;
    room.takenEnd = 100;
    const auto placed =
        placedLabels({{0, 90.0, 20, 0}, {1, 57.0, 20, 1}, {2, 56.0, 20, 1}, {3, 90.0, 20, 1}}, room);
    QCOMPARE(placed.size(), 2);
    QCOMPARE(placed.at(0).index, 0);
    QCOMPARE(placed.at(1).index, 2);
}

QTEST_APPLESS_MAIN(tst_labellayout)
#include "tst_labellayout.moc"
