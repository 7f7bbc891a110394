// Planes and cursors are shown without layers: as small images, with the pixels of a layer. Counted is what a
// frame has to blend and to upload for that.

#include "support/Frames.h"
#include "support/QmlDocument.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphCursorY.h"
#include "view/base/PaintedFigure.h"
#include "view/base/XYScale.h"
#include "support/Table.h"

#include <QPainter>
#include <QSGImageNode>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <QSGTexture>
#include <QSet>

#include <numeric>

namespace {

// The nodes of all watched items, and those items of which something has changed.
QHash<QQuickItem *, QSGNode *> nodes;
QSet<QQuickItem *> changed;

template <typename Item> class Watched : public Item
{
public:
    ~Watched() override
    {
        nodes.remove(this);
        changed.remove(this);
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, QQuickItem::UpdatePaintNodeData *data) override
    {
        changed.insert(this);
        return nodes[this] = Item::updatePaintNode(old, data);
    }
};

// In pixels: what the nodes of changed items show, and what of it is in other textures than those.
QPair<int, int> shownPixels(QSet<QSGTexture *> &textures)
{
    QPair<int, int> pixels(0, 0);
    QSet<QSGTexture *> shown;
    for (auto node = nodes.cbegin(); node != nodes.cend(); ++node) {
        const bool counts = changed.contains(node.key());
        for (QSGNode *child = node.value()->firstChild(); child; child = child->nextSibling()) {
            auto *image = dynamic_cast<QSGImageNode *>(child);
            auto *painted = dynamic_cast<QSGRenderNode *>(child);
            const QSizeF size = image     ? image->rect().size()
                                : painted ? painted->rect().size()
                                          : node.key()->size();
            const int area = int(size.width() * size.height());
            pixels.first += counts * area;
            if (image && !textures.contains(image->texture()) && !shown.contains(image->texture()))
                pixels.second += counts * area;
            if (image)
                shown.insert(image->texture());
        }
        // A layer has its picture in the node itself.
        if (!node.value()->firstChild() && dynamic_cast<QSGGeometryNode *>(node.value()))
            pixels.first += counts * int(node.key()->width() * node.key()->height());
    }
    textures = shown;
    return pixels;
}

// %1: of the plane, %2: of both axes, %3: of the cursor. Lines and labels meet where there are no margins.
const char *const chart = R"(
    GraphView {
        id: view
        width: 300; height: 200
        property alias horizontal: horizontal
        property alias cursor: cursor
        axes: [
            ValueAxis { id: horizontal; maxValue: 100; unit: "MHz"; linesPlane: plane; labelsPlane: plane; %2 },
            ValueAxis {
                id: vertical
                alignment: Qt.AlignLeft; maxValue: 10; unit: "dB"; linesPlane: plane; labelsPlane: plane; %2
            }
        ]
        XYScale { id: plane; %1 }
        GraphPlot {
            id: plot
            plotData: PlotSeries {
                axisX: horizontal; axisY: vertical; yData: Array.from({ length: 201 }, (_, i) => i * 7 % 83 / 10)
                xInterval: 0.5
            }
        }
        GraphCursor {
            id: cursor
            visible: true; posIndex: 80
            markers: [
                GraphMarker { posValue: 45; visible: true; color: "red"; deltaY: 30 },
                GraphMarker { posValue: 30.5; visible: true; color: "blue" }
            ]
            %1
            %3
        }
        GraphCursorY { id: level; visible: true; paintedWidth: 7; %1 }
    })";

// %1: the margin of both axes, %2: the plane of their labels.
const char *const wholeScreen = R"(
    import watched 1.0 as W
    GraphView {
        width: 800; height: 480
        property alias horizontal: horizontal
        property alias cursor: cursor
        axes: [
            ValueAxis {
                id: horizontal; maxValue: 1000; maxVisible: 10; margin: %1; unit: "s"; linesPlane: grid; labelsPlane: %2
            },
            ValueAxis {
                id: vertical
                alignment: Qt.AlignLeft; maxValue: 10; maxVisible: 10; margin: %1; linesPlane: grid; labelsPlane: %2
            }
        ]
        W.XYScale { id: grid }
        W.XYScale { id: labels }
        W.XYScale {}
        GraphPlot { plotData: PlotSeries { axisX: horizontal; axisY: vertical; yData: [1, 4, 2, 8, 3, 9] } }
        W.GraphCursor { id: cursor; visible: true; markers: GraphMarker { posIndex: 4; visible: true } }
    })";

