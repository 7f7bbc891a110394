// Who repaints, and who does not: seen in a window that is shown, because a call of paint() would hide that
// nobody asked for it.

#include "kit/plots/ColorScale.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "support/QmlDocument.h"

#include "cursors/GraphCursorY.h"
#include "platform/bus/OrnData.h"
#include "platform/ui/BaseFormatter.h"
#include "plots/AreaPlot.h"
#include "plots/ChannelPlot.h"
#include "plots/ContainerPlot.h"
#include "plots/GraphBands.h"
#include "plots/HeatmapPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/WorldPlot.h"
#include "support/Table.h"

#include <QQuickWindow>
#include <QTimer>

namespace {

int paints = 0;

template <typename Item> class Counted : public Item
{
public:
    void paint(QPainter *painter) override
    {
        paints += this->property("isWatched").toBool();
        Item::paint(painter);
    }
};

template <typename Item> void registerCounted(const char *name)
{
    qmlRegisterType<Counted<Item>>("counted", 1, 0, name);
}

// Everything that a property may be given in place of what it holds.
const char *const scene = R"(
    import counted 1.0 as C
    Item {
        ValueAxis { id: horizontal; maxValue: 10; maxVisible: 10 }
        ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 10; maxVisible: 10 }
        ValueAxis { id: spareX; maxValue: 20; maxVisible: 20 }
        ValueAxis { id: spareY; alignment: Qt.AlignLeft; maxValue: 20; maxVisible: 20 }
        PlotSeries { id: series; axisX: horizontal; axisY: vertical; xInterval: 1; yData: [1, 2, 3, 4, 5, 4, 3, 2, 1, 2, 3] }
        PlotSeries { id: lower; axisX: horizontal; axisY: vertical; xInterval: 1; yData: [1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1] }
        PlotSeries { id: spareSeries; axisX: horizontal; axisY: vertical; xInterval: 1; yData: [5, 4, 3, 2, 1, 2, 3, 4, 5, 6, 7] }
        PlotRegions {
            id: regions
            axisX: horizontal; axisY: vertical
            regions: PlotRegion { begin: 2; end: 6; value: 8; name: "region" }
        }
        GraphPlot { id: sparePlot; plotData: spareSeries; width: 50; height: 50 }
        GraphPointDot { id: sparePoint }
        XYScale { id: sparePlane }
        Item { id: spareItem }
        %1
    })";
const QStringList spares{"spareX",     "spareY",     "spareSeries", "sparePlot",
                         "sparePoint", "sparePlane", "spareItem"};

// Another value of the same type, near enough to be accepted everywhere.
QVariant otherValue(const QMetaProperty &property, const QVariant &value)
{
    if (property.name() == QByteArray("alignment")) // on the other side
        return int(value.toInt() == Qt::AlignBottom ? Qt::AlignTop : Qt::AlignRight);
    if (property.isEnumType()) {
        const QMetaEnum keys = property.enumerator();
        int key = 0;
        while (keys.value(key) == value.toInt())
            ++key;
        return keys.value(key);
    }
    switch (value.userType()) {
    case QMetaType::Bool:
        return !value.toBool();
    case QMetaType::Int:
        return value.toInt() + (QByteArray(property.name()).contains("OnScreen") ? 30 : 1);
    case QMetaType::UInt:
        return value.toUInt() + 1;
    case QMetaType::Double:
        return value.toDouble() + (value.toDouble() < 1.0 ? 0.6 : -0.6);
    case QMetaType::QString:
        return QString("Hz"); // a unit that is known
    case QMetaType::QStringList:
        return value.toStringList() << "x";
    case QMetaType::QColor:
        return QColor(0, 128, 128, 127); // with the alpha that a painted cursor gives its own
    case QMetaType::QPointF:
        return value.toPointF() + QPointF(1, 1);
    case QMetaType::QRectF:
        return QRectF(0.25, 0.25, 0.5, 0.5);
    case QMetaType::QFont:
        return QFont("Roboto", 9);
    case QMetaType::QVariant:
        return "text";
    }
    if (value.userType() == qMetaTypeId<QVector<double>>())
        return QVariant::fromValue(value.value<QVector<double>>() << 7.0 << 8.0);
    if (value.userType() == qMetaTypeId<QList<qreal>>())
        return QVariant::fromValue(value.value<QList<qreal>>() << 7.0 << 8.0);
    return QVariant();
}

