#include "plots/HeatmapFile.h"
#include "simulator/HeatmapRecorder.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using namespace simulation;

class tst_heatmap_writer : public QObject
{
    Q_OBJECT

private slots:
    void readsBack()
    {
        HeatmapCounter counter(4, 800e6, 1e6, {3, 5, -20.0, 10.0});
        counter.add({-20.0, -31.0, -60.0, -44.9});
        QByteArray bytes = encoded(counter.heatmap());
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const graph::Heatmap map = graph::readHeatmap(buffer);
        QVERIFY(buffer.atEnd());
        QCOMPARE(map.referenceLevel, -20.0 + 48.7506); // dBmV
        QCOMPARE(map.rowStep, 10.0);
        // The third column holds the samples 2 and 3.
        QCOMPARE(map.columnFrequencies, (std::vector<unsigned int>{800000000, 801000000, 802500000}));
        QCOMPARE(map.cells, (decltype(map.cells){7, 0, 0, //
                                                 0, 7, 0, //
                                                 0, 0, 6, //
                                                 0, 0, 0, //
                                                 0, 0, 6}));
    }

    void codesAreSharesOfTheSweeps()
    {
        // In row r of a lone column: 2^r of 1023 sweeps.
        HeatmapCounter counter(1, 0.0, 1.0, {1, 11, 0.0, 1.0});
        for (int row = 0; row < 10; ++row) {
            for (int i = 0; i < (1 << row); ++i)
                counter.add({double(-row)});
        }
        QCOMPARE(counter.heatmap().cells, (std::vector<quint8>{1, 1, 1, 1, 2, 3, 4, 5, 6, 7, 0}));
    }

    void levelsOffTheGrid()
    {
        HeatmapCounter counter(6, -5e9, 5e9, {1000, 2, 0.0, 1.0});
        counter.add({0.6, -1.6, std::nan(""), INFINITY, -INFINITY, 1e300});
        counter.add({0.0}); // another size
        const Heatmap map = counter.heatmap();
        QCOMPARE(int(map.columnCount), 6);
        QCOMPARE(map.cells, std::vector<quint8>(12, 0));
        QCOMPARE(map.columnFrequencies.front(), 0u);
        QCOMPARE(map.columnFrequencies.back(), 0xffffffffu);
        QCOMPARE(int(HeatmapCounter(0, 0, 1, {}).heatmap().columnCount), 0);
    }

    void writesWholeFilesAndFewOfThem()
    {
        QTemporaryDir directory;
        HeatmapRecorder recorder(directory.path(), HeatmapCounter(2, 0.0, 1.0, {2, 3, 0.0, 1.0}), 4);
        QString error;
        for (quint64 sweep = 0; sweep < 3; ++sweep)
            QVERIFY(recorder.add(sweep, {0.0, -1.0}, &error));
        const auto everything = [&] {
            return QDir(directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        };
        QVERIFY(everything().isEmpty());
        QVERIFY(recorder.add(3, {0.0, -1.0}, &error));
        QCOMPARE(everything(), QStringList("spectrum-000000000003.heatmap"));
        QCOMPARE(QFileInfo(directory.filePath(everything().first())).size(), qint64(20 + 2 * 4 + 6));
        for (quint64 sweep = 4; sweep < 100; ++sweep)
            QVERIFY(recorder.add(sweep, {0.0, -1.0}, &error));
        QCOMPARE(everything().size(), 8);
        QCOMPARE(everything().last(), QStringLiteral("spectrum-000000000099.heatmap"));

        HeatmapRecorder lost(directory.filePath("nowhere"), HeatmapCounter(1, 0, 1, {}), 1);
        QVERIFY(!lost.add(0, {0.0}, &error));
        QVERIFY2(error.contains("nowhere"), qPrintable(error));
    }
};

QTEST_APPLESS_MAIN(tst_heatmap_writer)
#include "tst_heatmap_writer.moc"