// A sample is a pixel wide.
const char *const markedScreen = R"(
    import watched 1.0 as W
    GraphView {
        width: 800; height: 480
        axes: [
            ValueAxis { id: horizontal; maxValue: 799; maxVisible: 799; linesPlane: plane; labelsPlane: plane },
            ValueAxis {
                id: vertical
                alignment: Qt.AlignLeft; maxValue: 479; maxVisible: 479; linesPlane: plane; labelsPlane: plane
            }
        ]
        XYScale { id: plane }
        GraphPlot { plotData: PlotSeries { axisX: horizontal; axisY: vertical; yData: new Array(800).fill(9) } }
        W.GraphCursor {
            id: cursor; visible: true
            markers: [
                GraphMarker { posValue: 400; visible: true; showDelta: false },
                GraphMarker { posValue: 600; visible: true; deltaY: 240 }
            ]
        }
        W.GraphCursorY { id: level; visible: true }
    })";

} // namespace

class tst_stamps : public QObject
{
    Q_OBJECT

private slots:
    void textsAreToldApart();
    void linesAreJoined();
    void othersArePaintedIntoALayer();
    void showsThePixelsOfALayer_data();
    void showsThePixelsOfALayer();
    void blendsAndUploadsLittle_data();
    void blendsAndUploadsLittle();
    void linesSideBySideAreOneImage_data();
    void linesSideBySideAreOneImage();
    void linesOfScaledLayers();
};

void tst_stamps::textsAreToldApart()
{
    // The second begins where the first ends, in another row; the last comes in two pieces.
    graph::PaintedTexts known;
    const auto figure = graph::recordedFigure(QSize(200, 100), known, 0.0, [](QPainter *painter) {
        const double width = QFontMetricsF(painter->font(), painter->device()).horizontalAdvance("ab");
        painter->drawText(QPointF(10.0, 20.0), "ab");
        painter->drawText(QPointF(10.0 + width, 50.0), "cd");
        painter->drawText(QPointF(12.0 + width + width, 50.0), "e f");
    });
    QStringList texts;
    for (const graph::PlacedMark &mark : figure.marks)
        texts.append(mark.mark.text);
    QVERIFY(figure.isComplete);
    QCOMPARE(texts, (QStringList{"ab", "cd", "e f"}));
}

void tst_stamps::linesAreJoined()
{
    // Lines of 9 pixels from 2,2: one below the other, or beside it, and as long.
    using Draw = std::function<void(QPainter *)>;
    const auto marks = [](const Draw &between, const QLine &second) {
        graph::PaintedTexts known;
        return graph::recordedFigure(QSize(50, 50), known, 0.0,
                                     [&](QPainter *painter) {
                                         painter->drawLine(second.dx() ? QLine(2, 2, 9, 2)
                                                                       : QLine(2, 2, 2, 9));
                                         between(painter);
                                         painter->drawLine(second);
                                     })
            .marks.size();
    };
    const QLine right(3, 2, 3, 9);
    const Draw noChange = [](QPainter *) {};
    QCOMPARE(marks(noChange, right), 1);
    QCOMPARE(marks(noChange, QLine(2, 3, 9, 3)), 1);
    QCOMPARE(marks([](QPainter *painter) { painter->setPen(QColor(1, 2, 3, 4)); }, right), 1);
    for (const QLine &other : {QLine(4, 2, 4, 9), QLine(1, 2, 1, 9), QLine(3, 2, 3, 8), QLine(3, 3, 3, 9),
                               QLine(2, 4, 9, 4), QLine(2, 1, 9, 1), QLine(3, 3, 9, 3)})
        QVERIFY2(marks(noChange, other) == 2, qPrintable(QString::number(other.x1() * 10 + other.y1())));
    QCOMPARE(marks([](QPainter *painter) { painter->setPen(QPen(Qt::black, 2.0)); }, right), 2);
    QCOMPARE(marks([](QPainter *painter) { painter->setPen(Qt::DashLine); }, right), 2);
    QCOMPARE(marks([](QPainter *painter) { painter->drawText(20, 20, "a"); }, right), 3);
}

