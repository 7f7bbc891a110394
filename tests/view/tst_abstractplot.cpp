#include "support/QmlDocument.h"

#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"
#include "view/base/XYScale.h"
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
        ValueAxis left, bottom;
        auto otherLeft = std::make_unique<ValueAxis>();
        left.setAlignment(Qt::AlignLeft);
        otherLeft->setAlignment(Qt::AlignLeft);
        for (ValueAxis *axis : {&left, otherLeft.get(), &bottom})
            axis->setLinesPlane(plane.get());
        bottom.setLabelsPlane(plane.get());
        left.setMargin(30);
        otherLeft->setMargin(45);
        bottom.setMargin(20);
        GraphPlot first, second;
        first.setAxisX(&bottom);
        first.setAxisY(&left);
        second.setAxisY(otherLeft.get());

        QSignalSpy margins(plane.get(), SIGNAL(marginsChanged(int, int, int, int)));
        plane->setPlots({&first, &second});
        QCOMPARE(margins.takeLast(), (QVariantList{45, 0, 0, 20}));
        plane->setPlots({&first, &second});
        QCOMPARE(margins.count(), 0);
        plane->setPlots({&second});
        QCOMPARE(margins.takeLast(), (QVariantList{45, 0, 0, 0}));
        otherLeft->setMargin(50);
        QCOMPARE(margins.takeLast(), (QVariantList{50, 0, 0, 0}));
        left.setMargin(99); // not on this plane any more
        QCOMPARE(margins.count(), 0);
        otherLeft.reset();
        QCOMPARE(margins.takeLast(), (QVariantList{0, 0, 0, 0}));
        plane.reset();
        QVERIFY(!bottom.linesPlane() && !bottom.labelsPlane());
    }
};

QTEST_MAIN(tst_abstractplot)
#include "tst_abstractplot.moc"