// Their signals are never emitted.
const QStringList untold{"useIntermittentPlot", "testPointState", "staysOnScreen",
                         "dbusAddress",         "labelFont",      "colorMap"};

class Counter : public QObject
{
    Q_OBJECT

public slots:
    void add() { ++count; }

public:
    int count = 0;
};

// Name | the objects: `item` is watched, the properties of `object`, or of the item itself, are written |
// those properties that change nothing to be seen, or only with the next repaint; with a star those that
// repaint at each write, with a question mark those that may do either.
const char *const rows = R"(
GraphPlot | C.GraphPlot { id: item; plotData: series } | penColor useIntermittentPlot
WorldPlot | C.WorldPlot { id: item; plotData: series } | penColor useIntermittentPlot scaleAxisX scaleAxisY
AreaPlot | C.AreaPlot { id: item; maxData: series; minData: lower } | penColor
HeatmapPlot | C.HeatmapPlot { id: item; $axes } | penColor testPointState dataDirectory dataFilePath*
ChannelPlot | C.ChannelPlot { id: item; plotData: regions } | penColor
GraphBands | C.GraphBands { id: item; plotData: regions } | penColor
ContainerPlot | C.ContainerPlot { id: item; $axes } | penColor
GraphPointDot | $decorated |
GraphPointCircle | $decorated |
GraphPointCross | $decorated |
GraphPointHorizontalLine | $decorated |
GraphPointVerticalLine | $decorated |
GraphPointMarker | $decorated |
GraphPointReflections | $decorated |
GraphPointActiveMarker | $decorated |
GraphPointPictogramMarker | $decorated |
CrossPainter | $figure | plotParent
TextPainter | $figure | plotParent
SegmentPainter | $figure | plotParent
CustomPainter | $figure | plotParent
IntegralPainter | $figure |
PlotSeries | $name { id: object; $axes; yData: [1, 2] } C.GraphPlot { id: item; plotData: object } | dbusAddress
PlotPoints | $name { id: object; $axes; yData: [1, 2] } C.GraphPlot { id: item; plotData: object } | dbusAddress
PlotBands | $name { id: object; $axes; yData: [1, 2] } C.GraphPlot { id: item; plotData: object } | dbusAddress
PlotRegions | $name { id: object; $axes; regions: PlotRegion {} } C.ChannelPlot { id: item; plotData: object } | dbusAddress
PlotRegion | PlotRegions { id: all; $axes; regions: $name { id: object } } C.ChannelPlot { id: item; plotData: all } | plotStyle
lower envelope | PlotSeries { id: object } C.AreaPlot { id: item; minData: object; maxData: series } | dbusAddress
GraphCursor | GraphView { $view C.$name { id: item } } | $cursor
GraphCursorY | GraphView { $view C.$name { id: item } } | $cursor
GraphMarker | GraphView { $view C.GraphCursor { id: item; markers: GraphMarker { id: object } } } | label
source | GraphPlot { id: object; plotData: series } C.WorldPlot { id: item; graphPlot: object } | penColor minLineWidth maxLineWidth useIntermittentPlot useTransparencyForFillPlot selectedPoint graphPoint destroyed
x of a plot | ValueAxis { $x } C.GraphPlot { id: item; plotData: PlotSeries { axisX: object; axisY: vertical; yData: [1] } } | $axis minVisible* maxVisible*
y of a plot | ValueAxis { $y } C.GraphPlot { id: item; plotData: PlotSeries { axisX: horizontal; axisY: object; yData: [1] } } | $axis minVisible* maxVisible*
x of a plane | GraphView { width: 100; height: 100; axes: [ValueAxis { $x; $planes }] C.XYScale { id: item } GraphPlot { axisX: object } } | $axis
y of a plane | GraphView { width: 100; height: 100; axes: [ValueAxis { $y; $planes }] C.XYScale { id: item } GraphPlot { axisY: object } } | $axis
WaterfallPlot | C.WaterfallPlot { id: item; $axes; from: 0; to: 9; Component.onCompleted: { addRow([1, 2, 8, 4]); addRow([3, 1, 2, 7]) } } | penColor plotData? series colorMap
ColorScale | C.WaterfallPlot { id: shown; from: 0; to: 9; unit: "V"; $axes } C.ColorScale { id: item; plot: shown } | draggable
Trace | C.Trace { id: item; $axes; values: [1, 2, 8, 4]; style: C.Trace.Area } | color? plotData? useIntermittentPlot address name readings
LimitLine | C.LimitLine { id: item; $axes; positions: [0, 5, 9]; values: [4, 5, 6] } | color? plotData? useIntermittentPlot series
zoom | Item { property QtObject zoomRect: ZoomRect { id: object } C.GraphPlot { id: item; plotData: series } } | boundingRect minWidth minHeight zoomAxis destroyed
)";
const QVector<QPair<QString, QString>> abbreviations{
    {"$axes", "axisX: horizontal; axisY: vertical"},
    {"$decorated", "C.GraphPlot { id: item; plotData: series; graphPoint: $name { id: object } }"},
    {"$figure", "C.ContainerPlot { id: item; axisX: horizontal; axisY: vertical; $name { id: object } }"},
    {"$view",
     "width: 100; height: 100; axes: [ValueAxis { id: viewX; maxValue: 10; linesPlane: plane; labelsPlane: "
     "plane },"
     "ValueAxis { id: viewY; maxValue: 10; alignment: Qt.AlignLeft; linesPlane: plane; labelsPlane: plane }]"
     "XYScale { id: plane } GraphPlot { plotData: PlotSeries { axisX: viewX; axisY: viewY; yData: "
     "[1, 2, 3, 4, 5] } }"},
    {"$y", "$x; alignment: Qt.AlignLeft"},
    {"$x", "id: object; maxValue: 10; maxVisible: 10"},
    {"$planes", "linesPlane: item; labelsPlane: item"},
    {"$cursor", "panMargin font staysOnScreen autoPrimaryPlot primaryPlot? visible*"},
    {"$axis",
     "lineColor lineJoinStyle lineDashPattern lineWidth lineStyle labelColor labelFont staggered "
     "tickInterval "
     "numTicks dynamicTicksRatio baseline tickLabels customInterval labelsPlane linesPlane linePen labelPen"},
};

} // namespace

