#include "view/zoom/ZoomRect.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>

namespace {

const double inf = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

using Operation = std::function<void(ZoomRect &)>;

// The names of the signals in the order in which they come.
struct Recorder
{
    explicit Recorder(ZoomRect &zoom)
    {
        const auto log = [this](const char *name) {
            return [this, name] { names.append(QLatin1String(name)); };
        };
        QObject::connect(&zoom, &ZoomRect::widthChanged, log("width"));
        QObject::connect(&zoom, &ZoomRect::heightChanged, log("height"));
        QObject::connect(&zoom, &ZoomRect::leftChanged, log("left"));
        QObject::connect(&zoom, &ZoomRect::rightChanged, log("right"));
        QObject::connect(&zoom, &ZoomRect::topChanged, log("top"));
        QObject::connect(&zoom, &ZoomRect::bottomChanged, log("bottom"));
        QObject::connect(&zoom, &ZoomRect::rectChanged, log("rect"));
    }

    QStringList names;
};

} // namespace

Q_DECLARE_METATYPE(Operation)

class tst_zoomrect : public QObject
{
    Q_OBJECT

private slots:
    void operations_data();
    void operations();
    void zoomAxisGuardsZooming();
    void mappingsNeedASize();
    void followsTheFlickable();
    void keepsItsInvariants();
};

void tst_zoomrect::operations_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("signalNames");
    QTest::addColumn<QVector<double>>("edges"); // left, right, top, bottom

    const auto row = [](const char *tag, const Operation &operation, const char *names,
                        QVector<double> edges) {
        QTest::newRow(tag) << operation << QString::fromLatin1(names) << edges;
    };
    // All start from left 0.5, right 1, top 0.25, bottom 0.75, zooming allowed.
    const QVector<double> start{0.5, 1.0, 0.25, 0.75};
    row(
        "width beyond the bounds", [](ZoomRect &z) { z.setWidth(2.0); }, "", start);
    row("width below the minimum", [](ZoomRect &z) { z.setWidth(0.0); }, "right width rect",
        {0.5, 0.51, 0.25, 0.75});
    row("left resizes", [](ZoomRect &z) { z.setProperty("left", 0.25); }, "width left rect",
        {0.25, 1.0, 0.25, 0.75});
    row("right resizes", [](ZoomRect &z) { z.setProperty("right", 0.75); }, "width right rect",
        {0.5, 0.75, 0.25, 0.75});
    row("top pans", [](ZoomRect &z) { z.setProperty("top", 0.0); }, "top bottom rect", {0.5, 1.0, 0.0, 0.5});
    row("bottom pans", [](ZoomRect &z) { z.setProperty("bottom", 1.0); }, "bottom top rect",
        {0.5, 1.0, 0.5, 1.0});
    row("x pans", [](ZoomRect &z) { z.setProperty("x", 0.0); }, "left right rect", {0.0, 0.5, 0.25, 0.75});
    row("y pans", [](ZoomRect &z) { z.setProperty("y", 0.0); }, "top bottom rect", {0.5, 1.0, 0.0, 0.5});
    row("called, top resizes", [](ZoomRect &z) { z.setTop(0.0); }, "height top rect", {0.5, 1.0, 0.0, 0.75});
    row("called, bottom resizes", [](ZoomRect &z) { z.setBottom(1.0); }, "height bottom rect",
        {0.5, 1.0, 0.25, 1.0});
    row(
        "move stops at the bound", [](ZoomRect &z) { QVERIFY(!z.moveLeft(3.0)); }, "", start);
    row("moveRight", [](ZoomRect &z) { QVERIFY(z.moveRight(0.0)); }, "right left rect",
        {0.0, 0.5, 0.25, 0.75});
    row("position in one change",
        [](ZoomRect &z) {
            QVERIFY(z.setPosition({0.0, 0.0}));
        },
        "left right top bottom rect", {0.0, 0.5, 0.0, 0.5});
    row("zoom keeps the centre's place", [](ZoomRect &z) { z.zoomX(0.25, 0.75); }, "right width left rect",
        {0.625, 0.875, 0.25, 0.75});
    row("scale centres", [](ZoomRect &z) { z.scaleX(0.25, 0.625); }, "right width rect",
        {0.5, 0.75, 0.25, 0.75});
    row("zoom in one change",
        [](ZoomRect &z) {
            z.zoom({1.0F, 1.0F}, {0.5, 0.5});
        },
        "width left bottom height top rect", {0.0, 1.0, 0.0, 1.0});
    row("centre and zoom",
        [](ZoomRect &z) {
            z.setCenterAndZoom({0.25F, 0.25F}, {0.25, 0.25});
        },
        "width left right height bottom top rect", {0.125, 0.375, 0.125, 0.375});
    row("infinity clamps", [](ZoomRect &z) { z.moveLeft(-inf); }, "left right rect", {0.0, 0.5, 0.25, 0.75});
    row(
        "NaN changes nothing",
        [](ZoomRect &z) {
            z.setWidth(notANumber);
            z.setLeft(notANumber);
            z.setRight(notANumber);
            z.setTop(notANumber);
            z.setBottom(notANumber);
            z.setHeight(notANumber);
            z.zoomX(notANumber, 0.0);
            z.zoomX(0.25, notANumber);
            z.scaleY(0.25, notANumber);
            z.setPosition({notANumber, notANumber});
            z.setCenterAndZoom({0.5F, 0.5F}, {notANumber, 0.0});
            z.setBoundingRect({0.0, notANumber, 1.0, 1.0});
            z.setMinWidth(notANumber);
            z.setMinHeight(-1.0);
        },
        "", start);
}

