#include "platform/ui/BaseFormatter.h"
#include "platform/ui/NumberText.h"
#include "platform/ui/ServerModule.h"
#include "support/Table.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

class tst_formatters : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void whatIsNoNumber();
    void unknownUnits();
    void roundingAgainstFixedNotation();
    void feetFollowTheRegion();
    void backtraceNamesTheCaller();
};

void tst_formatters::texts_data()
{
    columns<QString, double, int, int, QString>({"unit", "value", "sigDigs", "precision", "text"});

    const double inf = std::numeric_limits<double>::infinity();
    const double denormal = std::numeric_limits<double>::denorm_min();
    QTest::newRow("no trailing zeros") << "Hz" << 2.4e9 << 4 << 2 << "2.4 GHz";
    QTest::newRow("all digits allowed") << "Hz" << 1.001e6 << 4 << 3 << "1.001 MHz";
    QTest::newRow("decimals bound first") << "Hz" << 1.0015e6 << 6 << 2 << "1 MHz";
    QTest::newRow("digits bound first") << "V" << 0.123456 << 4 << 6 << "123.5 mV";
    QTest::newRow("rounding carries into the next prefix") << "Hz" << 999999.6 << 4 << 2 << "1 MHz";
    QTest::newRow("just below the carry") << "Hz" << 999949.0 << 4 << 2 << "999.9 kHz";
    QTest::newRow("carry at the last prefix") << "m" << 999999.6 << 4 << 2 << "1000 km";
    QTest::newRow("carry out of the lowest prefix") << "Hz" << 9.999e-4 << 2 << 2 << "1 mHz";
    QTest::newRow("digits before the point are rounded too") << "dBm" << 123456.0 << 3 << 2 << "123000 dBm";
    QTest::newRow("negative") << "dBm" << -37.456 << 4 << 2 << "-37.46 dBm";
    QTest::newRow("negative with prefix") << "A" << -0.0025 << 4 << 2 << "-2.5 mA";
    QTest::newRow("zero") << "Hz" << 0.0 << 4 << 2 << "0 Hz";
    QTest::newRow("negative zero") << "dB" << -0.0 << 4 << 2 << "0 dB";
    QTest::newRow("negative rounded to zero") << "dB" << -0.004 << 4 << 2 << "0 dB";
    QTest::newRow("half of the last place") << "dB" << 0.005 << 4 << 2 << "0.01 dB";
    QTest::newRow("a tie goes away from zero") << "%" << -2.5 << 4 << 0 << "-3 %";
    QTest::newRow("below the lowest prefix") << "W" << 1.5e-22 << 4 << 6 << "0.00015 aW";
    QTest::newRow("denormal") << "V" << denormal << 4 << 2 << "0 V";
    QTest::newRow("infinity") << "dBm" << -inf << 4 << 2 << QString::fromUtf8("-\u221e dBm");
    QTest::newRow("not a number") << "Hz" << std::nan("") << 4 << 2 << "---";
    QTest::newRow("beyond the largest prefix") << "Hz" << 1.25e30 << 4 << 2 << "1.25e+18 THz";
    QTest::newRow("the largest double")
        << "dB" << std::numeric_limits<double>::max() << 4 << 2 << "1.798e+308 dB";
    QTest::newRow("micro") << "s" << 3.2e-6 << 4 << 2 << QString::fromUtf8("3.2 \u00b5s");
    QTest::newRow("seconds stay seconds") << "s" << 86400.0 << 6 << 2 << "86400 s";
    QTest::newRow("ohm") << "ohm" << 4700.0 << 4 << 2 << QString::fromUtf8("4.7 k\u03a9");
    QTest::newRow("count without a unit") << "count" << 1.5e6 << 4 << 2 << "1.5M";
    QTest::newRow("a small count") << "count" << 12.0 << 4 << 2 << "12";
    QTest::newRow("half a bit") << "bit/s" << 0.5 << 4 << 2 << "0.5 bit/s";
    QTest::newRow("degrees") << "degC" << 25.04 << 4 << 1 << QString::fromUtf8("25 \u00b0C");
    QTest::newRow("micro in the unit") << "dBuV" << 60.0 << 4 << 2 << QString::fromUtf8("60 dB\u00b5V");
    QTest::newRow("no digits at all asked for") << "Hz" << 2600.0 << -3 << -1 << "3 kHz";
    QTest::newRow("more digits than a double has") << "V" << 0.1 << 99 << 99 << "100.00000000000001 mV";
    // The tests run without a region, which is metric.
    QTest::newRow("feet") << "FeetFormatter" << 10000.0 << 4 << 2 << "3048 m";
    QTest::newRow("scaled feet") << "FeetFormatterScaled" << 10000.0 << 4 << 2 << "3.05 km";
}

