#include "cursors/CursorBench.h"
#include "support/Pictures.h"

#include <QQuickWindow>
#include <QtTest>

#include <numeric>

class tst_graphmarker : public QObject
{
    Q_OBJECT

private slots:
    void snapsAndTellsInOrder()
    {
        CursorBench bench;
        SignalLog ofCursor(bench.cursor);
        GraphMarker *marker = bench.addMarker();
        QCOMPARE(ofCursor.take(), QString("markers"));
        marker->setPosValue(5.0);
        QCOMPARE(marker->posIndex(), -1);
        bench.place(10);
        // Hidden markers compute no deltas.
        marker->setPosIndex(50);
        QCOMPARE(marker->formattedDeltaX(), QString());
        marker->setVisible(true);
        QCOMPARE(marker->formattedDeltaX(), QString("\u0394 40"));
        SignalLog log(marker);
        marker->setPosValue(29.6);
        QCOMPARE(marker->posIndex(), 30);
        QCOMPARE(marker->posOnScreen(), 30);
        QCOMPARE(
            log.take(),
            QString("formattedDeltaX yValue yPosOnScreen formattedYValue formattedDeltaY formattedDeltasY "
                    "posIndex posValue formattedPosValue posOnScreen"));
        marker->setPosOnScreen(30);
        QCOMPARE(log.take(), QString());
        ofCursor.take();
        QQmlListProperty<GraphMarker> markers = bench.cursor->markers();
        markers.clear(&markers);
        QCOMPARE(ofCursor.take(), QString("markers"));
    }

    void computesDistancesOnce()
    {
        CursorBench bench;
        bench.place(10);
        GraphMarker *marker = bench.addMarker();
        marker->setPosIndex(30);
        marker->setVisible(true);
        int computed = 0;
        graph::CursorLook look;
        look.distanceText = [&](double distance) {
            ++computed;
            return QString::number(distance);
        };
        bench.cursor->setLook(look);
        computed = 0;
        bench.place(20);
        QCOMPARE(computed, 1);
        marker->setPosIndex(50);
        QCOMPARE(computed, 2);
        QCOMPARE(marker->formattedDeltaX(), QString("\u0394 30"));
    }

    void hidesWhileItHasNoSample()
    {
        CursorBench bench;
        GraphMarker *marker = bench.addMarker();
        bench.place(10);
        marker->setPosIndex(30);
        marker->setVisible(true);
        marker->setPosIndex(101);
        QVERIFY(marker->posIndex() == 30 && !marker->isVisible());
        SignalLog log(marker);
        marker->setPosIndex(31);
        QVERIFY(log.take().startsWith(
            "posIndex posValue formattedPosValue posOnScreen visible formattedDeltaX "));
        QVERIFY(marker->isVisible());
        // One that the application has hidden meanwhile stays hidden.
        marker->setPosIndex(-1);
        marker->setVisible(false);
        marker->setPosIndex(101);
        marker->setPosIndex(32);
        QVERIFY(!marker->isVisible());
    }

    void waitsForData()
    {
        CursorBench bench;
        const QVector<double> samples = bench.data->yData();
        bench.data->setYData({});
        GraphMarker *late = bench.addMarker();
        GraphMarker *marker = bench.addMarker();
        SignalLog log(marker);
        marker->setPosValue(50.0);
        QCOMPARE(log.take(), QString("posValue"));
        marker->setVisible(true);
        late->setVisible(true);
        bench.place(10);
        // A document may write, and zoom, before there is anything to be on.
        bench.zoom->setWidth(0.9);
        bench.x->setMaxValue(200.0);
        QVERIFY(marker->posIndex() == -1 && marker->posValue() == 50.0 && !marker->isVisible());
        bench.data->setYData(samples.mid(0, 20));
        QTRY_COMPARE(late->posIndex(), 0);
        QVERIFY(marker->posIndex() == -1 && !marker->isVisible());
        bench.data->setYData(samples);
        QTRY_COMPARE(marker->posIndex(), 50);
        QVERIFY(marker->isVisible() && late->isVisible());
        // A sample that is gone for a while.
        bench.data->setYData(samples.mid(0, 20));
        bench.x->setMaxValue(100.0);
        QVERIFY(!marker->isVisible());
        bench.data->setYData(samples);
        QTRY_VERIFY(marker->isVisible());
        QCOMPARE(marker->posOnScreen(), 55);
        // A place that was chosen meanwhile counts.
        marker->setPosValue(150.0);
        marker->setPosIndex(40);
        bench.data->setYData(samples + samples);
        QTRY_COMPARE(bench.data->size(), 202);
        bench.cursor->setPosIndex(20);
        QCOMPARE(marker->posIndex(), 40);
    }

    void keepsWhatNobodyHasRead()
    {
        CursorBench bench;
        GraphMarker *marker = bench.addMarker();
        bench.place(10);
        marker->setPosIndex(30);
        marker->setVisible(true);
        bench.cursor->setPosIndex(20);
        QCOMPARE(marker->formattedDeltaY(), QString("\u0394 5"));
        bench.cursor->setPosIndex(44);
        marker->setVisible(false);
        bench.cursor->setPosIndex(90);
        QCOMPARE(marker->formattedDeltaY(), QString("\u0394 7"));
        QCOMPARE(marker->formattedDeltasY(), QStringList("\u0394 7"));
        QCOMPARE(marker->formattedYValue(), QString("15"));
    }

