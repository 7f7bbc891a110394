#include "view/zoom/ZoomRect.h"
#include "support/Table.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace {

const double inf = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

using Edges = QVector<double>;

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

    QString take() { return std::exchange(names, {}).join(' '); }

    QStringList names;
};

} // namespace

class tst_zoomrect : public QObject
{
    Q_OBJECT

private slots:
    void operations_data();
    void operations();
    void compoundChanges();
    void mappingsNeedASize();
    void followsTheFlickable();
    void keepsItsInvariants();
};

// All start from left and top 0.5, right and bottom 1.
void tst_zoomrect::operations_data()
{
    // horizontal: a slot, or a property that is written
    // signalNames: of the horizontal one
    columns<QByteArray, QByteArray, double, QString, double, double>(
        {"horizontal", "vertical", "value", "signalNames", "begin", "end"});

    const auto row = [](const char *horizontal, const char *vertical, double value, const char *names,
                        double begin, double end) {
        QTest::addRow("%s, %s", horizontal, vertical)
            << QByteArray(horizontal) << QByteArray(vertical) << value << QString(names) << begin << end;
    };
    row("width", "height", 0.0, "right width rect", 0.5, 0.51);
    row("left", "setTop", 0.25, "width left rect", 0.25, 1.0);
    row("right", "setBottom", 0.75, "width right rect", 0.5, 0.75);
    row("x", "y", 0.0, "left right rect", 0.0, 0.5);
    row("moveLeft", "top", 0.0, "left right rect", 0.0, 0.5);
    row("moveRight", "bottom", 0.0, "right left rect", 0.0, 0.5);
    row("moveLeft", "moveTop", 3.0, "", 0.5, 1.0);
    row("zoomX", "zoomY", 0.75, "width left rect", 0.25, 1.0);
    row("scaleX", "scaleY", 0.25, "right width left rect", 0.0, 0.25);
    for (const auto &names : {std::pair("setWidth", "setHeight"), std::pair("setLeft", "setTop"),
                              std::pair("setRight", "setBottom"), std::pair("zoomX", "zoomY"),
                              std::pair("scaleX", "scaleY"), std::pair("moveLeft", "moveTop"),
                              std::pair("moveRight", "moveBottom"), std::pair("setMinWidth", "setMinHeight")})
        row(names.first, names.second, notANumber, "", 0.5, 1.0);
}

void tst_zoomrect::operations()
{
    QFETCH(QByteArray, horizontal);
    QFETCH(QByteArray, vertical);
    QFETCH(double, value);
    QFETCH(QString, signalNames);
    QFETCH(double, begin);
    QFETCH(double, end);
    for (const QByteArray &name : {horizontal, vertical}) {
        ZoomRect zoom;
        zoom.setLeft(0.5);
        zoom.setTop(0.5);
        zoom.setZoomAxis(name == horizontal ? Qt::Horizontal : Qt::Vertical);
        Recorder recorder(zoom);
        if (zoom.metaObject()->indexOfProperty(name) >= 0)
            QVERIFY(zoom.setProperty(name, value));
        else
            QVERIFY(QMetaObject::invokeMethod(&zoom, name, Q_ARG(double, value)));
        QCOMPARE(recorder.take(), signalNames);
        const Edges changed{begin, end}, same{0.5, 1.0};
        QCOMPARE((Edges{zoom.left(), zoom.right()}), name == horizontal ? changed : same);
        QCOMPARE((Edges{zoom.top(), zoom.bottom()}), name == horizontal ? same : changed);
        signalNames.replace("width", "height").replace("left", "top").replace("right", "bottom");
    }
}

