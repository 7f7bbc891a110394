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
        columns<int, int, int>({"style", "samples", "lineWidth"});
        for (int style = Trace::Line; style <= Trace::LineAndPoints; ++style) {
            for (int samples : {1, 12, 5000}) {
                for (int width : {1, 2, 7})
                    QTest::addRow("style %d, %d samples, %d wide", style, samples, width)
                        << style << samples << width;
            }
        }
    }

    void likeThePainter()
    {
        QFETCH(int, style);
        QFETCH(int, samples);
        QFETCH(int, lineWidth);
        qmlRegisterType<Trace>("charts", 1, 0, "Trace");
        QmlDocument document(R"(Rectangle {
            width: 150; height: 100
            ValueAxis { id: horizontal; maxValue: 100; maxVisible: 100 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50 }
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
        // Two for the corners of a wide line that goes to and fro within its own width.
        QVERIFY(pixelsApart(drawn, image) <= 2 && pixelsApart(image, drawn) <= 2);
        QCOMPARE(inkBox(drawn).isEmpty(), inkBox(image).isEmpty());
        root->setParentItem(nullptr);
    }
};

QTEST_MAIN(tst_tracegl)
#include "tst_tracegl.moc"
