#include "plots/HeatmapCleanup.h"
#include "plots/HeatmapFile.h"

#include <QBuffer>
#include <QDataStream>
#include <QtTest>

#include <algorithm>
#include <random>

using graph::Heatmap;

namespace {

QByteArray fileBytes(int columns, int rows, const std::vector<unsigned int> &frequencies, const QByteArray &cells)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint16(columns) << qint16(rows) << -20.5 << 0.25;
    bytes.append(reinterpret_cast<const char *>(frequencies.data()), int(frequencies.size() * sizeof(unsigned int)));
    return bytes + cells;
}

Heatmap heatmapOf(QByteArray bytes)
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
    void everyShortening();
    void headerClaimsMoreThanThereIs();
    void anyBytes();
    void cleanup();
};

void tst_heatmapfile::everyShortening()
{
    const std::vector<unsigned int> frequencies{5000000, 6000000, 4294967295u};
    const QByteArray cells("\0\1\2\3\4\5", 6);
    const QByteArray whole = fileBytes(3, 2, frequencies, cells);
    for (int length = 0; length <= whole.size() + 1; ++length) {
        const Heatmap map = heatmapOf(length <= whole.size() ? whole.left(length) : whole + "more");
        QCOMPARE(int(map.columnCount), length >= 2 ? 3 : 0);
        QCOMPARE(int(map.rowCount), length >= 4 ? 2 : 0);
        QCOMPARE(map.referenceLevel, length >= 12 ? -20.5 : 0.0);
        QCOMPARE(map.rowStep, length >= 20 ? 0.25 : 0.0);
        for (std::size_t c = 0; c < map.columnFrequencies.size(); ++c) {
            if (length >= 24 + int(c) * 4)
                QCOMPARE(map.columnFrequencies[c], frequencies[c]);
            else if (length <= 20 + int(c) * 4)
                QCOMPARE(map.columnFrequencies[c], 0u);
        }
        const std::vector<unsigned char> expected(cells.begin(), cells.begin() + qBound(0, length - 32, 6));
        QCOMPARE(map.cells, expected);
    }
}

void tst_heatmapfile::headerClaimsMoreThanThereIs()
{
    // 0xffff columns and rows: 4 GB of cells.
    const Heatmap map = heatmapOf(fileBytes(-1, -1, std::vector<unsigned int>(65535, 7), "\1\2\3"));
    QCOMPARE(int(map.columnCount), 65535);
    QCOMPARE(map.columnFrequencies.back(), 7u);
    QCOMPARE(map.cells, (std::vector<unsigned char>{1, 2, 3}));
    QVERIFY(map.cells.capacity() < 100);
}

void tst_heatmapfile::anyBytes()
{
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(int(random() % 400), Qt::Uninitialized);
        std::generate(bytes.begin(), bytes.end(), [&] { return char(random()); });
        if (round % 2 == 0 && bytes.size() > 3)
            bytes[0] = bytes[2] = 0; // sizes that may fit
        const Heatmap map = heatmapOf(bytes);
        QCOMPARE(map.columnFrequencies.size(), std::size_t(map.columnCount));
        QVERIFY(map.cells.size() <= std::min(std::size_t(map.columnCount) * map.rowCount, std::size_t(bytes.size())));
    }
}

void tst_heatmapfile::cleanup()
{
    QTemporaryDir directory;
    const QDir dir(directory.path());
    const QDateTime now = QDateTime::currentDateTime();
    const auto create = [&](const QString &name, int secondsAgo) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.setFileTime(now.addSecs(-secondsAgo), QFileDevice::FileModificationTime));
    };
    create("older.heatmap", 20);
    create("read.heatmap", 10);
    create("newer.heatmap", 5);
    create("older.txt", 20);
    QVERIFY(dir.mkdir("folder.heatmap"));
    const auto left = [&] { return dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name); };

    graph::removeHeatmapFiles(directory.path(), QDateTime());
    QCOMPARE(left().size(), 5);
    graph::removeHeatmapFiles(directory.path(), QFileInfo(dir.filePath("read.heatmap")).lastModified());
    QCOMPARE(left(), QStringList({"folder.heatmap", "newer.heatmap", "older.txt"}));

    // An empty name is not the directory that the program runs in.
    const QString here = QDir::currentPath();
    QDir::setCurrent(directory.path());
    graph::removeHeatmapFiles(QString(), now);
    QDir::setCurrent(here);
    QCOMPARE(left().size(), 3);
}

QTEST_APPLESS_MAIN(tst_heatmapfile)
#include "tst_heatmapfile.moc"