void tst_zoomrect::compoundChanges()
{
    ZoomRect zoom;
    zoom.setLeft(0.5);
    zoom.setTop(0.25);
    zoom.setBottom(0.75);
    zoom.setZoomAxis(Qt::Horizontal | Qt::Vertical);
    Recorder recorder(zoom);
    QVERIFY(zoom.setPosition({0.0, 0.0}));
    QVERIFY(!zoom.setPosition({0.0, notANumber}));
    QCOMPARE(recorder.take(), QString("left right top bottom rect"));
    zoom.zoomX(0.25, 0.25);
    QCOMPARE(zoom.left(), 0.125);
    QCOMPARE(recorder.take(), QString("right width left rect"));
    zoom.zoom({1.0F, 1.0F}, {0.5, 0.5});
    QCOMPARE(recorder.take(), QString("right width left bottom height rect"));
    zoom.setCenterAndZoom({0.25F, 0.25F}, {0.25, 0.25});
    QCOMPARE(recorder.take(), QString("width left right height bottom top rect"));
    QCOMPARE(zoom.top(), 0.125);
    // Whatever zoomAxis says.
    zoom.setZoomAxis(Qt::Horizontal);
    zoom.show({0.0, 0.25, 0.5, 0.125});
    QCOMPARE(recorder.take(), QString("width left right height top rect"));
    QCOMPARE((Edges{zoom.left(), zoom.right(), zoom.top(), zoom.bottom()}), (Edges{0.0, 0.5, 0.25, 0.375}));
    zoom.setCenterAndZoom({0.5F, 0.5F}, {notANumber, 0.0});
    zoom.setBoundingRect({0.0, notANumber, 1.0, 1.0});
    zoom.setZoomAxis(Qt::Vertical);
    zoom.zoomX(0.5);
    zoom.scaleX(0.5);
    QCOMPARE(recorder.take(), QString());
    QCOMPARE(zoom.boundingRect(), QRectF(0, 0, 1, 1));
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
    const QRectF visible(0.25, 0.625, 0.5, 0.25);
    QCOMPARE(zoom.mapRectToItem(visible), QRectF(0, 0, 200, 100));
    QCOMPARE(zoom.mapRectFromItem(QRectF(0, 0, 200, 100)), visible);
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

    // Both directions at once are one change, which the flickable's own answers do not repeat.
    QSignalSpy changed(&zoom, SIGNAL(rectChanged(QRectF)));
    zoom.setPosition({0.1, 0.2});
    QCOMPARE(changed.count(), 1);

    // Once it has taken in a size of its own, it is followed again.
    flickable->setSize({80, 80});
    for (double place : {30.0, 40.0}) {
        flickable->setProperty("contentX", place);
        flickable->setProperty("contentY", place);
    }
    QCOMPARE(zoom.contentX(), 40.0);
    QCOMPARE(zoom.contentY(), 40.0);

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
    const double special[] = {notANumber, inf, -inf, 1e308, -1e-308, 0.0};
    const auto value = [&]() -> double {
        const int which = random.bounded(18);
        return which < 6 ? special[which] : random.generateDouble() * 2.0 - 0.5;
    };
    const auto point = [&] { return QPointF(value(), value()); };
    const auto scale = [&] { return QVector2D(float(value()), float(value())); };
    ZoomRect zoom;
    zoom.setZoomAxis(Qt::Horizontal | Qt::Vertical);
    int depth = 0;
    connect(&zoom, &ZoomRect::rectChanged, &zoom, [&depth] { ++depth; });
    const char *const properties[] = {"width", "left", "right", "x", "height", "top", "bottom", "y"};
    const char *const edges[] = {"setTop", "setBottom", "moveRight", "moveLeft", "moveTop", "moveBottom"};
    const QVector<std::function<void()>> operations{
        [&] { zoom.setProperty(properties[random.bounded(8)], value()); },
        [&] { QMetaObject::invokeMethod(&zoom, edges[random.bounded(6)], Q_ARG(double, value())); },
        [&] { zoom.zoom(scale(), point()); },
        [&] { zoom.scale(scale(), point()); },
        [&] {
            zoom.show({point(), QSizeF(value(), value())});
        },
        [&] { zoom.setCenterAndZoom(scale(), point()); },
        [&] { zoom.setPosition(point()); },
        [&] {
            zoom.setBoundingRect({point(), QSizeF(value(), value())});
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
