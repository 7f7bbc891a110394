#include "cursors/CursorBench.h"
#include "cursors/GraphCursorAttachedY.h"
#include "cursors/GraphCursorY.h"
#include "data/PlotRegion.h"
#include "data/PlotRegions.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

QVector<PlotData *> seriesOf(GraphCursor *cursor)
{
    QQmlListProperty<PlotData> list = cursor->series();
    QVector<PlotData *> all;
    for (int i = 0; i < list.count(&list); ++i)
        all.append(list.at(&list, i));
    return all;
}

// 50 samples at 20, 21 ... 69; a minus sign turns them round.
PlotData *samplesFrom20To69(const QString &kind)
{
    const bool backwards = kind.endsWith('-');
    QVector<double> places(50);
    for (int i = 0; i < places.size(); ++i)
        places[i] = backwards ? 69 - i : 20 + i;
    if (kind.startsWith("series")) {
        auto *series = new PlotSeries;
        series->setXFirstValue(places.first());
        series->setXInterval(backwards ? -1.0 : 1.0);
        series->setYData(places);
        return series;
    }
    if (kind.startsWith("points")) {
        auto *points = new PlotPoints;
        points->setXData(places);
        return points;
    }
    auto *regions = new PlotRegions;
    QQmlListProperty<PlotRegion> list = regions->regions();
    for (double place : qAsConst(places)) {
        auto *region = new PlotRegion(regions);
        region->setBegin(place);
        region->setEnd(place + 1);
        list.append(&list, region);
    }
    return regions;
}

// Whose oldest samples fall out.
class Rolling : public PlotSeries
{
public:
    graph::SampleHistory history() const override { return {1, m_fallen, size()}; }
    void drop(int count)
    {
        m_fallen += count;
        setXFirstValue(x(count));
        setYData(yData().mid(count));
    }

private:
    int m_fallen = 0;
};

} // namespace

class tst_graphcursor : public QObject
{
    Q_OBJECT

private slots:
    void snaps_data()
    {
        columns<QByteArray, double, int, int>({"setter", "value", "index", "level"});
        QTest::newRow("value half way") << QByteArray("setPosValue") << 33.5 << 34 << 33;
        QTest::newRow("index") << QByteArray("setPosIndex") << 33.9 << 33 << 33;
        // The fraction counts the width of the item, the samples its last column.
        QTest::newRow("fraction") << QByteArray("setPosition") << 0.5 << 51 << 24;
        QTest::newRow("no number") << QByteArray("setPosValue") << qQNaN() << 10 << 10;
        QTest::newRow("beyond the last sample") << QByteArray("setPosValue") << qInf() << 100 << 50;
        QTest::newRow("before the first sample") << QByteArray("setPosIndex") << -1e300 << 0 << 0;
    }

    void snaps()
    {
        QFETCH(QByteArray, setter);
        QFETCH(double, value);
        QFETCH(int, index);
        QFETCH(int, level);
        for (bool horizontal : {false, true}) {
            CursorBench bench(horizontal ? new GraphCursorY : new GraphCursor);
            const int place = horizontal ? level : index;
            QVERIFY(QMetaObject::invokeMethod(bench.cursor, setter, Q_ARG(double, value)));
            QCOMPARE(bench.cursor->posIndex(), -1);
            bench.place(10);
            QVERIFY(QMetaObject::invokeMethod(bench.cursor, setter, Q_ARG(double, value)));
            QCOMPARE(bench.cursor->posIndex(), place);
            QCOMPARE(bench.cursor->posValue(), double(place));
            QCOMPARE(bench.cursor->position(), place / (horizontal ? 50.0 : 100.0));
            QCOMPARE(bench.cursor->posOnScreen(), horizontal ? 50 - place : place);
        }
    }

