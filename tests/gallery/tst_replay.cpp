#include "support/QmlDocument.h"
#include "support/Table.h"

#include <QProcess>
#include <QTemporaryDir>

namespace {

const QByteArray format = "# format: replay-csv 1\n";
const QByteArray line = format + "# kind: xy\n# points: 3\n# x-unit: km\n0,1\n1,4\n2,3\n";
const QByteArray events = format + "# kind: events\n# points: 2\n# x-unit: km\n0.5,2,splice,nan,nan,0.2\n"
                                   "1.5,3,end,nan,-14,0.2\n";
const QByteArray regions = format + "# kind: regions\n# points: 2\n0,1,5,A,x\n1,2,4,B,x\n";

QByteArray points(const QByteArray &count, const QByteArray &rows)
{
    return format + "# kind: xy\n# points: " + count + "\n" + rows;
}

const QRgb traceColor = qRgb(0x3f, 0xd0, 0xff);
const QRgb eventColor = qRgb(0xff, 0xb0, 0x2e);
const QRgb regionColor = qRgb(0x62, 0xe0, 0x8a);
const QRgb noteColor = qRgb(0xff, 0xb4, 0x54);

// The place of the pixels of one colour on the chart, above the buttons and readings.
QRect extentOf(QRgb color, const QImage &picture)
{
    const QRect chart(0, picture.height() / 10, picture.width(), picture.height() * 13 / 20);
    return inkBox(picture.copy(chart), [color](const QColor &pixel) { return pixel.rgb() == color; });
}

} // namespace

// Recordings as the gallery shows them, and what its page of events finds in a trace.
class tst_replay : public QObject
{
    Q_OBJECT

private slots:
    void shows_data()
    {
        columns<QVector<QByteArray>, QVector<QRgb>, QString>({"recordings", "colors", "page"});
        const auto row = [](const char *tag, const QVector<QByteArray> &recordings,
                            const QVector<QRgb> &colors, const QString &page = "replay") {
            QTest::newRow(tag) << recordings << colors << page;
        };
        const QByteArray sweeps = format + "# kind: sweeps\n# x-first: 0\n# x-step: 1\n# points: 3\n";
        row("events", {events}, {eventColor});
        row("everything", {events, regions, line}, {traceColor, eventColor, regionColor});
        // This page needs a trace; without one it shows its own instrument.
        row("the page of events", {events}, {eventColor}, "events");
        row("one sample", {points("1", "2,5\n")}, {traceColor});
        row("no samples", {points("0", "")}, {noteColor});
        row("no sweeps", {sweeps + "# sweeps: 0\n"}, {noteColor});
        row("every sample missing", {points("2", "1,nan\n2,nan\n")}, {noteColor});
        row("one place", {points("3", "7,1\n7,3\n7,2\n")}, {traceColor});
        row("enormous levels", {points("4", "0,-1.7e308\n1,1.7e308\n2,0\n3,1e307\n")},
            {traceColor, noteColor});
        row("enormous places", {points("4", "-1.7e308,0\n-1e307,1\n1e307,0\n1.7e308,1\n")},
            {traceColor, noteColor});
        row("long unit",
            {QByteArray(line).replace("km", QByteArray(110, 'm') + "\n# y-unit: " + QByteArray(110, 'm'))},
            {traceColor});
    }

    void shows()
    {
        QFETCH(QVector<QByteArray>, recordings);
        QFETCH(QVector<QRgb>, colors);
        QFETCH(QString, page);
        const QImage picture = pictureOf(recordings, {"--page", page, "--size", "800x480"});
        QCOMPARE(picture.size(), QSize(800, 480));
        for (const QRgb color : colors)
            QVERIFY2(!extentOf(color, picture).isEmpty(), qPrintable(QString::number(color, 16)));
        if (colors.contains(traceColor) && recordings.last().contains("\n0,1\n"))
            QVERIFY(extentOf(traceColor, picture).width() > 500);
    }

    void scaledScreen()
    {
        const QImage picture = pictureOf({line}, {"--size", "800x480"}, "2");
        QCOMPARE(picture.size(), QSize(1600, 960));
        QVERIFY(extentOf(traceColor, picture).width() > 1200);
    }