    void deltasAreAbsolute()
    {
        CursorBench bench;
        PlotSeries constant;
        constant.setYData(QVector<double>(101, 3.0));
        bench.addPlot(nullptr);
        bench.addPlot(&constant);
        // Each difference in the unit of its own axis, and each series' in its own.
        bench.data->setXUnits("%");
        bench.data->setYUnits("dB");
        constant.setYUnits("degC");
        GraphMarker *marker = bench.addMarker();
        bench.place(60);
        marker->setVisible(true);
        marker->setPosIndex(50);
        for (int index : {60, 40}) {
            bench.cursor->setPosIndex(index);
            QCOMPARE(marker->formattedDeltaX(), QString("\u0394 10 %"));
            QCOMPARE(marker->formattedDeltaY(), QString("\u0394 5 dB"));
            QCOMPARE(marker->formattedDeltasY(),
                     (QStringList{"\u0394 5 dB", "\u0394 ---", "\u0394 0 \u00b0C"}));
        }
        QCOMPARE(marker->formattedPosValue(), QString("50 %"));
        QCOMPARE(marker->formattedYValue(), QString("25 dB"));
        QCOMPARE(marker->yPosOnScreen(), 25);
        // New data under a resting cursor counts as well.
        bench.data->setYData(QVector<double>(101, 4.0));
        QTRY_COMPARE(marker->formattedDeltaY(), QString("\u0394 0 dB"));
        QCOMPARE(marker->formattedYValue(), QString("4 dB"));
    }

    void followsZoomAndAxis()
    {
        CursorBench bench;
        const QVector<GraphMarker *> markers{bench.addMarker(), bench.addMarker()};
        bench.place(10);
        for (GraphMarker *marker : markers)
            marker->setPosIndex(50);
        bench.zoom->setWidth(0.25);
        for (GraphMarker *marker : markers)
            QCOMPARE(marker->posOnScreen(), 200);
        bench.zoom->setWidth(1.0);
        bench.x->setMaxValue(200.0);
        for (GraphMarker *marker : markers)
            QVERIFY(marker->posOnScreen() == 25 && marker->posIndex() == 50);
    }

    // The lines beside that of the marker are translucent, its distance is not.
    void writesInItsColor()
    {
        CursorBench bench;
        GraphMarker *marker = bench.addMarker();
        bench.place(5);
        marker->setPosIndex(95);
        marker->setVisible(true);
        marker->setColor("red");
        marker->setDeltaY(30);
        const QImage image =
            picture([&](QPainter *painter) { bench.cursor->paint(painter); }, QSize(101, 51));
        int leastGreen = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 15; x < 85; ++x)
                leastGreen = std::min(leastGreen, qGreen(image.pixel(x, y)));
        }
        QVERIFY2(leastGreen < 80, qPrintable(QString::number(leastGreen)));
    }

    void repaintsAnotherDelta()
    {
        class CountingCursor : public GraphCursor
        {
        public:
            void paint(QPainter *) override { ++paints; }
            int paints = 0;
        };
        auto *cursor = new CountingCursor;
        CursorBench bench(cursor);
        bench.data->setYData(QVector<double>(1001, 1.0));
        bench.data->setXInterval(0.1);
        GraphMarker *marker = bench.addMarker();
        bench.place(500);
        marker->setPosIndex(400);
        marker->setVisible(true);
        QQuickWindow window;
        bench.area.setParentItem(window.contentItem());
        window.resize(101, 51);
        window.show();
        QTRY_VERIFY(cursor->paints > 0);
        cursor->paints = 0;
        // Within the same pixel column.
        cursor->setPosIndex(501);
        QTRY_COMPARE(cursor->paints, 1);
        QCOMPARE(marker->formattedDeltaX(), QString("\u0394 10.1"));
        bench.area.setParentItem(nullptr);
    }

    void paintsLineAndDelta()
    {
        CursorBench bench;
        GraphMarker *marker = bench.addMarker();
        bench.place(90);
        marker->setPosIndex(30);
        marker->setDeltaY(30);
        QCOMPARE(alphas(bench.painted(), 0, 27, 33), QVector<int>(7, 0));
        marker->setVisible(true);
        const QImage image = bench.painted();
        const QVector<int> glow{0, 127, 191, 255, 191, 127, 0};
        QCOMPARE(alphas(image, 0, 27, 33), glow);
        QCOMPARE(alphas(image, 50, 27, 33), glow);
        QCOMPARE(image.pixelColor(30, 0), QColor(Qt::darkYellow));
        const auto inkBetween = [](const QImage &painted) {
            int ink = 0;
            for (int row = 20; row <= 30; ++row) {
                const QVector<int> pixels = alphas(painted, row, 33, 88);
                ink += std::accumulate(pixels.begin(), pixels.end(), 0);
            }
            return ink;
        };
        QVERIFY(inkBetween(image) > 0);
        marker->setShowDelta(false);
        QCOMPARE(inkBetween(bench.painted()), 0);
    }
};

QTEST_MAIN(tst_graphmarker)
#include "tst_graphmarker.moc"
