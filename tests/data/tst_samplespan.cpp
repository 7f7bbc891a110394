#include "data/DataStreams.h"
#include "data/PlotBands.h"
#include "data/PlotSeries.h"
#include "support/Table.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <functional>
#include <memory>
#include <numeric>

namespace {

struct Sample
{
    double x;
    double y;
    int index;
};

// What a view has to hold, found by looking at every sample.
QVector<Sample> reference(const PlotData &data, double xMin, double xMax)
{
    QVector<Sample> samples;
    for (int i = 0; i < data.size(); ++i) {
        if (data.x(i) >= xMin && data.x(i) <= xMax)
            samples.append({data.x(i), data.y(i), i});
    }
    if (samples.size() > 1 && qobject_cast<const PlotSeries *>(&data) && data.x(0) > data.x(data.size() - 1))
        std::reverse(samples.begin(), samples.end());
    std::stable_sort(samples.begin(), samples.end(),
                     [](const Sample &a, const Sample &b) { return a.x < b.x; });
    return samples;
}

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

QString difference(const PlotData &data, double xMin, double xMax, QRandomGenerator &random)
{
    const QVector<Sample> expected = reference(data, std::min(xMin, xMax), std::max(xMin, xMax));
    const graph::SampleSpan span = data.sampleSpan(xMin, xMax);
    if (span.size() != expected.size())
        return QStringLiteral("%1 samples, not %2").arg(span.size()).arg(expected.size());
    for (int i = 0; i < span.size(); ++i) {
        const Sample &sample = expected.at(i);
        if (span.x(i) != sample.x || !isSame(span.y(i), sample.y) || span.dataIndex(i) != sample.index)
            return QStringLiteral("sample %1").arg(i);
    }
    const int first = random.bounded(span.size() + 1);
    const int end = random.bounded(first, span.size() + 1);
    graph::MinMax extremes;
    for (int i = first; i < end; ++i) {
        if (!std::isnan(expected.at(i).y))
            extremes.add({expected.at(i).y, expected.at(i).y});
    }
    const bool hasGap = std::any_of(expected.begin() + first, expected.begin() + end,
                                    [](const Sample &sample) { return std::isnan(sample.y); });
    if (span.hasNaN(first, end) != hasGap)
        return QStringLiteral("gaps in %1..%2").arg(first).arg(end);
    const graph::MinMax found = span.minMax(first, end);
    if (found.isEmpty() != extremes.isEmpty() ||
        (!found.isEmpty() && (found.min != extremes.min || found.max != extremes.max)))
        return QStringLiteral("extremes of %1..%2").arg(first).arg(end);
    if (first < span.size()) {
        const double bound = expected.at(first).x;
        const auto isBelow = [&](const Sample &sample) { return sample.x < bound; };
        const auto isUpTo = [&](const Sample &sample) { return sample.x <= bound; };
        if (span.countBelow(bound, end) != std::count_if(expected.begin(), expected.end(), isBelow) ||
            span.countUpTo(bound, end) != std::count_if(expected.begin(), expected.end(), isUpTo))
            return QStringLiteral("count around %1").arg(bound);
    }
    return QString();
}

QVector<double> randomValues(int count, QRandomGenerator &random, bool withGaps = true)
{
    QVector<double> values(count);
    for (double &value : values)
        value = withGaps && random.bounded(20) == 0 ? qQNaN() : random.generateDouble() * 100.0;
    return values;
}

} // namespace

class tst_samplespan : public QObject
{
    Q_OBJECT

private slots:
    void seriesAgreesWithReference_data()
    {
        columns<double, double, int>({"xFirst", "xInterval", "count"});
        QTest::newRow("plain") << 0.0 << 1.0 << 1000;
        QTest::newRow("not a binary fraction") << -3.3 << 0.1 << 1000;
        QTest::newRow("backwards") << 7.7 << -0.3 << 1000;
        QTest::newRow("one sample") << 2.0 << 0.5 << 1;
        QTest::newRow("many samples at one rounded x") << 1e15 << 1e-3 << 3000;
        QTest::newRow("the same, backwards") << 1e15 << -1e-3 << 3000;
        QTest::newRow("all at the same x") << 4.0 << 0.0 << 10;
        QTest::newRow("long enough for a pyramid") << -5.0 << 0.001 << 40000;
        QTest::newRow("the same, backwards, without gaps") << 5.0 << -0.001 << 40000;
    }

    void seriesAgreesWithReference()
    {
        QFETCH(double, xFirst);
        QFETCH(double, xInterval);
        QFETCH(int, count);
        QRandomGenerator random(4);
        PlotSeries series;
        series.setXFirstValue(xFirst);
        series.setXInterval(xInterval);
        series.setYData(randomValues(count, random, xInterval != -0.001));
        QCOMPARE(difference(series, -qInf(), qInf(), random), QString());
        for (int trial = 0; trial < (count > 10000 ? 40 : 1000); ++trial) {
            // The ends on a sample, a hair beside it, or anywhere.
            double ends[2];
            for (double &end : ends) {
                const double x = series.x(random.bounded(-5, count + 5));
                const double choices[] = {x, std::nextafter(x, qInf()), std::nextafter(x, -qInf()),
                                          x + xInterval * random.generateDouble()};
                end = choices[random.bounded(4)];
            }
            const QString found = difference(series, ends[0], ends[1], random);
            QVERIFY2(found.isEmpty(), qPrintable(found));
        }
    }

    void pointsAgreeWithReference_data()
    {
        columns<bool, int>({"sorted", "nanEvery"});
        QTest::newRow("ascending, some x repeated") << true << 0;
        QTest::newRow("in any order") << false << 0;
        QTest::newRow("in any order, some x NaN") << false << 7;
        QTest::newRow("ascending but for NaN") << true << 5;
        QTest::newRow("every x NaN") << true << 1;
    }