void tst_stamps::othersArePaintedIntoALayer()
{
    using Draw = std::function<void(QPainter *)>;
    const auto isTakenDown = [](const Draw &draw) {
        graph::PaintedTexts known;
        return graph::recordedFigure(QSize(50, 50), known, 0.0,
                                     [&](QPainter *painter) {
                                         draw(painter);
                                         painter->drawLine(QLineF(1.0, 1.0, 9.0, 9.0));
                                     })
            .isComplete;
    };
    QVERIFY(isTakenDown([](QPainter *painter) { painter->translate(0.5, -2.0); }));
    const Draw others[] = {
        [](QPainter *painter) { painter->setPen(QPen(Qt::Dense4Pattern, 1.0)); },
        [](QPainter *painter) { painter->setRenderHint(QPainter::Antialiasing); },
        [](QPainter *painter) { painter->scale(2.0, 1.0); },
        [](QPainter *painter) { painter->drawRect(1, 1, 5, 5); },
        [](QPainter *painter) { painter->drawPoint(1, 1); },
        [](QPainter *painter) { painter->drawLine(QLineF(0.0, 0.0, 1e12, 1.0)); },
        [](QPainter *painter) { painter->drawImage(0, 0, QImage(9, 9, QImage::Format_RGB32)); },
        [](QPainter *painter) {
            for (int i = 0; i < 300; ++i)
                painter->drawLine(i % 50, 0, 9, 9);
        }};
    for (const Draw &other : others)
        QVERIFY2(!isTakenDown(other), qPrintable(QString::number(&other - others)));
}

void tst_stamps::showsThePixelsOfALayer_data()
{
    columns<QString, QString>({"axes", "cursor"});
    const struct
    {
        const char *name;
        const char *axes;
        const char *cursor;
    } rows[] = {
        {"margins", "margin: 40", ""},
        {"labels over lines", "", ""},
        {"wide lines", "margin: 40; lineWidth: 3", "paintedWidth: 9"},
        {"dashes", "lineDashPattern: [4, 3]; lineColor: \"blue\"", "renderTarget: GraphCursor.Image"},
        {"translucent lines cross", "lineColor: \"#80ff0000\"", "paintedWidth: 30"},
        {"translucent lines on opaque ones", "", "Component.onCompleted: vertical.lineColor = \"#80ff0000\""},
        {"translucent labels", "margin: 40; labelColor: \"#8000ff00\"", "color: \"blue\""},
        {"invisible lines", "lineColor: \"transparent\"", ""},
        {"no lines", "axisStyle: ValueAxis.LabelsOnly", ""},
        {"scaled", "margin: 40", "scale: 2"},
        {"translucent", "margin: 40", "opacity: 0.5; Component.onCompleted: plane.opacity = 0.5"},
        {"nothing", "visible: false", ""},
        {"in framebuffers", "margin: 30", "Component.onCompleted: plane.renderTarget = 1"},
        {"odd in framebuffers", "lineWidth: 3", "Component.onCompleted: plane.renderTarget = 1"},
        {"wide in framebuffers", "lineWidth: 4", "Component.onCompleted: plane.renderTarget = 1"},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.axes << row.cursor;
}

void tst_stamps::showsThePixelsOfALayer()
{
    QFETCH(QString, axes);
    QFETCH(QString, cursor);
    // A size of its own keeps an item in a layer.
    QQuickWindow windows[2];
    std::unique_ptr<QmlDocument> documents[2];
    for (int i = 0; i < 2; ++i) {
        documents[i] = std::make_unique<QmlDocument>(
            QString(chart).arg(i ? "textureSize: Qt.size(width, height)" : "", axes, cursor).toUtf8());
        windows[i].resize(300, 200);
        qobject_cast<QQuickItem *>(documents[i]->root())->setParentItem(windows[i].contentItem());
        windows[i].show();
        QVERIFY(QTest::qWaitForWindowExposed(&windows[i]));
    }
    QImage before;
    for (double shift : {0.0, 3.7, 8.1, 11.0, 20.5}) {
        for (const auto &document : documents) {
            document->object("horizontal")->setProperty("maxVisible", 60 + shift);
            document->object("horizontal")->setProperty("minVisible", shift);
        }
        // Again while all rests but the cursors, which come to the edges, the markers, their glow and their texts.
        for (int index : {0, 70, 87, 92, 60, 59, 200}) {
            for (const auto &document : documents) {
                document->object("cursor")->setProperty("posIndex", index);
                document->object("level")->setProperty("posIndex", index % 11);
            }
            const QImage stamped = frameOf(&windows[0]);
            QCOMPARE(stamped.size(), QSize(300, 200));
            QVERIFY(stamped != before);
            QCOMPARE(stamped, frameOf(&windows[1]));
            before = stamped;
        }
    }
}

void tst_stamps::blendsAndUploadsLittle_data()
{
    columns<QString, QString>({"margin", "labelsPlane"});
    QTest::newRow("labels in margins") << "40"
                                       << "labels";
    QTest::newRow("labels over lines") << "0"
                                       << "grid";
}

void tst_stamps::blendsAndUploadsLittle()
{
    QFETCH(QString, margin);
    QFETCH(QString, labelsPlane);
    registerTypes();
    qmlRegisterType<Watched<XYScale>>("watched", 1, 0, "XYScale");
    qmlRegisterType<Watched<GraphCursor>>("watched", 1, 0, "GraphCursor");
    QmlDocument document(QString(wholeScreen).arg(margin, labelsPlane).toUtf8());
    QQuickWindow window;
    window.resize(800, 480);
    qobject_cast<QQuickItem *>(document.root())->setParentItem(window.contentItem());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software)
        QSKIP("there the cursor has a framebuffer");
    // Once it rests again: planes that move are painted into the window.
    QSet<QSGTexture *> textures;
    const auto count = [&](auto change) {
        frameOf(&window);
        frameOf(&window);
        shownPixels(textures);
        changed.clear();
        change();
        frameOf(&window);
        frameOf(&window);
        return shownPixels(textures);
    };
    constexpr int layer = 800 * 480;
    QObject *axis = document.object("horizontal");
    const auto pan = [axis](double shift) {
        axis->setProperty("maxVisible", 10 + shift);
        axis->setProperty("minVisible", shift);
    };
    pan(1.0);
    // Of both planes, the empty one, and the cursor that follows its sample.
    const auto panned = count([&] { pan(1.1); });
    QVERIFY2(panned.first > 1000 && panned.first < layer / 12, qPrintable(QString::number(panned.first)));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // With Qt 6 some labels are rendered again; why is not known yet.
    QCOMPARE(panned.second, 0);
    QVector<QPointer<QSGTexture>> former;
    for (QSGTexture *texture : qAsConst(textures))
        former.append(texture);
    const auto relabelled = count([&] { pan(200.0); });
    QVERIFY2(relabelled.second > 100 && relabelled.second < 5000,
             qPrintable(QString::number(relabelled.second)));
    // Nothing is kept of labels that have gone.
    for (const QPointer<QSGTexture> &texture : qAsConst(former))
        QVERIFY(!texture || textures.contains(texture));
#endif
    pan(1.0);
    QObject *cursor = document.object("cursor");
    cursor->setProperty("posIndex", 2);
    const auto moved = count([cursor] { cursor->setProperty("posIndex", 3); });
    QVERIFY2(moved.first > 1000 && moved.first < layer / 50, qPrintable(QString::number(moved.first)));
    QVERIFY2(moved.second < 500, qPrintable(QString::number(moved.second))); // the text of the distance
}

