#include "view/zoom/ZoomInterval.h"

#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>

using graph::ZoomInterval;

namespace {

const double inf = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Case
{
    const char *name;
    std::function<ZoomInterval::Changes(ZoomInterval &)> operation;
    const char *changes; // e for extent, b for begin, n for end, in their order
    double begin;
    double end;
};

// All start from 0.5 to 1 in the bounds 0 to 1, with 0.01 as the least extent.
const Case cases[] = {
    {"extent beyond the bounds", [](auto &i) { return i.setExtent(2); }, "", 0.5, 1},
    {"extent below the least", [](auto &i) { return i.setExtent(0); }, "ne", 0.5, 0.51},
    {"begin resizes", [](auto &i) { return i.setBegin(0.25); }, "eb", 0.25, 1},
    {"begin beyond the bounds", [](auto &i) { return i.setBegin(-2); }, "eb", 0, 1},
    {"begin beyond the end", [](auto &i) { return i.setBegin(2); }, "eb", 0.99, 1},
    {"end resizes", [](auto &i) { return i.setEnd(0.75); }, "en", 0.5, 0.75},
    {"end before the begin", [](auto &i) { return i.setEnd(0); }, "en", 0.5, 0.51},
    {"end beyond the bounds", [](auto &i) { return i.setEnd(2); }, "", 0.5, 1},
    {"begin pans", [](auto &i) { return i.moveBegin(0.25); }, "bn", 0.25, 0.75},
    {"begin pans to the lower bound", [](auto &i) { return i.moveBegin(-inf); }, "bn", 0, 0.5},
    {"begin stops at the upper bound", [](auto &i) { return i.moveBegin(0.75); }, "", 0.5, 1},
    {"end pans", [](auto &i) { return i.moveEnd(0.75); }, "nb", 0.25, 0.75},
    {"end pans to the lower bound", [](auto &i) { return i.moveEnd(-1); }, "nb", 0, 0.5},
    {"end stops at the upper bound", [](auto &i) { return i.moveEnd(inf); }, "", 0.5, 1},
    {"zoom in", [](auto &i) { return i.zoom(0.25, 0.6); }, "neb", 0.55, 0.8},
    {"zoom at the end", [](auto &i) { return i.zoom(0.25, 1); }, "eb", 0.75, 1},
    {"zoom out meets the bound", [](auto &i) { return i.zoom(0.75, 0.5); }, "eb", 0.25, 1},
    {"zoom to nothing", [](auto &i) { return i.zoom(0, 0.5); }, "ne", 0.5, 0.51},
    {"zoom to the same", [](auto &i) { return i.zoom(0.5, 0.7); }, "", 0.5, 1},
    {"scale", [](auto &i) { return i.scale(0.25, 0.6); }, "neb", 0.475, 0.725},
    {"scale to the same", [](auto &i) { return i.scale(0.5, 0.6); }, "", 0.5, 1},
    {"show", [](auto &i) { return i.show(0.25, 0.5, ZoomInterval::Begin); }, "ebn", 0.375, 0.625},
    {"show with the end first", [](auto &i) { return i.show(0.25, 0.5, ZoomInterval::End); }, "enb", 0.375,
     0.625},
    {"show as much elsewhere", [](auto &i) { return i.show(0.5, 0.6, ZoomInterval::End); }, "nb", 0.35, 0.85},
    {"show beyond the bounds", [](auto &i) { return i.show(9, 9, ZoomInterval::Begin); }, "eb", 0, 1},
    {"show from", [](auto &i) { return i.showFrom(0.45, 0.25); }, "ebn", 0.45, 0.7},
    {"show from beyond the bounds", [](auto &i) { return i.showFrom(-0.5, 0.25); }, "ebn", 0, 0.25},
    {"show from NaN", [](auto &i) { return i.showFrom(notANumber, 0.25); }, "", 0.5, 1},
};

QString letters(const ZoomInterval::Changes &changes)
{
    QString text;
    for (const ZoomInterval::Part part : changes)
        text += "ebn"[part];
    return text;
}

} // namespace

Q_DECLARE_METATYPE(const Case *)

class tst_zoominterval : public QObject
{
    Q_OBJECT

private slots:
    void operations_data()
    {
        QTest::addColumn<const Case *>("test");
        for (const Case &test : cases)
            QTest::newRow(test.name) << &test;
    }

    void operations()
    {
        QFETCH(const Case *, test);
        ZoomInterval interval;
        interval.setBegin(0.5);
        QCOMPARE(letters(test->operation(interval)), QString(test->changes));
        QCOMPARE(interval.begin(), test->begin);
        QCOMPARE(interval.end(), test->end);
        QCOMPARE(interval.extent(), test->end - test->begin);
    }

    void boundsHoldFromTheNextChange()
    {
        ZoomInterval interval;
        QVERIFY(!ZoomInterval::canBeBounds(0, inf) && !ZoomInterval::canBeBounds(notANumber, 1));
        interval.setBounds(10, 4);
        QCOMPARE(interval.end(), 1.0);
        interval.show(9, 0, ZoomInterval::Begin);
        QCOMPARE(interval.begin(), 10.0);
        QCOMPARE(interval.end(), 14.0);
        QVERIFY(!interval.setLeastExtent(-1) && !interval.setLeastExtent(notANumber) &&
                !interval.setLeastExtent(0.01));
        // The least extent wins over the bounds.
        QVERIFY(interval.setLeastExtent(6));
        interval.zoom(1, 12);
        QCOMPARE(interval.begin(), 10.0);
        QCOMPARE(interval.end(), 16.0);
        // Nothing at all can be zoomed into, and out of.
        interval.setBounds(0, 1);
        interval.setLeastExtent(0);
        interval.show(0, 0.5, ZoomInterval::Begin);
        interval.zoom(0.5, 0.5);
        QCOMPARE(interval.begin(), 0.25);
    }
};

QTEST_APPLESS_MAIN(tst_zoominterval)
#include "tst_zoominterval.moc"
