#include "simulator/AudioAnalyzer.h"
#include "simulator/DataLogger.h"
#include "simulator/FibreReflectometer.h"
#include "simulator/NoiseSource.h"
#include "simulator/Oscilloscope.h"
#include "simulator/Spectrogram.h"
#include "simulator/SpectrumAnalyzer.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace simulation;

class tst_instruments : public QObject
{
    Q_OBJECT

private slots:
    void sweepsDependOnSeedAndNumberOnly()
    {
        for (const int kind : {0, 1, 2, 3, 4, 5}) {
            const auto one = made(kind, 500, 7);
            const auto two = made(kind, 500, 7);
            two->sweep(3); // what was asked for before must not matter
            const auto other = made(kind, 500, 8);
            const QVector<SweptTrace> traces = one->sweep(41);
            for (int i = 0; i < traces.size(); ++i) {
                const QByteArray expected = bytes(traces.at(i).y);
                QCOMPARE(bytes(two->sweep(41).at(i).y), expected);
                QVERIFY(bytes(two->sweep(42).at(i).y) != expected);
                QVERIFY(bytes(other->sweep(41).at(i).y) != expected);
            }
        }
    }

    void anySampleCount()
    {
        for (const int kind : {0, 1, 2, 3, 4, 5}) {
            for (const int samples : {-1, 0, 1, 2, 3, 70000}) {
                const auto instrument = made(kind, samples, 1);
                for (const quint64 number : {quint64(0), std::numeric_limits<quint64>::max()}) {
                    for (const SweptTrace &trace : instrument->sweep(number)) {
                        QCOMPARE(trace.y.size(), qMax(samples, 0));
                        const auto finite = std::count_if(trace.y.begin(), trace.y.end(),
                                                          [](double y) { return std::isfinite(y); });
                        // Only the current probe loses samples, and not many.
                        QVERIFY(finite >= (trace.prefix == "ch2" ? 0.9 : 1.0) * trace.y.size());
                    }
                }
                // The last sample is at the end of the range that is published.
                const TraceDescription description = instrument->traces().first().description;
                if (samples > 1 && instrument->capacity() == 0)
                    QVERIFY(qFuzzyCompare(description.xFirst + (samples - 1) * description.xIncrement,
                                          description.xRangeEnd));
            }
        }
    }

    void tonesOfAudio()
    {
        const QVector<double> levels = AudioAnalyzer(1999, 1, 25.0).sweep(5).first().y;
        for (const double frequency : {440.0, 880.0, 1320.0}) {
            const int at = qRound((frequency - 20.0) / 10.0);
            QVERIFY(levels.at(at) > levels.at(at - 5) + 20.0 && levels.at(at) > levels.at(at + 5) + 20.0);
        }
        QVERIFY(*std::max_element(levels.begin(), levels.end()) < 0.0);
    }

    void stationsOfSpectrogram()
    {
        const Spectrogram band(501, 1, 25.0);
        for (const quint64 sweep : {0, 24, 25, 1000000}) {
            const QVector<double> levels = band.sweep(sweep).first().y;
            for (const double frequency : {92.4e6, 104.6e6, Spectrogram::hoppingFrequency(sweep)})
                QVERIFY(levels.at(qRound((frequency - 88e6) / 40e3)) > -62.0);
            QVERIFY(*std::max_element(levels.begin(), levels.end()) < -30.0);
        }
        QVERIFY(Spectrogram::hoppingFrequency(24) != Spectrogram::hoppingFrequency(25));
    }

    void noiseFloor()
    {
        const SpectrumAnalyzer analyzer(1001, 1, 25.0);
        const auto indexOf = [&](double frequency) {
            return qRound((frequency - analyzer.firstFrequency()) / analyzer.frequencyStep());
        };
        // No source is near this part of the band.
        double sum = 0.0;
        double squares = 0.0;
        double neighbours = 0.0;
        int count = 0;
        const double expected = std::pow(10.0, 0.1 * analyzer.noiseLevel());
        for (quint64 sweep = 0; sweep < 100; ++sweep) {
            const QVector<double> levels = analyzer.levels(sweep);
            for (int i = indexOf(825e6); i < indexOf(846e6); ++i, ++count) {
                const double power = std::pow(10.0, 0.1 * levels.at(i)) / expected;
                const double next = std::pow(10.0, 0.1 * levels.at(i + 1)) / expected;
                sum += power;
                squares += (power - 1.0) * (power - 1.0);
                neighbours += (power - 1.0) * (next - 1.0);
            }
        }
        QVERIFY2(std::abs(sum / count - 1.0) < 0.05, qPrintable(QString::number(sum / count)));
        // Four averaged sweeps leave a quarter of the variance; the filter makes neighbours alike.
        QVERIFY2(std::abs(squares / count - 0.25) < 0.04, qPrintable(QString::number(squares / count)));
        QVERIFY2(neighbours / squares > 0.7, qPrintable(QString::number(neighbours / squares)));
    }

