#include "kit/axis/ChartAxis.h"
#include "kit/plots/Trace.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

#include <random>

using graph::Trace;

namespace {

// How many pixels of the one have none of their colour beside them in the other.
int pixelsApart(const QImage &image, const QImage &other)
{
    const auto isClose = [](QRgb a, QRgb b) {
        return std::abs(qRed(a) - qRed(b)) < 8 && std::abs(qGreen(a) - qGreen(b)) < 8 &&
               std::abs(qBlue(a) - qBlue(b)) < 8;
    };
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            bool isFound = false;
            for (int v = std::max(0, y - 1); v <= std::min(image.height() - 1, y + 1); ++v) {
                for (int u = std::max(0, x - 1); u <= std::min(image.width() - 1, x + 1); ++u)
                    isFound = isFound || isClose(image.pixel(x, y), other.pixel(u, v));
            }
            count += !isFound;
        }
    }
    return count;
}

} // namespace

// What a graphics processor draws, beside what the painter does.
class tst_tracegl : public QObject
{
    Q_OBJECT

private slots:
    void likeThePainter_data()
    {
        columns<int, int, int, bool, int>({"style", "samples", "lineWidth", "curved", "axes"});
        int axes = 0;
        for (int style = Trace::Line; style <= Trace::LineAndPoints; ++style) {
            for (int samples : {1, 12, 5000}) {
                for (int width : {1, 4, 5, 9}) {
                    const bool isCurved = samples == 12 && style != Trace::Steps;
                    for (int curved = 0; curved <= isCurved; ++curved) {
                        axes = (axes + 1) % 5;
                        QTest::addRow("style %d, %d samples, %d wide, %d, axes %d", style, samples, width,
                                      curved, axes)
                            << style << samples << width << bool(curved) << axes;
                    }
                }
            }
        }
    }

    void likeThePainter()
    {
        QFETCH(int, style);
        QFETCH(int, samples);
        QFETCH(int, lineWidth);
        QFETCH(bool, curved);
        QFETCH(int, axes);
        qmlRegisterType<Trace>("charts", 1, 0, "Trace");
        qmlRegisterType<graph::ChartAxis>("charts", 1, 0, "ChartAxis");
        // Linear ones, then each that is logarithmic or reversed.
        const QByteArray horizontal[] = {"maxValue: 100",
                                         "minValue: 1; maxValue: 100; scale: ChartAxis.Logarithmic",
                                         "minValue: 100; maxValue: 0", "maxValue: 100",
                                         "minValue: 100; maxValue: 1; scale: ChartAxis.Logarithmic"};
        const QByteArray vertical[] = {"minValue: -50; maxValue: 50", "minValue: -50; maxValue: 50",
                                       "minValue: -50; maxValue: 50", "minValue: 50; maxValue: -50",
                                       "minValue: 1; maxValue: 60; scale: ChartAxis.Logarithmic"};
        QmlDocument document("Rectangle { width: 150; height: 100; ChartAxis { id: horizontal; " +
                             horizontal[axes] + " } ChartAxis { id: vertical; alignment: Qt.AlignLeft; " +
                             vertical[axes] + R"( }
            Trace { id: trace; anchors.fill: parent; axisX: horizontal; axisY: vertical; color: 'blue' }
        })");
        auto *trace = document.object<Trace>("trace");
        std::mt19937 random(unsigned(samples + style));
        QVector<double> values(samples);
        for (double &value : values)
            value = random() % 20 == 0 ? qQNaN() : int(random() % 120) - 60.0;
        trace->setInterval(110.0 / samples);
        trace->setStart(-3);
        trace->setValues(values);
        trace->setProperty("style", style);
        trace->setLineWidth(lineWidth);
        trace->setCurved(curved);

        QQuickWindow window;
        window.resize(150, 100);
        auto *root = qobject_cast<QQuickItem *>(document.root());
        root->setParentItem(window.contentItem());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
            QSKIP("no graphics processor here, nor one in software");
        const QImage drawn = window.grabWindow().convertToFormat(QImage::Format_RGB32);
        const QImage image = picture([trace](QPainter *painter) { trace->paint(painter); }, QSize(150, 100));
        // One for the end of a thin line.
        QVERIFY(pixelsApart(drawn, image) <= 1 && pixelsApart(image, drawn) <= 1);
        QCOMPARE(inkBox(drawn).isEmpty(), inkBox(image).isEmpty());
        root->setParentItem(nullptr);
    }

    // Each pixel has the colour once, also where strips meet, and after the painter had its turn.
    void translucent()
    {
        QmlDocument document(R"(Rectangle {
            width: 150; height: 100
            ValueAxis { id: horizontal; maxValue: 9; maxVisible: 9 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 9; maxVisible: 9 }
            Trace { id: trace; anchors.fill: parent; axisX: horizontal; axisY: vertical; color: '#800000ff'
                values: [1, 8, 2, 7, 3, 3, 9, 0, 5] }
        })");
        auto *trace = document.object<Trace>("trace");
        QQuickWindow window;
        window.resize(150, 100);
        qobject_cast<QQuickItem *>(document.root())->setParentItem(window.contentItem());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
            QSKIP("no graphics processor here, nor one in software");
        for (int width : {1, 3, 9}) {
            trace->setLineWidth(width);
            for (bool antialiasing : {true, false}) {
                trace->setAntialiasing(antialiasing);
                QImage image = window.grabWindow().convertToFormat(QImage::Format_RGB32);
                QVERIFY(trace->isTextureProvider() == (antialiasing || width == 9));
                int darkest = 255;
                for (int i = 0; i < image.width() * image.height(); ++i)
                    darkest = std::min(darkest, qRed(image.pixel(i % image.width(), i / image.width())));
                QVERIFY2(antialiasing || std::abs(darkest - 127) < 3, qPrintable(QString::number(width)));
            }
        }
        qobject_cast<QQuickItem *>(document.root())->setParentItem(nullptr);
    }
};

QTEST_MAIN(tst_tracegl)
#include "tst_tracegl.moc"
