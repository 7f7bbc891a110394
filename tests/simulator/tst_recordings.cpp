#include "simulator/NoiseSource.h"
#include "simulator/RecordedInstrument.h"
#include "simulator/RecordingReader.h"
#include "support/Table.h"

#include <QBuffer>
#include <QtTest>

#include <cmath>

using namespace simulation;

namespace {

const QByteArray xy =
    "# format: replay-csv 1\n# kind: xy\n# title: A: b\n# x-unit: \n# points: 3\n0,1\n0,nan\n2.5,-3e2\n";
const QByteArray series =
    "# format: replay-csv 1\n# kind: y\n# x-first: -1\n# x-step: 0.5\n# points: 2\n7\n8\n";
const QByteArray sweeps =
    "# format: replay-csv 1\n# kind: sweeps\n# x-first: 0\n# x-step: 1\n# points: 3\n# sweeps: 2\n"
    "0,1,2,3\n0.5,4,5,6\n";
const QByteArray regions = "# format: replay-csv 1\n# kind: regions\n# points: 2\n"
                           "# columns: begin,end,value,name,type\n1,2,nan,D\xc3\xbc,\n2,3,4,,QAM\n";
const QByteArray events = "# format: replay-csv 1\n# kind: events\n# points: 1\n5,-30,loss,0.5,nan,0.19\n";

std::optional<Recording> read(QByteArray bytes, ReadingError *error)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return recordingFrom(buffer, error);
}

QByteArray replaced(QByteArray text, const QByteArray &before, const QByteArray &after)
{
    return text.contains(before) ? text.replace(before, after) : QByteArray();
}

} // namespace

class tst_recordings : public QObject
{
    Q_OBJECT

private slots:
    void readsEveryKind()
    {
        ReadingError error;
        for (const QByteArray &text : {xy, replaced(xy, "\n", "\r\n"), "\xef\xbb\xbf" + xy}) {
            const auto points = read(text, &error);
            QVERIFY2(points, qPrintable(error.message));
            QCOMPARE(points->header.title, QStringLiteral("A: b"));
            QCOMPARE(points->numbers.value("x"), (QVector<double>{0, 0, 2.5}));
            QVERIFY(std::isnan(points->numbers.value("y").at(1)));
            QCOMPARE(points->numbers.value("y").at(2), -300.0);
        }
        QCOMPARE(read(series, &error)->numbers.value("y"), (QVector<double>{7, 8}));
        QCOMPARE(read(sweeps, &error)->numbers.value("t"), (QVector<double>{0, 0.5}));
        QCOMPARE(read(regions, &error)->texts.value("name"),
                 (QStringList{QString::fromUtf8("D\xc3\xbc"), QString()}));
        QCOMPARE(read(events, &error)->numbers.value("slope_before"), (QVector<double>{0.19}));
    }

    void playsSweepsInTurn()
    {
        ReadingError error;
        const RecordedInstrument instrument(
            {*read(events, &error), *read(sweeps, &error), *read(regions, &error)}, 0.0);
        QCOMPARE(instrument.sweep(1).first().y, (QVector<double>{4, 5, 6}));
        QCOMPARE(instrument.sweep(4).first().y, (QVector<double>{1, 2, 3}));
        QCOMPARE(instrument.times().beginOf(3), 1.5);
        QStringList prefixes;
        for (const Trace &trace : instrument.traces())
            prefixes.append(trace.prefix);
        QCOMPARE(prefixes, (QStringList{"events", "trace", "regions"}));
        QCOMPARE(instrument.traces().at(1).description.xRangeEnd, 2.0);
        QCOMPARE(instrument.traces().at(1).description.yRangeEnd, 6.0);
        QVERIFY(RecordedInstrument({*read(events, &error)}, 0.0).sweep(0).isEmpty());
    }