void tst_zoomrect::operations()
{
    QFETCH(Operation, operation);
    QFETCH(QString, signalNames);
    QFETCH(QVector<double>, edges);
    ZoomRect zoom;
    zoom.setLeft(0.5);
    zoom.setTop(0.25);
    zoom.setBottom(0.75);
    zoom.setZoomAxis(Qt::Horizontal | Qt::Vertical);
    Recorder recorder(zoom);
    operation(zoom);
    QCOMPARE(recorder.names.join(' '), signalNames);
    QCOMPARE((QVector<double>{zoom.left(), zoom.right(), zoom.top(), zoom.bottom()}), edges);
}

void tst_zoomrect::zoomAxisGuardsZooming()
{
    ZoomRect zoom;
    Recorder recorder(zoom);
    zoom.zoom({0.5F, 0.5F}, {0.5, 0.5});
    zoom.scale({0.5F, 0.5F});
    QVERIFY(recorder.names.isEmpty());
    zoom.setZoomAxis(Qt::Vertical);
    zoom.zoom({0.5F, 0.5F}, {0.5, 0.5});
    QCOMPARE(zoom.width(), 1.0);
    QCOMPARE(zoom.height(), 0.5);
}

void tst_zoomrect::mappingsNeedASize()
{
    ZoomRect orphan;
    QCOMPARE(orphan.mapToItem({0.5, 0.5}), QPointF());
    QCOMPARE(orphan.mapFromContentY(5.0), 0.0);

    QQuickItem item;
    ZoomRect zoom(&item);
    QCOMPARE(zoom.mapFromItemX(5.0), 0.0);
    item.setSize({200, 100});
    zoom.setCenterAndZoom({0.5F, 0.25F}, {0.5, 0.75});
    QCOMPARE(zoom.mapToItem({0.25, 0.875}), QPointF(0.0, 100.0));
    QCOMPARE(zoom.mapToContent({0.25, 0.875}), QPointF(100.0, 50.0));
    QCOMPARE(zoom.mapFromItem(zoom.mapToItem({0.3, 0.8})), QPointF(0.3, 0.8));
    QCOMPARE(zoom.mapFromContent(zoom.mapToContent({0.3, 0.8})), QPointF(0.3, 0.8));
    zoom.setMinWidth(0.0);
    zoom.setWidth(0.0);
    QCOMPARE(zoom.contentWidth(), 0.0);
    QCOMPARE(zoom.mapToItemX(0.3), 0.0);
}

