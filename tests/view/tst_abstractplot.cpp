#include "support/QmlDocument.h"

#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"
#include "view/zoom/ZoomRect.h"

class tst_abstractplot : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { registerTypes(); }
    void mapsBothWays()
    {
        ValueAxis axisX, axisY;
        axisY.setAlignment(Qt::AlignLeft);
        axisX.setMaxVisible(200);
        axisY.setMinVisible(-10);
        axisY.setMaxVisible(10);
        GraphPlot plot;
        plot.setSize(QSizeF(101, 41));
        plot.setAxisX(&axisX);
        plot.setAxisY(&axisY);
        QCOMPARE(plot.mapToItem(QPointF(200, -10)), QPointF(100, 40));
        QCOMPARE(plot.mapFromItem(QPointF(50, 20)), QPointF(100, 0));
        // y grows upwards in the data: a rectangle of positive height has a negative one in the item.
        QCOMPARE(plot.mapRectToItem(QRectF(0, 0, 100, 5)), QRectF(0, 20, 50, -10));
        QCOMPARE(plot.mapRectFromItem(QRectF(0, 20, 50, -10)), QRectF(0, 0, 100, 5));
    }

    void defaultsWithoutAxes()
    {
        GraphPlot plot;
        plot.setSize(QSizeF(11, 11));
        QCOMPARE(plot.minValueX(), 1.0);
        QCOMPARE(plot.maxValueX(), 1.0);
        QCOMPARE(plot.minValueY(), 0.0);
        QCOMPARE(plot.maxValueY(), 0.0);
        QCOMPARE(plot.visibleRect(), QRectF(0, 0, 1, 1));
        QCOMPARE(plot.mapToItemX(0.5), 5.0);
    }

    void axesKeepTheirOrientation()
    {
        ValueAxis horizontal, vertical;
        vertical.setAlignment(Qt::AlignRight);
        GraphPlot plot;
        QSignalSpy x(&plot, SIGNAL(axisXChanged(ValueAxis *))), y(&plot, SIGNAL(axisYChanged(ValueAxis *)));
        plot.setAxisX(&vertical);
        plot.setAxisY(&horizontal);
        QCOMPARE(x.count() + y.count(), 0);
        plot.setAxisX(&horizontal);
        plot.setAxisX(nullptr);
        QCOMPARE(x.count(), 2);
    }

    void followsDataAndItsAxes()
    {
        ValueAxis first, second;
        GraphPlot plot;
        QSignalSpy valid(&plot, SIGNAL(validChanged(bool)));
        auto data = std::make_unique<PlotSeries>();
        data->setAxisX(&first);
        plot.setPlotData(data.get());
        QCOMPARE(plot.axisX(), &first);
        QVERIFY(!plot.isValid());
        data->setAxisX(&second);
        QCOMPARE(plot.axisX(), &second);

        data->setYData({1, 2, 3});
        QCOMPARE(valid.count(), 0); // with the event loop, not at once
        QTRY_COMPARE(valid.count(), 1);
        QVERIFY(plot.isValid());

        QSignalSpy changed(&plot, SIGNAL(plotDataChanged(PlotData *)));
        data.reset();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(plot.plotData(), nullptr);
        QVERIFY(!plot.isValid());
        QCOMPARE(plot.axisX(), &second);
    }

    void joinsTheZoomOfItsParent()
    {
        QmlDocument document(R"(
            Item {
                Item { id: plain }
                Item {
                    id: holder
                    property ZoomRect zoomRect: view.zoomRect
                    GraphPlot { id: held }
                }
                WorldView { id: overview; view: view; GraphPlot { id: small } }
                GraphView {
                    id: view
                    axes: ValueAxis { id: axis; maxValue: 100; linesPlane: plane; labelsPlane: plane }
                    XYScale { id: plane }
                    GraphPlot { id: plot; axisX: axis }
                }
            })");
        auto *plot = document.object<GraphPlot>("plot");
        auto *zoomRect = document.object("view")->property("zoomRect").value<ZoomRect *>();
        QVERIFY(zoomRect);
        QCOMPARE(plot->zoomRect(), zoomRect);
        zoomRect->setRight(0.5);
        QCOMPARE(plot->maxVisibleX(), 50.0);

        plot->setParentItem(document.object<QQuickItem>("plain"));
        QCOMPARE(plot->zoomRect(), nullptr);
        zoomRect->setRight(0.25);
        QCOMPARE(plot->maxVisibleX(), 25.0); // the axis stays with the zoom state it was given

        // Where the parent tells of a change it is followed.
        auto *held = document.object<GraphPlot>("held");
        auto *small = document.object<GraphPlot>("small");
        QCOMPARE(held->zoomRect(), zoomRect);
        QCOMPARE(small->zoomRect(), zoomRect);
        document.object("overview")->setProperty("view", QVariant::fromValue<GraphView *>(nullptr));
        QCOMPARE(small->zoomRect(), nullptr);
        held->setParentItem(plot->parentItem());
        document.object("holder")->setProperty("zoomRect", QVariant::fromValue(zoomRect));
        QCOMPARE(held->zoomRect(), nullptr);

        // A parent given to the constructor counts like one that is set later.
        auto *made = new GraphPlot(document.object<QQuickItem>("view"));
        QCOMPARE(made->zoomRect(), zoomRect);
    }

    void visiblePeak()
    {
        ValueAxis axisX, axisY;
        axisY.setAlignment(Qt::AlignLeft);
        axisY.setMinValue(-7);
        axisX.setMinVisible(2);
        axisX.setMaxVisible(4);
        PlotSeries data;
        data.setYData({9, 9, -3, -2, -4, 9});
        GraphPlot plot;
        QCOMPARE(plot.getVisibleSpanYPeak(), 0.0);
        plot.setAxisY(&axisY);
        QCOMPARE(plot.getVisibleSpanYPeak(), -7.0);
        plot.setAxisX(&axisX);
        plot.setPlotData(&data);
        QCOMPARE(plot.getVisibleSpanYPeak(), -2.0);
        axisX.setMinVisible(40);
        axisX.setMaxVisible(50);
        QCOMPARE(plot.getVisibleSpanYPeak(), -7.0);
    }

    void planeCollectsMarginsOfItsAxes()
    {
        auto plane = std::make_unique<XYScale>();
        // On each side one that needs more and one that needs less; left and top on one plot, right and
        // bottom on another.
        std::unique_ptr<ValueAxis> axes[2][4];
        GraphPlot plots[2][2];
        const Qt::AlignmentFlag sides[] = {Qt::AlignLeft, Qt::AlignTop, Qt::AlignRight, Qt::AlignBottom};
        for (int less = 0; less < 2; ++less) {
            for (int side = 0; side < 4; ++side) {
                ValueAxis *axis = (axes[less][side] = std::make_unique<ValueAxis>()).get();
                axis->setAlignment(sides[side]);
                axis->setMargin(10 * (side + 1) - less);
                less ? axis->setLabelsPlane(plane.get()) : axis->setLinesPlane(plane.get());
                GraphPlot &plot = plots[less][side / 2];
                side % 2 ? plot.setAxisX(axis) : plot.setAxisY(axis);
            }
        }

        QSignalSpy margins(plane.get(), SIGNAL(marginsChanged(int, int, int, int)));
        plane->setPlots({&plots[0][0], &plots[0][1], &plots[1][0], &plots[1][1]});
        QCOMPARE(margins.takeLast(), (QVariantList{10, 30, 20, 40}));
        plane->setPlots({&plots[0][0], &plots[0][1], &plots[1][0], &plots[1][1]});
        QCOMPARE(margins.count(), 0);
        plane->setPlots({&plots[0][1], &plots[1][0]});
        QCOMPARE(margins.takeLast(), (QVariantList{9, 30, 19, 40}));
        axes[1][0]->setMargin(50);
        QCOMPARE(margins.takeLast(), (QVariantList{50, 30, 19, 40}));
        axes[0][0]->setMargin(99); // not on this plane any more
        QCOMPARE(margins.count(), 0);
        axes[1][0].reset();
        QCOMPARE(margins.takeLast(), (QVariantList{0, 30, 19, 40}));
        plane.reset();
        QVERIFY(!axes[0][1]->linesPlane() && !axes[1][1]->labelsPlane());
    }
};

QTEST_MAIN(tst_abstractplot)
#include "tst_abstractplot.moc"
