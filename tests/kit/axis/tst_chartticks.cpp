#include "kit/axis/AutoRange.h"
#include "kit/axis/TickPlan.h"
#include "kit/axis/TimeTicks.h"
#include "support/Table.h"

#include <QtTest>

using graph::ScaleKind;
using graph::TickPlan;
using graph::TickRequest;

Q_DECLARE_METATYPE(graph::ScaleKind)

namespace {

TickRequest requestFor(ScaleKind scale, double lowest, double highest, const char *unit)
{
    TickRequest request;
    request.scale = scale;
    request.lowest = lowest;
    request.highest = highest;
    request.length = 500.0;
    request.spacing = 60.0;
    request.gap = 10.0;
    request.unit = QString::fromUtf8(unit);
    request.extent = [](const QString &text) { return 8.0 * text.size(); };
    return request;
}

TickPlan planOf(const TickRequest &request)
{
    return request.scale == ScaleKind::Linear ? linearTicks(request) : logarithmicTicks(request);
}

// What cannot be right for any range.
QString complaint(const TickRequest &request, const TickPlan &plan)
{
    if (plan.majors.size() != plan.texts.size())
        return QStringLiteral("a text is missing");
    for (int i = 1; i < plan.majors.size(); ++i) {
        if (plan.texts.at(i) == plan.texts.at(i - 1))
            return QStringLiteral("twice ") + plan.texts.at(i);
        if (!(plan.majors.at(i) > plan.majors.at(i - 1)))
            return QStringLiteral("not ascending at ") + plan.texts.at(i);
    }
    for (const QVector<double> &values : {plan.majors, plan.minors}) {
        for (const double value : values) {
            if (value < request.lowest || value > request.highest)
                return QStringLiteral("outside: %1").arg(value);
        }
    }
    return plan.majors.size() > 3 && !request.hasRoomFor(plan) ? QStringLiteral("no room") : QString();
}

} // namespace

class tst_chartticks : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void times_data();
    void times();
    void anyRange();
    void shortAxis();
    void minorTicks();
    void autoRange_data();
    void autoRange();
    void autoRangeIsCalm();
};

void tst_chartticks::texts_data()
{
    // expected: the texts, the unit and the common part
    columns<ScaleKind, double, double, QString, QString>({"scale", "lowest", "highest", "unit", "expected"});
    const auto linear = [](double lowest, double highest, const char *unit, const char *expected) {
        QTest::addRow("%g to %g %s", lowest, highest, unit)
            << ScaleKind::Linear << lowest << highest << QString::fromUtf8(unit)
            << QString::fromUtf8(expected);
    };
    linear(0, 10, "", "0 2 4 6 8 10 | ");
    linear(0, 1, "V", "0.0 0.2 0.4 0.6 0.8 1.0 | V");
    linear(-1, 1, "dB", "-1.0 -0.5 0.0 0.5 1.0 | dB");
    linear(0.3, 0.72, "", "0.3 0.4 0.5 0.6 0.7 | ");
    linear(980e6, 1020e6, "Hz", "980 985 990 995 1000 1005 1010 1015 1020 | MHz");
    linear(0, 20e9, "Hz", "0 5 10 15 20 | GHz");
    linear(0, 3e-6, "s", "0.0 0.5 1.0 1.5 2.0 2.5 3.0 | \u00b5s");
    linear(0, 7200, "s", "0 1000 2000 3000 4000 5000 6000 7000 | s");
    linear(0, 8e6, "", "0 1M 2M 3M 4M 5M 6M 7M 8M | ");
    linear(0, 8e-6, "", "0 1e-6 2e-6 3e-6 4e-6 5e-6 6e-6 7e-6 8e-6 | ");
    linear(2.4e9, 2.4e9 + 1, "Hz", "0.0 Hz 0.2 Hz 0.4 Hz 0.6 Hz 0.8 Hz 1.0 Hz |  | 2.4 GHz +");
    linear(-2.4e9, -2.4e9 + 1, "Hz", "0.0 Hz 0.2 Hz 0.4 Hz 0.6 Hz 0.8 Hz 1.0 Hz |  | -2.4 GHz +");
    linear(1.7e12, 1.7e12 + 4000, "", "0 500 1000 1500 2000 2500 3000 3500 4000 |  | 1.7T +");
    linear(100.123456, 100.123460, "dB", "57e-6 dB 58e-6 dB 59e-6 dB 60e-6 dB |  | 100.1234 dB +");
    linear(2.4e9 - 800, 2.4e9 + 400, "Hz", "-500 Hz 0 Hz |  | 2.4 GHz +");
    linear(1e9 - 2e-6, 1e9 + 2e-6, "", "-2e-6 -1e-6 0 1e-6 2e-6 |  | 1G +");
    linear(1e9, 1e9 + 4e-6, "s", "0 \u00b5s 1 \u00b5s 2 \u00b5s 3 \u00b5s 4 \u00b5s |  | 1G s +");
    linear(1e15, 1e15 + 0.5, "", "0.0 0.5 |  | 1P +");
    linear(-7e307, 7e307, "", "-60e306 -40e306 -20e306 0 20e306 40e306 60e306 | ");
    const auto logarithmic = [](double lowest, double highest, const char *unit, const char *expected) {
        QTest::addRow("log %g to %g %s", lowest, highest, unit)
            << ScaleKind::Logarithmic << lowest << highest << QString::fromUtf8(unit)
            << QString::fromUtf8(expected);
    };
    logarithmic(20, 20e3, "Hz", "100 1k 10k | Hz");
    logarithmic(500, 9000, "Hz", "500 1k 2k 3k 5k | Hz");
    logarithmic(1e-3, 1e3, "", "0.001 0.01 0.1 1 10 100 1k | ");
    logarithmic(1e-12, 1e-6, "", "1e-12 10e-12 100e-12 1e-9 10e-9 100e-9 1e-6 | ");
    logarithmic(1e-20, 1e20, "V", "1a 1p 1\u00b5 1 1M 1T 1E | V");
    logarithmic(1e-305, 7e307, "", "1e-240 1e-120 1 1e120 1e240 | ");
    logarithmic(1200, 1900, "Hz", "1.2 1.4 1.6 1.8 | kHz");
}