    void staysOnScreen()
    {
        CursorBench bench;
        bench.place(10);
        bench.zoom->setRight(0.4);
        bench.zoom->setLeft(0.2);
        QCOMPARE(bench.cursor->posIndex(), 20);
        bench.cursor->setPosIndex(90);
        QCOMPARE(bench.cursor->posIndex(), 40);
        QCOMPARE(bench.cursor->posOnScreen(), 100);
        bench.cursor->setPosOnScreen(52);
        QCOMPARE(bench.cursor->posOnScreen(), 50);
        bench.cursor->setStaysOnScreen(false);
        bench.cursor->setPosIndex(90);
        QCOMPARE(bench.cursor->posOnScreen(), 100);
        bench.cursor->setPosIndex(101);
        bench.cursor->setPosIndex(-1);
        QCOMPARE(bench.cursor->posIndex(), 90);

        CursorBench level(new GraphCursorY);
        level.place(10);
        level.zoom->setHeight(0.4);
        level.zoom->moveBottom(0.69);
        QVERIFY(level.y->minVisible() > 1.0 && level.y->maxVisible() < 49.0);
        level.cursor->setPosIndex(0);
        QCOMPARE(level.cursor->posIndex(), int(level.y->minVisible()));
        level.cursor->setPosIndex(90);
        QCOMPARE(level.cursor->posIndex(), int(level.y->maxVisible()));
    }

