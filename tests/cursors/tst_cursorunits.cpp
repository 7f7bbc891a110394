#include "cursors/CursorPainting.h"
#include "cursors/KeyAcceleration.h"

#include <QtTest>

class tst_cursorunits : public QObject
{
    Q_OBJECT

private slots:
    void keysAccelerate()
    {
        graph::KeyAcceleration acceleration;
        const QVector<QPair<int, int>> presses{{100, 5}, {499, 5}, {0, 19}, {500, 19},
                                               {501, 1}, {-5, 19}, {600, 1}};
        for (const QPair<int, int> &press : presses)
            QCOMPARE(acceleration.pressed(press.first), press.second);
    }

    void deltaTextFindsRoom_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<int>("marker");
        QTest::addColumn<int>("x");
        QTest::newRow("between the lines") << 20 << 80 << 34;
        QTest::newRow("one pixel short of fitting") << 20 << 61 << 66;
        QTest::newRow("just fits") << 20 << 62 << 25;
        QTest::newRow("right of both, in the left half") << 10 << 15 << 20;
        QTest::newRow("left of both, in the right half") << 90 << 80 << 45;
        QTest::newRow("marker left of the item") << 60 << -1000 << 14;
        QTest::newRow("marker right of the item") << 95 << 1000 << 60;
    }

    void deltaTextFindsRoom()
    {
        QFETCH(int, cursor);
        QFETCH(int, marker);
        QTEST(graph::deltaTextX(cursor, marker, 30, 100.0), "x");
    }
};

QTEST_APPLESS_MAIN(tst_cursorunits)
#include "tst_cursorunits.moc"