void tst_stamps::linesSideBySideAreOneImage_data()
{
    columns<int, int, int>({"index", "images", "lines"});
    // Of 480 pixels; the text of the second marker's distance is an image, too, and between the marker and the cursor.
    QTest::newRow("apart") << 100 << 4 << 13;
    QTest::newRow("on a marker") << 400 << 3 << 10;
    QTest::newRow("on the glow of the first") << 397 << 3 << 12;
    QTest::newRow("on the glow of the second") << 603 << 3 << 12;
    QTest::newRow("text on a marker") << 200 << 5 << 13;
}

void tst_stamps::linesSideBySideAreOneImage()
{
    registerTypes();
    qmlRegisterType<Watched<GraphCursor>>("watched", 1, 0, "GraphCursor");
    qmlRegisterType<Watched<GraphCursorY>>("watched", 1, 0, "GraphCursorY");
    QmlDocument document(markedScreen);
    QQuickWindow window;
    window.resize(800, 480);
    qobject_cast<QQuickItem *>(document.root())->setParentItem(window.contentItem());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QFETCH(int, index);
    document.object("cursor")->setProperty("posIndex", index);
    document.object("level")->setProperty("posIndex", 50);
    frameOf(&window);
    const auto areas = [&](const char *item) {
        QVector<int> all;
        QSGNode *node = nodes.value(document.object<QQuickItem>(item));
        for (QSGNode *child = node->firstChild(); child; child = child->nextSibling()) {
            if (const auto *image = dynamic_cast<QSGImageNode *>(child))
                all.append(int(image->rect().width() * image->rect().height()));
        }
        return all;
    };
    QTEST(int(areas("cursor").size()), "images");
    QFETCH(int, lines);
    const QVector<int> shown = areas("cursor");
    const int pixels = std::accumulate(shown.begin(), shown.end(), 0);
    QVERIFY2(pixels >= 479 * lines && pixels < 480 * lines + 1000, qPrintable(QString::number(pixels)));
    const QVector<int> level = areas("level");
    QCOMPARE(level.size(), 1);
    QVERIFY2(level.first() >= 799 * 3 && level.first() <= 800 * 3,
             qPrintable(QString::number(level.first())));
}