void tst_formatters::texts()
{
    QFETCH(QString, unit);
    QFETCH(double, value);
    QFETCH(int, sigDigs);
    QFETCH(int, precision);
    const std::unique_ptr<BaseFormatter> formatter(getFormatter(unit));
    QVERIFY(formatter);
    QCOMPARE(formatter->getType(), unit);
    formatter->setSigDigs(sigDigs);
    formatter->setPrecision(precision);
    QTEST(formatter->formatValue(value), "text");
}

void tst_formatters::whatIsNoNumber()
{
    for (const char *unit : {"Hz", "count", "FeetFormatter"}) {
        const std::unique_ptr<BaseFormatter> formatter(getFormatter(QLatin1String(unit)));
        QCOMPARE(formatter->formatValue(QVariant()), QStringLiteral("---"));
        QCOMPARE(formatter->formatValue(QStringLiteral("1,5")), QStringLiteral("---"));
    }
}

void tst_formatters::unknownUnits()
{
    for (const char *unit : {"", "hz", "kHz", "Hz ", "feetformatter"})
        QVERIFY(!getFormatter(QLatin1String(unit)));
}

void tst_formatters::roundingAgainstFixedNotation()
{
    QRandomGenerator random(5);
    for (int i = 0; i < 20000; ++i) {
        const double value = (random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-8, 7));
        const int precision = random.bounded(0, 9);
        QString expected = QString::number(value, 'f', precision);
        if (expected.contains(QLatin1Char('.')))
            expected.remove(QRegularExpression(QStringLiteral("\\.?0+$")));
        if (expected == QLatin1String("-0"))
            expected = QStringLiteral("0");
        const QString actual = graph::numberText(value, {17, precision}, {}).digits;
        if (actual != expected) // compared here, because texts by the thousand would be slow
            QCOMPARE(actual, expected);
    }
}

// A region holds for a whole process, so each is asked of another one.
void tst_formatters::feetFollowTheRegion()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LC_ALL"));
    for (const auto &[region, text] :
         {std::pair("de_DE.UTF-8", "609.6 m 1.52 km"), std::pair("en_US.UTF-8", "2000 ft 5 kft")}) {
        environment.insert(QStringLiteral("LC_MEASUREMENT"), QLatin1String(region));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--feet")});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(process.readAllStandardOutput(), QByteArray(text));
    }
}

void tst_formatters::backtraceNamesTheCaller()
{
    // QTest calls this slot through QMetaMethod, a function that every build of the library exports.
    const QString trace = ServerModule::getBacktrace();
    QVERIFY2(trace.contains(QLatin1String("QMetaMethod::invoke(QObject*")), qPrintable(trace));
    QVERIFY2(!trace.contains(QLatin1String("getBacktrace")), qPrintable(trace));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--feet"))) {
        const std::unique_ptr<BaseFormatter> plain(getFormatter(QStringLiteral("FeetFormatter")));
        const std::unique_ptr<BaseFormatter> scaled(getFormatter(QStringLiteral("FeetFormatterScaled")));
        scaled->setPrecision(2);
        printf("%s %s", qPrintable(plain->formatValue(2000)), qPrintable(scaled->formatValue(5000)));
        return 0;
    }
    tst_formatters test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_formatters.moc"
