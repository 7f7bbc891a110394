#include "kit/data/Computing.h"
#include "kit/data/PeakSearch.h"
#include "kit/data/PowerLevels.h"
#include "kit/data/SampleSums.h"
#include "kit/data/StreamSeries.h"
#include "kit/data/TraceAverage.h"
#include "support/Table.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>

namespace {

using Values = QVector<double>;

bool isClose(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-9 * std::max(1.0, std::abs(b));
}

Values randomValues(QRandomGenerator &random, int count, double nanShare, int steps = 1000000)
{
    Values values;
    for (int i = 0; i < count; ++i)
        values.append(random.generateDouble() < nanShare ? qQNaN()
                                                         : double(random.bounded(steps)) - steps / 2);
    return values;
}

// The mean of those that are finite.
template <typename At> double plainMean(int first, int end, At at)
{
    double sum = 0.0;
    int count = 0;
    for (int i = first; i < end; ++i) {
        if (std::isfinite(at(i))) {
            sum += at(i);
            ++count;
        }
    }
    return count > 0 ? sum / count : qQNaN();
}

// Each sample looked at by itself, to both sides.
QVector<graph::Peak> plainPeaks(const Values &y)
{
    QVector<graph::Peak> peaks;
    const auto missing = [&](int i) { return i < 0 || i >= y.size() || !std::isfinite(y.at(i)); };
    for (int i = 0; i < y.size(); ++i) {
        int end = i;
        while (!missing(i) && !missing(end) && y.at(end) == y.at(i))
            ++end;
        if (missing(i) || missing(i - 1) || missing(end) || y.at(i - 1) >= y.at(i) || y.at(end) >= y.at(i))
            continue;
        const auto lowest = [&](int way) {
            double low = y.at(i);
            for (int k = i; !missing(k) && y.at(k) <= y.at(i); k += way)
                low = std::min(low, y.at(k));
            return low;
        };
        peaks.append({(i + end - 1) / 2, y.at(i), y.at(i) - std::max(lowest(-1), lowest(1))});
    }
    return peaks;
}

} // namespace

class tst_computing : public QObject
{
    Q_OBJECT

private slots:
    void smoothAgreesWithPlainMeans_data()
    {
        columns<int, int, double>({"count", "reach", "nanShare"});
        for (int count : {0, 1, 2, 5, 16, 400}) {
            for (int reach : {0, 1, 2, 7, 99, 2000000000}) {
                for (double share : {0.0, 0.3, 1.0})
                    QTest::addRow("%d by %d, %g missing", count, reach, share) << count << reach << share;
            }
        }
    }

    void smoothAgreesWithPlainMeans()
    {
        QFETCH(int, count);
        QFETCH(int, reach);
        QFETCH(double, nanShare);
        QRandomGenerator random(3);
        const Values values = randomValues(random, count, nanShare);
        Values result(count);
        graph::smooth(result.data(), values.constData(), count, reach);
        for (int i = 0; i < count; ++i) {
            const int first = int(std::max<qint64>(qint64(i) - reach, 0));
            const int end = int(std::min<qint64>(qint64(i) + reach + 1, count));
            QVERIFY(isClose(result.at(i), plainMean(first, end, [&](int k) { return values.at(k); })));
        }
    }

    void largeValueLeavesNothingBehind()
    {
        Values values(1000, 1e-3);
        values[100] = 1e18;
        Values result(1000);
        graph::smooth(result.data(), values.constData(), 1000, 4);
        QVERIFY(std::abs(result.at(200) - 1e-3) < 1e-18);
    }

    void holdsPassOverNaN()
    {
        Values high{1, qQNaN(), 3, qQNaN(), -qInf()};
        Values low = high;
        const Values values{2, 5, qQNaN(), qQNaN(), 4};
        graph::holdGreatest(high.data(), values.constData(), 5);
        graph::holdLeast(low.data(), values.constData(), 5);
        const Values highest{2, 5, 3, qQNaN(), 4};
        const Values lowest{1, 5, 3, qQNaN(), -qInf()};
        for (int i = 0; i < 5; ++i)
            QVERIFY(isClose(high.at(i), highest.at(i)) && isClose(low.at(i), lowest.at(i)));
    }

    void averageAgreesWithPlainMeans_data()
    {
        columns<int, double, int>({"depth", "nanShare", "of"});
        for (int depth : {1, 2, 7, 200}) {
            for (double share : {0.0, 0.2, 0.95}) {
                for (int of : {graph::TraceAverage::Values, graph::TraceAverage::Powers})
                    QTest::addRow("%d, %g missing, %d", depth, share, of) << depth << share << of;
            }
        }
    }

    void averageAgreesWithPlainMeans()
    {
        QFETCH(int, depth);
        QFETCH(double, nanShare);
        QFETCH(int, of);
        constexpr int count = 1100;
        QRandomGenerator random(5);
        graph::TraceAverage average;
        graph::TraceAverage exponential;
        average.reset(depth, graph::TraceAverage::Of(of));
        exponential.reset(depth, graph::TraceAverage::Of(of));
        const bool isOfPowers = of == graph::TraceAverage::Powers;
        const auto level = [&](double x) { return isOfPowers ? 10.0 * std::log10(x) : x; };
        QVector<Values> traces; // the values themselves, or powers
        Values mean(count), faded(count), expected(count, qQNaN());
        for (int round = 0; round < 20; ++round) {
            // The first are complete, so that gaps come while means are kept, at the end of a trace to begin with.
            Values values =
                randomValues(random, count, round < 3 ? 0.0 : nanShare, isOfPowers ? 100 : 1000000);
            for (int i = 0; round == 3 && i < 900; ++i)
                values[i] = i;
            average.addLinear(values.constData(), mean.data(), count);
            exponential.addExponential(values.constData(), faded.data(), count);
            for (double &value : values)
                value = isOfPowers ? std::pow(10.0, value / 10.0) : value;
            traces.append(values);
            for (int i = 0; i < count; ++i) {
                const double value = values.at(i);
                if (std::isnan(expected.at(i)))
                    expected[i] = value;
                else if (!std::isnan(value))
                    expected[i] += (value - expected.at(i)) / std::min(round + 1, depth);
                const double plain = plainMean(std::max(round + 1 - depth, 0), round + 1,
                                               [&](int k) { return traces.at(k).at(i); });
                QVERIFY(isClose(mean.at(i), level(plain)));
                QVERIFY(isClose(faded.at(i), level(expected.at(i))));
            }
        }
    }

