#include "painters/Integral.h"
#include "raster/PolygonGeometry.h"
#include "support/Table.h"

#include <QtTest>

#include <random>

using graph::Curve;
using graph::SampleSpan;

namespace {

Curve seriesCurve(const QVector<double> &y, double first = 0.0, double interval = 1.0)
{
    return {SampleSpan(y, first, interval), false};
}

Curve pointsCurve(const QVector<QPointF> &points, bool isSegments = false)
{
    return {SampleSpan(points), isSegments};
}

// Cuts the axis at every sample and both limits and looks up the line that spans each piece.
double plainIntegral(const QVector<QPointF> &points, double begin, double end, double baseline)
{
    QVector<double> cuts{begin, end};
    for (const QPointF &p : points) {
        if (p.x() > begin && p.x() < end)
            cuts.append(p.x());
    }
    std::sort(cuts.begin(), cuts.end());
    double sum = 0.0;
    for (int cut = 1; cut < cuts.size(); ++cut) {
        const double middle = 0.5 * (cuts[cut - 1] + cuts[cut]);
        for (int i = 1; i < points.size(); ++i) {
            const QPointF a = points[i - 1];
            const QPointF b = points[i];
            if (a.x() < middle && middle < b.x()) {
                const double y = a.y() + (b.y() - a.y()) * (middle - a.x()) / (b.x() - a.x()) - baseline;
                if (!std::isnan(y))
                    sum += y * (cuts[cut] - cuts[cut - 1]);
            }
        }
    }
    return sum;
}

} // namespace

class tst_integral : public QObject
{
    Q_OBJECT

private slots:
    void randomCurves()
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> y(-5.0, 5.0);
        std::uniform_real_distribution<double> limit(-3.0, 23.0);
        for (int round = 0; round < 300; ++round) {
            QVector<QPointF> points;
            double x = 0.0;
            for (int i = 0; i < 20; ++i, x += random() % 3)
                points.append(QPointF(x, random() % 8 ? y(random) : qQNaN()));
            QVector<double> values;
            for (int i = 0; i < 20; ++i) {
                values.append(points[i].y());
                if (round % 2)
                    points[i].setX(2.0 + 0.75 * i);
            }
            const double begin = round % 7 ? limit(random) : points[random() % 20].x();
            const double end = round % 5 ? limit(random) : points[random() % 20].x();
            const double expected = begin < end ? plainIntegral(points, begin, end, 1.0)
                                                : -plainIntegral(points, end, begin, 1.0);
            const Curve curve = round % 2 ? seriesCurve(values, 2.0, 0.75) : pointsCurve(points);
            QVERIFY(std::abs(graph::integral(curve, begin, end, 1.0) - expected) < 1e-9);
        }
    }

    void knownAreas_data()
    {
        columns<QVector<QPointF>, bool, double, double, double>(
            {"points", "isSegments", "begin", "end", "area"});
        const double inf = std::numeric_limits<double>::infinity();
        const QVector<QPointF> ramp{{0, 0}, {10, 10}};
        QTest::newRow("limits at infinity") << ramp << false << -inf << inf << 50.0;
        QTest::newRow("no limit") << ramp << false << qQNaN() << 4.0 << 0.0;
        QTest::newRow("one sample") << QVector<QPointF>{{1, 1}} << false << 0.0 << 4.0 << 0.0;
        QTest::newRow("none") << QVector<QPointF>() << false << 0.0 << 4.0 << 0.0;
        QTest::newRow("infinite sample")
            << QVector<QPointF>{{0, 1}, {1, inf}, {2, 1}, {4, 1}} << false << 0.0 << 4.0 << 2.0;
        QTest::newRow("segments, one backwards")
            << QVector<QPointF>{{0, 1}, {2, 1}, {9, 3}, {7, 3}, {5, 5}} << true << 1.0 << 8.0 << 4.0;
    }

    void knownAreas()
    {
        QFETCH(QVector<QPointF>, points);
        QFETCH(bool, isSegments);
        QFETCH(double, begin);
        QFETCH(double, end);
        QTEST(graph::integral(pointsCurve(points, isSegments), begin, end, 0.0), "area");
    }

    void totalPower()
    {
        const Curve flat = seriesCurve(QVector<double>(101, -30.0));
        QVERIFY(std::abs(graph::logarithmicIntegral(flat, 10.0, 20.0) - -20.0) < 1e-12);
        QVERIFY(std::abs(graph::logarithmicIntegral(flat, 20.0, 10.0) - -20.0) < 1e-12);
        QCOMPARE(graph::logarithmicIntegral(flat, 200.0, 300.0), 0.0);
        // 1 mW and 10 mW over one unit: their mean.
        QVERIFY(std::abs(graph::logarithmicIntegral(seriesCurve({0.0, 10.0}), 0.0, 1.0) -
                         10.0 * std::log10(5.5)) < 1e-12);
    }

    void interpolation()
    {
        const Curve curve = seriesCurve({1.0, 3.0, qQNaN(), 5.0, 7.0});
        QCOMPARE(graph::interpolatedY(curve, 0.0), 1.0);
        QCOMPARE(graph::interpolatedY(curve, 0.25), 1.5);
        QCOMPARE(graph::interpolatedY(curve, 1.0), 3.0);
        QCOMPARE(graph::interpolatedY(curve, 4.0), 7.0);
        for (double outside : {-0.1, 1.5, 2.0, 4.1, qQNaN()})
            QVERIFY(std::isnan(graph::interpolatedY(curve, outside)));
    }

    void randomLinesAreClipped()
    {
        // Held against many points along the line.
        std::mt19937 random(2);
        std::uniform_real_distribution<double> coordinate(-3.0, 3.0);
        const QRectF rect(-1.0, -1.0, 2.0, 2.0);
        for (int round = 0; round < 300; ++round) {
            const QPointF begin(coordinate(random), coordinate(random));
            const QPointF end(coordinate(random), coordinate(random));
            QPointF from = begin;
            QPointF to = end;
            const bool clipped = graph::clipLine(from, to, rect);
            constexpr int steps = 500;
            int inside = 0;
            for (int i = 0; i <= steps; ++i) {
                const QPointF p = begin + (end - begin) * (double(i) / steps);
                inside += std::abs(p.x()) <= 1.0 && std::abs(p.y()) <= 1.0;
            }
            const double length = std::hypot(end.x() - begin.x(), end.y() - begin.y());
            const double kept = clipped ? std::hypot(to.x() - from.x(), to.y() - from.y()) : 0.0;
            QVERIFY(std::abs(kept / length - double(inside) / steps) <= 2.0 / steps);
        }
        QPointF onEdge(-1.0, 0.5);
        QPointF onCorner(-1.0, 1.0);
        QVERIFY(graph::clipLine(onEdge, onCorner, rect));
        QCOMPARE(onCorner, QPointF(-1.0, 1.0));
        for (double bad : {qQNaN(), 1e308}) {
            QPointF from(-bad, 0.0);
            QPointF to(bad, 0.0);
            QVERIFY(!graph::clipLine(from, to, rect));
        }
    }
};

QTEST_APPLESS_MAIN(tst_integral)
#include "tst_integral.moc"
