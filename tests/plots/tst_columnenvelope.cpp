#include "plots/ColumnEnvelope.h"

#include "data/ColumnSearch.h"
#include "data/MinMaxPyramid.h"

#include <QtTest>

#include <cmath>
#include <random>

using graph::ColumnEnvelope;
using graph::PixelMapping;
using graph::PixelScale;
using graph::SampleSpan;
using graph::ScaleKind;

namespace {

// The reduction said in the plainest words, one sample after the other.
struct PlainEnvelope
{
    PlainEnvelope(const SampleSpan &samples, const PixelMapping &mapping, int columns, double baseline,
                  bool bridge)
        : max(columns, baseline)
        , min(columns, baseline)
    {
        int previous = -1;
        bool any = false;
        for (int i = 0; i < samples.size(); ++i) {
            const double y = samples.y(i);
            if (!std::isfinite(y))
                continue;
            const int c = mapping.column(samples.x(i));
            first = any ? std::min(first, c) : c;
            any = true;
            if (c >= columns)
                continue;
            last = std::max(last, c);
            if (c > previous) {
                for (int k = previous + 1; bridge && k < c; ++k) {
                    if (k > 0) {
                        max[k] = max[k - 1];
                        min[k] = min[k - 1];
                    }
                }
                max[c] = min[c] = y;
                previous = c;
            } else if (previous != -1) {
                max[previous] = std::max(max[previous], y);
                min[previous] = std::min(min[previous], y);
            }
        }
    }

    std::vector<double> max;
    std::vector<double> min;
    int first = -1;
    int last = -1;
};

SampleSpan series(const QVector<double> &y, double first = 0.0, double interval = 1.0)
{
    return SampleSpan(y, first, interval);
}

// Over the samples in the order of their array.
std::shared_ptr<const graph::MinMaxPyramid> pyramidOf(const SampleSpan &samples)
{
    QVector<QPointF> points = samples.toVector();
    if (samples.isReversed())
        std::reverse(points.begin(), points.end());
    return std::make_shared<const graph::MinMaxPyramid>(points.constData(), points.size());
}

// x 0..columns-1 and y 0..100 on an item of that width and 101 rows.
PixelMapping unitMapping(int columns)
{
    return PixelMapping(0.0, 100.0, columns - 1, 100.0, QSizeF(columns, 101));
}

} // namespace

class tst_columnenvelope : public QObject
{
    Q_OBJECT

private slots:
    void equalsPlainReduction()
    {
        m_random.seed(7);
        for (int round = 0; round < 3000; ++round) {
            const int n = int(uniform(1, chance(0.1) ? 30000 : 400));
            const int width = int(uniform(2, 300));
            QVector<double> y(n);
            for (double &value : y)
                value = chance(0.02)   ? qQNaN()
                        : chance(0.01) ? (chance(0.5) ? qInf() : -qInf())
                                       : uniform(-50, 50);
            SampleSpan samples;
            double xMin = uniform(-1e6, 1e6);
            double range = uniform(1e-3, 1e3);
            if (chance(0.5)) {
                // Steps that make samples fall on column borders exactly are as likely as odd ones.
                const double step =
                    chance(0.5) ? range / (width - 1) / int(uniform(1, 9)) : uniform(0.2, 2) * range / n;
                samples = SampleSpan(y, xMin, chance(0.8) ? step : -step);
            } else {
                QVector<QPointF> points(n);
                double x = xMin;
                for (int i = 0; i < n; ++i) {
                    points[i] = QPointF(x, y[i]);
                    x += chance(0.2)    ? 0.0
                         : chance(0.05) ? range * uniform(0, 0.3)
                                        : range / n * uniform(0, 2);
                }
                samples = SampleSpan(points);
            }
            if (chance(0.3)) {
                xMin += uniform(-0.5, 0.5) * range; // samples left and right of the item
            } else if (chance(0.1)) {
                xMin += range;
                range = -range; // visible edges the wrong way round
            }
            const PixelMapping mapping(xMin, 50, range, 100, QSizeF(width, 100));
            const double baseline = chance(0.5) ? 0.0 : uniform(-60, 60);
            const bool bridge = chance(0.5);

            const ColumnEnvelope fast = graph::columnEnvelope(samples, mapping, width, baseline, bridge);
            const PlainEnvelope plain(samples, mapping, width, baseline, bridge);
            QVERIFY2(fast.max == plain.max && fast.min == plain.min && fast.firstColumn == plain.first &&
                         fast.lastColumn == plain.last,
                     qPrintable(QString::number(round)));
        }
    }

