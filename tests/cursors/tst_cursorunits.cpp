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
        struct Press
        {
            int afterMs;
            int step;
            bool held = false;
            bool backwards = false;
        };
        const QVector<Press> presses{
            {100, 5},
            {499, 5},
            {0, 19},
            {500, 19},
            {501, 1},
            {-5, 19},
            {600, 1},
            // Repeats do not ask for the time, but a press does ask for that of the last repeat.
            {0, 2, true},
            {0, 4, true},
            {0, 6, true},
            {900, 9, true},
            {0, 13, true},
            {0, 19, true},
            {0, 19, true},
            {499, 19},
            // Another direction starts from the slowest step.
            {0, 2, true, true},
            {0, 4, true, true},
            {250, 2},
            {501, 1, false, true},
            {250, 2, false, true}};
        qint64 now = 0;
        for (const Press &press : presses) {
            now += press.afterMs;
            QCOMPARE(acceleration.step(press.backwards, press.held, now), press.step);
        }
    }

    void deltaTextFindsRoom()
    {
        const struct
        {
            const char *where;
            int cursor, marker, x, xInChart;
        } places[] = {{"between the lines", 20, 80, 34, 34},
                      {"one pixel short of fitting", 20, 61, 66, 66},
                      {"just fits", 20, 62, 25, 25},
                      {"in the left half", 10, 15, 20, 20},
                      {"in the left half, marker left", 48, 36, 53, 1},
                      {"in the right half", 90, 80, 45, 45},
                      {"in the right half, marker right", 55, 63, 20, 68},
                      {"no room beside the marker", 30, 20, 35, 35},
                      {"nor at the right", 75, 80, 40, 40},
                      {"marker left of the item", 60, -1000, 14, 14},
                      {"marker right of the item", 95, 1000, 60, 60}};
        for (const auto &place : places) {
            QVERIFY2(graph::deltaTextX(place.cursor, place.marker, 30, 100.0) == place.x, place.where);
            QVERIFY2(graph::deltaTextBesideMarker(place.cursor, place.marker, 30, 100.0) == place.xInChart,
                     place.where);
        }
    }
};

QTEST_APPLESS_MAIN(tst_cursorunits)
#include "tst_cursorunits.moc"