// They cover what the pixels become that they cover in a layer of the item's size.
void tst_stamps::linesOfScaledLayers()
{
    QmlDocument document(R"(
        GraphView {
            width: 101; height: 101
            axes: [
                ValueAxis { id: horizontal; maxValue: 100; linesPlane: plane; labelsPlane: texts },
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100; linesPlane: plane; labelsPlane: texts }
            ]
            series: [
                PlotSeries { id: high; axisX: horizontal; axisY: vertical; xInterval: 0.1; xFirstValue: 20 },
                PlotSeries { id: low; axisX: horizontal; axisY: vertical; xInterval: 0.1; xFirstValue: 20 }
            ]
            XYScale { id: texts }
            XYScale { id: plane; width: 101; height: 101 }
            AreaPlot { id: area; width: 101; height: 101; penColor: "red"; maxData: high; minData: low }
            GraphPlot { id: fill; width: 101; height: 101; penColor: "red"; useTransparencyForFillPlot: false; plotData: high }
            ContainerPlot {
                id: integral; width: 101; height: 101; axisX: horizontal; axisY: vertical
                IntegralPainter { plotParent: integral; plotData: high; fillOpacity: 1; begin: 30; end: 60 }
            }
            ContainerPlot {
                id: segment; width: 101; height: 101; axisX: horizontal; axisY: vertical
                SegmentPainter { plotParent: segment; point1X: -9; point1Y: 40; point2X: 109; point2Y: 40; lineWidth: 3 }
            }
            GraphPlot {
                id: points; width: 101; height: 101; plotStyle: GraphPlot.ScatterPlot; graphPoint: GraphPointCross { pointSize: 300 }
                plotData: PlotSeries { axisX: horizontal; axisY: vertical; yData: [30, 70]; xInterval: 50 }
            }
            GraphPlot {
                id: plot; width: 101; height: 101; plotStyle: GraphPlot.LinePlot; penColor: "red"
                plotData: PlotSeries { axisX: horizontal; axisY: vertical; yData: [30, 30, 30]; xInterval: 50 }
            }
            GraphCursor {
                id: cursor; width: 101; height: 101; visible: true; posIndex: 1
                markers: [
                    GraphMarker { posValue: 0; visible: true; showDelta: false },
                    GraphMarker { posValue: 100; visible: true; showDelta: false }
                ]
            }
            GraphCursorY { id: level; width: 101; height: 101; visible: true; posIndex: 20 }
        })");
    document.object("high")->setProperty("yData", QVariant::fromValue(QVector<double>(501, 70.0)));
    document.object("low")->setProperty("yData", QVariant::fromValue(QVector<double>(501, 10.0)));
    QCoreApplication::processEvents();
    const QImage empty = picture([](QPainter *) {}, QSize(101, 101));
    for (const char *const id :
         {"plane", "plot", "cursor", "level", "area", "fill", "integral", "segment", "points"}) {
        auto *item = document.object<QQuickPaintedItem>(id);
        item->setRenderTarget(QQuickPaintedItem::Image);
        const QSize size(101, 101);
        const auto scaled = [&](int scale) {
            return picture(
                [&](QPainter *painter) {
                    painter->scale(scale, scale);
                    item->paint(painter);
                },
                scale * size);
        };
        QVERIFY2(scaled(1) != empty, id);
        for (const int scale : {2, 3}) {
            const QRect middle(2 * scale, 2 * scale, 94 * scale, 94 * scale); // beside the ends of lines
            QVERIFY2(scaled(scale).copy(middle) == scaled(1).scaled(scale * size).copy(middle), id);
        }
    }
}

QTEST_MAIN(tst_stamps)
#include "tst_stamps.moc"