    // The data reach from 20 to 69 on an axis from 0 to 100.
    void endsAtTheLastSample_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"series", "points", "regions", "series-", "points-"})
            QTest::newRow(kind) << QString(kind);
    }

    void endsAtTheLastSample()
    {
        QFETCH(QString, kind);
        const int atLeft = kind.endsWith('-') ? 49 : 0;
        const int atRight = 49 - atLeft;
        CursorBench bench;
        QScopedPointer<PlotData> data(samplesFrom20To69(kind));
        bench.plot->setPlotData(data.data());
        bench.place(30);
        GraphCursor *cursor = bench.cursor;
        const auto at = [&](int index) {
            return cursor->posIndex() == index && cursor->posValue() == data->x(index);
        };
        for (const auto &step : {-1, 1}) {
            const int end = step < 0 ? atLeft : atRight;
            const double far = step < 0 ? -1000.0 : 1000.0;
            for (bool stays : {true, false}) {
                cursor->setStaysOnScreen(stays);
                cursor->setPosIndex(25);
                QVERIFY(at(25));
                cursor->setPosValue(far);
                QVERIFY(at(end));
                cursor->setPosIndex(25);
                cursor->setPosition(far);
                QVERIFY(at(end));
                cursor->setPosIndex(25);
                cursor->setPosOnScreen(step < 0 ? 0 : 100);
                QVERIFY(at(end));
                cursor->setPosIndex(25);
                for (int i = 0; i < 20; ++i)
                    step < 0 ? cursor->moveLeft(true) : cursor->moveRight(true);
                QVERIFY(at(end));
                bench.zoom->setWidth(1.0);
                bench.zoom->moveLeft(0.0);
            }
        }
        cursor->setPosIndex(50);
        cursor->setPosIndex(-1);
        QVERIFY(at(atRight));
        // Where no sample is to be seen the cursor waits at the edge of the screen.
        cursor->setStaysOnScreen(true);
        bench.zoom->setLeft(0.9);
        QVERIFY(at(atRight) && cursor->posOnScreen() == 0);
        cursor->setPosValue(95.0);
        QVERIFY(at(atRight));
    }

    void staysWhenResizedAfterDataShrank()
    {
        for (const char *kind : {"series", "points"}) {
            for (const QSizeF size : {QSizeF(201, 51), QSizeF(101, 40)}) {
                CursorBench bench;
                QScopedPointer<PlotData> data(samplesFrom20To69(kind));
                bench.plot->setPlotData(data.data());
                GraphMarker *marker = bench.addMarker();
                bench.place(30);
                marker->setPosIndex(40);
                marker->setVisible(true);
                data->resize(10);
                bench.cursor->setSize(size);
                bench.plot->setSize(size);
                QVERIFY(bench.cursor->posIndex() == 30 && bench.cursor->posOnScreen() == 50);
                QVERIFY(marker->isVisible() && marker->posOnScreen() == 60);
            }
        }
    }

    void tellsInOrder()
    {
        CursorBench bench;
        SignalLog log(bench.cursor);
        bench.cursor->setPlots(bench.plots);
        // Wiring places the cursor on the sample at 0.
        QCOMPARE(log.take(),
                 QString("yValues yPositions plotValues posIndex posValue position plotValues plots series"));
        bench.cursor->setPlots(bench.plots);
        bench.cursor->setPosIndex(0);
        QCOMPARE(log.take(), QString());
        bench.cursor->setPosValue(7.2);
        QCOMPARE(log.take(), QString("yValues yPositions plotValues posIndex posValue position posOnScreen"));
        QQmlListProperty<AbstractPlot> plots = bench.cursor->plots();
        plots.clear(&plots);
        QCOMPARE(log.take(), QString("plots series"));
        QCOMPARE(plots.count(&plots), 0);
    }

    // A sample keeps its index when it gets another x, a horizontal line when its value was cut to an index.
    void readsTheValueOfItsPlace()
    {
        CursorBench bench;
        bench.place(20);
        bench.data->setXFirstValue(10.0);
        bench.cursor->setPosValue(30.0);
        QVERIFY(bench.cursor->posIndex() == 20 && bench.cursor->posValue() == 30.0);
        QCOMPARE(bench.cursor->position(), 0.3);
        CursorBench level(new GraphCursorY);
        level.cursor->setStaysOnScreen(false);
        level.cursor->setPlots(level.plots);
        level.cursor->setPosValue(20.5);
        level.zoom->setHeight(0.5);
        level.cursor->setWidth(50);
        QCOMPARE(level.cursor->posValue(), 20.5);
        level.cursor->setPosValue(20.0);
        QCOMPARE(level.cursor->posValue(), 20.0);
    }

    void rollsWithItsSamples()
    {
        CursorBench bench;
        Rolling samples;
        samples.setYData(bench.data->yData());
        bench.plot->setPlotData(&samples);
        GraphMarker *marker = bench.addMarker();
        bench.place(30);
        marker->setPosIndex(40);
        marker->setVisible(true);
        samples.drop(20);
        QTRY_COMPARE(bench.cursor->posIndex(), 10);
        QVERIFY(marker->posIndex() == 20 && marker->posValue() == 40.0);
        // A write may come before the data tell.
        samples.drop(5);
        SignalLog log(bench.cursor);
        bench.cursor->setPosValue(30.0);
        QCOMPARE(log.take(), QString("posIndex"));
        QCOMPARE(bench.cursor->posIndex(), 5);
        samples.drop(10);
        QTRY_COMPARE(bench.cursor->posIndex(), 0);
        QVERIFY(bench.cursor->posValue() == 35.0 && marker->isVisible());
        samples.drop(10);
        QTRY_VERIFY(!marker->isVisible());
    }

    void keysMove()
    {
        CursorBench bench;
        bench.cursor->moveLeft();
        bench.place(90);
        bench.cursor->setPanMargin(std::numeric_limits<int>::min());
        for (int place : {88, 84, 78}) {
            bench.cursor->moveLeft(true);
            QCOMPARE(bench.cursor->posOnScreen(), place);
        }
        bench.cursor->moveRight(true);
        QCOMPARE(bench.cursor->posOnScreen(), 80);
        bench.cursor->setPosIndex(37);
        // Where the primary plot is the chosen one of several, too.
        bench.data->setActive(true);
        bench.cursor->setAutoPrimaryPlot(true);
        bench.cursor->moveLeft(true);
        QVERIFY(bench.cursor->posIndex() < 37);
        bench.cursor->setAutoPrimaryPlot(false);
        bench.cursor->setPosIndex(37);
        // Wide samples are walked one by one.
        bench.data->setYData({1, 2, 3, 4, 5});
        bench.data->setXInterval(25.0);
        for (int index : {2, 3, 4, 4}) {
            bench.cursor->moveRight(true);
            QCOMPARE(bench.cursor->posIndex(), index);
        }
    }

    void pansNearEdge()
    {
        CursorBench bench;
        bench.cursor->setPanMargin(20);
        bench.place(36);
        bench.zoom->setRight(0.75);
        bench.zoom->setLeft(0.25);
        // Two pixels are a sample here: this is just at the margin.
        bench.cursor->moveLeft(true);
        QCOMPARE(bench.zoom->left(), 0.25);
        bench.cursor->setPosIndex(26);
        bench.cursor->moveLeft(true);
        QCOMPARE(bench.cursor->posIndex(), 25);
        QCOMPARE(bench.zoom->left(), 0.25 + (2 - 4 - 20) * 0.5 / 101);
        bench.zoom->moveRight(0.75);
        bench.cursor->setPosIndex(74);
        bench.cursor->moveRight(true);
        QCOMPARE(bench.zoom->right(), 0.25 + (98 + 2 + 20) * 0.5 / 101);
        // The first sample is where the cursor ends, but the view may go on.
        bench.cursor->setStaysOnScreen(false);
        bench.zoom->setBoundingRect(QRectF(-1, 0, 3, 1));
        bench.zoom->moveLeft(0.0);
        bench.cursor->setPosIndex(0);
        bench.cursor->moveLeft(true);
        QCOMPARE(bench.cursor->posIndex(), 0);
        QVERIFY(bench.zoom->left() < 0.0);
    }

    void followsNewData()
    {
        CursorBench bench;
        TracePlot *second = bench.addPlot(nullptr);
        bench.addPlot(bench.data);
        bench.place(20);
        QCOMPARE(seriesOf(bench.cursor), (QVector<PlotData *>{bench.data, nullptr, bench.data}));
        QCOMPARE(bench.cursor->yPositions(), (QList<qreal>{40.0, 0.0, 40.0}));
        QCOMPARE(bench.cursor->formattedYValues(), (QStringList{"10", "---", "10"}));
        // Data of two plots is heard once, and still when one of them has dropped it.
        PlotSeries other;
        QSignalSpy seriesChanged(bench.cursor, SIGNAL(seriesChanged()));
        second->setPlotData(&other);
        bench.plot->setPlotData(nullptr);
        QCOMPARE(seriesChanged.count(), 2);
        QCOMPARE(seriesOf(bench.cursor), (QVector<PlotData *>{nullptr, &other, bench.data}));
        QSignalSpy plotValues(bench.cursor, SIGNAL(plotValuesChanged()));
        bench.data->setYData(QVector<double>(101, 7.0));
        other.setYData({qQNaN()});
        QTRY_COMPARE(bench.cursor->formattedYValues(), (QStringList{"---", "nan", "7"}));
        QCOMPARE(plotValues.count(), 2);
        // Plots that were taken away are not heard any more.
        bench.cursor->setPlots({nullptr, second});
        plotValues.clear();
        bench.data->setYData({});
        bench.plot->setPlotData(bench.data);
        other.setYData({4.0});
        QTRY_COMPARE(bench.cursor->yValues(), QList<qreal>{4.0});
        QCOMPARE(plotValues.count(), 1);
        bench.cursor->setPlots({});
        QVERIFY(!bench.cursor->isCursorVisible() && !bench.cursor->followedAxis());
    }

    void followsAxesAndZoom()
    {
        CursorBench bench;
        bench.place(50);
        bench.zoom->setWidth(0.75);
        QCOMPARE(bench.cursor->posOnScreen(), 66);
        bench.zoom->setWidth(1.0);
        bench.x->setMaxValue(200.0);
        QCOMPARE(bench.cursor->posOnScreen(), 25);
        bench.plot->setWidth(21);
        bench.cursor->setWidth(21);
        QCOMPARE(bench.cursor->posOnScreen(), 5);
        bench.y->setMaxValue(100.0);
        QCOMPARE(bench.cursor->yPositions(), (QList<qreal>{37.5}));
        ValueAxis axis;
        axis.setAlignment(Qt::AlignLeft);
        axis.setMaxValue(25.0);
        bench.plot->setAxisY(&axis);
        QCOMPARE(bench.cursor->yPositions(), (QList<qreal>{0.0}));
        QSignalSpy plotValues(bench.cursor, SIGNAL(plotValuesChanged()));
        bench.y->setMaxValue(200.0);
        QCOMPARE(plotValues.count(), 0);
        // A parent may tell of its zoom rectangle later.
        const QmlDocument document("Item { property ZoomRect zoomRect }");
        bench.cursor->setParentItem(qobject_cast<QQuickItem *>(document.root()));
        document.root()->setProperty("zoomRect", QVariant::fromValue(bench.zoom.data()));
        bench.zoom->setWidth(0.5);
        QCOMPARE(bench.cursor->posOnScreen(), 10);
    }

    void choosesPrimaryPlot()
    {
        CursorBench bench;
        PlotPoints points;
        points.setXData({60.0, 70.0, 80.0});
        AbstractPlot *second = bench.addPlot(&points);
        bench.cursor->setAutoPrimaryPlot(true);
        bench.cursor->setPlots(bench.plots);
        SignalLog log(bench.cursor);
        bench.cursor->setPosValue(72.0);
        QCOMPARE(log.take(), QString());
        bench.data->setActive(true);
        points.setActive(true);
        bench.cursor->setPosValue(72.0);
        QVERIFY(log.take().startsWith("primaryPlot sgnPrimaryPlotIndex "));
        QCOMPARE(bench.cursor->primaryPlotIndex(), 1);
        QCOMPARE(bench.cursor->posIndex(), 1);
        // A value that nobody contains goes to the first active plot.
        bench.cursor->setPosValue(30.0);
        QCOMPARE(bench.cursor->primaryPlot(), bench.plot);
        bench.cursor->setPosIndex(65);
        points.setActive(false);
        points.setActive(true);
        QCOMPARE(bench.cursor->primaryPlot(), second);
        bench.cursor->setPrimaryPlot(nullptr);
        QCOMPARE(bench.cursor->primaryPlot(), bench.plot);
        QCOMPARE(bench.cursor->primaryPlotIndex(), -1);
    }

    void followsTheAxisOfThePrimaryPlot_data()
    {
        QTest::addColumn<bool>("horizontal");
        QTest::newRow("vertical line") << false;
        QTest::newRow("horizontal line") << true;
    }

    void followsTheAxisOfThePrimaryPlot()
    {
        QFETCH(bool, horizontal);
        CursorBench bench(horizontal ? new GraphCursorY : new GraphCursor);
        ValueAxis other;
        ValueAxis third;
        for (ValueAxis *axis : {&other, &third}) {
            axis->setAlignment(horizontal ? Qt::AlignLeft : Qt::AlignBottom);
            axis->setMaxValue(200.0);
        }
        const auto setAxis = [&](AbstractPlot *plot, ValueAxis *axis) {
            horizontal ? plot->setAxisY(axis) : plot->setAxisX(axis);
        };
        PlotSeries data;
        data.setYData(QVector<double>(201, 1.0));
        AbstractPlot *second = bench.addPlot(&data);
        setAxis(second, &other);
        GraphMarker *marker = bench.addMarker();
        bench.place(40);
        marker->setPosIndex(50);
        const double formerly = bench.cursor->position();
        bench.cursor->setPrimaryPlot(second);
        QCOMPARE(bench.cursor->position(), 0.2);
        QCOMPARE(bench.cursor->posOnScreen(), horizontal ? 40 : 20);
        QCOMPARE(marker->posOnScreen(), horizontal ? 50 : 25);
        // Another plot's axis does not move it, its own one does.
        QSignalSpy moved(bench.cursor, SIGNAL(positionChanged()));
        setAxis(bench.plot, &third);
        third.setMaxValue(90.0);
        bench.y->setMaxValue(90.0);
        bench.x->setMaxValue(90.0);
        QCOMPARE(bench.cursor->followedAxis(), &other);
        QCOMPARE(moved.count(), 0);
        setAxis(second, &third);
        QCOMPARE(bench.cursor->position(), 40.0 / 90.0);
        other.setMaxValue(1000.0);
        QCOMPARE(moved.count(), 1);
        third.setMaxValue(200.0);
        QCOMPARE(bench.cursor->posOnScreen(), horizontal ? 40 : 20);
        bench.x->setMaxValue(100.0);
        bench.y->setMaxValue(50.0);
        setAxis(bench.plot, horizontal ? bench.y : bench.x);
        // The first of the plots takes the place of one that is gone.
        delete second;
        QCOMPARE(bench.cursor->position(), formerly);
    }

    void findsPeaksInView()
    {
        CursorBench bench;
        QVector<double> samples(101, 0.0);
        for (int peak : {15, 35, 55, 75, 95})
            samples[peak] = samples[peak + 1] = 40.0;
        bench.data->setYData(samples);
        bench.place(50);
        const auto visit = [&](void (GraphCursor::*step)(), int times) {
            QVector<int> visited;
            for (int i = 0; i < times; ++i) {
                (bench.cursor->*step)();
                visited.append(bench.cursor->posIndex());
            }
            return visited;
        };
        QCOMPARE(visit(&GraphCursor::setPeak, 1), QVector<int>{15});
        QCOMPARE(visit(&GraphCursor::setPeakRight, 5), (QVector<int>{35, 55, 75, 95, 95}));
        bench.zoom->setRight(0.8);
        bench.zoom->setLeft(0.3);
        QCOMPARE(visit(&GraphCursor::setPeakRight, 1), QVector<int>{80});
        QCOMPARE(visit(&GraphCursor::setPeakLeft, 4), (QVector<int>{75, 55, 35, 35}));
        // From outside of the view the search begins at its edge.
        bench.cursor->setStaysOnScreen(false);
        bench.cursor->setPosIndex(5);
        QCOMPARE(bench.cursor->findPeak(GraphCursor::PeakRight), 35);
        bench.cursor->setPosIndex(98);
        QCOMPARE(bench.cursor->findPeak(GraphCursor::PeakLeft), 75);
        // A peak has to be seen: by the tenth of what the screen shows, not of the axis.
        samples[60] = 2.0;
        bench.data->setYData(samples);
        bench.cursor->setPosIndex(56);
        QCOMPARE(bench.cursor->findPeak(GraphCursor::PeakRight), 75);
        bench.zoom->setHeight(0.2);
        QCOMPARE(bench.cursor->findPeak(GraphCursor::PeakRight), 60);
        bench.plot->setAxisY(nullptr);
        QCOMPARE(bench.cursor->findPeak(GraphCursor::PeakRight), -1);
    }

    void searchesGivenSamples()
    {
        const QVector<double> y{5, 1, 9, 2, 30};
        GraphCursor cursor;
        // The last sample takes no part in the tolerance.
        QCOMPARE(cursor.computePeakTolerance(y, 0, 4, 0.0, 100.0), 0.8);
        QCOMPARE(cursor.computePeakTolerance(y, 0, 4, 0.0, 2.0), 0.2);
        QCOMPARE(cursor.computePeakTolerance({qQNaN(), 4, 3}, 0, 9, 0.0, 100.0), 0.1);
        QCOMPARE(cursor.computePeakTolerance(y, 5, 5, 0.0, 100.0), 0.0);
        QCOMPARE(cursor.getNextPeak(true, y, 1, 99, 0.0, 100.0), 2);
        QCOMPARE(cursor.getNextPeak(true, y, -1, 4, 0.0, 100.0), -1);
        QCOMPARE(cursor.getNextPeak(false, {}, 0, 0, 0.0, 1.0), -1);
        QCOMPARE(GraphCursor::getPositionIndex(99.0, 11, 0.0, 10.0), 10);
        QCOMPARE(GraphCursor::getPositionIndex(4.5, 11, 0.0, 10.0), 5);
        QCOMPARE(GraphCursor::getPositionIndex(3.0, 11, 3.0, 3.0), 0);
    }

    void readsManyPlotsAFewTimes()
    {
        class CountedSeries : public PlotSeries
        {
        public:
            mutable int reads = 0;
            double y(int index) const override
            {
                ++reads;
                return PlotSeries::y(index);
            }
        };
        constexpr int count = 40;
        CursorBench bench;
        CountedSeries all[count];
        for (CountedSeries &series : all) {
            series.setYUnits("V");
            bench.addPlot(&series);
        }
        bench.place(20);
        QSignalSpy plotValues(bench.cursor, SIGNAL(plotValuesChanged()));
        QStringList first;
        connect(&all[0], &PlotData::plotChanged, this, [&] { first = bench.cursor->formattedYValues(); });
        // Without a word, after the first of them has been read.
        connect(&all[1], &PlotData::plotChanged, this, [&] { all[0].yFormatter()->setSigDigs(1); });
        for (CountedSeries &series : all) {
            series.setYData(QVector<double>(101, 7.25));
            series.reads = 0;
        }
        QTRY_COMPARE(bench.cursor->formattedYValues().value(1), QString("7 V"));
        QCOMPARE(first.count("7.25 V"), count);
        QVERIFY(plotValues.count() > count);
        // One that changes its size alone.
        bench.plots.last()->setHeight(101);
        QCOMPARE(bench.cursor->yPositions().last(), 85.5);
        for (const CountedSeries &series : all)
            QVERIFY(series.reads <= 5);
    }

    void readingsOfEmptyPlots()
    {
        CursorBench bench;
        PlotSeries empty;
        bench.addPlot(&empty);
        bench.place(50);
        GraphCursorAttached full;
        GraphCursorAttached other;
        for (GraphCursorAttached *reading : {&full, &other})
            reading->setCursor(bench.cursor);
        full.setPlot(bench.plot);
        other.setPlot(bench.plots.last());
        QVERIFY(full.peak() && !other.peak());
        // The top of the plot, where an empty one is taken to be.
        empty.setYData(QVector<double>(101, 50.0));
        QTRY_VERIFY(other.peak());
        QVERIFY(!full.peak());
        empty.setYData(QVector<double>(101, qQNaN()));
        QTRY_VERIFY(full.peak());
        QVERIFY(!other.peak());
    }

    void horizontalCursor()
    {
        CursorBench bench(new GraphCursorY);
        GraphCursorAttachedY reading;
        reading.setCursor(bench.cursor);
        bench.place(12);
        QCOMPARE(bench.cursor->posOnScreen(), 38);
        QCOMPARE(bench.cursor->position(), 0.24);
        QVERIFY(reading.yPosOnScreen() == 38 && reading.formattedYValue() == "12");
        bench.cursor->setPosOnScreen(10);
        QCOMPARE(bench.cursor->posIndex(), 40);
        bench.cursor->setPosValue(20.9);
        QCOMPARE(bench.cursor->posValue(), 20.0);
        bench.cursor->setStaysOnScreen(false);
        bench.cursor->setPosValue(-7.5);
        QCOMPARE(bench.cursor->posIndex(), -7);
        QCOMPARE(bench.cursor->posValue(), -7.5);
        QCOMPARE(bench.cursor->posOnScreen(), 50);
        bench.cursor->setPosValue(-qInf());
        QVERIFY(std::isfinite(bench.cursor->posValue()));
        // Its axis is one of the plots' y axes as well and goes on moving it when these have changed.
        bench.addPlot(nullptr);
        bench.place(25);
        bench.y->setMaxValue(100.0);
        QCOMPARE(bench.cursor->posOnScreen(), 37);
        const QImage image = bench.painted();
        QCOMPARE(alphas(image, 37, 0, 100), QVector<int>(101, 255));
        QCOMPARE(alphas(image, 38, 0, 100), QVector<int>(101, 127));
        QCOMPARE(alphas(image, 39, 0, 100), QVector<int>(101, 0));
    }

    void paintsBand_data()
    {
        columns<int, QVector<int>>({"width", "expected"});
        // The alphas of the columns 23 to 33; the cursor is on 30.
        QTest::newRow("none") << 0 << QVector<int>{0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0};
        QTest::newRow("five") << 5 << QVector<int>{0, 0, 0, 0, 0, 0, 127, 255, 127, 0, 0};
        QTest::newRow("eight") << 8 << QVector<int>{0, 0, 0, 127, 127, 255, 255, 127, 127, 0, 0};
        QTest::newRow("nine") << 9 << QVector<int>{0, 127, 127, 127, 255, 255, 255, 127, 127, 127, 0};
        const int huge = std::numeric_limits<int>::max();
        QTest::newRow("huge") << huge << QVector<int>{255, 255, 255, 255, 255, 255, 255, 127, 127, 127, 127};
    }

    void paintsBand()
    {
        QFETCH(int, width);
        QFETCH(QVector<int>, expected);
        CursorBench bench;
        bench.place(30);
        bench.cursor->setColor(Qt::blue);
        bench.cursor->setPaintedWidth(width);
        const QImage image = bench.painted();
        QCOMPARE(alphas(image, 0, 23, 33), expected);
        QCOMPARE(alphas(image, 50, 23, 33), expected);
        QCOMPARE(bench.cursor->color(), QColor(0, 0, 255, 127));
        bench.cursor->setVisible(false);
        QCOMPARE(alphas(bench.painted(), 0, 0, 100), QVector<int>(101, 0));
        bench.cursor->setVisible(true);
        bench.cursor->setZoomRect(nullptr);
        QCOMPARE(alphas(bench.painted(), 0, 0, 100), QVector<int>(101, 0));
    }

    // In a chart lines do not cover the peak that they mark.
    void paintsThinInAChart()
    {
        CursorBench bench;
        bench.place(30);
        GraphMarker *marker = bench.addMarker();
        marker->setShowDelta(false);
        marker->setPosIndex(60);
        marker->setVisible(true);
        const QVector<int> wide{0, 127, 191, 255, 191, 127, 0};
        QCOMPARE(alphas(bench.painted(), 45, 57, 63), wide);
        GraphMarker *coloured = bench.addMarker();
        coloured->setColor(Qt::green);
        const auto text = [](double) { return QString(); };
        bench.cursor->setLook(graph::CursorLook{Qt::white, {}, {Qt::cyan}, text});
        QCOMPARE(alphas(bench.painted(), 45, 57, 63), QVector<int>({0, 0, 0, 255, 0, 0, 0}));
        QCOMPARE(alphas(bench.painted(), 45, 29, 31), QVector<int>({0, 255, 0}));
        QCOMPARE(marker->color(), QColor(Qt::cyan));
        QCOMPARE(coloured->color(), QColor(Qt::green));
        // Elsewhere it looks as everywhere.
        QQuickItem elsewhere;
        bench.cursor->setParentItem(&elsewhere);
        bench.cursor->setZoomRect(bench.zoom);
        QCOMPARE(alphas(bench.painted(), 45, 57, 63), wide);
    }

    void survivesDestruction()
    {
        std::mt19937 random(4);
        for (int round = 0; round < 300; ++round) {
            CursorBench bench(round % 2 ? new GraphCursor : new GraphCursorY);
            bench.addPlot(bench.data);
            bench.addPlot(nullptr);
            bench.data->setActive(true);
            bench.cursor->setAutoPrimaryPlot(round % 3 == 0);
            bench.cursor->setPrimaryPlot(bench.plots.at(round % 3));
            GraphMarker *marker = bench.addMarker();
            marker->setLabel(new QQuickItem(&bench.area));
            marker->setVisible(true);
            auto *reading = new GraphCursorAttached;
            reading->setCursor(bench.cursor);
            reading->setPlot(bench.plot);
            bench.objects << reading << marker->label();
            bench.place(round % 101);
            // Listeners to a move may take the data away.
            if (round % 5 == 0)
                connect(bench.cursor, &GraphCursor::posValueChanged, bench.data, [&] { delete bench.data; });
            std::shuffle(bench.objects.begin(), bench.objects.end(), random);
            while (!bench.objects.isEmpty()) {
                if (bench.cursor) {
                    bench.cursor->updateCursorPos();
                    bench.cursor->setPosition(0.3);
                    bench.cursor->moveLeft(true);
                    bench.cursor->moveRight();
                    bench.cursor->setPeak();
                    bench.cursor->setPeakLeft();
                    bench.painted();
                }
                delete bench.objects.takeLast();
            }
        }
    }
};

QTEST_MAIN(tst_graphcursor)
#include "tst_graphcursor.moc"
