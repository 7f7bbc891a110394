// Lines of plots are shown without a layer: in each frame with the pixels of one, also where only what is
// above them has changed. A graphics processor has a few other ones at the edges of slanted lines.

#include "support/Frames.h"
#include "support/QmlDocument.h"

#include "kit/plots/Trace.h"
#include "support/Table.h"

#include <QSGImageNode>
#include <QSet>
#include <QSGRendererInterface>

namespace {

// %1: of the box around the plots, %2: of the plot, %3: of the trace, %4: of both in the window to compare with.
const char *const document = R"(
    import traces 1.0
    Item {
        property var samples: []
        property real first: 0
        property real extent: 200
        property real spot: 20
        ValueAxis { id: horizontal; minVisible: first; maxVisible: first + extent; maxValue: 3000 }
        ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
        PlotSeries { id: series; yData: samples; axisX: horizontal; axisY: vertical }
        Rectangle { x: 40; y: 30; width: 60; height: 60; color: "yellow" }
        Item {
            x: 10; y: 12; width: 260; height: 160
            %1
            GraphPlot {
                anchors.fill: parent; plotData: series; plotStyle: GraphPlot.LinePlot
                %2
                %4
            }
            Rectangle { x: 100; y: 50; width: 70; height: 60; color: "white" }
            Trace {
                anchors { fill: parent; margins: 20 }
                axisX: horizontal; axisY: vertical; series: series; color: "#c04000"
                %3
                %4
            }
        }
        Text { x: 120; y: 40; text: "Label"; font.pixelSize: 40; color: "blue" }
        Rectangle { x: spot; y: 0; width: 3; height: 200; color: "#80000000" }
    })";

QVector<double> wave(int samples)
{
    QVector<double> y(samples);
    for (int i = 0; i < samples; ++i)
        y[i] = 60.0 * std::sin(i * i * 0.37) * std::cos(i * 0.011);
    return y;
}

int differentPixels(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < b.height(); ++y) {
        for (int x = 0; x < b.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    }
    return count;
}

class Watched : public GraphPlot
{
public:
    static QSGNode *node;
    static QSet<QSGNode *> nodes;
    static int frames; // since the line changed

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override
    {
        frames = 0;
        node = GraphPlot::updatePaintNode(old, data);
        nodes.insert(node);
        return node;
    }
};
QSGNode *Watched::node = nullptr;
QSet<QSGNode *> Watched::nodes;
int Watched::frames = 0;

} // namespace

class tst_strokenode : public QObject
{
    Q_OBJECT

private slots:
    void showsThePixelsOfALayer_data();
    void showsThePixelsOfALayer();
    void isAnImageOnlyWhileItRests();
    void fewOfManyLargeLinesAreImages();
    void givesEffectsALayer();
};

void tst_strokenode::showsThePixelsOfALayer_data()
{
    columns<QString, QString, QString>({"box", "plot", "trace"});
    const struct
    {
        const char *name;
        const char *box;
        const char *plot;
        const char *trace;
    } rows[] = {
        {"plain", "", "", ""},
        {"wide pens", "", "minLineWidth: 8", "lineWidth: 9"},
        {"other targets", "", "renderTarget: GraphPlot.Image", "renderTarget: Trace.FramebufferObject"},
        {"other styles", "", "Component.onCompleted: plotStyle = GraphPlot.MaxLinePlot",
         "style: Trace.Steps"},
        {"points and odd pens", "", "minLineWidth: 3", "style: Trace.LineAndPoints"},
        {"fills", "", "Component.onCompleted: plotStyle = GraphPlot.FillPlot", "style: Trace.Area"},
        {"thin", "", "", "lineWidth: 1"},
        {"thin and translucent", "", "penColor: \"#80ff0000\"", "lineWidth: 1"},
        {"opacity", "opacity: 0.6", "", ""},
        {"in a layer", "layer.enabled: true", "", ""},
        {"scaled", "scale: 1.3; transformOrigin: Item.TopLeft", "", ""},
        {"rotated", "rotation: 90", "", ""},
        {"upside down", "rotation: 180", "smooth: false", ""},
        {"clipped", "clip: true; Component.onCompleted: { width = 150; height = 70 }", "", ""},
        {"clip turned", "clip: true; rotation: 20", "", ""},
        {"between pixels", "Component.onCompleted: { x = 10.5; y = 3.3 }", "", ""},
        {"fraction of a size", "Component.onCompleted: { width = 200.4; height = 99.7 }", "", ""},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.box << row.plot << row.trace;
}

void tst_strokenode::showsThePixelsOfALayer()
{
    QFETCH(QString, box);
    QFETCH(QString, plot);
    QFETCH(QString, trace);
    registerTypes();
    qmlRegisterType<graph::Trace>("traces", 1, 0, "Trace");
    QQuickWindow windows[2];
    std::unique_ptr<QmlDocument> documents[2];
    for (int i = 0; i < 2; ++i) {
        // A size of its own keeps an item in a layer.
        const QString text =
            QString(document).arg(box, plot, trace, i ? "textureSize: Qt.size(width, height)" : "");
        documents[i] = std::make_unique<QmlDocument>(text.toUtf8());
        windows[i].resize(300, 200);
        qobject_cast<QQuickItem *>(documents[i]->root())->setParentItem(windows[i].contentItem());
        windows[i].show();
        QVERIFY(QTest::qWaitForWindowExposed(&windows[i]));
        frameOf(&windows[i]); // Qt 6 never shows in a layer what changed before the first frame of it
    }
    const struct
    {
        const char *property;
        QVariant value;
    } steps[] = {
        {"samples", QVariant::fromValue(wave(200))},
        {"spot", 60},
        {"spot", 61.5},
        {"first", 150}, // few samples are left
        {"spot", 90},
        {"spot", 91},
        {"first", 120.5},
        {"samples", QVariant::fromValue(wave(3000))},
        {"first", 0.5},
        {"extent", 2000}, // many in a column
        {"spot", 150},
        {"spot", 20},
        {"samples", QVariant::fromValue(QVector<double>())},
    };
    const bool isSoftware = windows[0].rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    QImage before;
    for (const auto &step : steps) {
        QImage frames[2];
        for (int i = 0; i < 2; ++i) {
            documents[i]->root()->setProperty(step.property, step.value);
            frames[i] = frameOf(&windows[i]);
            if (box.contains("layer")) // which is shown one frame later
                frames[i] = frameOf(&windows[i]);
        }
        QVERIFY(frames[0] != before);
        const int most = isSoftware ? 0 : 30;
        const int different = differentPixels(frames[0], frames[1]);
        QVERIFY2(different <= most, qPrintable(QString("%1: %2").arg(step.property).arg(different)));
        before = frames[0];
    }
}

void tst_strokenode::isAnImageOnlyWhileItRests()
{
    registerTypes();
    qmlRegisterType<Watched>("watched", 1, 0, "GraphPlot");
    QmlDocument watched(R"(
        import watched 1.0 as W
        Item {
            property real spot: 0
            ValueAxis { id: horizontal; maxVisible: 300; maxValue: 3000 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -500; maxVisible: 500 }
            W.GraphPlot {
                id: plot; width: 300; height: 200; plotStyle: GraphPlot.LinePlot
                plotData: PlotSeries { id: series; axisX: horizontal; axisY: vertical }
            }
            Rectangle { x: spot; width: 3; height: 200 }
        })");
    QQuickWindow window;
    window.resize(300, 200);
    qobject_cast<QQuickItem *>(watched.root())->setParentItem(window.contentItem());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software)
        QSKIP("there it is geometry");
    const auto image = [] { return dynamic_cast<QSGImageNode *>(Watched::node->firstChild()); };
    connect(&window, &QQuickWindow::afterRendering, [] { ++Watched::frames; });
    for (int samples : {300, 1000}) {
        watched.object("series")->setProperty("yData", QVariant::fromValue(wave(samples)));
        // A slow processor has more frames than those that are asked for.
        int spot = 0;
        do {
            watched.root()->setProperty("spot", ++spot);
            frameOf(&window);
            QCOMPARE(image() != nullptr, Watched::frames >= 3);
        } while (Watched::frames < 3);
        // As high as the line, in pieces.
        QVERIFY(image()->rect().height() < 40 && image()->rect().width() <= 64);
    }
}

