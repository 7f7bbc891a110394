#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"
#include "simulator/DataLogger.h"
#include "simulator/SpectrumAnalyzer.h"
#include "support/Table.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

struct Outcome
{
    int status;
    QString output;
    QString errors;
};

Outcome outcomeOf(const QStringList &arguments)
{
    QProcess process;
    process.start(SIMULATOR, arguments);
    if (!process.waitForFinished(-1))
        return {-1, {}, process.errorString()};
    const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return {status, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

} // namespace

class tst_simulator : public QObject
{
    Q_OBJECT

private slots:
    void exitStatusAndMessages_data()
    {
        columns<QStringList, int, QString>({"arguments", "status", "message"});
        const auto row = [](const char *arguments, int status, const char *message) {
            QTest::newRow(arguments) << QString(arguments).split(' ', Qt::SkipEmptyParts) << status
                                     << message;
        };
        row("", 1, "there is no session bus (dbus-run-session starts one)");
        row("--help", 0, "--instrument <name>");
        row("--version", 0, "graph-simulator 0");
        row("--instrument voltmeter", 2,
            "\"voltmeter\" is not one of analyzer, otdr, scope, logger, audio, spectrogram");
        row("--samples many", 2, "--samples: \"many\"");
        row("--samples -1", 2, "from 0 to 10000000");
        row("--rate 0", 2, "--rate: \"0\" is not a number above 0");
        row("--rate nan", 2, "--rate: \"nan\"");
        row("--seed -1", 2, "--seed: \"-1\"");
        row("--hold 1.5", 2, "--hold: \"1.5\"");
        row("--heatmap /proc/nowhere", 2, "\"/proc/nowhere\" is not a directory");
        row("--heatmap . --instrument scope", 2, "the analyzer is not among the instruments");
        row("--heatmap-sweeps 0", 2, "--heatmap-sweeps: \"0\"");
        row("--frobnicate", 2, "frobnicate");
        row("file.csv", 2, "\"file.csv\" is not an option");
        row("--replay /proc/nowhere", 1, "/proc/nowhere: No such file");
        row("--check .", 1, ".: this is a directory");
    }

    void exitStatusAndMessages()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, message);
        const Outcome outcome = outcomeOf(arguments);
        QCOMPARE(outcome.status, status);
        const QString text = status == 0 ? outcome.output : outcome.errors;
        QVERIFY2(text.contains(message), qPrintable(text));
        QCOMPARE(text.count("simulator: "), status == 0 ? 0 : 1);
    }

    void recordingsAreChecked()
    {
        QTemporaryDir directory;
        const QByteArray good = "# format: replay-csv 1\n# kind: xy\n# points: 2\n# x-unit: m\n1,5\n3,nan\n";
        QVERIFY(write(directory.filePath("good"), good));
        QVERIFY(write(directory.filePath("bad"), QByteArray(good).replace("nan", "x")));
        const QString goodPath = directory.filePath("good");
        const QString badPath = directory.filePath("bad");

        const Outcome both = outcomeOf({"--check", badPath, "--check", goodPath});
        QCOMPARE(both.status, 1);
        QCOMPARE(both.errors, "simulator: " + badPath + ":6: \"x\" in the column \"y\" is not a number\n");
        QCOMPARE(both.output, goodPath + ": xy, 2 points, x 1 to 3 m, y 5 to 5 , 1 missing\n");
        // Every missing cell of a table counts.
        const QString tablePath = directory.filePath("table");
        QVERIFY(write(tablePath,
                      "# format: replay-csv 1\n# kind: events\n# points: 1\n1,nan,splice,nan,-40,nan\n"));
        const Outcome table = outcomeOf({"--check", tablePath});
        QCOMPARE(table.output, tablePath + ": events, 1 points, x 1 to 1 , no y, 3 missing\n");
        QCOMPARE(table.status, 0);
        // A bad recording is refused before the bus is looked for.
        QVERIFY(outcomeOf({"--replay", badPath}).errors.contains(":6:"));
        QCOMPARE(outcomeOf({"--replay", goodPath, "--replay", goodPath}).status, 2);
    }

    void heldSweepOnTheBus()
    {
        QProcess bus;
        bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QVERIFY2(bus.waitForReadyRead(), qPrintable(bus.errorString()));
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());

        QProcess held;
        held.start(SIMULATOR,
                   {"--instrument", "analyzer", "--samples", "300", "--seed", "5", "--hold", "17"});
        // Two sweeps that together are more than is kept.
        QProcess logger;
        logger.start(SIMULATOR,
                     {"--instrument", "logger", "--samples", "100000", "--seed", "5", "--hold", "1"});
        QProcess running;
        running.start(SIMULATOR, {"--instrument", "scope", "--rate", "200"});
        // Clients complain about services that are not there yet.
        const auto connection = QDBusConnection::sessionBus();
        QTRY_VERIFY(connection.interface()->isServiceRegistered("org.toskorn.analyzer"));
        QTRY_VERIFY(connection.interface()->isServiceRegistered("org.toskorn.scope"));
        QTRY_VERIFY(connection.interface()->isServiceRegistered("org.toskorn.logger"));
        ORNClientInterface *analyzer = ORNClientInterface::getSessionBusClient("analyzer", this);
        ORNClientInterface *scope = ORNClientInterface::getSessionBusClient("scope", this);
        QVERIFY(analyzer->getItem("spectrum_sweep:"));
        QVERIFY(scope->getItem("ch2_sweep:"));

        QCOMPARE(analyzer->getItem("spectrum_sweep:")->getValue().toInt(), 17);
        QCOMPARE(analyzer->getItem("spectrum_xUnits:")->getValue().toString(), QStringLiteral("Hz"));
        QCOMPARE(analyzer->getItem("spectrum_xFirsValue:")->getValue().toDouble(), 700e6);
        auto *levels =
            qobject_cast<ORNVecDoubleClientItem *>(analyzer->getItem("spectrum_yData:doubleARRAY:"));
        QVERIFY(levels);
        QCOMPARE(levels->vector(), simulation::SpectrumAnalyzer(300, 5, 25.0).levels(17));
        const simulation::DataLogger recorder(100000, 5, 25.0);
        ORNClientInterface *recording = ORNClientInterface::getSessionBusClient("logger", this);
        auto *volts = qobject_cast<ORNVecDoubleClientItem *>(recording->getItem("ch1_yData:doubleARRAY:"));
        QVERIFY(volts);
        QCOMPARE(volts->vector(), (recorder.sweep(0).first().y + recorder.sweep(1).first().y).mid(80000));
        QCOMPARE(recording->getItem("ch1_xFirsValue:")->getValue().toDouble(),
                 80000 * recorder.traces().first().description.xIncrement);

        QTRY_VERIFY(scope->getItem("ch2_sweep:")->getValue().toInt() > 20);

        ::kill(pid_t(held.processId()), SIGTERM);
        QVERIFY(held.waitForFinished());
        QCOMPARE(held.exitStatus(), QProcess::NormalExit);
        QCOMPARE(held.exitCode(), 0);

        // Those that still run end with the bus.
        bus.terminate();
        QVERIFY(bus.waitForFinished());
        QVERIFY(running.waitForFinished());
        QCOMPARE(running.exitCode(), 1);
        QVERIFY(logger.waitForFinished());
        QVERIFY(running.readAllStandardError().contains("the session bus has gone"));
    }
};

QTEST_GUILESS_MAIN(tst_simulator)
#include "tst_simulator.moc"
