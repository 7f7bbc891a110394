#include "data/MinMaxPyramid.h"

#include <QRandomGenerator>
#include <QVector>
#include <QtTest>

#include <cmath>

namespace {

// A sample that counts how often samples are read, and whose extremes are found by a plain loop.
struct Counted
{
    double value;
    static int reads;
};
int Counted::reads = 0;

graph::MinMax minMax(const Counted *samples, int count)
{
    Counted::reads += std::max(count, 0);
    graph::MinMax result;
    for (int i = 0; i < count; ++i) {
        if (!std::isnan(samples[i].value))
            result.add({samples[i].value, samples[i].value});
    }
    return result;
}

bool operator==(const graph::MinMax &a, const graph::MinMax &b)
{
    return a.isEmpty() ? b.isEmpty() : a.min == b.min && a.max == b.max;
}

QVector<Counted> randomSamples(int count, double nanShare)
{
    QRandomGenerator random(1);
    QVector<Counted> samples(count);
    for (Counted &sample : samples)
        sample.value = random.generateDouble() < nanShare ? std::nan("") : random.generateDouble() - 0.5;
    return samples;
}

} // namespace

class tst_minmaxpyramid : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithPlainLoop_data();
    void agreesWithPlainLoop();
    void infinitiesCount();
    void readsFewSamples();
};

void tst_minmaxpyramid::agreesWithPlainLoop_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("nanShare");
    QTest::newRow("empty") << 0 << 0.0;
    QTest::newRow("shorter than a group of the scan") << 7 << 0.3;
    QTest::newRow("some groups and a rest, no whole block") << 63 << 0.5;
    QTest::newRow("exactly one node above the blocks") << 512 << 0.1;
    QTest::newRow("odd lengths on all levels") << 64 * 8 * 8 * 3 + 64 * 8 * 5 + 64 * 3 + 17 << 0.1;
    QTest::newRow("mostly NaN") << 20000 << 0.999;
    QTest::newRow("only NaN") << 1000 << 1.0;
}

void tst_minmaxpyramid::agreesWithPlainLoop()
{
    QFETCH(int, count);
    QFETCH(double, nanShare);
    const QVector<Counted> samples = randomSamples(count, nanShare);
    QVector<double> values;
    QVector<QPointF> points;
    for (const Counted &sample : samples) {
        values.append(sample.value);
        points.append({-5.0, sample.value});
    }
    const graph::MinMaxPyramid ofValues(values.constData(), count);
    const graph::MinMaxPyramid ofPoints(points.constData(), count);
    QRandomGenerator random(2);
    for (int trial = 0; trial < 2000; ++trial) {
        const int end = trial == 0 ? count : random.bounded(count + 1);
        const int first = trial == 0 ? 0 : random.bounded(end + 1);
        const graph::MinMax expected = minMax(samples.constData() + first, end - first);
        QVERIFY(graph::minMax(values.constData() + first, end - first) == expected);
        QVERIFY(graph::minMax(points.constData() + first, end - first) == expected);
        QVERIFY(ofValues.minMax(values.constData(), first, end) == expected);
        QVERIFY(ofPoints.minMax(points.constData(), first, end) == expected);
    }
}

void tst_minmaxpyramid::infinitiesCount()
{
    const double values[] = {std::nan(""), -HUGE_VAL, 1.0, HUGE_VAL};
    QVERIFY((graph::minMax(values, 4) == graph::MinMax{-HUGE_VAL, HUGE_VAL}));
    QVERIFY(graph::minMax(values, -1).isEmpty());
}

void tst_minmaxpyramid::readsFewSamples()
{
    const QVector<Counted> samples = randomSamples(1000000, 0.0);
    Counted::reads = 0;
    const graph::MinMaxPyramid pyramid(samples.constData(), samples.size());
    QVERIFY(Counted::reads <= samples.size());
    QRandomGenerator random(3);
    for (int trial = 0; trial < 1000; ++trial) {
        const int first = random.bounded(500000);
        Counted::reads = 0;
        pyramid.minMax(samples.constData(), first, first + random.bounded(500000));
        QVERIFY(Counted::reads <= 2 * 63);
    }
}

QTEST_APPLESS_MAIN(tst_minmaxpyramid)
#include "tst_minmaxpyramid.moc"
