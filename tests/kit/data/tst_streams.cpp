#include "cursors/CursorBench.h"
#include "kit/data/StreamPoints.h"
#include "kit/data/StreamSeries.h"
#include "platform/bus/BusPublisher.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <numeric>
#include <thread>

using graph::StreamPoints;
using graph::StreamSeries;

namespace {

constexpr int patience = 60000; // ms, only ever used up by a failure

QVector<double> counted(int from, int count)
{
    QVector<double> values(count);
    std::iota(values.begin(), values.end(), double(from));
    return values;
}

QVector<double> valuesOf(const PlotData &data)
{
    QVector<double> values;
    for (int i = 0; i < data.size(); ++i)
        values.append(data.y(i));
    return values;
}

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Compares everything that tells of the samples with the list of them.
QString difference(const PlotData &data, const QVector<QPointF> &expected, QRandomGenerator &random)
{
    if (data.size() != expected.size())
        return QStringLiteral("%1 samples, not %2").arg(data.size()).arg(expected.size());
    const graph::SampleSpan span = data.sampleSpan(-qInf(), qInf());
    for (int i = 0; i < span.size(); ++i) {
        const QPointF sample = expected.at(span.dataIndex(i));
        if (span.x(i) != sample.x() || !isSame(span.y(i), sample.y()) ||
            data.x(span.dataIndex(i)) != sample.x())
            return QStringLiteral("sample %1").arg(i);
    }
    const int first = random.bounded(span.size() + 1);
    const int end = random.bounded(first, span.size() + 1);
    graph::MinMax plain;
    bool anyNaN = false;
    for (int i = first; i < end; ++i) {
        plain.add(std::isnan(span.y(i)) ? graph::MinMax() : graph::MinMax{span.y(i), span.y(i)});
        anyNaN = anyNaN || std::isnan(span.y(i));
    }
    const graph::MinMax extremes = span.minMax(first, end);
    if (plain.isEmpty() ? !extremes.isEmpty() : extremes.min != plain.min || extremes.max != plain.max)
        return QStringLiteral("extremes of %1..%2").arg(first).arg(end);
    return span.hasNaN(first, end) == anyNaN ? QString()
                                             : QStringLiteral("NaN in %1..%2").arg(first).arg(end);
}

} // namespace

class tst_streams : public QObject
{
    Q_OBJECT

private slots:
    // Appended, held, cleared and resized at random, against lists from which the oldest are removed.
    void agreesWithPlainLists_data()
    {
        columns<int, int, bool>({"capacity", "longest", "ascending"});
        QTest::newRow("one sample") << 1 << 3 << true;
        QTest::newRow("shorter than a block") << 10 << 25 << true;
        QTest::newRow("moves often") << 3000 << 700 << true;
        QTest::newRow("lets pages go") << 70000 << 30000 << true;
        QTest::newRow("x runs back at times") << 300 << 40 << false;
    }

    void agreesWithPlainLists()
    {
        QFETCH(int, capacity);
        QFETCH(int, longest);
        QFETCH(bool, ascending);
        QRandomGenerator random(7);
        StreamSeries series;
        StreamPoints points;
        series.setCapacity(capacity);
        points.setCapacity(capacity);
        series.setInterval(-0.1);
        series.setStart(3.0);
        QVector<QPointF> expectedSeries, expectedPoints, shownSeries, shownPoints;
        qint64 number = 0;
        double x = 0.0;
        for (int round = 0; round < 150; ++round) {
            QVector<double> xs, ys;
            for (int i = random.bounded(longest + 1); i > 0; --i) {
                ys.append(random.bounded(50) == 0 ? qQNaN() : random.generateDouble());
                x += ascending || random.bounded(30) > 0 ? random.generateDouble() : -3.0;
                xs.append(x);
                expectedSeries.append({3.0 + double(number++) * -0.1, ys.last()});
                expectedPoints.append({x, ys.last()});
            }
            const bool wasHeld = series.isHeld();
            series.append(ys);
            points.append(xs.constData(), ys.constData(), xs.size());
            const auto letOldestGo = [&] {
                for (auto *list : {&expectedSeries, &expectedPoints})
                    list->remove(0, std::max<qint64>(0, list->size() - capacity));
            };
            letOldestGo();
            if (random.bounded(40) == 0) {
                capacity = std::max(1, capacity + random.bounded(-longest, longest));
                series.setCapacity(capacity);
                points.setCapacity(capacity);
                letOldestGo();
            }
            if (!wasHeld) {
                shownSeries = expectedSeries;
                shownPoints = expectedPoints;
            }
            series.setHeld(random.bounded(3) == 0);
            points.setHeld(series.isHeld());
            if (!series.isHeld()) {
                shownSeries = expectedSeries;
                shownPoints = expectedPoints;
            }
            QCOMPARE(difference(series, shownSeries, random), QString());
            QCOMPARE(difference(points, shownPoints, random), QString());
        }
    }