void tst_zoomrect::followsTheFlickable()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nFlickable { property int writes: 0; width: 100; height: 100; "
                      "contentWidth: 100; contentHeight: 100; onContentXChanged: ++writes }",
                      {});
    std::unique_ptr<QObject> object(component.create());
    auto *flickable = qobject_cast<QQuickItem *>(object.get());
    QVERIFY2(flickable, qPrintable(component.errorString()));

    QQuickItem item;
    item.setSize({100, 100});
    ZoomRect zoom(&item);
    zoom.setFlickable(flickable);
    zoom.setCenterAndZoom({0.5F, 0.5F}, {0.25, 0.25});
    QCOMPARE(flickable->property("contentWidth").toDouble(), 200.0);
    QCOMPARE(flickable->property("contentY").toDouble(), 100.0);

    flickable->setProperty("writes", 0);
    flickable->setProperty("contentX", 60.0);
    QCOMPARE(zoom.left(), 0.3);
    QCOMPARE(zoom.right(), 0.8);
    QCOMPARE(flickable->property("writes").toInt(), 1);
    flickable->setProperty("contentY", 50.0);
    QCOMPARE(zoom.bottom(), 0.75);

    // Resizing keeps the content's position in step with its size, whichever edge moves.
    zoom.setRight(0.55);
    QCOMPARE(flickable->property("contentX").toDouble(), zoom.contentX());
    zoom.setBottom(0.6);
    QCOMPARE(flickable->property("contentY").toDouble(), zoom.contentY());
    item.setSize({50, 50});
    QCOMPARE(flickable->property("contentHeight").toDouble(), zoom.contentHeight());

    object.reset();
    QVERIFY(!zoom.isMoving());
    zoom.setWidth(0.1);
}

void tst_zoomrect::keepsItsInvariants()
{
    QRandomGenerator random(7);
    const auto value = [&random]() -> double {
        switch (random.bounded(12)) {
        case 0:
            return notANumber;
        case 1:
            return random.bounded(2) ? inf : -inf;
        case 2:
            return random.bounded(2) ? 1e308 : -1e-308;
        case 3:
            return 0.0;
        default:
            return random.generateDouble() * 2.0 - 0.5;
        }
    };
    ZoomRect zoom;
    zoom.setZoomAxis(Qt::Horizontal | Qt::Vertical);
    int depth = 0;
    connect(&zoom, &ZoomRect::rectChanged, &zoom, [&depth] { ++depth; });
    const QVector<std::function<void()>> operations{
        [&] { zoom.setWidth(value()); },
        [&] { zoom.setHeight(value()); },
        [&] { zoom.setLeft(value()); },
        [&] { zoom.setRight(value()); },
        [&] { zoom.setTop(value()); },
        [&] { zoom.setBottom(value()); },
        [&] {
            zoom.zoom({float(value()), float(value())}, {value(), value()});
        },
        [&] {
            zoom.scale({float(value()), float(value())}, {value(), value()});
        },
        [&] { zoom.moveRight(value()); },
        [&] {
            zoom.setPosition({value(), value()});
        },
        [&] { zoom.moveBottom(value()); },
        [&] {
            zoom.setBoundingRect({value(), value(), value(), value()});
            zoom.setBoundingRect({0, 0, 1, 1});
        },
    };
    for (int i = 0; i < 100000; ++i) {
        if (i == 50000)
            zoom.setMinWidth(0.0);
        depth = 0;
        operations.at(random.bounded(operations.size()))();
        QVERIFY(depth <= 1);
        QVERIFY(zoom.left() >= 0.0 && zoom.top() >= 0.0);
        QVERIFY(zoom.right() <= 1.0 + 1e-9 && zoom.bottom() <= 1.0 + 1e-9);
        QVERIFY(std::abs(zoom.right() - zoom.left() - zoom.width()) < 1e-9);
        QVERIFY(std::abs(zoom.bottom() - zoom.top() - zoom.height()) < 1e-9);
    }
}

QTEST_MAIN(tst_zoomrect)
#include "tst_zoomrect.moc"