class tst_repaint : public QObject
{
    Q_OBJECT

public:
    // Only frame() makes frames, so that what comes with the same frame is seen as one.
    static void initMain() { qputenv("QT_QPA_UPDATE_IDLE_TIME", "1000000"); }

private slots:
    void initTestCase()
    {
        registerTypes();
        registerCounted<AreaPlot>("AreaPlot");
        registerCounted<ChannelPlot>("ChannelPlot");
        registerCounted<ContainerPlot>("ContainerPlot");
        registerCounted<GraphBands>("GraphBands");
        registerCounted<GraphCursor>("GraphCursor");
        registerCounted<GraphCursorY>("GraphCursorY");
        registerCounted<GraphPlot>("GraphPlot");
        registerCounted<HeatmapPlot>("HeatmapPlot");
        registerCounted<WorldPlot>("WorldPlot");
        registerCounted<graph::ColorScale>("ColorScale");
        registerCounted<graph::LimitLine>("LimitLine");
        registerCounted<graph::Trace>("Trace");
        registerCounted<graph::WaterfallPlot>("WaterfallPlot");
        registerCounted<XYScale>("XYScale");
        m_window.resize(200, 200);
        m_window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    }

    void everyChangeRepaintsOnce_data();
    void everyChangeRepaintsOnce();
    void containersFollowTheirChildren();
    void neighboursAreNotRepainted();
    void looksOfChartsAreShown();

private:
    // Paints since the frame before.
    int frame()
    {
        // What changed is told in the next pass of the event loop, and that may change something in turn.
        for (int pass = 0; pass < 4; ++pass)
            QCoreApplication::processEvents();
        paints = 0;
        m_window.grabWindow();
        return paints;
    }

