#include "cursors/CursorPainting.h"
#include "cursors/KeyAcceleration.h"

#include <QtTest>

class tst_cursorunits : public QObject
{
    Q_OBJECT

private slots:
    void heldKeyAccelerates();
    void quickPressesAccelerate();
    void deltaTextFindsRoom_data();
    void deltaTextFindsRoom();
};

void tst_cursorunits::heldKeyAccelerates()
{
    graph::KeyAcceleration acceleration;
    QVector<int> steps;
    for (int i = 0; i < 7; ++i)
        steps.append(acceleration.repeated());
    QCOMPARE(steps, (QVector<int>{2, 4, 6, 9, 13, 19, 19}));
    acceleration.reset();
    QCOMPARE(acceleration.repeated(), 2);
}

void tst_cursorunits::quickPressesAccelerate()
{
    graph::KeyAcceleration acceleration;
    QCOMPARE(acceleration.pressed(100), 5);
    QCOMPARE(acceleration.pressed(499), 5);
    QCOMPARE(acceleration.pressed(0), 19);
    QCOMPARE(acceleration.pressed(500), 19);
    QCOMPARE(acceleration.pressed(501), 1);
    QCOMPARE(acceleration.pressed(-5), 19);
    QCOMPARE(acceleration.pressed(600), 1);
}

void tst_cursorunits::deltaTextFindsRoom_data()
{
    QTest::addColumn<int>("cursor");
    QTest::addColumn<int>("marker");
    QTest::addColumn<int>("x");
    QTest::newRow("between the lines") << 20 << 80 << 34;
    QTest::newRow("one pixel short of fitting") << 20 << 61 << 66;
    QTest::newRow("just fits") << 20 << 62 << 25;
    QTest::newRow("right of both, in the left half") << 10 << 15 << 20;
    QTest::newRow("left of both, in the right half") << 90 << 80 << 45;
    QTest::newRow("exactly in the middle counts as right") << 50 << 50 << 15;
    QTest::newRow("marker left of the item") << 60 << -1000 << 14;
    QTest::newRow("marker right of the item") << 95 << 1000 << 60;
}

void tst_cursorunits::deltaTextFindsRoom()
{
    QFETCH(int, cursor);
    QFETCH(int, marker);
    QTEST(graph::deltaTextX(cursor, marker, 30, 100.0), "x");
}

QTEST_APPLESS_MAIN(tst_cursorunits)
#include "tst_cursorunits.moc"
