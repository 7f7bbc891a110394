#include "support/QmlDocument.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartExport.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "view/frame/GraphView.h"
#include "support/Table.h"

#include <QBuffer>
#include <QLocale>
#include <QLoggingCategory>
#include <QPainter>
#include <QPdfWriter>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QXmlStreamReader>

#include <csignal>
#include <sys/resource.h>

namespace {

const char *const chart = R"(
    GraphView {
        id: view; width: 300; height: 200
        axes: [
            ValueAxis { id: time; maxValue: 10; unit: "s"; margin: 30; labelsPlane: plane; linesPlane: plane },
            ValueAxis { id: level; alignment: Qt.AlignLeft; maxValue: 8; unit: "V"; margin: 40; labelsPlane: plane; linesPlane: plane }
        ]
        XYScale { id: plane }
        Rectangle { z: -1; color: "#fffff0" }
        GraphPlot {
            id: trace; penColor: "#1060c0"; plotStyle: GraphPlot.LinePlot; maxLineWidth: 2
            plotData: PlotSeries { label: "Level, raw"; axisX: time; axisY: level; yData: [1.5, 5, NaN, 8e-7, 2, 100] }
        }
        GraphPlot {
            penColor: "#c02010"; plotStyle: GraphPlot.FillPlot; visible: %1
            plotData: PlotPoints { label: "Peaks"; yUnits: "degC"; axisX: time; axisY: level; xData: [0.1, 12]; yData: [3, 4] }
        }
        Item { Text { x: 20; y: 10; text: "5 < 6 & \u00b5V"; color: "#204020"; font.pixelSize: 20 } }
    })";

// A chart in a window, and what its export said last.
class Bench
{
public:
    explicit Bench(const QByteArray &text = QByteArray(chart).replace("%1", "true"))
        : m_document(text)
        , m_view(m_document.object<GraphView>("view"))
        , m_export(new graph::ChartExport(m_view))
        , m_spy(m_export, SIGNAL(finished(QString, QString)))
    {
        m_window.resize(400, 300);
        m_view->setParentItem(m_window.contentItem());
        m_window.show();
        QCoreApplication::processEvents();
    }

    QmlDocument &document() { return m_document; }
    graph::ChartExport *operator->() { return m_export; }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

    // The error that it ended with.
    QString end()
    {
        if (m_spy.isEmpty() && !m_spy.wait(10000))
            return "never ended";
        return m_spy.takeFirst().at(1).toString();
    }
    QByteArray content(const QString &name)
    {
        const QString error = end();
        QFile file(path(name));
        return error.isEmpty() && file.open(QIODevice::ReadOnly) ? file.readAll() : error.toUtf8();
    }

private:
    QTemporaryDir m_folder;
    QQuickWindow m_window;
    QmlDocument m_document;
    GraphView *m_view;
    graph::ChartExport *m_export;
    QSignalSpy m_spy;
};

// Files that grow beyond this are refused, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t room)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{room, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before;
};

} // namespace

