#include "support/QmlDocument.h"

#include "plots/HeatmapPlot.h"

#include <QDataStream>

#include <iostream>
#include <sstream>

namespace {

// Columns at 10, 20 and 30 MHz, rows at 5 and 4.
QByteArray mapBytes(const QByteArray &cells = QByteArray("\1\2\3\4\5\7", 6))
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint16(3) << qint16(2) << 5.0 << 1.0;
    const unsigned int frequencies[] = {10000000, 20000000, 30000000};
    bytes.append(reinterpret_cast<const char *>(frequencies), sizeof frequencies);
    return bytes + cells;
}

// What goes to standard output while it lives.
class StandardOutput
{
public:
    StandardOutput() : m_former(std::cout.rdbuf(m_text.rdbuf())) {}
    ~StandardOutput() { std::cout.rdbuf(m_former); }
    QString text() const { return QString::fromStdString(m_text.str()); }

private:
    std::ostringstream m_text;
    std::streambuf *m_former;
};

} // namespace

class tst_heatmapplot : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qmlRegisterType<HeatmapPlot>("charts", 1, 0, "HeatmapPlot"); }
    void init();
    void cleanup();

    void mapIsShown();
    void unitsAndOffset();
    void filesThatGiveNothing_data();
    void filesThatGiveNothing();
    void filesAreDeleted();
    void badCodeEndsThePaint();
    void restart();

private:
    HeatmapPlot *plot() const { return m_document->object<HeatmapPlot>("plot"); }
    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(m_directory->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QmlDocument> m_document;
};

// One pixel per MHz and per tenth of a level: (20, 10) lies in the middle of cell (1, 0).
void tst_heatmapplot::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_document = std::make_unique<QmlDocument>(R"(
        Item {
            property alias plot: plot
            property alias axisY: vertical
            ValueAxis { id: horizontal; maxValue: 60; maxVisible: 60 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minValue: 3; maxValue: 6; minVisible: 3; maxVisible: 6 }
            HeatmapPlot { id: plot; width: 61; height: 31; axisX: horizontal; axisY: vertical }
        })");
    plot()->setDataDirectory(m_directory->path());
}

void tst_heatmapplot::cleanup()
{
    m_document.reset();
}

void tst_heatmapplot::mapIsShown()
{
    QSignalSpy spy(plot(), SIGNAL(dataFilePathChanged()));
    const StandardOutput output;
    plot()->setProperty("dataFilePath", write("a.heatmap", mapBytes()));
    QVERIFY(QRegularExpression("^\\d+ ms to parse the heat map data\n$").match(output.text()).hasMatch());
    plot()->setProperty("dataFilePath", write("a.heatmap", mapBytes(QByteArray("\0\1\2\3\4\5", 6))));
    QCOMPARE(spy.count(), 2); // the same path, read again

    const StandardOutput paintOutput;
    QImage image = painted(plot());
    QVERIFY(QRegularExpression("^\\d+ ms to display the heat map data\n$").match(paintOutput.text()).hasMatch());
    QCOMPARE(image.pixel(10, 10), 0u);
    QCOMPARE(image.pixel(20, 10), 0xff00e6e6);
    QCOMPARE(image.pixel(30, 20), 0xff2f8000);
    QCOMPARE(image.pixel(50, 20), 0u);

    plot()->setProperty("enabled", false);
    QVERIFY(!plot()->property("enabled").toBool() && plot()->isEnabled()); // the map's own, not the item's
    QCOMPARE(painted(plot()).pixel(20, 10), 0u);
}

void tst_heatmapplot::unitsAndOffset()
{
    plot()->setDataFilePath(write("a.heatmap", mapBytes()));
    QObject *axis = m_document->object("axisY");
    const auto showsAt = [&](double level) {
        axis->setProperty("maxVisible", level + 1);
        axis->setProperty("minVisible", level - 2);
        return painted(plot()).pixel(20, 10) == 0xff00a8e6;
    };
    QVERIFY(showsAt(5));
    plot()->setProperty("units", "dbuv"); // only the upper case is a unit
    QVERIFY(showsAt(5));
    plot()->setProperty("units", "DBUV");
    QVERIFY(showsAt(65));
    plot()->setProperty("units", "DBM");
    plot()->setProperty("offset", 100);
    QVERIFY(showsAt(105 - 48.75));
}

void tst_heatmapplot::filesThatGiveNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("parsed");
    QTest::newRow("no such file") << "none.heatmap" << true;
    QTest::newRow("empty file") << "empty.heatmap" << false;
    QTest::newRow("directory") << "." << true;
    QTest::newRow("no name") << "" << true;
}

void tst_heatmapplot::filesThatGiveNothing()
{
    QFETCH(QString, name);
    plot()->setDataFilePath(write("a.heatmap", mapBytes()));
    write("empty.heatmap", {});
    const StandardOutput output;
    plot()->setDataFilePath(name.isEmpty() ? name : m_directory->filePath(name));
    QTEST(output.text().contains("parse"), "parsed");
    QVERIFY(QFile::exists(m_directory->filePath("empty.heatmap"))); // and nothing was created
    QVERIFY(!QFile::exists(m_directory->filePath("none.heatmap")));
    QCOMPARE(painted(plot()).pixel(20, 10), 0xff00a8e6); // the map stays
}

void tst_heatmapplot::filesAreDeleted()
{
    write("older.heatmap", mapBytes());
    QTemporaryDir elsewhere;
    QVERIFY(QFile::rename(write("b.heatmap", mapBytes()), elsewhere.filePath("b.heatmap")));
    const QString path = write("a.heatmap", mapBytes());
    QFile newer(write("newer.heatmap", mapBytes()));
    QVERIFY(newer.open(QIODevice::ReadWrite));
    QVERIFY(newer.setFileTime(QDateTime::currentDateTime().addSecs(9), QFileDevice::FileModificationTime));
    plot()->setDataFilePath(path);
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList("newer.heatmap"));
    // Only in the directory that was set, even for a file that lies in another one.
    plot()->setDataFilePath(elsewhere.filePath("b.heatmap"));
    QVERIFY(QFile::exists(elsewhere.filePath("b.heatmap")));
}

void tst_heatmapplot::badCodeEndsThePaint()
{
    plot()->setDataFilePath(write("a.heatmap", mapBytes(QByteArray("\1\2\3\4\5\x09", 6))));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Heat map - vector::.*9.*8"));
    const StandardOutput output;
    const QImage image = painted(plot());
    QCOMPARE(output.text(), QString());
    for (int column = 0; column < image.width(); ++column)
        QCOMPARE(paintedRows(image, column).first, -1);
}

void tst_heatmapplot::restart()
{
    plot()->setDataFilePath(write("a.heatmap", mapBytes()));
    QSignalSpy spy(plot(), SIGNAL(testPointStateChanged()));
    plot()->setProperty("testPointState", 1);
    QCOMPARE(painted(plot()).pixel(20, 10), 0xff00a8e6);
    plot()->setProperty("testPointState", 2);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(painted(plot()).pixel(20, 10), 0u);
    auto *timer = plot()->findChild<QTimer *>();
    // Runs out once after construction; afterwards each paint starts it anew.
    QTRY_VERIFY(!timer->isActive());
    painted(plot());
    QVERIFY(timer->isActive() && timer->interval() == 200);
    plot()->setDataFilePath(write("a.heatmap", mapBytes()));
    QCOMPARE(painted(plot()).pixel(20, 10), 0xff00a8e6);
}

QTEST_MAIN(tst_heatmapplot)
#include "tst_heatmapplot.moc"
