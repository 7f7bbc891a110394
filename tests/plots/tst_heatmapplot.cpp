#include "support/Frames.h"
#include "support/QmlDocument.h"

#include "plots/HeatmapPlot.h"

#include <QDataStream>

#include <iostream>
#include <sstream>

namespace {

// Columns at 10, 20 and 30 MHz, rows at 5 and 4.
QByteArray mapBytes(const QByteArray &cells = "\1\2\3\4\5\7")
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
    StandardOutput()
        : m_former(std::cout.rdbuf(m_text.rdbuf()))
    {
    }
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
    // One pixel per MHz and per tenth of a level.
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_document = std::make_unique<QmlDocument>(R"(
            Item {
                ValueAxis { id: horizontal; maxValue: 60; maxVisible: 60 }
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: 3; maxVisible: 6 }
                HeatmapPlot { id: plot; width: 61; height: 31; axisX: horizontal; axisY: vertical }
            })");
        plot()->setDataDirectory(m_directory->path());
    }

    void cleanup() { m_document.reset(); }

    void mapIsShown()
    {
        QSignalSpy spy(plot(), SIGNAL(dataFilePathChanged()));
        const StandardOutput output;
        plot()->setProperty("dataFilePath", write("a.heatmap"));
        QCOMPARE(cell(), 0xff00a8e6);
        const QRegularExpression lines(
            "^\\d+ ms to parse the heat map data\n\\d+ ms to display the heat map data\n$");
        QVERIFY2(lines.match(output.text()).hasMatch(), qPrintable(output.text()));
        // The same path is read again.
        plot()->setProperty("dataFilePath", write("a.heatmap", mapBytes(QByteArray("\0\1\2\3\4\5", 6))));
        QCOMPARE(spy.count(), 2);
        QCOMPARE(cell(), 0xff00e6e6);
        QCOMPARE(painted(plot()).pixel(10, 10), 0u);
        QCOMPARE(painted(plot()).pixel(30, 20), 0xff2f8000);

        plot()->setProperty("enabled", false);
        QVERIFY(!plot()->property("enabled").toBool() &&
                plot()->isEnabled()); // the map's own, not the item's
        QCOMPARE(cell(), 0u);
    }

    void unitsAndOffset()
    {
        plot()->setDataFilePath(write("a.heatmap"));
        const auto showsAt = [&](double level) {
            m_document->object("vertical")->setProperty("maxVisible", level + 1);
            m_document->object("vertical")->setProperty("minVisible", level - 2);
            return cell() == 0xff00a8e6;
        };
        plot()->setProperty("units", "dbuv"); // only the upper case is a unit
        QVERIFY(showsAt(5));
        plot()->setProperty("units", "DBUV");
        QVERIFY(showsAt(65));
        plot()->setProperty("units", "DBM");
        plot()->setProperty("offset", 100);
        QVERIFY(showsAt(105 - 48.75));
    }

    void filesThatGiveNothing()
    {
        plot()->setDataFilePath(write("a.heatmap"));
        const auto isParsed = [&](const QString &path) {
            const StandardOutput output;
            plot()->setDataFilePath(path);
            return output.text().contains("parse");
        };
        QVERIFY(!isParsed(write("empty.heatmap", {})));
        QVERIFY(QFile::exists(m_directory->filePath("empty.heatmap")));
        QVERIFY(isParsed(m_directory->filePath("none.heatmap")));
        QVERIFY(!QFile::exists(m_directory->filePath("none.heatmap")));
        QVERIFY(isParsed(m_directory->path()));
        QVERIFY(isParsed(QString()));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Heat map .*too many cells"));
        QVERIFY(isParsed(write("hostile.heatmap", QByteArray(20, '\xff'))));
        QCOMPARE(cell(), 0xff00a8e6); // the map stays
    }

    void filesAreDeleted()
    {
        write("older.heatmap");
        const QString path = write("a.heatmap");
        QFile newer(write("newer.heatmap"));
        QVERIFY(newer.open(QIODevice::ReadWrite));
        QVERIFY(
            newer.setFileTime(QDateTime::currentDateTime().addSecs(9), QFileDevice::FileModificationTime));
        plot()->setDataFilePath(path);
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList("newer.heatmap"));
        // Only in that directory, wherever the file that is read lies.
        plot()->setDataDirectory(m_directory->filePath("elsewhere"));
        plot()->setDataFilePath(newer.fileName());
        QVERIFY(newer.exists());
    }

    // In each frame, also where only what is above it has changed.
    void showsThePixelsOfALayer()
    {
        for (const QString box : {"", "opacity: 0.6", "scale: 1.3"}) {
            QQuickWindow windows[2];
            std::unique_ptr<QmlDocument> documents[2];
            QImage frames[2];
            const StandardOutput output;
            for (int step = 0; step < 5; ++step) {
                const QString path = write("a.heatmap", mapBytes(step < 3 ? "\1\2\3\4\5\7" : "\5\4\3\2\1\7"));
                for (int i = 0; i < 2; ++i) {
                    if (step == 0) {
                        // A size of its own keeps the item in a layer.
                        documents[i] = inABox(box, i ? "textureSize: Qt.size(61, 31)" : "");
                        qobject_cast<QQuickItem *>(documents[i]->root())
                            ->setParentItem(windows[i].contentItem());
                        windows[i].resize(100, 60);
                        windows[i].show();
                        QVERIFY(QTest::qWaitForWindowExposed(&windows[i]));
                    }
                    documents[i]->root()->setProperty("spot", 9 * step);
                    if (step % 3 == 0)
                        documents[i]->object("plot")->setProperty("dataFilePath", path);
                    frames[i] = frameOf(&windows[i]);
                }
                QVERIFY(frames[0].pixel(25, 15) != 0xffffffff);
                QCOMPARE(frames[0], frames[1]);
            }
        }
    }

    void badCodeEndsThePaint()
    {
        plot()->setDataFilePath(write("a.heatmap", mapBytes("\1\2\3\4\5\x09")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Heat map - vector::.*9.*8"));
        const StandardOutput output;
        QCOMPARE(cell(), 0u);
        QCOMPARE(output.text(), QString());
    }

    void restart()
    {
        plot()->setDataFilePath(write("a.heatmap"));
        QSignalSpy spy(plot(), SIGNAL(testPointStateChanged()));
        plot()->setProperty("testPointState", 1);
        QCOMPARE(cell(), 0xff00a8e6);
        plot()->setProperty("testPointState", 2);
        QCOMPARE(cell(), 0u);
        QCOMPARE(spy.count(), 0);
        auto *timer = plot()->findChild<QTimer *>();
        QTRY_VERIFY(
            !timer->isActive()); // runs out once after construction; afterwards each paint starts it again
        QCOMPARE(cell(), 0u);
        QVERIFY(timer->isActive() && timer->interval() == 200);
        plot()->setDataFilePath(write("a.heatmap"));
        QCOMPARE(cell(), 0xff00a8e6);
    }

private:
    static std::unique_ptr<QmlDocument> inABox(const QString &box, const QString &plot)
    {
        const QString text = R"(
            Item {
                property real spot: 0
                ValueAxis { id: horizontal; maxValue: 60; maxVisible: 60 }
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: 3; maxVisible: 6 }
                Rectangle { width: 50; height: 15; color: "yellow" }
                Item {
                    x: 3; y: 2; width: 61; height: 31
                    %1
                    HeatmapPlot {
                        id: plot; anchors.fill: parent; axisX: horizontal; axisY: vertical; dataDirectory: ""
                        renderTarget: HeatmapPlot.Image
                        %2
                    }
                }
                Rectangle { x: spot; width: 3; height: 60; color: "#80000000" }
            })";
        return std::make_unique<QmlDocument>(text.arg(box, plot).toUtf8());
    }

    HeatmapPlot *plot() const { return m_document->object<HeatmapPlot>("plot"); }
    unsigned int cell() const { return painted(plot()).pixel(20, 10); } // the middle of column 1, row 0
    QString write(const QString &name, const QByteArray &bytes = mapBytes()) const
    {
        QFile file(m_directory->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QmlDocument> m_document;
};

QTEST_MAIN(tst_heatmapplot)
#include "tst_heatmapplot.moc"