    void spanKeepsItsValuesWhileSamplesMove()
    {
        StreamSeries series;
        series.setCapacity(100000);
        series.append(counted(0, 100000));
        const graph::SampleSpan span = series.sampleSpan(10, 99990);
        for (int round = 0; round < 30; ++round)
            series.append(counted(-1000000, 50000));
        for (int i = 0; i < span.size(); ++i)
            QCOMPARE(span.y(i), 10.0 + i);
        QCOMPARE(span.minMax(0, span.size()).min, 10.0);
        QCOMPARE(series.y(0), -1000000.0);
    }

    void changesAreAnnounced()
    {
        StreamSeries series;
        series.setCapacity(3);
        QTRY_VERIFY(!series.isChangePending());
        QSignalSpy plot(&series, SIGNAL(plotChanged())), size(&series, SIGNAL(sizeChanged(int))),
            start(&series, SIGNAL(startChanged()));
        series.append(counted(0, 2));
        series.append(counted(2, 2));
        QTRY_COMPARE(plot.count(), 1);
        // Not once for each append: what reads them would cost more than the samples.
        QCOMPARE(size.count(), 1);
        QCOMPARE(start.count(), 1);
        QCOMPARE(series.boundingRect(), QRectF(1, 1, 2, 2));
        series.setHeld(true);
        series.append(counted(9, 2));
        QTRY_VERIFY(!series.isChangePending());
        QCOMPARE(plot.count(), 1);
        QCOMPARE(series.start(), 1.0);
        series.setHeld(false);
        QTRY_COMPARE(plot.count(), 2);
        QCOMPARE(series.last(), QPointF(5, 10));
        series.clear();
        QCOMPARE(series.start(), 0.0);
        QCOMPARE(series.size(), 0);
    }

    void cursorsKeepTheirSamples()
    {
        StreamSeries series;
        series.setCapacity(100);
        series.append(counted(0, 100));
        CursorBench bench;
        bench.cursor->setStaysOnScreen(false);
        GraphMarker *marker = bench.addMarker();
        GraphMarker *leaving = bench.addMarker();
        auto *plot = bench.addPlot(&series);
        bench.place(0);
        bench.cursor->setPrimaryPlot(plot);
        bench.cursor->setPosIndex(40);
        for (GraphMarker *one : {marker, leaving})
            one->setVisible(true);
        marker->setPosIndex(50);
        leaving->setPosIndex(5);
        series.append(counted(100, 10));
        // The view changes before the data tell of theirs.
        bench.zoom->setWidth(0.9);
        QCOMPARE(bench.cursor->posIndex(), 30);
        QTRY_VERIFY(!series.isChangePending());
        QCOMPARE(bench.cursor->posValue(), 40.0);
        QCOMPARE(marker->posIndex(), 40);
        QCOMPARE(marker->yValue(), 50.0);
        QVERIFY(marker->isVisible() && !leaving->isVisible());
        bench.x->setMaxValue(200.0);
        QVERIFY(marker->isVisible() && !leaving->isVisible());
        leaving->setPosValue(60.0);
        QVERIFY(leaving->isVisible());
        // The cursor's own sample falls out: it is on the oldest.
        series.append(counted(110, 40));
        QTRY_COMPARE(bench.cursor->posValue(), 50.0);
        QCOMPARE(bench.cursor->posIndex(), 0);
        QCOMPARE(marker->posIndex(), 0);
    }

