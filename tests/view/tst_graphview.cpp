#include "support/QmlDocument.h"

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "plots/GraphPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"
#include "view/zoom/ZoomRect.h"

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

    void insetsThePlotArea()
    {
        QmlDocument document(R"(
            GraphView {
                width: 300; height: 200
                axes: [
                    ValueAxis { id: axisBottom; margin: 20; linesPlane: plane; labelsPlane: plane },
                    ValueAxis {
                        id: axisLeft; alignment: Qt.AlignLeft; margin: 40
                        linesPlane: plane; labelsPlane: plane
                    }
                ]
                XYScale { id: plane }
                GraphPlot { id: plot; axisX: axisBottom; axisY: axisLeft }
            })");
        QCOMPARE(geometry(document.object("plane")), QRectF(0, 0, 300, 200));
        QCOMPARE(geometry(document.object("plot")), QRectF(40, 0, 260, 180));
        document.object("axisLeft")->setProperty("margin", 60);
        QCOMPARE(geometry(document.object("plot")), QRectF(60, 0, 240, 180));
        document.object("plot")->setProperty("visible", false);
        document.root()->setProperty("width", 100);
        QCOMPARE(geometry(document.object("plot")), QRectF(0, 0, 100, 200));
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
            })");
        const auto plotCount = [&] {
            const QQmlListReference plots(document.object("cursor"), "plots");
            return plots.count();
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

    void pansWithAFlickable()
    {
        QmlDocument document(R"(
            GraphView {
                width: 200; height: 100
                axes: ValueAxis { id: axis; maxValue: 1000; linesPlane: plane; labelsPlane: plane }
                XYScale { id: plane }
                GraphPlot { axisX: axis }
                Flickable { id: flickable }
            })");
        auto *zoomRect = document.root()->property("zoomRect").value<ZoomRect *>();
        auto *flickable = document.object("flickable");
        zoomRect->setCenterAndZoom(QVector2D(0.25f, 1.0f), QPointF(0.5, 0.5));
        QCOMPARE(flickable->property("contentWidth").toDouble(), 800.0);
        QCOMPARE(flickable->property("contentX").toDouble(), 300.0);
        flickable->setProperty("contentX", 200.0);
        QCOMPARE(zoomRect->left(), 0.25);
        QCOMPARE(document.object<ValueAxis>("axis")->minVisible(), 250.0);
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
        QVERIFY(series.clear());
        QCOMPARE(changed.count(), 1);
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
                    GraphPlot {
                        id: plot
                        plotData: trace
                        Item {
                            // While the document is made the overview is still to come.
                            onVisibleChanged: if (overview) {
                                cursor.posOnScreen = 1
                                overview.graphPlot = cursor.primaryPlot
                                ++root.heard
                            }
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
                        penColor: "red"
                        plotData: PlotSeries { id: trace; axisX: axisX; axisY: axisY; yData: [1, 2, 3] }
                    }
                }
                WorldView { id: worldView; view: view; WorldPlot { id: world; width: 101; graphPlot: plot } }
            })");
        auto *plot = document.object<GraphPlot>("plot");
        auto *world = document.object<WorldPlot>("world");
        QCOMPARE(world->plotData(), plot->plotData());
        QCOMPARE(world->penColor(), QColor("red"));
        plot->setPlotStyle(GraphPlot::FillPlot);
        plot->setPlotBaseline(true);
        QCOMPARE(world->plotStyle(), GraphPlot::FillPlot);
        QVERIFY(world->plotBaseline());

        document.object<GraphView>("view")->zoomRect()->setRight(0.5);
        QCOMPARE(plot->mapToItemX(25), 50.0);
        QCOMPARE(world->mapToItemX(25), 25.0);
        world->setScaleAxisX(true);
        QCOMPARE(world->mapToItemX(25), 50.0);

        QSignalSpy zoom(document.object("worldView"), SIGNAL(zoomRectChanged(ZoomRect *)));
        document.object("worldView")->setProperty("view", QVariant::fromValue<GraphView *>(nullptr));
        QCOMPARE(zoom.count(), 1);
        QVERIFY(!document.object("worldView")->property("zoomRect").value<ZoomRect *>());
        world->setGraphPlot(world); // ignored
        QCOMPARE(world->graphPlot(), plot);
        delete plot;
        QCOMPARE(world->graphPlot(), nullptr);
        painted(world);
    }
};

QTEST_MAIN(tst_graphview)
#include "tst_graphview.moc"
