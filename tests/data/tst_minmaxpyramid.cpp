#include "data/MinMaxPyramid.h"
#include "support/Table.h"

#include <QRandomGenerator>
#include <QVector>
#include <QtTest>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace {

graph::MinMax plainMinMax(const QVector<double> &values, int first, int end)
{
    graph::MinMax result;
    for (int i = first; i < end; ++i) {
        if (!std::isnan(values[i]))
            result.add({values[i], values[i]});
    }
    return result;
}

bool operator==(const graph::MinMax &a, const graph::MinMax &b)
{
    return a.isEmpty() ? b.isEmpty() : a.min == b.min && a.max == b.max;
}

// Of zeros, at the begin or at the end of pages of their own; false where an answer is wrong.
template <typename Sample> bool queriesBetweenGuards(int count, bool isAtEnd)
{
    const std::size_t page = std::size_t(sysconf(_SC_PAGESIZE));
    const std::size_t bytes = std::size_t(count) * sizeof(Sample);
    const std::size_t length = (bytes + page - 1) / page * page;
    void *pages = mmap(nullptr, length + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    char *inner = static_cast<char *>(pages) + page;
    if (pages == MAP_FAILED || mprotect(inner, length, PROT_READ) != 0)
        return false;
    const auto *samples = reinterpret_cast<const Sample *>(isAtEnd ? inner + length - bytes : inner);
    const graph::MinMaxPyramid pyramid(samples, count);
    bool isRight = !pyramid.hasNaN(samples, count);
    for (int width = 1; width < count; width += 61) {
        for (int end = count; end >= width; end -= width)
            isRight = isRight && pyramid.minMax(samples, end - width, end) == graph::MinMax{0.0, 0.0};
    }
    munmap(pages, length + 2 * page);
    return isRight;
}

} // namespace

// That few values are read is tested with the plots.
class tst_minmaxpyramid : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithPlainLoop_data()
    {
        columns<int, double>({"count", "nanShare"});
        QTest::newRow("empty") << 0 << 0.0;
        QTest::newRow("shorter than a group of the scan") << 7 << 0.3;
        QTest::newRow("some groups and a rest, no whole block") << 63 << 0.5;
        QTest::newRow("exactly one node above the blocks") << 512 << 0.1;
        QTest::newRow("odd lengths on all levels") << 64 * 8 * 8 * 3 + 64 * 8 * 5 + 64 * 3 + 17 << 0.1;
        QTest::newRow("mostly NaN") << 20000 << 0.999;
        QTest::newRow("only NaN") << 1000 << 1.0;
    }

    void agreesWithPlainLoop()
    {
        QFETCH(int, count);
        QFETCH(double, nanShare);
        QRandomGenerator random(1);
        QVector<double> values;
        QVector<QPointF> points;
        for (int i = 0; i < count; ++i) {
            values.append(random.generateDouble() < nanShare ? qQNaN() : random.generateDouble() - 0.5);
            points.append({-5.0, values.last()});
        }
        const graph::MinMaxPyramid ofValues(values.constData(), count);
        const graph::MinMaxPyramid ofPoints(points.constData(), count);
        const auto isAnyMissing = [&values](int first, int end) {
            return std::any_of(values.cbegin() + first, values.cbegin() + end,
                               [](double value) { return std::isnan(value); });
        };
        QCOMPARE(ofValues.hasNaN(values.constData(), count), isAnyMissing(0, count));
        QCOMPARE(ofPoints.hasNaN(points.constData(), count), isAnyMissing(0, count));
        for (int trial = 0; trial < 2000; ++trial) {
            const int end = trial == 0 ? count : random.bounded(count + 1);
            const int first = trial == 0 ? 0 : random.bounded(end + 1);
            const graph::MinMax expected = plainMinMax(values, first, end);
            QVERIFY(graph::minMax(values.constData() + first, end - first) == expected);
            QVERIFY(graph::minMax(points.constData() + first, end - first) == expected);
            QVERIFY(ofValues.minMax(values.constData(), first, end) == expected);
            QVERIFY(ofPoints.minMax(points.constData(), first, end) == expected);
            QCOMPARE(graph::hasNaN(values.constData() + first, end - first), isAnyMissing(first, end));
            QCOMPARE(graph::hasNaN(points.constData() + first, end - first), isAnyMissing(first, end));
        }
    }

    // What is fetched ahead lies beyond the array at its end. The pages on both sides of it cannot be read, which no
    // sanitizer has to notice.
    void readsOnlyItsSamples()
    {
        const int count = 5 * graph::MinMaxPyramid::blockSize * graph::MinMaxPyramid::fanOut;
        for (const bool isAtEnd : {false, true}) {
            QVERIFY(queriesBetweenGuards<double>(count, isAtEnd));
            QVERIFY(queriesBetweenGuards<double>(count - 13, isAtEnd));
            QVERIFY(queriesBetweenGuards<QPointF>(count, isAtEnd));
        }
    }

    void infinitiesCount()
    {
        const double values[] = {qQNaN(), -qInf(), 1.0, qInf()};
        QVERIFY((graph::minMax(values, 4) == graph::MinMax{-qInf(), qInf()}));
        QVERIFY(graph::minMax(values, -1).isEmpty());
    }
};

QTEST_APPLESS_MAIN(tst_minmaxpyramid)
#include "tst_minmaxpyramid.moc"