    void refuses_data()
    {
        columns<QByteArray, int, QString>({"text", "line", "reason"});
        const auto row = [](const char *tag, const QByteArray &text, int line, const char *reason) {
            QTest::newRow(tag) << text << line << reason;
        };
        row("empty", QByteArray(), 1, "is empty");
        row("another kind of file", QByteArray("{\"a\": 1}\n"), 1, "does not begin");
        row("zeros", QByteArray(100000, '\0'), 1, "does not begin");
        row("another version", replaced(xy, "csv 1", "csv 2"), 1, "does not begin");
        row("header only", xy.left(xy.indexOf("0,1")), 5, "ends after 0 rows");
        row("cut in the header", xy.left(30), 2, "cut off");
        row("no kind", replaced(xy, "# kind: xy\n", ""), 4, "no \"kind\"");
        row("unknown kind", replaced(xy, "kind: xy", "kind: columns"), 2, "\"columns\" cannot be replayed");
        row("no points", replaced(xy, "# points: 3\n", ""), 4, "no \"points\"");
        row("negative points", replaced(xy, "points: 3", "points: -3"), 5, "\"points\" is \"-3\"");
        row("absurd points", replaced(xy, "points: 3", "points: 99999999999"), 5, "\"points\" is");
        row("absurd sweeps",
            replaced(replaced(sweeps, "points: 3", "points: 49999999"), "sweeps: 2", "sweeps: 49999999"), 5,
            "more than");
        row("no x-step", replaced(series, "# x-step: 0.5\n", ""), 4, "no \"x-step\"");
        row("x-step 0", replaced(series, "0.5", "0"), 4, "not above 0");
        row("x-first nan", replaced(series, "-1", "nan"), 3, "\"x-first\" is \"nan\"");
        row("no sweeps", replaced(sweeps, "# sweeps: 2\n", ""), 5, "no \"sweeps\"");
        row("key twice", replaced(xy, "# title", "# kind"), 3, "\"kind\" twice");
        row("no key", replaced(xy, "# title: A: b", "# title A b"), 3, "is not a header line");
        row("other columns", replaced(regions, "value,name", "name,value"), 4, "those of the kind regions");
        row("late header", replaced(xy, "0,nan", "# note: x"), 7, "after the first row");
        row("word", replaced(xy, "nan", "abc"), 7, "\"abc\" in the column \"y\"");
        row("empty cell", replaced(xy, "nan", ""), 7, "\"\" in the column \"y\"");
        row("decimal comma", replaced(xy, "2.5,", "2,5,"), 8, "3 columns, not 2");
        row("too few columns", replaced(xy, "0,nan", "0"), 7, "1 columns, not 2");
        row("short sweep", replaced(sweeps, "4,5,6", "4,5"), 8, "3 columns, not 4");
        row("infinite", replaced(xy, "nan", "inf"), 7, "is not a number");
        row("beyond double", replaced(xy, "nan", "1e999"), 7, "is not a number");
        row("x is nan", replaced(xy, "2.5,", "nan,"), 8, "column \"x\"");
        row("x falls", replaced(xy, "2.5,", "-2.5,"), 8, "\"x\" falls");
        row("time falls", replaced(sweeps, "0.5,4", "-0.5,4"), 8, "\"t\" falls");
        const QByteArray spaced = replaced(xy, "# points", "# x-first: 0\n# x-step: 1\n# points");
        row("x beside its step", replaced(spaced, "0,nan", "1.6,nan"), 9, "\"x\" is 1.6");
        row("last x infinite", replaced(series, "-1", "1.7e308").replace("0.5", "1e308"), 4,
            "beyond all numbers");
        row("region backwards", replaced(regions, "2,3,4", "2,1,4"), 6, "ends before it begins");
        row("row missing", replaced(xy, "points: 3", "points: 4"), 8, "ends after 3 rows");
        row("row too many", replaced(xy, "points: 3", "points: 2"), 8, "one row more");
        row("no last line end", xy.left(xy.size() - 1), 8, "cut off");
        row("empty line", replaced(xy, "0,nan", ""), 7, "empty line");
        row("control letters", replaced(xy, "nan", "\x1b[2J"), 7, "\"?[2J\"");
    }

    void refuses()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, line);
        QFETCH(QString, reason);
        ReadingError error;
        QVERIFY(!read(text, &error));
        QCOMPARE(error.line, line);
        QVERIFY2(error.message.contains(reason), qPrintable(error.message));
    }

    void longLinesAndManyRows()
    {
        constexpr int count = 300000;
        QByteArray row = "0";
        QByteArray rows;
        QVector<double> expected;
        NoiseSource random(1, 1, 1);
        for (int i = 0; i < count; ++i) {
            expected.append(std::ldexp(random.uniform(), int(random.next() % 200) - 100));
            const QByteArray number = QByteArray::number(expected.last(), 'g', 17);
            row += ',' + number;
            rows += number + '\n';
        }
        ReadingError error;
        QByteArray header = sweeps.left(sweeps.indexOf("0,1"));
        header = replaced(replaced(header, "points: 3", "points: 300000"), "sweeps: 2", "sweeps: 1");
        const auto sweep = read(header + row + '\n', &error);
        QVERIFY2(sweep, qPrintable(error.message));
        QCOMPARE(sweep->numbers.value("y"), expected);
        const auto column = read(replaced(series, "points: 2\n7\n8\n", "points: 300000\n") + rows, &error);
        QVERIFY2(column, qPrintable(error.message));
        QCOMPARE(column->numbers.value("y"), expected);
    }

    void damagedBytes()
    {
        NoiseSource random(4, 2, 0);
        const QVector<QByteArray> texts = {xy, series, sweeps, regions, events};
        const QByteArray letters("\n\r,.#:-e0n\0\xff", 12);
        int accepted = 0;
        for (int i = 0; i < 20000; ++i) {
            QByteArray text = texts.at(int(random.next() % 5));
            for (quint64 changes = random.next() % 4; changes > 0; --changes) {
                const int place = int(random.next() % quint64(text.size()));
                text.replace(place, int(random.next() % 3),
                             letters.mid(int(random.next() % 12), int(random.next() % 3)));
            }
            ReadingError error;
            const auto recording = read(text, &error);
            QVERIFY(recording ||
                    (error.line > 0 && error.line <= text.count('\n') + 1 && !error.message.isEmpty()));
            if (!recording)
                continue;
            ++accepted;
            const RecordingHeader &header = recording->header;
            QCOMPARE(recording->numbers.first().size(),
                     header.kind == RecordingKind::Sweeps ? header.sweeps : header.points);
            const RecordedInstrument instrument({*recording}, 0.0);
            for (const SweptTrace &trace : instrument.sweep(random.next()))
                QCOMPARE(trace.y.size(), header.sweeps == 0 ? 0 : header.points);
        }
        QVERIFY(accepted > 5000 && accepted < 19000);
    }
};

QTEST_APPLESS_MAIN(tst_recordings)
#include "tst_recordings.moc"