    void nastyInput()
    {
        StreamSeries series;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("has a capacity of 0, which is ignored"));
        series.setCapacity(0);
        series.setCapacity(-5); // told once
        QCOMPARE(series.capacity(), 100000);
        StreamSeries written;
        written.append({1.0});
        QCOMPARE(written.size(), 1);
        series.append(nullptr, 0);
        series.append(counted(0, 10000000));
        QCOMPARE(series.size(), 100000);
        QCOMPARE(series.start(), 9900000.0);
        series.append({qQNaN(), qInf(), -qInf()});
        QCOMPARE(series.boundingRect().bottom(), 9999999.0);
        series.setInterval(0.0);
        QCOMPARE(series.indexOf(1.0), -1);
        series.setInterval(qQNaN());
        QVERIFY(series.sampleSpan(-qInf(), qInf()).isEmpty());
        series.setInterval(2.0);
        QCOMPARE(series.x(1) - series.x(0), 2.0);
    }

    void otherThreadPushes()
    {
        StreamSeries series;
        StreamPoints points;
        series.setCapacity(1 << 22);
        points.setCapacity(1 << 22);
        constexpr int count = 1 << 20;
        std::thread pusher([&] {
            for (int i = 0; i < count; i += 256) {
                const QVector<double> values = counted(i, 256);
                series.push(values.constData(), values.size());
                points.push(values.constData(), values.constData(), values.size());
            }
        });
        QTRY_COMPARE_WITH_TIMEOUT(points.size(), count, patience);
        pusher.join();
        QTRY_COMPARE_WITH_TIMEOUT(series.size(), count, patience);
        QCOMPARE(series.dropped() + points.dropped(), 0);
        for (int i = 0; i < count; ++i)
            QVERIFY(series.values()[i] == i && points.points()[i] == QPointF(i, i));
    }

    // The application has its turn all the same.
    void threadThatNeverPauses()
    {
        StreamSeries series;
        std::atomic<bool> ends{false};
        std::thread pusher([&] {
            for (double value = 0.0; !ends; ++value)
                series.push(&value, 1);
        });
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] { ++turns; });
        timer.start(0);
        QElapsedTimer clock;
        clock.start();
        while (turns < 20 && clock.elapsed() < patience)
            QCoreApplication::processEvents();
        ends = true;
        pusher.join();
        QVERIFY(turns >= 20);
    }

    // Held, with another capacity, read, and gone before the last samples were taken.
    void changedWhilePushed()
    {
        QRandomGenerator random(5);
        constexpr int count = 20000;
        for (int round = 0; round < 20; ++round) {
            StreamSeries series;
            series.setCapacity(1000);
            bool isWhole = true;
            std::atomic<bool> isOver{false};
            std::thread pusher([&] {
                for (int i = 0; i < count; i += 40) {
                    const QVector<double> values = counted(i, 40);
                    series.push(values.constData(), values.size());
                }
                isOver = true;
            });
            while (!isOver) {
                series.setHeld(random.bounded(2) == 1);
                series.setCapacity(random.bounded(1, 5000));
                QCoreApplication::processEvents();
                isWhole =
                    isWhole && (series.size() == 0 ||
                                series.values()[series.size() - 1] - series.values()[0] == series.size() - 1);
            }
            pusher.join();
            QVERIFY(isWhole);
            series.setHeld(false);
            if (round % 2 == 0)
                QTRY_COMPARE_WITH_TIMEOUT(series.y(series.size() - 1), count - 1.0, patience);
        }
    }

    // What the application did not come to take is lost from the front, and the rest keeps its x.
    void oldestArePassedOver()
    {
        constexpr int buffer = 1 << 20;
        StreamSeries series;
        series.setCapacity(3 * buffer);
        const QVector<double> values = counted(0, buffer + 100);
        series.push(values.constData(), 10);
        QCoreApplication::processEvents();
        series.push(values.constData() + 10, buffer);
        series.push(values.constData() + 10 + buffer, 90);
        QCoreApplication::processEvents();
        QCOMPARE(series.dropped(), 90);
        QCOMPARE(series.size(), buffer + 100);
        QVERIFY(std::isnan(series.y(10)) && std::isnan(series.y(99)));
        for (int i = 100; i < series.size(); ++i)
            QVERIFY(series.x(i) == series.y(i));
    }

    void secondThreadIsRefused()
    {
        StreamSeries series;
        const double value = 1.0;
        series.push(&value, 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("push\\(\\) from a second thread is refused"));
        std::thread([&] {
            series.push(&value, 1);
            series.push(&value, 1);
        }).join();
        QTRY_COMPARE(series.size(), 1);

        // Where the first has ended, another may go on.
        StreamSeries handedOver;
        for (int i = 0; i < 2; ++i)
            std::thread([&] { handedOver.push(&value, 1); }).join();
        QTRY_COMPARE(handedOver.size(), 2);
    }

    // Which may push, and nothing else.
    void otherThreadIsTold()
    {
        StreamSeries series;
        StreamPoints points;
        PlotSeries plain;
        series.setObjectName("pressure");
        std::thread([&] {
            for (int i = 0; i < 3; ++i) {
                series.append(1.0);
                series.setInterval(2 + i);
                points.append(i, i);
                points.clear();
                plain.setYData({double(i)});
            }
        }).join();
        for (const char *message :
             {"\"pressure\" gets append\\(\\) from another thread, and ignores it: .* push",
              "StreamPoints gets append\\(\\)", "PlotSeries.* is changed by another thread"})
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(message));
        QCoreApplication::processEvents();
        QCOMPARE(series.size() + points.size(), 0);
        QCOMPARE(series.interval(), 1.0);
        QSignalSpy changed(&plain, SIGNAL(plotChanged()));
        plain.setYData({1, 2});
        QTRY_COMPARE(changed.count(), 1);
    }

    void inFewWordsFromPrograms()
    {
        StreamSeries series(0.5, 2);
        for (int value : {1, 2, 3})
            series.append(value);
        QCOMPARE(series.sample(0), QPointF(0.5, 2));
        QCOMPARE(series.last(), QPointF(1, 3));
        StreamPoints points(2);
        for (int x : {1, 4, 7})
            points.append(x, 2.5 * x);
        QCOMPARE(points.sample(0), QPointF(4, 10));
        QCOMPARE(points.capacity(), 2);
    }

    void documents()
    {
        for (const char *told : {"is given samples that are no list, and ignores them",
                                 "is given the text \"x\" among its samples", "is given 3 x and 2 y"})
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(told));
        const QmlDocument streams(R"(
            import graph_kit 1.0
            StreamSeries {
            capacity: 12; interval: 0.5; start: 2
            Component.onCompleted: {
                append([1, 2, NaN, "x"])
                append(new Float64Array([5, 6]))
                append(new Float32Array([6.5, 7, 8]).subarray(1))
                append(new Uint8Array([255]))
                append(-1)
                append([])
                append("none"); append(undefined); append({})
            }
        })");
        const auto *series = qobject_cast<StreamSeries *>(streams.root());
        const QVector<double> expected{1, 2, qQNaN(), qQNaN(), 5, 6, 7, 8, 255, -1};
        QCOMPARE(series->size(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(isSame(series->y(i), expected.at(i)), qPrintable(QString::number(i)));
        QCOMPARE(series->last().x(), 6.5);
        const QmlDocument pointwise(R"(
            import graph_kit 1.0
            StreamPoints {
            Component.onCompleted: {
                append(new Int16Array([-3, 4, 9]), [1, 2])
                append(NaN, 8)
                append(new Date(5500), 3)
            }
        })");
        const auto *points = qobject_cast<StreamPoints *>(pointwise.root());
        QCOMPARE(points->sample(1), QPointF(4, 2));
        QVERIFY(points->x(2) == 4 && std::isnan(points->y(2)));
        QCOMPARE(points->last(), QPointF(5.5, 3));
        QCOMPARE(points->size(), 4);
    }

    void busAppends()
    {
        BusPublisher bus("streams");
        bus.setVector("t_yData:doubleARRAY:", counted(0, 3));
        bus.setVector("t_xData:doubleARRAY:", counted(10, 3));
        StreamSeries series;
        StreamPoints points;
        series.setDbusAddress("streams,t");
        points.setDbusAddress("streams,t");
        // The service keeps three, the series all.
        for (int i = 3; i < 6; ++i) {
            bus.append("t_yData:doubleARRAY:", {double(i)}, 3);
            bus.append("t_xData:doubleARRAY:", {10.0 + i}, 3);
        }
        QTRY_COMPARE(valuesOf(series), counted(0, 6));
        QCOMPARE(valuesOf(points), counted(0, 6));
        QCOMPARE(points.last(), QPointF(15, 5));
        QVERIFY(series.dynamicPropertyNames().isEmpty());
        // Of the first of the three that the service has; the last one is at 700.
        bus.setValue("t_xIncrement:", 0.5);
        bus.setValue("t_xFirsValue:", 699.0);
        QTRY_COMPARE(series.last().x(), 700.0);
        QCOMPARE(series.start(), 697.5);
        QCOMPARE(series.interval(), 0.5);
        bus.setVector("t_yData:doubleARRAY:", counted(70, 2));
        QTRY_COMPARE(valuesOf(series), counted(70, 2));
        QCOMPARE(series.start(), 699.0);
        series.setStart(1.0);
        series.setInterval(2.0);
        bus.setValue("t_xIncrement:", 0.25);
        bus.setValue("t_xFirsValue:", 99.0);
        QTRY_COMPARE(series.property("xFirsValue").toDouble(), 99.0);
        QCOMPARE(series.last().x(), 3.0);
    }
};

QTEST_MAIN(tst_streams)
#include "tst_streams.moc"