void tst_chartticks::texts()
{
    QFETCH(ScaleKind, scale);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(QString, unit);
    QFETCH(QString, expected);
    const TickRequest request = requestFor(scale, lowest, highest, unit.toUtf8());
    const TickPlan plan = planOf(request);
    QString found = plan.texts.join(' ') + " | " + plan.unit;
    if (!plan.common.isEmpty())
        found += " | " + plan.common;
    QCOMPARE(found, expected);
    QCOMPARE(complaint(request, plan), QString());
}

void tst_chartticks::times_data()
{
    columns<double, double, double, QString>({"lowest", "span", "length", "expected"});
    const double noon = 1795348800.0;   // 2026-11-22 12:00 UTC, a Sunday
    const double autumn = 1792890000.0; // the clocks go back from 3 to 2, 2026-10-25
    const auto add = [](const char *name, double lowest, double span, double length, const char *expected) {
        QTest::newRow(name) << lowest << span << length << expected;
    };
    add("milliseconds", noon, 0.02, 600, "22 Nov 13:00:00.00 13:00:00.01 13:00:00.02");
    add("seconds", noon + 58, 20, 600, "22 Nov 13:01:00 13:01:05 13:01:10 13:01:15");
    add("minutes", noon, 1800, 600, "22 Nov 13:00 13:10 13:20 13:30");
    add("hours", noon, 86400, 600, "22 Nov 18:00 23 Nov 00:00 06:00 12:00");
    add("days", noon, 4 * 86400, 600, "23 Nov 2026 24 Nov 25 Nov 26 Nov");
    add("weeks", noon, 35 * 86400, 600, "23 Nov 2026 30 Nov 7 Dec 14 Dec 21 Dec");
    add("months", noon, 150 * 86400, 600, "Dec 2026 Jan 2027 Feb Mar Apr");
    add("years", noon, 5 * 366 * 86400., 600, "2027 2028 2029 2030 2031");
    add("clocks go back", autumn - 7200, 4 * 3600, 600, "25 Oct 01:00 02:00 03:00 04:00");
    add("around the year 0", -62168000000.0, 20 * 365.25 * 86400, 600, "0 5 10 15");
    add("year 30000", 884541340800.0 - 3600, 86400 * 3.0, 600, "1 Jan 30000 2 Jan 3 Jan");
    add("microseconds", noon + 0.5, 4e-6, 600, "500.000 ms 500.002 ms 500.004 ms | 22 Nov 13:00:00 +");
    add("no calendar", 1e15, 4, 600, "0.0 0.5 1.0 1.5 2.0 2.5 3.0 3.5 4.0 | 1P +");
    add("little room", noon, 86400, 100, "23 Nov 2026");
    add("one date", noon + 33180, 3 * 3600, 270, "23:00 23 Nov 00:00 01:00");
    add("a date instead of midnight", noon + 33180, 3 * 3600, 200, "23:00 23 Nov 01:00");
    add("no date", noon, 3 * 3600, 120, "14:00 16:00");
    add("no year", noon, 4 * 86400, 160, "23 Nov 25 Nov");
}