    void carriersAtTheirPlaces()
    {
        for (const int samples : {1001, 4001, 100001}) {
            const SpectrumAnalyzer analyzer(samples, 3, 25.0);
            for (const quint64 sweep : {0, 500, 1234567}) {
                const QVector<double> levels = analyzer.levels(sweep);
                auto carriers = SpectrumAnalyzer::steadyCarriers();
                carriers.append({analyzer.wanderingFrequency(sweep), -47.0});
                for (const auto &carrier : carriers) {
                    const double place =
                        (carrier.frequency - analyzer.firstFrequency()) / analyzer.frequencyStep();
                    const int reach = int(1.4e6 / analyzer.frequencyStep());
                    int highest = int(place) - reach;
                    for (int i = highest; i <= int(place) + reach; ++i)
                        highest = levels.at(i) > levels.at(highest) ? i : highest;
                    QVERIFY2(std::abs(highest - place) <= 1.5,
                             qPrintable(QString::number(carrier.frequency)));
                    QVERIFY2(std::abs(levels.at(highest) - carrier.level) < 1.6,
                             qPrintable(QString::number(levels.at(highest))));
                }
            }
        }
    }

    void blockIsFlatAboveTheNoise()
    {
        const SpectrumAnalyzer analyzer(10001, 1, 25.0);
        QVector<double> levels(10001, 0.0);
        for (quint64 sweep = 0; sweep < 20; ++sweep) {
            const QVector<double> added = analyzer.levels(sweep);
            for (int i = 0; i < levels.size(); ++i)
                levels[i] += added.at(i) / 20.0;
        }
        const auto meanFrom = [&](double begin, double end) {
            return mean(levels, int((begin - 700e6) / analyzer.frequencyStep()),
                        int((end - 700e6) / analyzer.frequencyStep()));
        };
        QVERIFY(std::abs(meanFrom(792.5e6, 796e6) - meanFrom(796e6, 799.5e6)) < 0.7);
        QVERIFY(meanFrom(792.5e6, 799.5e6) > meanFrom(830e6, 840e6) + 40.0);
        QVERIFY(meanFrom(800.8e6, 801.2e6) < meanFrom(792.5e6, 799.5e6) - 10.0); // the gap to the next block
    }

    void fibreSlopeLossesAndEnd()
    {
        const FibreReflectometer reflectometer(20001, 1, 4.0);
        const QVector<double> levels = reflectometer.levels(0);
        const auto level = [&](double begin, double end) {
            return mean(levels, int(begin / reflectometer.distanceStep()),
                        int(end / reflectometer.distanceStep()));
        };
        QVERIFY(std::abs(level(1500, 1700) - level(3900, 4100) - 2400 * 0.19e-3) < 0.02);
        for (const auto &event : FibreReflectometer::events()) {
            const double before = FibreReflectometer::levelBefore(event.position);
            if (event.position > 0.0)
                QVERIFY2(std::abs(level(event.position - 20, event.position - 5) - before) < 0.06,
                         event.name);
            // A pulse's length behind the event, and behind the dead zone of a reflection.
            const bool isReflecting = !std::isnan(event.reflectance);
            if (event.loss < 10.0) {
                const double after = level(event.position + (isReflecting ? 40 : 12),
                                           event.position + (isReflecting ? 55 : 30));
                QVERIFY2(std::abs(after - (before - event.loss)) < 0.06, event.name);
            }
            if (isReflecting)
                QVERIFY2(level(event.position + 2, event.position + 8) > before + 2.0, event.name);
        }
        QVERIFY(level(21000, 25000) < -45.0);
    }

