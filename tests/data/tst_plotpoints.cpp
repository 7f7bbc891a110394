#include "data/DataStreams.h"
#include "data/PlotBands.h"
#include "data/PlotSeries.h"

#include <QSignalSpy>
#include <QtTest>

#include <cmath>

namespace {

void fill(PlotPoints &points, const QVector<QPointF> &values)
{
    QVector<double> x, y;
    for (const QPointF &value : values) {
        x.append(value.x());
        y.append(value.y());
    }
    points.setXData(x);
    points.setYData(y);
}

} // namespace

class tst_plotpoints : public QObject
{
    Q_OBJECT

private slots:
    void contains()
    {
        PlotPoints points;
        QVERIFY(!points.containsPoint(0.0));
        fill(points, {{0, 0}, {1, 0}, {2, 0}, {3, 0}});
        QVERIFY(points.containsPoint(0.0) && points.containsPoint(1.5) && points.containsPoint(3.0));
        QVERIFY(!points.containsPoint(3.1) && !points.containsPoint(qQNaN()));

        points.setUsePointsAsSegments(true);
        QVERIFY(points.containsPoint(0.5) && points.containsPoint(3.0) && !points.containsPoint(1.5));
        points.resize(3);
        QVERIFY(points.containsPoint(0.5));
        QTest::ignoreMessage(QtWarningMsg,
                             "Trying to use plot points as segments but number of points is odd");
        QVERIFY(!points.containsPoint(2.0));
    }

    void segmentsInRange()
    {
        PlotPoints points;
        points.setUsePointsAsSegments(true);
        points.setXData({8, 9, 0, 1, 5, 4, 6}); // the last has no partner
        const auto found = [&](double xMin, double xMax) {
            QTest::ignoreMessage(QtWarningMsg, "Used usePointsAsSegments with even number of points.");
            QVector<double> x;
            for (const QPointF &sample : points.samples(QRectF(xMin, 0.0, xMax - xMin, 1.0)))
                x.append(sample.x());
            return x;
        };
        QCOMPARE(found(-100, 100), QVector<double>({8, 9, 0, 1, 5, 4}));
        QCOMPARE(found(4.5, 8), QVector<double>({8, 9, 5, 4}));
        QCOMPARE(found(4.75, 4.25), QVector<double>({5, 4}));
        QCOMPARE(found(2, 3), QVector<double>());
        QCOMPARE(found(4.5, qQNaN()), QVector<double>());
        for (double xMin : {0.0, 4.5}) {
            const graph::SampleSpan span = points.sampleSpan(xMin, 100.0);
            for (int i = 0; i < span.size(); ++i)
                QCOMPARE(points.x(span.dataIndex(i)), span.x(i));
        }
    }

    void coordinatesOfUnequalLength()
    {
        PlotPoints points;
        QSignalSpy sizes(&points, SIGNAL(sizeChanged(int)));
        points.setXData({1, 2, 3});
        points.setYData({10, 20});
        QCOMPARE(points.xData(), QVector<double>({1, 2}));
        points.setXData({1, 2, 3, 4});
        QCOMPARE(points.yData(), QVector<double>({10, 20, 0, 0}));
        points.setYData({10, 20, 0, 0});
        points.resize(-1);
        points.clear();
        points.clear();
        QCOMPARE(sizes, QList<QVariantList>({{3}, {2}, {4}, {0}}));
        QCOMPARE(points.last(), QPointF());
    }

    void indexOfNearest()
    {
        PlotPoints points;
        QCOMPARE(points.indexOf(0.0), -1);
        points.setXData({qQNaN(), qQNaN()});
        QCOMPARE(points.indexOf(0.0), -1);
        points.setXData({0, 1, 1, 1, 4});
        QCOMPARE(points.indexOf(qQNaN()), -1);
        QCOMPARE(points.indexOf(-qInf()), 0);
        QCOMPARE(points.indexOf(qInf()), 4);
        QCOMPARE(points.indexOf(0.9), 1); // the first of equal ones from either side
        QCOMPARE(points.indexOf(1.1), 1);
        QCOMPARE(points.indexOf(2.5), 1);
        QCOMPARE(points.indexOf(2.6), 4);
        points.setXData({5, qQNaN(), 1, 9});
        QCOMPARE(points.indexOf(2.0), 2);
    }

    void namesFollowTheirPoints()
    {
        const QRectF everything(-100, 0, 200, 0);
        PlotBands bands;
        bands.setXData({7});
        bands.append({3, 0}, "three");
        bands.append({qQNaN(), 0}, "nowhere");
        bands.append({5, 0}, "five");
        QCOMPARE(bands.names(everything), QStringList({"three", "five", ""}));
        bands.sort();
        QCOMPARE(bands.names(QRectF(4, 0, 1, 0)), QStringList({"five"}));
        QVERIFY(std::isnan(bands.last().x()));

        PlotBands copy;
        QVERIFY(isRead(written(bands), copy));
        QVERIFY(copy.names(everything) == bands.names(everything));
        bands.append({1, 0}, "last");
        QVERIFY(!isRead(written(bands).chopped(1), copy));
        QCOMPARE(copy.size(), 4);

        bands.resize(1);
        bands.setXData({3, 4});
        QCOMPARE(bands.names(everything), QStringList({"three", ""}));
    }

    void boundsSkipWhatIsNotFinite()
    {
        PlotPoints points;
        QVERIFY(points.boundingRect().isNull());
        fill(points, {{9, qQNaN()}, {2, 5}, {-1, 7}, {qQNaN(), 99}, {3, qInf()}});
        QCOMPARE(points.boundingRect(), QRectF(-1, 5, 3, 2));
        PlotSeries series;
        series.setXFirstValue(-1);
        series.setXInterval(0.5);
        series.setYData({qInf(), 5, 7, 6, qQNaN()});
        QCOMPARE(series.boundingRect(), QRectF(-0.5, 5, 1, 2));
    }
};

QTEST_GUILESS_MAIN(tst_plotpoints)
#include "tst_plotpoints.moc"