// At a place that is an hour ahead, in summer two.
void tst_chartticks::times()
{
    QFETCH(double, lowest);
    QFETCH(double, span);
    QFETCH(double, length);
    QFETCH(QString, expected);
    const auto offset = [](double time) {
        return time >= 1774746000.0 && time < 1792890000.0 ? 7200.0 : time > 1e10 || time < 0 ? 0.0 : 3600.0;
    };
    TickRequest request = requestFor(ScaleKind::Linear, lowest, lowest + span, "");
    request.length = length;
    const TickPlan plan = graph::timeTicks(request, offset);
    const QString found = plan.texts.join(' ') + (plan.common.isEmpty() ? QString() : " | " + plan.common);
    QCOMPARE(found, expected);
    QCOMPARE(complaint(request, plan), QString());
}

void tst_chartticks::anyRange()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 20000; ++round) {
        const bool isLinear = random.bounded(2) == 0;
        double lowest = std::pow(10.0, random.bounded(40) - 20.0 + random.generateDouble());
        if (isLinear && random.bounded(2) == 0)
            lowest = -lowest;
        const double highest =
            lowest + std::abs(lowest) * std::pow(10.0, random.bounded(24) - 14.0 + random.generateDouble());
        const char *const units[] = {"", "Hz", "dBm", "s"};
        TickRequest request = requestFor(isLinear ? ScaleKind::Linear : ScaleKind::Logarithmic, lowest,
                                         highest, units[random.bounded(4)]);
        request.length = random.bounded(2, 3000);
        const auto hourAhead = [](double) { return 3600.0; };
        const bool isTime = isLinear && random.bounded(3) == 0;
        const TickPlan plan = isTime ? graph::timeTicks(request, hourAhead) : planOf(request);
        const QString wrong = complaint(request, plan);
        if (!wrong.isEmpty())
            QFAIL(qPrintable(QStringLiteral("%1 to %2 on %3: %4 (%5)")
                                 .arg(lowest, 0, 'g', 17)
                                 .arg(highest, 0, 'g', 17)
                                 .arg(request.length)
                                 .arg(wrong, plan.texts.join(' '))));
    }
}

// Two texts where they fit, the usual ones where there is room for those, and else one.
void tst_chartticks::shortAxis()
{
    TickRequest request = requestFor(ScaleKind::Linear, 10.6, 13.4, "V");
    request.spacing = 28.0;
    request.gap = 4.0;
    request.extent = [](const QString &) { return 16.0; };
    request.leastSpacing = 20.0;
    for (const auto &[length, expected] :
         {std::pair(200.0, "11.0 11.5 12.0 12.5 13.0"), {60.0, "11 12 13"}, {45.0, "12"}}) {
        request.length = length;
        QCOMPARE(planOf(request).texts.join(' '), QString(expected));
    }
    // The next interval is longer than the axis, and the text at its end has to be moved inside.
    request.lowest = -2.0;
    request.highest = 1.6;
    request.length = 48.0;
    QCOMPARE(planOf(request).texts.join(' '), QString("-2 0"));
}

void tst_chartticks::minorTicks()
{
    TickRequest request = requestFor(ScaleKind::Linear, 0, 10, "");
    QCOMPARE(planOf(request).minors.size(), 15); // 0.5, 1, 1.5, but not 2
    request.minorTicks = 1;
    QCOMPARE(planOf(request).minors, (QVector<double>{1, 3, 5, 7, 9}));
    request.minorTicks = std::numeric_limits<int>::max(); // no room for one
    QVERIFY(linearTicks(request).minors.isEmpty());
    request.minorTicks = 0;
    QVERIFY(planOf(request).minors.isEmpty());
    TickRequest decades = requestFor(ScaleKind::Logarithmic, 1, 100, "");
    QCOMPARE(planOf(decades).minors, (QVector<double>{3, 4, 6, 7, 8, 9, 30, 40, 60, 70, 80, 90}));
    decades.minorTicks = 0;
    QVERIFY(planOf(decades).minors.isEmpty());
}

