#include "cursors/PeakAnalysis.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <new>
#include <random>
#include <tuple>

namespace {

using Trace = QVector<double>;

// The index of the peak that the analysis finds from one end of the trace, -1 for none.
int peakOf(const Trace &y, bool forward, double tolerance)
{
    Trace x(y.size());
    for (int i = 0; i < x.size(); ++i)
        x[i] = i;
    PeakAnalysis analysis;
    long index = 0;
    double peakX = 1.0;
    double peakY = 1.0;
    const bool found =
        analysis.getNextPeak(forward, tolerance, y.size(), x.data(), y.data(), index, peakX, peakY);
    if (found != (index >= 0) || peakX != (found ? x[index] : 0.0) || peakY != (found ? y[index] : 0.0))
        return -2;
    return static_cast<int>(index);
}

void flatten(Trace &y, int first, int last, double xFirst, double xStep)
{
    const double n = last - first + 1;
    double sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (int i = first; i <= last; ++i) {
        const double x = xFirst + xStep * i;
        sx += x;
        sy += y[i];
        sxx += x * x;
        sxy += x * y[i];
    }
    const double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
    const double intercept = (sy * sxx - sx * sxy) / (n * sxx - sx * sx);
    for (int i = first; i <= last; ++i)
        y[i] = slope * (xFirst + xStep * i) + intercept;
}

// The same search, written down step by step for finite traces.
int referencePeak(const Trace &input, bool forward, double tolerance)
{
    Trace y = input;
    const int n = y.size();
    if (!forward)
        std::reverse(y.begin(), y.end());
    const double xFirst = forward ? 0 : n - 1;
    const double xStep = forward ? 1 : -1;
    bool risen = false;
    for (int s = 0, i = 1; n > 2 && i < n; ++i) {
        if (std::abs(y[i] - y[s]) <= tolerance && i != n - 1)
            continue;
        if (i - s > 2)
            flatten(y, s, i - 1, xFirst, xStep);
        const double change = y[i - 1] - y[s];
        s = i;
        if (change > tolerance)
            risen = true;
        else if (risen && change < -tolerance)
            break;
    }
    int begin = -1, end = -1;
    for (bool second = false, again = n > 1; again;) {
        bool settled = true, found = false;
        for (int k = 0; k < n - 1 && !found;) {
            const auto slopeEnd = [&](int i, auto goesOn) {
                while (i + 1 < n && goesOn(y[i + 1], y[i]))
                    ++i;
                return i;
            };
            const int v = slopeEnd(k, std::less_equal<>());
            const int t = slopeEnd(v, std::greater_equal<>());
            k = slopeEnd(t, std::less_equal<>());
            found = y[t] - y[v] >= tolerance && y[t] - y[k] >= tolerance;
            if (found)
                std::tie(begin, end) = std::make_pair(v, k);
            else if (k - v >= 2)
                flatten(y, v, k, xFirst, xStep);
            settled = settled && (found || t == n - 1);
        }
        again = !settled && !(found && second);
        second = second || found;
    }
    if (begin < 0)
        return -1;
    const int first = forward ? begin : n - 1 - end;
    const int last = forward ? end : n - 1 - begin;
    return static_cast<int>(std::max_element(input.begin() + first, input.begin() + last + 1) -
                            input.begin());
}

Trace randomTrace(std::mt19937 &random)
{
    const int n = std::uniform_int_distribution<int>(1, 200)(random);
    const int kind = std::uniform_int_distribution<int>(0, 3)(random);
    std::uniform_real_distribution<double> real(-1.0, 1.0);
    Trace y(n);
    double walk = 0.0;
    for (int i = 0; i < n; ++i) {
        walk += real(random);
        // Noise, a walk, plateaus with differences of exactly the tolerance, wide peaks under noise.
        const double candidates[] = {real(random), walk, std::round(2.0 * walk),
                                     5.0 * std::sin(i * 0.2) + real(random)};
        y[i] = candidates[kind];
    }
    return y;
}

} // namespace

class tst_peakanalysis : public QObject
{
    Q_OBJECT

private slots:
    void matchesReference()
    {
        std::mt19937 random(1);
        int found = 0;
        for (int round = 0; round < 6000; ++round) {
            const Trace y = randomTrace(random);
            const auto span = std::minmax_element(y.begin(), y.end());
            const double tolerance = std::array{2.0, 0.1 * (*span.second - *span.first), 0.0}[round % 3];
            for (bool forward : {true, false}) {
                const int peak = peakOf(y, forward, tolerance);
                QVERIFY2(peak == referencePeak(y, forward, tolerance),
                         qPrintable(QString("trace %1").arg(round)));
                found += peak >= 0;
            }
        }
        QVERIFY(found > 2000 && found < 11000);
    }

    void endsAtGaps()
    {
        QCOMPARE(peakOf({0, 5, 0, 2, qQNaN(), 0, 9, 0}, true, 1.0), 1);
        QCOMPARE(peakOf({0, 5, 0, 2, qQNaN(), 0, 9, 0}, false, 1.0), 6);
        QCOMPARE(peakOf({0, 1, 2, qQNaN(), 0, 9, 0}, true, 1.0), -1);
        QCOMPARE(peakOf({qQNaN(), qQNaN(), qQNaN()}, true, 0.0), -1);
        QCOMPARE(peakOf({0, 5, 0}, true, qQNaN()), -1);
        QCOMPARE(peakOf({-qInf(), -qInf(), 7, -qInf(), -qInf()}, true, 1.0), 2);

        std::mt19937 random(3);
        for (int round = 0; round < 3000; ++round) {
            Trace y = randomTrace(random);
            const int gap = std::uniform_int_distribution<int>(0, y.size() - 1)(random);
            y[gap] = qQNaN();
            y[std::uniform_int_distribution<int>(0, y.size() - 1)(random)] = round % 2 ? qInf() : -qInf();
            const int before = peakOf(y, true, 0.3);
            const int behind = peakOf(y, false, 0.3);
            QVERIFY(before >= -1 && behind >= -1);
            QVERIFY(!std::isnan(y[gap]) || (before < gap && (behind == -1 || behind > gap)));
        }
    }

    void refusesUnusableInput()
    {
        PeakAnalysis analysis;
        long index = 7;
        double x = 7.0;
        double y = 7.0;
        const double sample = 1.0;
        QVERIFY(!analysis.getNextPeak(true, 1.0, 0, &sample, &sample, index, x, y));
        QVERIFY(!analysis.getNextPeak(true, 1.0, 1, nullptr, &sample, index, x, y));
        QVERIFY(index == -1 && x == 0.0 && y == 0.0);
        // Refused before the samples are touched.
        QVERIFY_EXCEPTION_THROWN(analysis.getNextPeak(true, 1.0, 1L << 28, &sample, &sample, index, x, y),
                                 std::bad_array_new_length);
    }
};

QTEST_APPLESS_MAIN(tst_peakanalysis)
#include "tst_peakanalysis.moc"