class tst_chartexport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qmlRegisterType<graph::ChartView>("charts", 1, 0, "ChartView");
        qmlRegisterType<graph::ChartTheme>("charts", 1, 0, "ChartTheme");
        qmlRegisterType<graph::ChartAxis>("charts", 1, 0, "ChartAxis");
        qmlRegisterType<graph::Trace>("charts", 1, 0, "Trace");
        qmlRegisterType<graph::LimitLine>("charts", 1, 0, "LimitLine");
    }

    void csv_data()
    {
        columns<QByteArray, bool, QByteArray>({"document", "all", "expected"});
        const QByteArray both = QByteArray(chart).replace("%1", "true");
        const QByteArray one = QByteArray(chart).replace("%1", "false");
        QTest::newRow("a gap, a tiny value, a comma in the name")
            << one << true << QByteArray("x [s],\"Level, raw [V]\"\n0,1.5\n1,5\n2,\n3,8e-07\n4,2\n5,100\n");
        QTest::newRow("what is visible")
            << QByteArray(one).replace("maxValue: 10;", "minValue: 1; maxValue: 3;") << false
            << QByteArray("x [s],\"Level, raw [V]\"\n1,5\n2,\n3,8e-07\n");
        QTest::newRow("x of their own")
            << QByteArray(both).replace(", NaN, 8e-7, 2, 100", "") << true
            << QByteArray(
                   "\"Level, raw [V]: x [s]\",\"Level, raw [V]\",Peaks [\u00b0C]: x [s],Peaks [\u00b0C]\n"
                   "0,1.5,0.1,3\n1,5,12,4\n");
        QTest::newRow("the same x")
            << QByteArray(both).replace("xData: [0.1, 12]; yData: [3, 4]", "xData: [0, 1, 2, 3, 4, 5]; "
                                                                           "yData: [6, 5, 4, 3, 2, 1]")
            << false
            << QByteArray("x [s],\"Level, raw [V]\",Peaks [\u00b0C]\n0,1.5,6\n1,5,5\n2,,4\n3,8e-07,3\n"
                          "4,2,2\n5,100,1\n");
        QTest::newRow("two of three at the same x, and a limit, which is no data")
            << QByteArray("ChartView { id: view; width: 400; height: 240; axisX.unit: 's'\n"
                          "Trace { name: 'a'; start: 1700000000; interval: 10; values: [1e14, 2] }\n"
                          "Trace { name: 'b'; start: 1; values: [1e-5, 4, 5] }\n"
                          "Trace { name: 'c'; start: 1700000000; interval: 10; values: [6] }\n"
                          "Trace { name: 'd'; start: 1700000000; interval: 10; values: [6, 1e20] }\n"
                          "LimitLine { name: 'most'; values: [5] } }")
            << true
            << QByteArray(
                   "a: x [s],a,d,b: x [s],b,c: x [s],c\n1700000000,100000000000000,6,1,1e-05,1700000000,6\n"
                   "1700000010,2,1e+20,2,4,,\n,,,3,5,,\n");
    }
    // The shortest digits that read back, at least milliseconds where there is any fraction.
    void csvOfTimes_data()
    {
        columns<QByteArray, QByteArray, QByteArray>({"axis", "x", "expected"});
        QTest::newRow("utc") << QByteArray("utc: true")
                             << QByteArray("1700000000, 1700000000.5, 1700000001.123456")
                             << QByteArray("Time,P [W]\n2023-11-14T22:13:20Z,1\n2023-11-14T22:13:20.500Z,2\n"
                                           "2023-11-14T22:13:21.123456Z,3\n");
        QTest::newRow("local, on both sides of a change of clocks, with a title")
            << QByteArray("title: 'Shift,\\nday'") << QByteArray("1679792399, 1679792400")
            << QByteArray("\"Shift, day\",P [W]\n2023-03-26T01:59:59+01:00,1\n2023-03-26T03:00:00+02:00,2\n");
        QTest::newRow("before 1970, no dates, unit of numbers")
            << QByteArray("utc: true; unit: 's'") << QByteArray("-1e15, -1.25, -1e-300, 1e12")
            << QByteArray(
                   "Time,P [W]\n-1e+15,1\n1969-12-31T23:59:58.750Z,2\n1970-01-01T00:00:00.000000000000Z,3\n"
                   "1000000000000,4\n");
    }
    void csvOfTimes()
    {
        QFETCH(QByteArray, axis);
        QFETCH(QByteArray, x);
        QFETCH(QByteArray, expected);
        const QByteArray zone = qgetenv("TZ");
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        Bench bench("ChartView { id: view; width: 400; height: 240; axisX { scale: ChartAxis.Time; " + axis +
                    " }\nTrace { name: 'P'; unit: 'W'; positions: [" + x + "]; values: [1, 2, 3, 4] } }");
        QVERIFY(bench->exportData(bench.path("a.csv"), true));
        const QByteArray content = bench.content("a.csv");
        qputenv("TZ", zone);
        QCOMPARE(content, expected);
    }

    void csv()
    {
        QFETCH(QByteArray, document);
        QFETCH(bool, all);
        QFETCH(QByteArray, expected);
        QLocale::setDefault(QLocale(QLocale::German));
        Bench bench(document);
        QVERIFY(bench->exportData(bench.path("a.csv"), all));
        QCOMPARE(bench.content("a.csv"), expected);
        QLocale::setDefault(QLocale::c());
    }

    // Numbers at points have the theme's font, or a size of their own in points.
    void fontOfPoints()
    {
        const QByteArray document =
            "ChartView { id: view; width: 300; height: 200; axisX.visible: false; "
            "axisY.visible: false\n"
            "theme: ChartTheme { fontFamily: 'DejaVu Serif'; fontSize: 31 }\n"
            "GraphPlot { plotStyle: GraphPlot.ScatterPlot; graphPoint: GraphPointReflections {%1}\n"
            "plotData: PlotPoints { xData: [0, 1, 2]; yData: [1, 5, 2] } } }";
        for (const char *own : {"", "labelFontSize: 20"}) {
            Bench bench(QByteArray(document).replace("%1", own));
            QVERIFY(bench->exportImage(bench.path("a.svg")));
            const QByteArray xml = bench.content("a.svg");
            QVERIFY2(xml.contains("font-family=\"DejaVu Serif\""), xml.constData());
            QCOMPARE(xml.contains("font-size=\"31\""), *own == '\0');
        }
    }

    // Texts are texts, and what is drawn beyond its item is clipped.
    void svg()
    {
        Bench bench;
        QVERIFY(bench->exportImage(QUrl::fromLocalFile(bench.path("a b.svg")).toString(), 2.0));
        QXmlStreamReader xml(bench.content("a b.svg"));
        QMap<QString, int> elements;
        QStringList texts;
        QString size;
        bool isTraceClipped = false;
        QByteArray clip;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            const QString name = xml.name().toString();
            const auto attribute = [&xml](const char *key) {
                return xml.attributes().value(QLatin1String(key)).toString();
            };
            ++elements[name];
            if (name == "text")
                texts.append(xml.readElementText());
            if (name == "svg")
                size = attribute("width") + " " + attribute("viewBox");
            if (name == "g" && !attribute("clip-path").isEmpty())
                clip = attribute("clip-path").toLatin1();
            if (attribute("stroke") == "#1060c0" || attribute("fill") == "#1060c0")
                isTraceClipped = isTraceClipped || !clip.isEmpty();
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(size, QString("600 0 0 300 200"));
        for (const char *text : {"5 < 6 & \u00b5V", "8 V", "4", "10 s"})
            QVERIFY2(texts.contains(QString::fromUtf8(text)), qPrintable(texts.join("|")));
        QVERIFY(isTraceClipped);
        QVERIFY(elements["polyline"] + elements["path"] > 2);
        QCOMPARE(elements["image"], 0);
    }

    void pdf()
    {
        Bench bench;
        QVERIFY(bench->exportImage(bench.path("a.pdf")));
        const QByteArray file = bench.content("a.pdf");
        QVERIFY(file.startsWith("%PDF-1.") && file.trimmed().endsWith("%%EOF"));
        QVERIFY(file.contains("/FontFile2") || file.contains("/FontFile"));
        QVERIFY(file.contains("/ToUnicode"));
        QVERIFY(!file.contains("/Subtype /Image"));
    }

    // The scene as the screen shows it: order, clipping, opacity, turns, borders, and what only the scene
    // graph draws.
    void png_data()
    {
        columns<QByteArray, QPoint, QColor>({"item", "at", "expected"});
        const auto row = [](const char *name, const char *item, const QPoint &at, const QColor &expected) {
            QTest::newRow(name) << QByteArray(item) << at << expected;
        };
        const QColor blue(Qt::blue), paper(Qt::white);
        row("rectangle", "Rectangle { x: 10; y: 10; width: 20; height: 20; color: 'blue' }", {29, 29}, blue);
        row("its end", "Rectangle { x: 10; y: 10; width: 20; height: 20; color: 'blue' }", {30, 29}, paper);
        row("below its parent",
            "Rectangle { width: 40; height: 40; color: 'blue'; Rectangle { z: -1; width: 9; height: 9 } }",
            {5, 5}, blue);
        row("order of z",
            "Item { Rectangle { z: 2; width: 9; height: 9; color: 'blue' } Rectangle { z: 1; width: 9; "
            "height: 9 } }",
            {5, 5}, blue);
        row("clipped",
            "Item { width: 10; height: 10; clip: true; Rectangle { width: 40; height: 40; color: 'blue' } }",
            {12, 5}, paper);
        row("half", "Item { opacity: 0.5; Rectangle { width: 40; height: 40; color: 'blue' } }", {5, 5},
            QColor(127, 127, 255));
        row("beside a half one",
            "Rectangle { width: 99; height: 99; color: 'blue'; Item { opacity: 0.5; Rectangle { width: 9; "
            "height: 9 } } }",
            {60, 60}, blue);
        row("turned", "Rectangle { x: 20; y: 20; width: 15; height: 2; color: 'blue'; rotation: 90 }",
            {27, 15}, blue);
        row("border", "Rectangle { width: 40; height: 40; border { width: 4; color: 'blue' } }", {3, 20},
            blue);
        row("no border", "Rectangle { width: 40; height: 40 }", {0, 20}, paper);
        row("gradient",
            "Rectangle { width: 40; height: 40; gradient: Gradient { GradientStop { color: 'red'; position: "
            "0 } "
            "GradientStop { color: 'blue'; position: 0.5 } } }",
            {20, 30}, blue);
        row("hidden", "Rectangle { width: 40; height: 40; color: 'blue'; visible: false }", {5, 5}, paper);
        row("what only the scene graph draws",
            "TextInput { x: 5; y: 5; text: '\u2588\u2588'; color: 'blue'; font.pixelSize: 30 }", {20, 25},
            blue);
        row("plot, without the shift of a framebuffer",
            "GraphPlot { plotStyle: GraphPlot.FillPlot; useTransparencyForFillPlot: false; penColor: 'blue'; "
            "plotData: PlotSeries { axisX: time; axisY: level; yData: [1, 1] } }",
            {0, 0}, blue);
        row("cursor, without it",
            "GraphPlot { penColor: 'transparent'; plotData: PlotSeries { axisX: time; axisY: level; "
            "xInterval: 1 / "
            "99; "
            "yData: Array.from({ length: 100 }, () => 1) } } GraphCursor { color: 'blue'; paintedWidth: 9; "
            "renderTarget: GraphCursor.FramebufferObject; Component.onCompleted: posOnScreen = 20 }",
            {17, 50}, blue);
        row("text", "Text { x: 5; y: 5; text: '\u2588\u2588'; color: 'blue'; font.pixelSize: 30 }", {20, 25},
            blue);
    }
    void png()
    {
        QFETCH(QByteArray, item);
        QFETCH(QPoint, at);
        QFETCH(QColor, expected);
        Bench bench(
            "GraphView { id: view; width: 100; height: 100; axes: [ ValueAxis { id: time; labelsPlane: "
            "plane; linesPlane: plane }, "
            "ValueAxis { id: level; alignment: Qt.AlignLeft; labelsPlane: plane; linesPlane: plane } ] "
            "XYScale { id: plane; z: -2 } Rectangle { z: -1 } Item { " +
            (item.startsWith("GraphPlot") ? "} " + item + "Item {" : item) + " } }");
        for (const int scale : {1, 3}) {
            QVERIFY(bench->exportImage(bench.path("a.png"), scale));
            const QByteArray file = bench.content("a.png");
            const QImage image = QImage::fromData(file);
            QVERIFY2(!image.isNull(), file.left(200).constData());
            QCOMPARE(image.size(), QSize(100, 100) * scale);
            const QColor pixel = image.pixelColor(at * scale + QPoint(scale / 2, scale / 2));
            const int distance = qAbs(pixel.red() - expected.red()) + qAbs(pixel.green() - expected.green()) +
                                 qAbs(pixel.blue() - expected.blue());
            QVERIFY2(distance <= 4, qPrintable(pixel.name()));
        }
    }

    void errors_data()
    {
        // file: with csv for data
        columns<QString, double, QString>({"file", "scale", "why"});
        QTest::newRow("no folder") << "/no/such/a.csv" << 1.0 << "No such file or directory";
        QTest::newRow("no right") << "/proc/a.png" << 1.0 << "";
        QTest::newRow("folder") << "/tmp/." << 1.0 << "the name of a picture ends";
        QTest::newRow("device") << "/dev/full.csv/../full" << 1.0 << "";
        QTest::newRow("elsewhere") << "http://a/b.png" << 1.0 << "it is no file";
        QTest::newRow("ending") << "/tmp/a.jpeg" << 1.0
                                << "the name of a picture ends with .png, .svg or .pdf";
        QTest::newRow("ending of data") << "/tmp/a.csv.xls" << 1.0 << "the name of a table ends with .csv";
        QTest::newRow("data without an ending") << "/tmp/csv" << 1.0 << "the name of a table ends with .csv";
        QTest::newRow("scale") << "/tmp/a.png" << 0.0 << "the scale has to be above 0";
        QTest::newRow("size") << "/tmp/a.png" << 100.0
                              << "a picture has 1 to 16384 pixels each way, not 30000 x 20000";
    }
    void errors()
    {
        QFETCH(QString, file);
        QFETCH(double, scale);
        QFETCH(QString, why);
        Bench bench;
        const QString sentence = "The chart cannot be written to \"" + file + "\": ";
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(sentence + why)));
        QVERIFY(!(file.contains("csv") ? bench->exportData(file) : bench->exportImage(file, scale)));
        QVERIFY2(bench.end().startsWith(sentence + why), qPrintable(why));
        QVERIFY(!bench->isRunning());
    }

    void nothingToWrite()
    {
        Bench bench("GraphView { id: view; width: 9; height: 9; axes: ValueAxis { labelsPlane: p; "
                    "linesPlane: p } XYScale { id: p } }");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("there are no visible samples\\.$"));
        QVERIFY(!bench->exportData(bench.path("a.csv")));
        QVERIFY(bench.end().endsWith("there are no visible samples."));
    }

    void fullDisk_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"a.csv", "a.png", "a.svg", "a.pdf"})
            QTest::newRow(name) << name;
    }
    // One sentence, and what was there before is still there.
    void fullDisk()
    {
        QFETCH(QString, name);
        Bench bench;
        QFile before(bench.path(name));
        QVERIFY(before.open(QIODevice::WriteOnly) && before.write("before") == 6);
        before.close();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be written to .*: File too large"));
        {
            FullDisk disk(20);
            QVERIFY(name.endsWith("csv") ? bench->exportData(bench.path(name), true)
                                         : bench->exportImage(bench.path(name)));
            QVERIFY(bench.end().contains("File too large"));
        }
        QCOMPARE(bench.files(), QStringList(name));
        QVERIFY(before.open(QIODevice::ReadOnly));
        QCOMPARE(before.readAll(), QByteArray("before"));
    }

    // With the colours behind its traces, which are no item.
    void ofAChart()
    {
        Bench bench("ChartView { id: view; width: 200; height: 100 }");
        auto *view = bench.document().object<graph::ChartView>("view");
        QSignalSpy ended(view, SIGNAL(exportFinished(QString, QString)));
        QVERIFY(view->exportImage(bench.path("a.png")));
        QTRY_COMPARE(ended.size(), 1);
        QCOMPARE(ended.at(0).at(1).toString(), QString());
        const QImage image(bench.path("a.png"));
        QCOMPARE(image.pixelColor(0, 0), view->colors()->background());
        QCOMPARE(image.pixelColor(view->plotArea()->position().toPoint() + QPoint(3, 3)),
                 view->colors()->plotBackground());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("there are no visible samples"));
        QVERIFY(!view->exportData(bench.path("a.csv")));
        QTRY_COMPARE(ended.size(), 2);
    }

    // Two charts on one page of a program's own, as lines, each in its rectangle and its proportions.
    void onAPage()
    {
        const char *two =
            "Item { ChartView { id: %1; width: 200; height: 100; theme: ChartTheme { background: '#102030' "
            "}\n"
            "Trace { values: [1, 5, 3]; color: '#ff0000' } }\n"
            "ChartView { id: view; width: 200; height: 100; Trace { values: [2, 1]; color: '#00ff00' } } }";
        Bench bench(QByteArray(two).replace("%1", "first"));
        const auto paintBoth = [&](QPaintDevice *device) {
            QPainter painter(device);
            painter.setPen(Qt::blue);
            QVERIFY(
                bench.document().object<graph::ChartView>("first")->paint(&painter, QRectF(0, 0, 400, 300)));
            QVERIFY(
                bench.document().object<graph::ChartView>("view")->paint(&painter, QRectF(0, 300, 200, 100)));
            QCOMPARE(painter.pen().color(), QColor(Qt::blue));
            QVERIFY(painter.transform().isIdentity() && !painter.hasClipping());
        };
        QImage image(400, 400, QImage::Format_RGB32);
        image.fill(Qt::white);
        paintBoth(&image);
        for (const QPoint corner : {QPoint(0, 50), QPoint(399, 249)})
            QCOMPARE(image.pixelColor(corner), QColor("#102030"));
        for (const QPoint outside : {QPoint(0, 49), QPoint(399, 250), QPoint(200, 300)})
            QCOMPARE(image.pixelColor(outside), QColor(Qt::white));
        QCOMPARE(image.pixelColor(199, 399),
                 bench.document().object<graph::ChartView>("view")->colors()->background());

        QByteArray page;
        QBuffer buffer(&page);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setResolution(96);
        paintBoth(&writer);
        QCOMPARE(page.count("/Type /Page\n"), 1);
        QVERIFY(!page.contains("/Subtype /Image"));
        QByteArray strokes;
        const QByteArray begin = "/FlateDecode\n>>\nstream\n";
        for (int at = page.indexOf(begin); at >= 0; at = page.indexOf(begin, at)) {
            at += begin.size();
            const QByteArray packed = page.mid(at, page.indexOf("endstream", at) - at);
            strokes += qUncompress(QByteArray::fromHex("00010000") + packed);
        }
        for (const char *color : {"\n1 0 0 SCN", "\n0 1 0 SCN"})
            QVERIFY2(strokes.contains(color), strokes);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ChartView \"view\".* is not painted"));
        QVERIFY(!bench.document().object<graph::ChartView>("view")->paint(nullptr, QRectF(0, 0, 1, 1)));
    }

    // Cancelled, or gone with its chart: no file, not even a part of one.
    void endsEarly()
    {
        QVector<double> values(2000000, 0.125);
        for (const bool isDeleted : {false, true}) {
            Bench bench;
            bench.document()
                .object("trace")
                ->property("plotData")
                .value<QObject *>()
                ->setProperty("yData", QVariant::fromValue(values));
            QVERIFY(bench->exportData(bench.path("a.csv"), true));
            QVERIFY(bench->isRunning());
            if (isDeleted) {
                bench.document().destroyRoot();
            } else {
                QTRY_VERIFY_WITH_TIMEOUT(bench->progress() > 0.0 && bench->progress() < 1.0, 60000);
                bench->cancel();
                QVERIFY(bench.end().endsWith("the export was cancelled."));
            }
            QThreadPool::globalInstance()->waitForDone();
            QCOMPARE(bench.files(), QStringList());
        }
    }
};

QTEST_MAIN(tst_chartexport)
#include "tst_chartexport.moc"