    void eventTableBelongsToTheTrace()
    {
        const QVector<Trace> traces = FibreReflectometer(11, 1, 4.0).traces();
        const Trace &table = traces.at(1);
        QCOMPARE(table.prefix, QStringLiteral("events"));
        const int count = FibreReflectometer::events().size();
        for (const NamedVector &vector : table.vectors)
            QCOMPARE(vector.values.size(), count);
        for (const NamedList &list : table.lists)
            QCOMPARE(list.names.size(), count);
        QVERIFY(std::is_sorted(table.vectors.first().values.begin(), table.vectors.first().values.end()));
    }

    void pulsesAndPeriods()
    {
        const Oscilloscope scope(100001, 1, 25.0);
        const auto risings = [](const QVector<double> &volts, double low, double high) {
            int count = 0;
            bool isHigh = false;
            for (double volt : volts) {
                count += !isHigh && volt > high;
                isHigh = isHigh ? volt > low : volt > high;
            }
            return count;
        };
        for (const quint64 sweep : {0, 1, 99}) {
            QCOMPARE(risings(scope.modulatedSine(sweep), -0.2, 0.2), 20);
            const QVector<double> pulses = scope.pulseTrain(sweep);
            QCOMPARE(risings(pulses, 0.8, 2.5), 20);
            // Settled after the first edge, and before the second.
            QVERIFY(std::abs(mean(pulses, 400, 1000) - 3.3) < 0.01);
            QVERIFY(std::abs(mean(pulses, 4500, 4900)) < 0.01);
        }
    }

    void recordedTimes()
    {
        // Even, uneven and not from 0, some or all at once, one, none.
        const QVector<QVector<double>> recordings{
            {0, 1, 2, 3}, {5, 5.5, 9, 9.1}, {0, 0, 1, 1, 1, 4}, {2, 2, 2}, {3}, {}};
        NoiseSource random(1, 2, 3);
        for (const QVector<double> &begins : recordings) {
            const SweepTimes times = SweepTimes::recorded(begins);
            for (int i = 0; i < 2000; ++i) {
                const double now = 40.0 * random.uniform();
                const quint64 sweep = times.sweepAt(now);
                QVERIFY(times.beginOf(sweep) <= now + 1e-9);
                QVERIFY(times.beginOf(sweep + 1) > now - 1e-9);
            }
            QCOMPARE(times.sweepAt(std::nan("")), quint64(0));
            QVERIFY(times.sweepAt(1e300) >= times.sweepAt(1e9));
        }
    }

    void steadyTimes()
    {
        const SweepTimes times = SweepTimes::atRate(25.0);
        // A week later the sweeps still begin where the rate says.
        QCOMPARE(times.sweepAt(604800.02), quint64(25 * 604800));
        QCOMPARE(times.beginOf(25 * 604800), 604800.0);
        QCOMPARE(SweepTimes::still().sweepAt(1e9), quint64(0));
        QVERIFY(std::isinf(SweepTimes::still().beginOf(1)));
    }

private:
    static std::unique_ptr<Instrument> made(int kind, int samples, quint64 seed)
    {
        if (kind == 0)
            return std::make_unique<SpectrumAnalyzer>(samples, seed, 25.0);
        if (kind == 1)
            return std::make_unique<FibreReflectometer>(samples, seed, 25.0);
        if (kind == 2)
            return std::make_unique<Oscilloscope>(samples, seed, 25.0);
        if (kind == 3)
            return std::make_unique<DataLogger>(samples, seed, 25.0);
        if (kind == 4)
            return std::make_unique<AudioAnalyzer>(samples, seed, 25.0);
        return std::make_unique<Spectrogram>(samples, seed, 25.0);
    }
    // Missing samples are equal, too.
    static QByteArray bytes(const QVector<double> &values)
    {
        return QByteArray(reinterpret_cast<const char *>(values.constData()),
                          values.size() * int(sizeof(double)));
    }
    static double mean(const QVector<double> &values, int begin, int end)
    {
        double sum = 0.0;
        for (int i = begin; i < end; ++i)
            sum += values.at(i);
        return sum / (end - begin);
    }
};

QTEST_APPLESS_MAIN(tst_instruments)
#include "tst_instruments.moc"
