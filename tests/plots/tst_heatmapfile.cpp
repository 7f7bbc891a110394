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
                     std::vector<unsigned char>(cells.begin(), cells.begin() + qBound(0, length - 32, 6)));
        }
    }

    void anyBytes()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 2000; ++round) {
            // Every fourth header claims 4 GB of cells.
            QByteArray bytes =
                headerBytes(round % 4 ? qint16(random() % 9) : -1, round % 4 ? qint16(random() % 9) : -1);
            bytes.resize(int(random() % 400));
            for (int i = round % 2 ? 0 : 20; i < bytes.size(); ++i)
                bytes[i] = char(random());
            const graph::Heatmap map = heatmapOf(bytes);
            QCOMPARE(map.columnFrequencies.size(), std::size_t(map.columnCount));
            QVERIFY(map.cells.size() <= std::size_t(map.columnCount) * map.rowCount);
            QVERIFY(map.cells.capacity() <= std::size_t(bytes.size()));
        }
    }

    void onlyFilesThatWereReadAreRemoved()
    {
        QTemporaryDir directory;
        const QDir dir(directory.path());
        const QDateTime read = QDateTime::currentDateTime().addSecs(-10);
        const QMap<QString, int> files{
            {"older.heatmap", -9}, {"read.heatmap", 0}, {"newer.heatmap", 5}, {"older.txt", -9}};
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
        QCOMPARE(dir.entryList(QDir::Files).size(), 4);
        graph::removeHeatmapFiles(directory.path(), read);
        QCOMPARE(dir.entryList(QDir::Files, QDir::Name), QStringList({"newer.heatmap", "older.txt"}));
    }
};

QTEST_APPLESS_MAIN(tst_heatmapfile)
#include "tst_heatmapfile.moc"