    void logarithmicEqualsPlainReduction()
    {
        m_random.seed(11);
        for (int round = 0; round < 2000; ++round) {
            const int n = int(uniform(1, chance(0.1) ? 30000 : 400));
            const int width = int(uniform(2, 300));
            double begin = std::pow(10.0, uniform(-9, 9));
            double end = begin * std::pow(10.0, uniform(0.01, 9));
            const bool reversed = chance(0.3);
            if (reversed)
                std::swap(begin, end);
            const PixelMapping mapping(PixelScale(ScaleKind::Logarithmic, {begin, end}, end - begin, width),
                                       PixelScale(ScaleKind::Logarithmic, {50.0, 0.05}, 0.05 - 50.0, 100),
                                       QSizeF(width, 100));
            QVector<double> y(n);
            for (double &value : y)
                value = chance(0.02) ? qQNaN() : chance(0.05) ? uniform(-1, 0) : uniform(0.01, 50);
            SampleSpan samples;
            if (chance(0.5)) {
                samples = SampleSpan(y, std::min(begin, end) * uniform(0.5, 2), std::abs(end - begin) / n);
            } else {
                // Many on the borders of columns, as exactly as they can be computed.
                QVector<double> xs(n);
                for (double &x : xs)
                    x = mapping.valueX(chance(0.5) ? int(uniform(-5, width + 5)) : uniform(-5, width + 5));
                std::sort(xs.begin(), xs.end());
                QVector<QPointF> points(n);
                for (int i = 0; i < n; ++i)
                    points[i] = QPointF(xs[i], y[i]);
                samples = SampleSpan(points);
            }
            if (reversed)
                samples = samples.reversed();
            if (chance(0.5))
                samples.setPyramid(pyramidOf(samples));
            const ColumnEnvelope fast = graph::columnEnvelope(samples, mapping, width, 0.0, false);
            // What has no place on the axis is missing.
            QVector<QPointF> placed = samples.toVector();
            for (QPointF &point : placed)
                point.setY(point.y() > 0.0 ? point.y() : qQNaN());
            const PlainEnvelope plain(SampleSpan(placed), mapping, width, 0.0, false);
            QVERIFY2(fast.max == plain.max && fast.min == plain.min, qPrintable(QString::number(round)));
        }
    }