    // Blocks of ordinary values, with odd ones among them, and what is left of the last block.
    void powersAndLevelsAreExact()
    {
        QRandomGenerator random(12);
        for (int count : {1, 63, 64, 65, 7000}) {
            Values levels(count);
            for (double &level : levels)
                level = random.bounded(6000.0) - 3000.0;
            if (count == 7000)
                levels[300] = 1e9;
            Values powers(count);
            Values back(count);
            graph::powersOfLevels(powers.data(), levels.constData(), count);
            graph::levelsOfPowers(back.data(), powers.constData(), count);
            for (int i = 0; i < count; ++i) {
                const double expected = std::exp(levels.at(i) * 0.23025850929940457);
                QVERIFY(powers.at(i) == expected || std::abs(powers.at(i) / expected - 1.0) < 3e-16);
                QVERIFY(std::isinf(back.at(i)) ||
                        std::abs(back.at(i) - levels.at(i)) <= 1e-15 * std::max(1.0, std::abs(levels.at(i))));
            }
        }
    }

    void levels()
    {
        Values levels{0.0, 10.0, -qInf(), qQNaN()};
        graph::powersOfLevels(levels.data(), levels.constData(), 4);
        QVERIFY(isClose(levels.at(0), 1.0) && isClose(levels.at(1), 10.0) && levels.at(2) == 0.0);
        graph::levelsOfPowers(levels.data(), levels.constData(), 4);
        QVERIFY(isClose(levels.at(1), 10.0) && levels.at(2) == -qInf() && std::isnan(levels.at(3)));
    }

    // Of few different values, so that there are plateaus and equal heights.
    void peaksAgreeWithPlainSearch()
    {
        QRandomGenerator random(11);
        for (int trial = 0; trial < 2000; ++trial) {
            const Values values =
                randomValues(random, random.bounded(40), trial % 3 == 0 ? 0.1 : 0.0, 2 + trial % 7);
            const QVector<graph::Peak> found = graph::findPeaks(graph::SampleSpan(values, 0.0, 1.0));
            const QVector<graph::Peak> expected = plainPeaks(values);
            QCOMPARE(found.size(), expected.size());
            for (int i = 0; i < found.size(); ++i) {
                QCOMPARE(found.at(i).index, expected.at(i).index);
                QCOMPARE(found.at(i).value, expected.at(i).value);
                QCOMPARE(found.at(i).prominence, expected.at(i).prominence);
            }
        }
    }

    void widthIsTakenAtHalfTheProminence()
    {
        // A triangle of height 4 on a slope: its prominence is 3, and half of it is met at 2.5 and at 7.25.
        const QVector<QPointF> points{{0, 0}, {1, 1}, {4, 4}, {9, 1.5}, {10, 1}, {11, 9}};
        const QVector<graph::Peak> peaks = graph::findPeaks(graph::SampleSpan(points));
        QCOMPARE(peaks.size(), 1);
        QCOMPARE(peaks.first().prominence, 3.0);
        QCOMPARE(graph::peakWidth(graph::SampleSpan(points), peaks.first()), 7.0 - 2.5);
        // So high that its prominence is no number.
        const Values high{-1.5e308, 1.5e308, -1.5e308};
        const graph::SampleSpan samples(high, 0.0, 1.0);
        const double width = graph::peakWidth(samples, graph::findPeaks(samples).first());
        QVERIFY(width > 0.5 && width < 1.0);
    }

    // While samples scroll through the blocks.
    void sumsAgreeWithPlainLoop()
    {
        QRandomGenerator random(2);
        graph::StreamSeries series;
        series.setCapacity(10000);
        graph::SampleSums sums;
        for (int round = 0; round < 200; ++round) {
            series.append(randomValues(random, random.bounded(round % 10 == 0 ? 12000 : 900), 0.01, 100));
            if (round % 67 == 66)
                series.clear();
            if (round % 50 == 49)
                series.setInterval(-series.interval());
            const graph::SampleSpan span = series.sampleSpan(-qInf(), qInf());
            sums.follow(span, series.history());
            const int first = random.bounded(span.size() + 1);
            const int end = random.bounded(first, span.size() + 1);
            const graph::Sums found = sums.of(span, first, end);
            double sum = 0.0, squares = 0.0;
            qint64 count = 0;
            graph::MinMax extremes;
            for (int i = first; i < end; ++i) {
                const double y = span.y(i);
                if (std::isnan(y))
                    continue;
                sum += y;
                squares += y * y;
                ++count;
                extremes.add({y, y});
            }
            // Whole numbers: no rounding.
            QVERIFY(found.sum == sum && found.squares == squares && found.count == count &&
                    found.extremes.min == extremes.min && found.extremes.max == extremes.max);
        }
    }
};

QTEST_GUILESS_MAIN(tst_computing)
#include "tst_computing.moc"