void tst_strokenode::fewOfManyLargeLinesAreImages()
{
    qmlRegisterType<Watched>("watched", 1, 0, "GraphPlot");
    QmlDocument many(R"(
        import watched 1.0 as W
        Item {
            property real spot: 0
            ValueAxis { id: horizontal; maxVisible: 8000; maxValue: 8000 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
            PlotSeries { id: series; axisX: horizontal; axisY: vertical }
            Repeater {
                model: 6
                W.GraphPlot { width: 2000; height: 2000; plotStyle: GraphPlot.LinePlot; plotData: series }
            }
            Rectangle { x: spot; width: 3; height: 200 }
        })");
    QQuickWindow window;
    window.resize(300, 200);
    qobject_cast<QQuickItem *>(many.root())->setParentItem(window.contentItem());
    Watched::nodes.clear();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software)
        QSKIP("there it is geometry");
    const auto images = [] {
        return std::count_if(Watched::nodes.begin(), Watched::nodes.end(),
                             [](QSGNode *node) { return dynamic_cast<QSGImageNode *>(node->firstChild()); });
    };
    // Again after they were given back.
    QVector<double> tall(8000, 40.0);
    for (const double other : {-40.0, -41.0}) {
        for (int i = 0; i < tall.size(); i += 2)
            tall[i] = other;
        many.object("series")->setProperty("yData", QVariant::fromValue(tall));
        frameOf(&window);
        QTRY_COMPARE(images(), 0);
        for (int spot = 0; spot < 4; ++spot) {
            many.root()->setProperty("spot", spot + other);
            frameOf(&window);
        }
        QCOMPARE(images(), 5);
    }
}

void tst_strokenode::givesEffectsALayer()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QSKIP("there no painted item gives an effect its texture");
#endif
    QmlDocument effect(R"(
        Item {
            ValueAxis { id: horizontal; maxVisible: 99 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
            GraphPlot {
                id: plot; width: 150; height: 200; plotStyle: GraphPlot.FillPlot
                plotData: PlotSeries { id: series; axisX: horizontal; axisY: vertical }
            }
            ShaderEffect {
                x: 150; width: 150; height: 200; property variant source: plot; visible: false
                id: shader
            }
        })");
    QQuickWindow window;
    window.resize(300, 200);
    qobject_cast<QQuickItem *>(effect.root())->setParentItem(window.contentItem());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        QSKIP("no effects there");
    effect.object("series")->setProperty("yData", QVariant::fromValue(wave(100)));
    frameOf(&window);
    // From a layer to triangles, and back when the effect asks.
    effect.object("plot")->setProperty("plotStyle", GraphPlot::LinePlot);
    frameOf(&window);
    effect.object("shader")->setProperty("visible", true);
    frameOf(&window);
    const QImage both = frameOf(&window);
    QImage blank = both.copy(0, 0, 150, 200);
    blank.fill(Qt::white);
    QVERIFY(differentPixels(both, blank) > 500);
    QCOMPARE(both.copy(0, 0, 150, 200), both.copy(150, 0, 150, 200));
}

QTEST_MAIN(tst_strokenode)
#include "tst_strokenode.moc"
