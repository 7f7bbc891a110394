#include "support/QmlDocument.h"

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "plots/GraphPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"
#include "view/zoom/ZoomRect.h"
#include "support/Table.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QRectF geometry(QObject *item)
{
    auto *quickItem = qobject_cast<QQuickItem *>(item);
    return QRectF(quickItem->position(), QSizeF(quickItem->width(), quickItem->height()));
}

} // namespace

class tst_graphview : public QObject
{
    Q_OBJECT

private slots:
    void createsAScale()
    {
        for (const char *message : {"no XYScale was defined in QML\\. Created default one: XYScale\\(",
                                    "selected default labelsPlane for axis which selected none: ValueAxis",
                                    "selected default linesPlane for axis which selected none: ValueAxis"})
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression(QString("^componentComplete  - ") + message));
        QmlDocument document("GraphView { axes: ValueAxis { id: axis } }");
        auto *plane = document.object<ValueAxis>("axis")->labelsPlane();
        QVERIFY(plane);
        QCOMPARE(plane->z(), 100.0);
        QCOMPARE(document.object<ValueAxis>("axis")->linesPlane(), plane);

        QTest::ignoreMessage(QtWarningMsg,
                             "No ValueAxis objects in axes property! ValuesAxis objects work correctly "
                             "only when grouped in axes[] property of the GraphView.");
        QmlDocument empty("GraphView { XYScale {} }");
    }

    void choosesTheDefaultScale()
    {
        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("selected default l(abels|ines)Plane"));
        QmlDocument document(R"(
            GraphView {
                axes: ValueAxis { id: axis }
                XYScale { z: 1 }
                XYScale { id: high; z: 5 }
                XYScale { z: 5 }
                GraphCursor { id: cursor }
            })");
        QCOMPARE(document.object<ValueAxis>("axis")->linesPlane(), document.object<XYScale>("high"));
        QCOMPARE(document.object<QQuickItem>("cursor")->z(), 6.0);
    }

    // Each side has another margin, and the axes of opposite sides are on different planes.
    void planesShareThePlotArea()
    {
        QmlDocument document(R"(
            GraphView {
                width: 400; height: 300
                axes: [
                    ValueAxis { id: axisLeft; alignment: Qt.AlignLeft; margin: 60; linesPlane: low; labelsPlane: low },
                    ValueAxis { id: axisRight; alignment: Qt.AlignRight; margin: 50; linesPlane: high; labelsPlane: high },
                    ValueAxis { id: axisTop; alignment: Qt.AlignTop; margin: 30; linesPlane: high; labelsPlane: high },
                    ValueAxis { id: axisBottom; margin: 40; linesPlane: low; labelsPlane: low },
                    ValueAxis { id: narrow; alignment: Qt.AlignLeft; margin: 20; linesPlane: high; labelsPlane: high }
                ]
                XYScale { id: low }
                XYScale { id: high }
                GraphPlot { id: plot; axisX: axisBottom; axisY: axisLeft }
                GraphPlot { id: other; axisX: axisTop; axisY: axisRight }
                GraphPlot { id: last; axisY: narrow }
            })");
        const QRect area(60, 30, 290, 230);
        QCOMPARE(geometry(document.object("plot")), QRectF(area));
        const auto ink = [&document](const char *plane, ValueAxis::AxisStyle style, const QString &only) {
            for (const char *name : {"axisLeft", "axisRight", "axisTop", "axisBottom", "narrow"}) {
                auto *axis = document.object<ValueAxis>(name);
                axis->setAxisStyle(style);
                axis->setVisible(only.isEmpty() || only == name);
            }
            return inkBox(painted(document.object<QQuickPaintedItem>(plane)),
                          [](const QColor &pixel) { return pixel.alpha() > 0; });
        };
        for (const char *plane : {"low", "high"})
            QCOMPARE(ink(plane, ValueAxis::TicksOnly, ""), area);
        // Labels are in the margin of their side, close to the plot area.
        const QRect left = ink("low", ValueAxis::LabelsOnly, "axisLeft");
        const QRect right = ink("high", ValueAxis::LabelsOnly, "axisRight");
        const QRect top = ink("high", ValueAxis::LabelsOnly, "axisTop");
        const QRect bottom = ink("low", ValueAxis::LabelsOnly, "axisBottom");
        const QRect inner = ink("high", ValueAxis::LabelsOnly, "narrow");
        for (const int gap :
             {area.left() - left.right(), right.left() - area.right(), area.top() - top.bottom(),
              bottom.top() - area.bottom(), area.left() - inner.right()})
            QVERIFY2(gap > 4 && gap <= 8, qPrintable(QString::number(gap)));
        QVERIFY(QRect(0, 0, 400, 300).contains(left | right | top | bottom));

        document.object("axisLeft")->setProperty("margin", 70);
        QCOMPARE(geometry(document.object("plot")), QRectF(70, 30, 280, 230));
        // What only one plane needs goes with it, and what the other needs stays.
        document.object("other")->setProperty("visible", false);
        QCOMPARE(geometry(document.object("plot")), QRectF(70, 0, 330, 260));
        delete document.object("low");
        document.root()->setProperty("width", 300);
        QCOMPARE(geometry(document.object("plot")), QRectF(20, 0, 280, 300));
        document.object("plot")->setProperty("visible", false);
        document.object("last")->setProperty("visible", false);
        QCOMPARE(geometry(document.object("plot")), QRectF(0, 0, 300, 300));
    }

    void distributesVisiblePlots()
    {
        QmlDocument document(R"(
            GraphView {
                axes: ValueAxis { id: axis; linesPlane: plane; labelsPlane: plane }
                XYScale { id: plane }
                GraphPlot { id: first; axisX: axis }
                GraphPlot { axisX: axis }
                GraphCursor { id: cursor }
                GraphCursorY { id: second }
            })");
        const auto plotCount = [&] {
            const int count = QQmlListReference(document.object("cursor"), "plots").count();
            return QQmlListReference(document.object("second"), "plots").count() == count ? count : -1;
        };
        QCOMPARE(plotCount(), 2);
        document.object("first")->setProperty("visible", false);
        QCOMPARE(plotCount(), 1);
        document.object("first")->setProperty("visible", true);
        QCOMPARE(plotCount(), 2);
        delete document.object("first");
        QCOMPARE(plotCount(), 1);
        // Hiding the view hides its plots too, but changes nothing until it is shown again.
        document.root()->setProperty("visible", false);
        QCOMPARE(plotCount(), 1);
    }

    // The four sides of the plot area each have a margin; `other` alone needs those on the right and at the
    // top.
    void resizingKeepsTheZoom_data()
    {
        columns<QSizeF, QString, QString, QVariant>({"start", "object", "property", "value"});
        const QSizeF shown(301, 307), none(0, 0), flat(301, 0);
        const auto row = [](const char *name, const QSizeF &start, const char *object, const char *property,
                            const QVariant &value) {
            QTest::newRow(name) << start << QString(object) << QString(property) << value;
        };
        row("wider", shown, "view", "width", 613);
        row("narrower", shown, "view", "width", 173);
        row("higher", shown, "view", "height", 613);
        row("lower", shown, "view", "height", 173);
        row("smaller left margin", shown, "axisLeft", "margin", 7);
        row("greater left margin", shown, "axisLeft", "margin", 77);
        row("smaller bottom margin", shown, "axisBottom", "margin", 7);
        row("greater bottom margin", shown, "axisBottom", "margin", 77);
        row("right and top margin gone", shown, "other", "visible", false);
        row("first size", none, "view", "size", QSizeF(613, 417));
        row("first height", flat, "view", "height", 417);
    }

    void resizingKeepsTheZoom()
    {
        QFETCH(QSizeF, start);
        QFETCH(QString, object);
        QFETCH(QString, property);
        QFETCH(QVariant, value);
        for (const QRectF &rect :
             {QRectF(0.75, 0.75, 0.25, 0.25), QRectF(0, 0, 0.25, 0.25), QRectF(0.37, 0.61, 0.13, 0.31)}) {
            QmlDocument document(R"(
                GraphView {
                    id: view
                    property size size: Qt.size(301, 307)
                    width: size.width; height: size.height
                    axes: [
                        ValueAxis { id: axisLeft; alignment: Qt.AlignLeft; margin: 40; linesPlane: plane; labelsPlane: plane },
                        ValueAxis { id: axisRight; alignment: Qt.AlignRight; margin: 30; linesPlane: plane; labelsPlane: plane },
                        ValueAxis { id: axisTop; alignment: Qt.AlignTop; margin: 10; linesPlane: plane; labelsPlane: plane },
                        ValueAxis { id: axisBottom; margin: 20; linesPlane: plane; labelsPlane: plane }
                    ]
                    XYScale { id: plane }
                    GraphPlot { axisX: axisBottom; axisY: axisLeft }
                    GraphPlot { id: other; axisX: axisTop; axisY: axisRight }
                    Flickable { id: flickable }
                })");
            document.root()->setProperty("size", start);
            ZoomRect *zoom = document.object<GraphView>("view")->zoomRect();
            QObject *flickable = document.object("flickable");
            zoom->setCenterAndZoom(QVector2D(float(rect.width()), float(rect.height())), rect.center());
            const QVector<double> edges{zoom->left(), zoom->right(), zoom->top(), zoom->bottom()};
            document.object(object)->setProperty(qPrintable(property), value);
            QTest::qWait(1);
            QCOMPARE((QVector<double>{zoom->left(), zoom->right(), zoom->top(), zoom->bottom()}), edges);
            QCOMPARE(flickable->property("contentX").toDouble(), zoom->contentX());
            QCOMPARE(flickable->property("contentY").toDouble(), zoom->contentY());
            flickable->setProperty("contentX", 50.0);
            flickable->setProperty("contentY", 40.0);
            QCOMPARE(zoom->contentX(), 50.0);
            QCOMPARE(zoom->contentY(), 40.0);
        }
    }

    void listsForgetWhatIsDestroyed()
    {
        QmlDocument document(R"(
            GraphView {
                axes: ValueAxis { id: axis; linesPlane: plane; labelsPlane: plane }
                series: [ PlotSeries { id: trace }, PlotSeries {} ]
                XYScale { id: plane }
            })");
        const QQmlListReference series(document.root(), "series"), axes(document.root(), "axes");
        QCOMPARE(series.count(), 2);
        delete document.object("axis");
        QCOMPARE(axes.at(0), nullptr);
        QSignalSpy changed(document.root(), SIGNAL(seriesChanged()));
        QVERIFY(series.append(document.object("trace")));
        QCOMPARE(changed.count(), 1);
        QVERIFY(series.clear());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(series.count(), 0);
        QCOMPARE(series.at(-1), nullptr);
    }

    void destructionInAnyOrder()
    {
        for (int round = 0; round < 20; ++round) {
            QmlDocument document(R"(
                Item {
                    ValueAxis { id: axisX; maxValue: 9; linesPlane: plane; labelsPlane: plane; margin: 10 }
                    ValueAxis { id: axisY; alignment: Qt.AlignLeft; linesPlane: plane; labelsPlane: plane }
                    PlotSeries { id: trace; axisX: axisX; axisY: axisY; yData: [1, 2, 3, 4, 5] }
                    GraphView {
                        id: view
                        width: 200; height: 100
                        axes: [axisX, axisY]
                        series: trace
                        XYScale { id: plane }
                        GraphPlot { id: plot; plotData: trace }
                        GraphCursor { id: cursor; markers: GraphMarker {} }
                        Flickable { id: flickable }
                    }
                })");
            const QPointer<GraphView> view = document.object<GraphView>("view");
            QVector<QPointer<QObject>> objects{view.data(), view->zoomRect(), view->childItems().first()};
            for (const char *name : {"plane", "plot", "cursor", "flickable", "axisX", "axisY", "trace"})
                objects.append(document.object(name));
            // Every object goes once as the first and once as the last, the others in turn.
            std::rotate(objects.begin(), objects.begin() + round / 2, objects.end());
            if (round % 2)
                std::reverse(objects.begin(), objects.end());
            for (int i = 0; i < objects.size(); ++i) {
                delete objects[i];
                if (view && view->zoomRect())
                    view->zoomRect()->setCenterAndZoom(QVector2D(0.5f, 0.5f), QPointF(0.1 * i, 0.5));
                // What is left paints itself and asks the others for repaints.
                for (QObject *object : qAsConst(objects)) {
                    if (auto *axis = qobject_cast<ValueAxis *>(object))
                        axis->setUnit(axis->unit() + "V");
                    else if (auto *item = qobject_cast<QQuickPaintedItem *>(object))
                        painted(item);
                }
            }
        }
    }

    // What is inside a hidden plot becomes visible when the plot is destroyed, and its script reaches the
    // plot by the cursor.
    void scriptsRunWhileAPlotGoes()
    {
        QmlDocument document(R"(
            Item {
                id: root
                visible: false
                property int heard: 0
                PlotSeries { id: trace; axisX: axis; yData: [1, 2, 3] }
                GraphView {
                    axes: ValueAxis { id: axis; linesPlane: plane; labelsPlane: plane }
                    XYScale { id: plane }
                    GraphPlot { id: plot; plotData: trace }
                    Item {
                        parent: plot
                        // While the document is made the overview is still to come.
                        onVisibleChanged: if (overview) {
                            cursor.posOnScreen = 1
                            overview.graphPlot = cursor.primaryPlot
                            ++root.heard
                        }
                    }
                    GraphCursor { id: cursor; primaryPlot: plot }
                }
                WorldPlot { id: overview }
            })");
        delete document.object("plot");
        QCOMPARE(document.root()->property("heard").toInt(), 1);
    }

    void overviewMirrorsItsPlot()
    {
        QmlDocument document(R"(
            Item {
                GraphView {
                    id: view
                    width: 101; height: 101
                    axes: [
                        ValueAxis { id: axisX; maxValue: 100; linesPlane: plane; labelsPlane: plane },
                        ValueAxis {
                            id: axisY; alignment: Qt.AlignLeft
                            linesPlane: plane; labelsPlane: plane
                        }
                    ]
                    XYScale { id: plane }
                    GraphPlot {
                        id: plot
                        penColor: "red"; plotStyle: GraphPlot.FillPlot; plotBaseline: true
                        plotData: PlotSeries { id: trace; axisX: axisX; axisY: axisY; yData: [1, 2, 3] }
                    }
                }
                WorldView { id: worldView; view: view; WorldPlot { id: world; width: 101; height: 101; graphPlot: plot } }
            })");
        auto *plot = document.object<GraphPlot>("plot");
        auto *world = document.object<WorldPlot>("world");
        QCOMPARE(world->plotData(), plot->plotData());
        QCOMPARE(world->penColor(), QColor("red"));
        QVERIFY(world->plotStyle() == GraphPlot::FillPlot && world->plotBaseline());
        plot->setPlotStyle(GraphPlot::BarPlot);
        plot->setPlotBaseline(false);
        QVERIFY(world->plotStyle() == GraphPlot::BarPlot && !world->plotBaseline());

        document.object<GraphView>("view")->zoomRect()->setCenterAndZoom({0.5F, 0.25F}, {0.5, 0.5});
        const QPointF value(37.5, 0.4375);
        QCOMPARE(plot->mapToItem(value), QPointF(25, 75));
        QCOMPARE(world->mapToItem(value), QPointF(37.5, 56.25));
        QCOMPARE(world->visibleRect(), QRectF(0, 0, 100, 1));
        world->setScaleAxisX(true);
        QCOMPARE(world->mapToItem(value), QPointF(25, 56.25));
        world->setScaleAxisY(true);
        QCOMPARE(world->visibleRect(), plot->visibleRect());

        QSignalSpy zoom(document.object("worldView"), SIGNAL(zoomRectChanged(ZoomRect *)));
        document.object("worldView")->setProperty("view", QVariant::fromValue<GraphView *>(nullptr));
        QCOMPARE(zoom.count(), 1);
        QVERIFY(!document.object("worldView")->property("zoomRect").value<ZoomRect *>());
        // A plot without data may have axes.
        GraphPlot bare;
        bare.setAxisX(plot->axisX());
        bare.setAxisY(plot->axisY());
        WorldPlot other;
        other.setGraphPlot(&bare);
        QVERIFY(other.axisX() && other.axisX() == bare.axisX() && other.axisY() == bare.axisY());
        world->setGraphPlot(world); // ignored
        QCOMPARE(world->graphPlot(), plot);
        delete plot;
        QCOMPARE(world->graphPlot(), nullptr);
        painted(world);
    }
};

QTEST_MAIN(tst_graphview)
#include "tst_graphview.moc"
