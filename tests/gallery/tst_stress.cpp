#include "data/PlotSeries.h"
#include "gallery/FrameMeter.h"
#include "gallery/NoisyTraces.h"
#include "support/QmlDocument.h"

#include <QQuickPaintedItem>
#include <QSignalSpy>
#include <QThread>

#include <cmath>

using namespace gallery;

namespace {

const qint64 millisecond = 1000000;
const int slowPainting = 3;

class SlowItem : public QQuickPaintedItem
{
public:
    using QQuickPaintedItem::QQuickPaintedItem;
    void paint(QPainter *) override { QThread::msleep(slowPainting); }
};

} // namespace

// What the page that measures the drawing of charts relies on.
class tst_stress : public QObject
{
    Q_OBJECT

private slots:
    void figuresOfASecond();
    void measuresPaintingAndStops();
    void tracesReachTheSeriesWithoutACopy();
};

void tst_stress::figuresOfASecond()
{
    FrameTimes times;
    // Paintings before the first frame do not count.
    times.addPainting(900 * millisecond);
    QVERIFY(!times.addFrame(5000 * millisecond));
    for (int frame = 1; frame < 50; ++frame) {
        times.addPainting(frame == 7 ? 15 * millisecond : 2 * millisecond);
        QVERIFY(!times.addFrame((5000 + 20 * frame) * millisecond));
        QVERIFY(std::isnan(times.framesPerSecond()) && std::isnan(times.paintTime()));
    }
    times.addPainting(2 * millisecond);
    QVERIFY(times.addFrame(6000 * millisecond));
    QCOMPARE(times.framesPerSecond(), 50.0);
    QCOMPARE(times.paintTime(), 2.0);
    // One frame that takes longer than a second.
    QVERIFY(times.addFrame(8000 * millisecond));
    QCOMPARE(times.framesPerSecond(), 0.5);
    QVERIFY(std::isnan(times.paintTime()));
}

void tst_stress::measuresPaintingAndStops()
{
    QQuickWindow window;
    window.resize(100, 100);
    SlowItem item(window.contentItem());
    item.setSize(QSizeF(50, 50));
    window.show();

    FrameMeter meter;
    QSignalSpy frames(&meter, &FrameMeter::frameShown);
    connect(&meter, &FrameMeter::frameShown, &item, [&item] { item.update(); });
    meter.setWindow(&window);
    QTest::qWait(100);
    QCOMPARE(frames.count(), 0);

    meter.setRunning(true);
    QTRY_VERIFY_WITH_TIMEOUT(meter.paintTime() >= slowPainting, 60000);
    QVERIFY(meter.framesPerSecond() > 0.0 && meter.framesPerSecond() <= 1000.0 / slowPainting);

    meter.setRunning(false);
    QVERIFY(std::isnan(meter.framesPerSecond()) && std::isnan(meter.paintTime()));
    // A frame that was requested before the end may still be drawn, and on a busy machine late.
    QSignalSpy swaps(&window, &QQuickWindow::frameSwapped);
    const auto isQuiet = [&] {
        swaps.clear();
        frames.clear();
        QTest::qWait(100);
        return swaps.isEmpty() && frames.isEmpty();
    };
    QTRY_VERIFY(isQuiet());
}

void tst_stress::tracesReachTheSeriesWithoutACopy()
{
    qmlRegisterType<NoisyTraces>("gallery", 1, 0, "NoisyTraces");
    const QmlDocument document("import gallery 1.0\n"
                               "PlotSeries { property int turn: 0; yData: noise.trace(turn, 1000)\n"
                               "property NoisyTraces noise: NoisyTraces {} }");
    auto *series = qobject_cast<PlotSeries *>(document.root());
    QVERIFY(series);
    auto *noise = document.object<NoisyTraces>("noise");
    const QVector<double> first = series->yData();
    QCOMPARE(first.size(), 1000);
    QCOMPARE(first.constData(), noise->trace(0, 1000).constData());
    QCOMPARE(first.constData(), noise->trace(-10, 1000).constData());

    series->setProperty("turn", 11);
    QCOMPARE(series->yData().constData(), noise->trace(1, 1000).constData());
    QVERIFY(series->yData() != first);
    for (double y : first)
        QVERIFY(std::abs(y) <= 1.4);

    QVERIFY(noise->trace(0, 0).isEmpty() && noise->trace(0, -1).isEmpty() &&
            noise->trace(0, 2000000000).isEmpty());
    // They are the same when made again: pictures rely on it.
    QCOMPARE(noise->trace(3, 2).size(), 2);
    QCOMPARE(noise->trace(0, 1000), first);
}

QTEST_MAIN(tst_stress)
#include "tst_stress.moc"
