#include "plots/HeatmapCleanup.h"
#include "plots/HeatmapFile.h"

#include <QBuffer>
#include <QDataStream>
#include <QtTest>

#include <random>

namespace {

QByteArray headerBytes(qint16 columns, qint16 rows)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << columns << rows << -20.5 << 0.25;
    return bytes;
}

graph::Heatmap heatmapOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return graph::readHeatmap(buffer);
}

} // namespace

class tst_heatmapfile : public QObject
{
    Q_OBJECT

private slots:
    void everyShortening()
    {
        const unsigned int frequencies[] = {5000000, 6000000, 4294967295u};
        const QByteArray cells("\0\1\2\3\4\5", 6);
        const QByteArray raw(reinterpret_cast<const char *>(frequencies), sizeof frequencies);
        const QByteArray whole = headerBytes(3, 2) + raw + cells + "more";
        for (int length = 0; length <= whole.size(); ++length) {
            const graph::Heatmap map = heatmapOf(whole.left(length));
            QCOMPARE(int(map.columnCount), length >= 2 ? 3 : 0);
            QCOMPARE(int(map.rowCount), length >= 4 ? 2 : 0);
            QCOMPARE(map.referenceLevel, length >= 12 ? -20.5 : 0.0);
            QCOMPARE(map.rowStep, length >= 20 ? 0.25 : 0.0);
            if (length >= 2)
                QCOMPARE(map.columnFrequencies.at(2),
                         length >= 32 ? frequencies[2] : map.columnFrequencies.at(2) & 0xffffffu);
            QCOMPARE(map.cells,
                     decltype(map.cells)(cells.begin(), cells.begin() + qBound(0, length - 32, 6)));
        }
    }

    void anyBytes()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes = headerBytes(qint16(random() % 9), qint16(random() % 9));
            bytes.resize(int(random() % 400));
            for (int i = round % 2 ? 0 : 20; i < bytes.size(); ++i)
                bytes[i] = char(random());
            graph::Heatmap map;
            try {
                map = heatmapOf(bytes);
            } catch (const std::length_error &) {
            }
            QCOMPARE(map.columnFrequencies.size(), std::size_t(map.columnCount));
            QVERIFY(map.cells.size() <= std::size_t(map.columnCount) * map.rowCount);
            QVERIFY(map.cells.capacity() <= std::size_t(bytes.size()));
        }
    }

    void largestClaims()
    {
        QCOMPARE(int(heatmapOf(headerBytes(4096, 4096)).columnCount), 4096);
        for (const int columns : {4097, 65535})
            QVERIFY_EXCEPTION_THROWN(heatmapOf(headerBytes(qint16(columns), 4096)), std::length_error);
    }

    void onlyFilesThatWereReadAreRemoved()
    {
        QTemporaryDir directory;
        const QDir dir(directory.path());
        const QDateTime read = QDateTime::currentDateTime().addSecs(-10);
        QMap<QString, int> files{
            {"older.heatmap", -9}, {"read.heatmap", 0}, {"newer.heatmap", 5}, {"older.txt", -9}};
        // So many that another thread has to go on.
        for (int i = 0; i < 2000; ++i)
            files.insert(QString("%1.heatmap").arg(i), -i);
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            QFile file(dir.filePath(it.key()));
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.setFileTime(read.addSecs(it.value()), QFileDevice::FileModificationTime));
        }
        // An empty name is not the directory that the program runs in.
        const QString here = QDir::currentPath();
        QDir::setCurrent(directory.path());
        graph::removeHeatmapFiles(QString(), read);
        QDir::setCurrent(here);
        graph::removeHeatmapFiles(directory.path(), QDateTime());
        QCOMPARE(dir.entryList(QDir::Files).size(), files.size());
        graph::removeHeatmapFiles(directory.path(), read.addSecs(-1000));
        graph::removeHeatmapFiles(directory.path(), read); // is not lost where the thread is at work
        graph::waitForHeatmapCleanup();
        QCOMPARE(dir.entryList(QDir::Files, QDir::Name), QStringList({"newer.heatmap", "older.txt"}));
    }
};

QTEST_APPLESS_MAIN(tst_heatmapfile)
#include "tst_heatmapfile.moc"