    QQuickWindow m_window;
};

void tst_repaint::everyChangeRepaintsOnce_data()
{
    columns<QString, QString>({"items", "silent"});
    for (const QString &line : QString(rows).split('\n', Qt::SkipEmptyParts)) {
        QStringList cells = line.split('|');
        const QString name = cells[0].trimmed();
        for (QString &cell : cells) {
            for (const auto &abbreviation : abbreviations)
                cell.replace(abbreviation.first, abbreviation.second);
            cell = cell.replace("$name", name).trimmed();
        }
        QTest::newRow(qPrintable(name)) << cells[1] << cells[2];
    }
}

void tst_repaint::everyChangeRepaintsOnce()
{
    QFETCH(QString, items);
    QFETCH(QString, silent);
    QmlDocument document(QString(scene).arg(items).toUtf8());
    auto *root = qobject_cast<QQuickItem *>(document.root());
    root->setParentItem(m_window.contentItem());
    auto *item = document.object<QQuickPaintedItem>("item");
    item->setSize(QSizeF(100, 100));
    item->setProperty("isWatched", true);
    QObject *object = items.contains("id: object") ? document.object("object") : item;
    for (QTimer *timer : item->findChildren<QTimer *>())
        timer->stop(); // that of a heat map
    OrnData values;
    BaseFormatter *formatter = getFormatter("V");
    formatter->setParent(root);
    QVector<QObject *> others{&values, formatter};
    QObject *horizontalSpare = document.object("spareX");
    for (const QString &id : spares)
        others.append(document.object(id));
    QCOMPARE(frame(), 1);
    QCOMPARE(frame(), 0);

    QStringList announced;
    for (const char *type : {"Trace", "LimitLine", "WaterfallPlot"}) {
        if (items.startsWith(QString("C.%1 { id: item").arg(type)))
            announced << "has OrnData as its series";
    }
    if (items.startsWith("C.Trace"))
        announced << "is given its data twice";
    if (items.startsWith("C.WaterfallPlot { id: item"))
        announced << "unknown colorMap"
                  << "unknown colorMap";
    for (const QString &line : announced)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(line));
    QStringList wrong;
    const auto write = [&](const QMetaProperty &property) {
        const QVariant before = property.read(object);
        if (!QMetaType(before.userType()).flags().testFlag(QMetaType::PointerToQObject)) {
            const QVariant value = otherValue(property, before);
            return property.write(object, value) ? value : QVariant();
        }
        for (QObject *other : others) {
            if (other == horizontalSpare && property.name() == QByteArray("axisY"))
                continue; // data take it, but not their plots
            const QVariant value = QVariant::fromValue(other);
            if (property.write(object, value) && property.read(object).value<QObject *>() == other)
                return value;
        }
        return QVariant();
    };
    const QMetaObject *base = qobject_cast<QQuickPaintedItem *>(object) ? &QQuickPaintedItem::staticMetaObject
                              : qobject_cast<QQuickItem *>(object)      ? &QQuickItem::staticMetaObject
                                                                        : &QObject::staticMetaObject;
    for (int i = base->propertyCount(); i < object->metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = object->metaObject()->property(i);
        if (!property.isWritable())
            continue;
        const auto is = [&, names = silent.split(' ')](const char *sign) {
            return names.contains(property.name() + QString(sign));
        };
        if (is("?"))
            continue;
        Counter told;
        if (property.hasNotifySignal())
            connect(object, property.notifySignal(), &told,
                    told.metaObject()->method(told.metaObject()->indexOfSlot("add()")));
        const QVariant value = write(property);
        const int painted = frame();
        const bool isTold =
            !property.hasNotifySignal() || told.count > 0 || (is("") && untold.contains(property.name()));
        told.count = 0;
        property.write(object, value);
        const int again = frame();
        if (!value.isValid() || painted != !is("") || again != is("*") || !isTold ||
            (told.count > 0 && !is("*")))
            wrong.append(QString("%1: %2 paints, again: %3, told: %4")
                             .arg(property.name())
                             .arg(painted)
                             .arg(again)
                             .arg(isTold));
    }
    if (object != item) {
        delete object;
        if (frame() != 1 && !silent.contains("destroyed"))
            wrong.append("destroyed");
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

void tst_repaint::containersFollowTheirChildren()
{
    QmlDocument document(
        "import counted 1.0 as C\nC.ContainerPlot { width: 100; height: 100; CrossPainter { id: figure } }");
    auto *container = qobject_cast<ContainerPlot *>(document.root());
    auto *figure = document.object<QQuickItem>("figure");
    container->setProperty("isWatched", true);
    container->setParentItem(m_window.contentItem());
    QCOMPARE(frame(), 1);
    for (int i = 1; i < 1000; ++i)
        figure->setProperty("point1X", i);
    QCOMPARE(frame(), 1);
    figure->setVisible(false);
    QCOMPARE(frame(), 1);
    figure->setParentItem(nullptr);
    QCOMPARE(frame(), 1);
    figure->setProperty("point1X", -1);
    QCOMPARE(frame(), 0);
    figure->setParentItem(container);
    QCOMPARE(frame(), 1);
    container->scheduleRedraw();
    QCOMPARE(frame(), 1);
}

// What changes beside a plot costs no pass over its samples.
void tst_repaint::neighboursAreNotRepainted()
{
    QmlDocument document(R"(
        import counted 1.0 as C
        GraphView {
            width: 100; height: 100
            axes: [
                ValueAxis { id: horizontal; maxValue: 300; linesPlane: plane; labelsPlane: plane },
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; linesPlane: plane; labelsPlane: plane }
            ]
            XYScale { id: plane }
            C.GraphPlot {
                id: plot
                property bool isWatched: true
                plotData: PlotSeries { axisX: horizontal; axisY: vertical; yData: [1, 2, 3] }
            }
            GraphPlot {
                id: neighbour
                plotData: PlotSeries { id: series; axisX: horizontal; axisY: vertical; yData: [1, 2, 3] }
            }
            GraphCursor { id: cursor }
        })");
    qobject_cast<QQuickItem *>(document.root())->setParentItem(m_window.contentItem());
    QCOMPARE(frame(), 1);
    document.object("cursor")->setProperty("position", 0.5);
    QCOMPARE(frame(), 0);
    document.object("series")->setProperty("label", "another");
    QCOMPARE(frame(), 0);
    document.object("neighbour")->setProperty("visible", false);
    QCOMPARE(frame(), 0);
}

void tst_repaint::looksOfChartsAreShown()
{
    QmlDocument document("import counted 1.0 as C\n"
                         "C.GraphCursor { width: 100; height: 100; property bool isWatched: true }");
    auto *cursor = qobject_cast<GraphCursor *>(document.root());
    cursor->setParentItem(m_window.contentItem());
    graph::CursorLook look{Qt::white, {}, {Qt::cyan}, [](double) { return QString(); }};
    for (const QColor color : {Qt::white, Qt::red}) {
        look.color = color;
        cursor->setLook(look);
        QCOMPARE(frame(), 1);
    }
}

QTEST_MAIN(tst_repaint)
#include "tst_repaint.moc"