    void pointsAgreeWithReference()
    {
        QFETCH(bool, sorted);
        QFETCH(int, nanEvery);
        QRandomGenerator random(5);
        const int count = 20000;
        QVector<double> x(count);
        for (double &value : x)
            value = random.bounded(count / 2) * 0.1;
        if (sorted)
            std::sort(x.begin(), x.end());
        for (int i = 0; nanEvery > 0 && i < count; i += nanEvery)
            x[i] = qQNaN();
        PlotPoints points;
        points.setXData(x);
        points.setYData(randomValues(count, random));
        for (int trial = 0; trial < 40; ++trial) {
            const double xMin = random.bounded(-10, count / 2) * 0.1;
            const QString found =
                difference(points, xMin, trial == 0 ? qInf() : xMin + random.bounded(600) * 0.1, random);
            QVERIFY2(found.isEmpty(), qPrintable(found));
        }
    }

    void degenerateInputGivesNothing()
    {
        const double nan = qQNaN(), inf = qInf();
        const struct
        {
            double xFirst, xInterval, xMin, xMax;
        } inputs[] = {{0, nan, -inf, inf}, {0, inf, -inf, inf}, {nan, 1, -inf, inf}, {0, 1, nan, 2},
                      {0, 1, 1, nan},      {0, 1, 1e300, inf},  {0, 1, 1.25, 1.75},  {4, 0, 5, 6}};
        PlotSeries series;
        series.setYData({1.0, 2.0, 3.0, 4.0});
        for (const auto &input : inputs) {
            series.setXFirstValue(input.xFirst);
            series.setXInterval(input.xInterval);
            const graph::SampleSpan span = series.sampleSpan(input.xMin, input.xMax);
            QVERIFY(span.isEmpty() && span.toVector().isEmpty() && span.minMax(-3, 3).isEmpty());
            QCOMPARE(span.countUpTo(5.0), 0);
            QCOMPARE(span.last(), QPointF());
        }
    }

    // Not for data that are painted once, nor for those whose values nobody reads, but for who asks for all of them.
    void pyramidComesWhenItPays()
    {
        PlotSeries series;
        const auto all = [&] { return series.sampleSpan(-qInf(), qInf()); };
        const auto readColumns = [](const graph::SampleSpan &span) {
            for (int i = 0; i < span.size(); i += 100)
                span.minMax(i, i + 100);
            return span.hasPyramid();
        };
        for (int frame = 0; frame < 3; ++frame) {
            series.setYData(QVector<double>(100000, frame));
            QVERIFY(!all().hasPyramid() && !all().hasPyramid() && !readColumns(all()));
        }
        QVERIFY(readColumns(all()));
        const graph::SampleSpan before = all();
        series.setYData(QVector<double>(100000, -1.0));
        QVERIFY(before.hasPyramid() && !all().hasPyramid());
        QCOMPARE(all().minMax(0, 100000).max, -1.0);
        QVERIFY(all().hasPyramid());
        QCOMPARE(before.minMax(0, 100000).max, 2.0);
    }

    // The values from before must not be found again in what was derived from them.
    void extremesFollowEveryChange()
    {
        const int count = 1 << 16;
        QVector<double> ramp(count);
        std::iota(ramp.begin(), ramp.end(), 0.0);
        PlotSeries series, otherSeries;
        PlotBands points, otherPoints;
        otherSeries.setYData(QVector<double>(count, -8.0));
        otherPoints.setXData(ramp);
        const std::pair<PlotData *, std::function<void()>> changes[] = {
            {&series, [&] { series.setYData(QVector<double>(count, -5.0)); }},
            {&series, [&] { series.setYData(series.yData().mid(count / 2)); }},
            {&series, [&] { series.fillData(count, -6.0, -6.0); }},
            {&series, [&] { series.resize(count / 4); }},
            {&series, [&] { isRead(written(otherSeries), series); }},
            {&points, [&] { points.setYData(QVector<double>(count, -5.0)); }},
            {&points, [&] { points.setXData(QVector<double>(ramp.rbegin(), ramp.rend())); }},
            {&points,
             [&] {
                 points.append({-1.0, -7.0}, QString());
             }},
            {&points, [&] { points.resize(count / 2); }},
            {&points, [&] { isRead(written(otherPoints), points); }},
        };
        for (const auto &change : changes) {
            series.setYData(ramp);
            points.setXData(ramp);
            points.setYData(ramp);
            change.first->sampleSpan(-qInf(), qInf()).minMax(0, count);
            QVERIFY(change.first->sampleSpan(-qInf(), qInf()).hasPyramid());
            change.second();
            const graph::SampleSpan span = change.first->sampleSpan(-qInf(), qInf());
            const int half = span.size() / 2;
            graph::MinMax extremes;
            for (int i = 0; i < half; ++i)
                extremes.add({span.y(i), span.y(i)});
            QCOMPARE(span.minMax(0, half).min, extremes.min);
            QCOMPARE(span.minMax(0, half).max, extremes.max);
        }
    }

    void outlivesTheData()
    {
        auto series = std::make_unique<PlotSeries>();
        series->setYData(QVector<double>(1000, 1.0));
        const graph::SampleSpan span = series->sampleSpan(10.0, 12.0);
        series->fillData(10, 2.0, 2.0);
        series.reset();
        QCOMPARE(span.toVector(), QVector<QPointF>({{10, 1}, {11, 1}, {12, 1}}));
    }
};

QTEST_GUILESS_MAIN(tst_samplespan)
#include "tst_samplespan.moc"