    // The numbers around those at which the column changes, and at the ends of a scale that is nearly even.
    void columnsOfNeighbouringNumbers()
    {
        const std::pair<double, double> ranges[] = {{1, 1e4},         {1e4, 1},      {20, 2e4}, {900, 1000},
                                                    {1e-300, 1e-296}, {1, 1 + 1e-9}, {1, 1e300}};
        for (const auto &[begin, end] : ranges) {
            const PixelMapping mapping(PixelScale(ScaleKind::Logarithmic, {begin, end}, end - begin, 2001),
                                       PixelScale(100.0, -100.0, 101), QSizeF(2001, 101));
            QVector<QPointF> points;
            for (int column = -2; column <= 2002; ++column) {
                const double change = mapping.columnBorder(column);
                const double step = std::nextafter(change, 2.0 * change) - change;
                for (int i = -30; i <= 30; ++i)
                    points.append({change + i * step, 0.0});
            }
            std::sort(points.begin(), points.end(),
                      [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); });
            const SampleSpan samples = begin < end ? SampleSpan(points) : SampleSpan(points).reversed();
            graph::ColumnSearch one(samples, mapping);
            graph::ColumnSearch all(samples, mapping);
            for (int i = 0, next = 0; i < samples.size(); ++i) {
                const int column = mapping.column(samples.x(i));
                QCOMPARE(one.columnOf(i), column);
                if (i == next)
                    next = all.endOf(column, i, i % 200);
                QVERIFY(i + 1 == next || mapping.column(samples.x(i + 1)) == column);
                QVERIFY(next == samples.size() || mapping.column(samples.x(next)) > column);
            }
        }
    }

    void bridgesStraight()
    {
        // A decade is 100 columns; samples at 1, 10 and 1000, then missing ones.
        const PixelMapping mapping(PixelScale(ScaleKind::Logarithmic, {1.0, 1e6}, 999999.0, 601),
                                   PixelScale(100.0, -100.0, 101), QSizeF(601, 101));
        const SampleSpan samples(QVector<QPointF>{{1, 10}, {10, 20}, {1e3, 60}, {1e4, qQNaN()}, {1e5, 5}});
        ColumnEnvelope envelope = graph::columnEnvelope(samples, mapping, 601, 0.0, false);
        graph::bridgeStraight(envelope, samples, mapping);
        QVERIFY(std::abs(envelope.min[50] - 15.0) < 1e-9 && std::abs(envelope.max[50] - 15.1) < 1e-9);
        QVERIFY(std::abs(envelope.min[200] - 40.0) < 1e-9);
        QCOMPARE(envelope.state[350], ColumnEnvelope::Empty);
        QCOMPARE(envelope.state[450], ColumnEnvelope::Empty);
    }

    void missingValuesLeaveHoles()
    {
        // Two samples a column, all above the baseline; the second column has one value, the third and fourth
        // none.
        const QVector<double> y{50, 60, qQNaN(), 52, qQNaN(), qQNaN(), qQNaN(), qQNaN(), 40, 41, 90, 91};
        ColumnEnvelope envelope = graph::columnEnvelope(series(y, 0, 0.5), unitMapping(6), 6, 0.0, false);
        graph::joinColumns(envelope, 0.0, false);
        // Neither edge of the gap falls to the baseline, and the columns beside it still reach their other
        // neighbours.
        QCOMPARE(envelope.min, (std::vector<double>{50, 52, 0, 0, 40, 41}));
        QCOMPARE(graph::envelopeStrokes(envelope, unitMapping(6), 2, 0.0, false).size(), 4);
    }

    void joinsOneSidedColumns()
    {
        const auto joined = [](const QVector<double> &y, double baseline, bool wholeWidth) {
            ColumnEnvelope envelope =
                graph::columnEnvelope(series(y), unitMapping(y.size()), y.size(), baseline, false);
            graph::joinColumns(envelope, baseline, wholeWidth);
            return envelope;
        };
        // Above the baseline a column reaches down to the lower of its neighbours' tops; the ends have one
        // neighbour each.
        QCOMPARE(joined({10, 40, 20, 30}, 0, false).min, (std::vector<double>{10, 10, 20, 20}));
        // Below it, up to the higher of their bottoms.
        QCOMPARE(joined({-10, -40, -20, -30}, 0, false).max, (std::vector<double>{-10, -10, -20, -20}));
        // A column that touches the baseline stays.
        QCOMPARE(joined({10, 0, 20}, 0, false).max, (std::vector<double>{10, 0, 20}));
        QCOMPARE(joined({10, 20, 30}, 50, true).max, (std::vector<double>{20, 30, 30}));
    }

    void strokes()
    {
        const PixelMapping mapping = unitMapping(4);
        const ColumnEnvelope envelope =
            graph::columnEnvelope(series({10, 30, 0, 50, 50.4}, 0, 0.75), mapping, 4, 0.0, false);
        // Column 0 spans 10..30, column 1 is at the baseline like one without a sample, 2 and 3 are flat.
        const QVector<QLine> lines = graph::envelopeStrokes(envelope, mapping, 2, 0.0, false);
        QCOMPARE(lines, (QVector<QLine>{{0, 90, 0, 70}, {2, 51, 2, 49}, {3, 51, 3, 49}}));
        QCOMPARE(graph::envelopeStrokes(envelope, mapping, 2, 0.0, true).size(), 4);
        QCOMPARE(graph::fillStrokes(envelope, mapping, 100),
                 (QVector<QLine>{{0, 100, 0, 70}, {2, 100, 2, 50}, {3, 100, 3, 49}}));
        const PixelMapping logarithmic(PixelScale(ScaleKind::Linear, {0.0, 1.0}, 1.0, 2),
                                       PixelScale(ScaleKind::Logarithmic, {100.0, 1.0}, -99.0, 101),
                                       QSizeF(2, 101));
        const ColumnEnvelope flat = graph::columnEnvelope(series({10, 10}, 0, 1), logarithmic, 2, 1.0, false);
        QCOMPARE(graph::envelopeStrokes(flat, logarithmic, 2, 1.0, false),
                 (QVector<QLine>{{0, 51, 0, 49}, {1, 51, 1, 49}}));
        const ColumnEnvelope tall =
            graph::columnEnvelope(series({1, 10}, 0, 0.5), logarithmic, 1, 1.0, false);
        QCOMPARE(graph::envelopeStrokes(tall, logarithmic, 2, 1.0, false), (QVector<QLine>{{0, 100, 0, 50}}));
    }

    void bars()
    {
        const PixelMapping mapping(0, 50, 2, 100, QSizeF(3, 101));
        const ColumnEnvelope envelope =
            graph::columnEnvelope(series({10, 30, -10, 20, -30, -5}, 0, 0.5), mapping, 3, 0.0, false);
        const graph::BarStrokes strokes = graph::barStrokes(envelope, mapping, mapping.row(0));
        // Above, across and below the baseline at row 50.
        QCOMPARE(strokes.bars, (QVector<QLine>{{0, 50, 0, 40}, {1, 60, 1, 30}, {2, 50, 2, 80}}));
        QCOMPARE(strokes.spreads, (QVector<QLine>{{0, 40, 0, 20}, {2, 80, 2, 55}}));
    }

private:
    double uniform(double low, double high) { return std::uniform_real_distribution<>(low, high)(m_random); }
    bool chance(double p) { return uniform(0, 1) < p; }

    std::mt19937 m_random;
};

QTEST_APPLESS_MAIN(tst_columnenvelope)
#include "tst_columnenvelope.moc"