    void damagedRecordingEndsAtOnce()
    {
        const QString path = written({QByteArray(line).replace("1,4", "1,x")}).first();
        QProcess process;
        process.start(GALLERY, {"--replay", path});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardError(),
                 (path + ":6: \"x\" in the column \"y\" is not a number\n").toUtf8());
        process.start(GALLERY, {"--replay", written({line}).first(), "--replay", written({line}).first()});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(process.readAllStandardError(), QByteArray("two recordings would be the replay's trace\n"));
    }

    void reflections_data()
    {
        columns<double, double, double, double>({"pulse", "metre", "next", "end"});
        QTest::newRow("pulse of 100 ns") << 10.0 << 1.0 << 9000.0 << 1012.0;
        QTest::newRow("pulse of 10 us") << 1000.0 << 1.0 << 9000.0 << 2200.0;
        QTest::newRow("in kilometres") << 1000.0 << 0.001 << 9.0 << 2.2;
        QTest::newRow("until the next event") << 1000.0 << 1.0 << 1800.0 << 1800.0;
        QTest::newRow("no pulse") << 0.0 << 1.0 << 9000.0 << 1000.0;
    }

    // Rises at 1000 m in a fifth of the pulse's length, has its top in its middle and falls as it has risen.
    void reflections()
    {
        QFETCH(double, pulse);
        QFETCH(double, metre);
        QFETCH(double, next);
        QFETCH(double, end);
        QVector<double> levels;
        for (int i = 0; i <= 5000; ++i) {
            const double place = 2 * i - 1000;
            const double inside = std::min(place, 1.2 * pulse - place);
            // The next event begins to rise before its place is reached.
            levels.append(i > 4450     ? 0
                          : inside > 0 ? -20 + std::min(10.0, 50 * inside / pulse) + inside / pulse
                                       : -20);
        }
        const QmlDocument document(QByteArray(
            "import \"file://" REFLECTIONS "\" as R\n"
            "PlotSeries { id: trace; property var found: ({}); xInterval: 2 * metre\n"
            "property real metre; property real next\n"
            "function find() { found = R.reflectionAt(trace, 1000 * metre, -20, next, metre) } }"));
        auto *series = document.root();
        series->setProperty("metre", metre);
        series->setProperty("next", next);
        series->setProperty("yData", QVariant::fromValue(levels));
        QVERIFY(QMetaObject::invokeMethod(series, "find"));
        const QVariantMap found = series->property("found").toMap();
        QCOMPARE(found.value("isHigh").toBool(), pulse > 0.0);
        QCOMPARE(found.value("end").toDouble(), end);
        QCOMPARE(found.value("x").toDouble(), (1000 + 0.6 * pulse) * metre);
    }

private:
    QStringList written(const QVector<QByteArray> &recordings)
    {
        QStringList paths;
        for (const QByteArray &recording : recordings) {
            paths.append(m_folder.filePath(QString::number(++m_files)));
            QFile file(paths.last());
            if (!file.open(QIODevice::WriteOnly) || file.write(recording) != recording.size())
                qFatal("%s", qPrintable(file.errorString()));
        }
        return paths;
    }

    // Null when the gallery fails.
    QImage pictureOf(const QVector<QByteArray> &recordings, QStringList arguments, const char *scale = "1")
    {
        const QString path = m_folder.filePath("picture.png");
        QFile::remove(path);
        arguments << "--shot" << path;
        for (const QString &recording : written(recordings))
            arguments << "--replay" << recording;
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SCALE_FACTOR", scale);
        process.setProcessEnvironment(environment);
        process.start(GALLERY, arguments);
        if (!process.waitForFinished(-1) || process.exitCode() != 0 || process.bytesAvailable() == 0)
            qCritical("%s", process.readAllStandardError().constData());
        return QImage(path);
    }

    QTemporaryDir m_folder;
    int m_files = 0;
};

QTEST_MAIN(tst_replay)
#include "tst_replay.moc"