void tst_chartticks::autoRange_data()
{
    columns<ScaleKind, bool, double, double, double, double, double>(
        {"scale", "hasHeadRoom", "lowest", "highest", "begin", "end", "baseline"});
    QTest::newRow("from zero") << ScaleKind::Linear << true << 0.0 << 8.0 << 0.0 << 9.0 << qQNaN();
    QTest::newRow("near zero") << ScaleKind::Linear << true << 1.0 << 8.0 << 0.0 << 8.5 << qQNaN();
    QTest::newRow("far from zero") << ScaleKind::Linear << true << 100.0 << 108.0 << 99.0 << 109.0 << qQNaN();
    QTest::newRow("negative") << ScaleKind::Linear << true << -90.0 << -5.0 << -100.0 << 0.0 << qQNaN();
    QTest::newRow("both signs") << ScaleKind::Linear << true << -1.0 << 1.0 << -1.2 << 1.2 << qQNaN();
    QTest::newRow("one level") << ScaleKind::Linear << true << 5.0 << 5.0 << 2.0 << 8.0 << qQNaN();
    QTest::newRow("zero only") << ScaleKind::Linear << true << 0.0 << 0.0 << -1.2 << 1.2 << qQNaN();
    QTest::newRow("along") << ScaleKind::Linear << false << 0.5 << 2.25 << 0.5 << 2.25 << qQNaN();
    QTest::newRow("decades") << ScaleKind::Logarithmic << true << 0.03 << 700.0 << 0.01 << 2000.0 << qQNaN();
    QTest::newRow("down to zero") << ScaleKind::Logarithmic << true << 0.0 << 700.0 << 0.1 << 2000.0
                                  << qQNaN();
    QTest::newRow("one positive level")
        << ScaleKind::Logarithmic << true << 5.0 << 5.0 << 1.0 << 20.0 << qQNaN();
    QTest::newRow("all that there is")
        << ScaleKind::Linear << true << -1.7e308 << 1.7e308 << -8e307 << 8e307 << qQNaN();
    QTest::newRow("all decades") << ScaleKind::Logarithmic << true << 1e-300 << 1e300 << 1e-305 << 1e308
                                 << qQNaN();
    QTest::newRow("on a baseline") << ScaleKind::Linear << true << 10.0 << 15.0 << 10.0 << 15.5 << 10.0;
    QTest::newRow("below a baseline")
        << ScaleKind::Linear << true << -20.0 << -10.0 << -21.0 << -10.0 << -10.0;
    QTest::newRow("across a baseline") << ScaleKind::Linear << true << 10.0 << 15.0 << 9.5 << 15.5 << 12.0;
    QTest::newRow("decades on a baseline")
        << ScaleKind::Logarithmic << true << 3.0 << 700.0 << 3.0 << 1000.0 << 3.0;
    QTest::newRow("next to nothing") << ScaleKind::Linear << true << 5e-324 << 2e-323 << -1.2 << 1.2
                                     << qQNaN();
    QTest::newRow("not finite") << ScaleKind::Linear << true << qQNaN() << 1.0 << 0.0 << 1.0 << qQNaN();
}

void tst_chartticks::autoRange()
{
    QFETCH(ScaleKind, scale);
    QFETCH(bool, hasHeadRoom);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(double, begin);
    QFETCH(double, end);
    QFETCH(double, baseline);
    graph::AutoRangeRequest request;
    request.scale = scale;
    request.hasHeadRoom = hasHeadRoom;
    request.data = {lowest, highest, 0.2, baseline};
    const graph::ScaleEnds ends = graph::autoRange(request);
    QCOMPARE(ends.begin, begin);
    QCOMPARE(ends.end, end);
}

// Data whose extremes vary by a third move the range only outwards, a few times; a tenth of them brings it back.
void tst_chartticks::autoRangeIsCalm()
{
    for (const ScaleKind scale : {ScaleKind::Linear, ScaleKind::Logarithmic}) {
        QRandomGenerator random(3);
        graph::ScaleEnds present{0.0, 1.0};
        graph::AutoRangeRequest request;
        request.scale = scale;
        int changes = 0;
        const auto show = [&](double lowest, double highest) {
            request.data = {lowest, highest, lowest};
            const graph::ScaleEnds ends = graph::autoRange(request);
            changes += ends.begin != present.begin || ends.end != present.end;
            present = ends;
            request.present = &present;
            QVERIFY(present.begin <= lowest && present.end >= highest);
        };
        for (int frame = 0; frame < 500; ++frame)
            show(10.0, 100.0 * (1.0 - 0.3 * random.generateDouble()));
        QVERIFY(changes <= 3);
        const graph::ScaleEnds wide = present;
        show(10.0, 12.0);
        QVERIFY(present.end < wide.end);
        request.onlyGrows = true;
        const graph::ScaleEnds grown = present;
        show(10.5, 10.6);
        QVERIFY(present.begin == grown.begin && present.end == grown.end);
    }
}

QTEST_APPLESS_MAIN(tst_chartticks)
#include "tst_chartticks.moc"
