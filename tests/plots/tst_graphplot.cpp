#include "support/QmlDocument.h"
#include "support/Table.h"

#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"

namespace {

// Keeps what it is handed in place of painting it.
class Recorder : public GraphPoint
{
public:
    void paint(QPainter *, int x, int y) override
    {
        points.append({x, y, marginTop(), marginRight(), marginBottom(), marginLeft(), pointIndex()});
        if (isSelected())
            selected.append(pointIndex());
        pen = roundPen();
    }

    QVector<QVector<int>> points;
    QVector<int> selected;
    QPen pen;
};

} // namespace

class tst_graphplot : public QObject
{
    Q_OBJECT

private slots:
    // 101 x 101 pixels; x 0..100 unless a test says otherwise, y -50..50: a value v is in row 50 - v.
    void init()
    {
        m_document = std::make_unique<QmlDocument>(R"(
            Item {
                ValueAxis { id: horizontal; maxValue: 100; maxVisible: 100 }
                ValueAxis {
                    id: vertical; alignment: Qt.AlignLeft
                    minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50
                }
                PlotSeries { id: series; axisX: horizontal; axisY: vertical }
                PlotPoints { id: points; axisX: horizontal; axisY: vertical }
                GraphPlot {
                    id: plot; width: 101; height: 101
                    plotData: series; penColor: "red"; minLineWidth: 1
                }
            })");
    }

    void cleanup() { m_document.reset(); }

    void denseStyles_data()
    {
        columns<int, Rows, Rows>({"style", "opaque", "translucent"});
        // A column that holds 20, 30 and 40 in a trace that is 10 elsewhere: rows 30 to 10 above 40.
        QTest::newRow("fill") << int(GraphPlot::FillPlot) << Rows(10, 39) << Rows(40, 49);
        QTest::newRow("opaque fill") << int(GraphPlot::FillPlot) << Rows(10, 49) << nothing;
        QTest::newRow("line") << int(GraphPlot::LinePlot) << Rows(10, 39) << nothing;
        QTest::newRow("maximum") << int(GraphPlot::MaxLinePlot) << Rows(10, 39) << nothing;
        QTest::newRow("minimum") << int(GraphPlot::MinLinePlot) << Rows(30, 39) << nothing;
        QTest::newRow("bars") << int(GraphPlot::BarPlot) << Rows(30, 49) << Rows(10, 29);
    }

    void denseStyles()
    {
        QFETCH(int, style);
        QVector<double> y(301, 10.0);
        y[150] = 20;
        y[151] = 40;
        y[152] = 30;
        series()->setXInterval(1.0 / 3);
        series()->setYData(y);
        plot()->setUseTransparencyForFillPlot(QTest::currentDataTag() != QByteArray("opaque fill"));
        plot()->setProperty("plotStyle", style);
        const QImage image = painted(plot());

        Rows opaque = nothing, translucent = nothing;
        for (int row = 0; row < image.height(); ++row) {
            const int alpha = qAlpha(image.pixel(50, row));
            if (alpha == 0)
                continue;
            QVERIFY(alpha == 255 || alpha == 96);
            Rows &rows = alpha == 255 ? opaque : translucent;
            rows = Rows(rows.first == -1 ? row : rows.first, row);
        }
        QTEST(opaque, "opaque");
        QTEST(translucent, "translucent");
    }

    void sparseStyles_data()
    {
        columns<int, Rows, Rows>({"style", "middle", "corner"});
        // Samples at 0, 50 and 100 with 0, 40, 0; the line passes y = 20 half way.
        QTest::newRow("fill") << int(GraphPlot::FillPlot) << Rows(10, 50) << Rows(30, 50);
        QTest::newRow("line") << int(GraphPlot::LinePlot) << Rows(10, 11) << Rows(30, 31);
        QTest::newRow("bars") << int(GraphPlot::BarPlot) << Rows(10, 49) << nothing;
        QTest::newRow("no such style") << 77 << nothing << nothing;
    }

    void sparseStyles()
    {
        QFETCH(int, style);
        QFETCH(Rows, middle);
        QFETCH(Rows, corner);
        series()->setXInterval(50);
        series()->setYData({0, 40, 0});
        plot()->setMaxLineWidth(1);
        plot()->setProperty("plotStyle", style);
        const QImage image = painted(plot());
        QVERIFY(isClose(paintedRows(image, 50), middle));
        QVERIFY(isClose(paintedRows(image, 25), corner));
    }

    void gapsStayGaps_data()
    {
        columns<int, int, double>({"style", "samplesPerColumn", "missing"});
        for (const double missing : {qQNaN(), qInf(), -qInf()}) {
            for (const int dense : {0, 1, 4}) {
                for (int style = GraphPlot::FillPlot; style <= GraphPlot::BarPlot; ++style)
                    QTest::addRow("%d, %d, %g", style, dense, missing) << style << dense << missing;
            }
        }
    }

    void gapsStayGaps()
    {
        QFETCH(int, style);
        QFETCH(int, samplesPerColumn);
        QFETCH(double, missing);
        // The trace lies at y = 20, far from the baseline, and misses x 40..60.
        const double interval = samplesPerColumn > 0 ? 1.0 / samplesPerColumn : 10.0;
        QVector<double> y(int(100 / interval) + 1, 20.0);
        for (int i = 0; i < y.size(); ++i) {
            if (i * interval >= 40 && i * interval <= 60)
                y[i] = missing;
        }
        series()->setXInterval(interval);
        series()->setYData(y);
        plot()->setMaxLineWidth(1);
        plot()->setProperty("plotStyle", style);
        const QImage image = painted(plot());
        for (int column = 41; column <= 59; ++column)
            QCOMPARE(paintedRows(image, column), nothing);
        // Beside the gap the trace stays where it is, without a spike.
        for (const int column : {20, 80})
            QCOMPARE(paintedRows(image, column).first / 2, 30 / 2);
        const bool area = style == GraphPlot::FillPlot || style == GraphPlot::BarPlot;
        if (!area && samplesPerColumn > 0) {
            for (const int column : {39, 61})
                QVERIFY(paintedRows(image, column).second <= 31);
        }
    }

    void strokeWidthFollowsSpacing()
    {
        const struct
        {
            int samples;
            double interval;
            int width;
        } spacings[] = {{11, 10.0, 10}, {3, 50.0, 16}, {1, 1.0, 16}, {101, 1.0, 1}};
        for (const auto &spacing : spacings) {
            series()->setXFirstValue(spacing.samples == 1 ? 50 : 0);
            series()->setXInterval(spacing.interval);
            // A single bar tells the width of the stroke.
            QVector<double> bars(spacing.samples, 0.0);
            bars[spacing.samples / 2] = 20;
            series()->setYData(bars);
            const QImage image = painted(plot());
            int painted = 0;
            for (int column = 0; column < image.width(); ++column)
                painted += qAlpha(image.pixel(column, 40)) != 0;
            QCOMPARE(painted, spacing.width);
        }
    }

    void baselineOfBars()
    {
        plot()->setMaxLineWidth(1);
        for (const double interval : {10.0, 0.25}) {
            series()->setXFirstValue(30);
            series()->setXInterval(interval);
            series()->setYData(QVector<double>(int(40 / interval) + 1, 0.0));
            plot()->setPlotBaseline(false);
            const auto isPainted = [](const QColor &pixel) { return pixel.alpha() != 0; };
            QVERIFY(inkBox(painted(plot()), isPainted).isEmpty());
            plot()->setPlotBaseline(true);
            // From x = 0 to the last sample, over the whole width where data is dense.
            QCOMPARE(inkBox(painted(plot()), isPainted), QRect(0, 50, interval > 1 ? 70 : 100, 1));
        }
    }

    void segmentsAreNotConnected()
    {
        auto *points = m_document->object<PlotPoints>("points");
        points->setXData({0, 30, 60, 100});
        points->setYData({10, 10, 10, 10});
        points->setUsePointsAsSegments(true);
        plot()->setPlotData(points);
        plot()->setPlotStyle(GraphPlot::LinePlot);
        plot()->setMaxLineWidth(1);
        const QImage image = painted(plot());
        QCOMPARE(paintedRows(image, 15), Rows(40, 40));
        QCOMPARE(paintedRows(image, 45), nothing);
        QCOMPARE(paintedRows(image, 80), Rows(40, 40));
        // Clicks, like paintings, do not repeat what samples() says of segments.
        plot()->setPlotStyle(GraphPlot::ScatterPlot);
        QCOMPARE(plot()->checkClickPosition(30, 40, 3), 1);
    }

    void scatteredPoints()
    {
        series()->setXInterval(25);
        series()->setYData({10, 0, 30, qQNaN(), 10});
        plot()->setPlotStyle(GraphPlot::ScatterPlot);
        plot()->setMaxLineWidth(4);
        // Without a decoration: one warning for each dot drawn. The sample on the baseline and the missing
        // one have none.
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, "Graph Point is null");
        QImage image = painted(plot());
        QVERIFY(qAlpha(image.pixel(50, 20)) != 0);
        QCOMPARE(paintedRows(image, 25), nothing);
        QCOMPARE(paintedRows(image, 75), nothing);

        plot()->setPlotBaseline(true);
        QmlDocument decoration("GraphPointCircle { pointSize: 3 }");
        plot()->setGraphPoint(qobject_cast<GraphPoint *>(decoration.root()));
        image = painted(plot());
        QVERIFY(paintedRows(image, 25).first != -1);
        // A decoration that goes away is no danger to the next paint.
        decoration.destroyRoot();
        QVERIFY(!plot()->graphPoint());
        plot()->setPlotStyle(GraphPlot::LinePlot);
        painted(plot());
    }

    void clicksFindPoints()
    {
        series()->setXInterval(25);
        series()->setYData({10, 0, 30, 20, 10});
        QCOMPARE(plot()->checkClickPosition(50, 20, 5), -1); // only in the scattered style
        plot()->setPlotStyle(GraphPlot::ScatterPlot);
        QVERIFY(!plot()->isValid()); // not before the next pass of the event loop, but the points are there
        QCOMPARE(plot()->checkClickPosition(52, 17, 5), 2);
        QCOMPARE(plot()->checkClickPosition(52, 26, 5), -1);
        QCOMPARE(plot()->checkClickPosition(58, 20, 5), -1);
        // Zoomed to x 50..100 and y -50..0, clicks count from the start of the data: 100 pixels lie left of the
        // view and 100 above it.
        m_document->object("horizontal")->setProperty("minVisible", 50.0);
        QCOMPARE(plot()->checkClickPosition(100, 20, 5), 2);
        QCOMPARE(plot()->checkClickPosition(150, 30, 5), 3);
        m_document->object("vertical")->setProperty("maxVisible", 0.0);
        series()->setYData({-10, -10, -10, -10, -10});
        QCOMPARE(plot()->checkClickPosition(150, 120, 5), 3);
    }

    void decorationsAreHandedTheirPoint()
    {
        auto *points = m_document->object<PlotPoints>("points");
        points->setXData({75, 25, 25});
        points->setYData({20, 10, 30});
        plot()->setPlotData(points);
        plot()->setPlotStyle(GraphPlot::ScatterPlot);
        plot()->setSelectedPoint(1);
        plot()->setHeight(51); // half a pixel a unit
        Recorder recorder;
        plot()->setGraphPoint(&recorder);
        QSignalSpy changed(&recorder, SIGNAL(pointChanged()));
        painted(plot());
        // In ascending order of x: column, row, margins clockwise from the top, index. Each keeps an index of its own.
        QCOMPARE(recorder.points,
                 (QVector<QVector<int>>{
                     {25, 20, 20, 75, 30, 25, 1}, {25, 10, 10, 75, 40, 25, 2}, {75, 15, 15, 25, 35, 75, 0}}));
        QCOMPARE(recorder.selected, QVector<int>{1});
        QCOMPARE(recorder.pen, QPen(QColor("red"), 16, Qt::SolidLine, Qt::RoundCap));
        // Heard by the plot, the changes of the selection would repaint it for ever.
        QCOMPARE(changed.count(), 0);
        QCOMPARE(plot()->checkClickPosition(25, 10, 3), 2);
        QCOMPARE(plot()->checkClickPosition(75, 15, 3), 0);
    }

    void drawsNothing_data()
    {
        columns<QVector<double>, QSizeF, double>({"y", "size", "maxVisible"});
        const QVector<double> y(300, 20);
        QTest::newRow("no samples") << QVector<double>() << QSizeF(101, 101) << 100.0;
        QTest::newRow("only NaN") << QVector<double>(300, qQNaN()) << QSizeF(101, 101) << 100.0;
        QTest::newRow("one infinite sample") << QVector<double>{qInf()} << QSizeF(101, 101) << 100.0;
        QTest::newRow("zero width") << y << QSizeF(0, 101) << 100.0;
        QTest::newRow("one pixel") << y << QSizeF(1, 1) << 100.0;
        QTest::newRow("zero visible range") << y << QSizeF(101, 101) << 0.0;
        QTest::newRow("visible range NaN") << y << QSizeF(101, 101) << qQNaN();
        QTest::newRow("visible range infinite") << y << QSizeF(101, 101) << qInf();
    }

    void drawsNothing()
    {
        QFETCH(QVector<double>, y);
        QFETCH(QSizeF, size);
        QFETCH(double, maxVisible);
        series()->setYData(y);
        plot()->setSize(size);
        m_document->object("horizontal")->setProperty("maxVisible", maxVisible);
        for (int style = GraphPlot::FillPlot; style <= GraphPlot::ScatterPlot; ++style) {
            plot()->setProperty("plotStyle", style);
            const QImage image = painted(plot());
            for (int column = 0; column < image.width(); ++column)
                QCOMPARE(paintedRows(image, column), nothing);
        }
    }

    void framebufferShift()
    {
        series()->setXInterval(50);
        series()->setYData({0, 20, 0});
        QCoreApplication::processEvents();
        QCOMPARE(plot()->renderTarget(), QQuickPaintedItem::FramebufferObject);
        const auto draw = [this](QPainter *painter) { plot()->paint(painter); };
        const QImage shifted = picture(draw, QSize(101, 101), Qt::transparent);
        const int shift = QT_VERSION < QT_VERSION_CHECK(6, 0, 0) ? 1 : 0;
        QCOMPARE(painted(plot()).copy(0, 0, 100, 100), shifted.copy(shift, shift, 100, 100));
    }

    void gapsAreBridged()
    {
        plot()->setProperty("useIntermittentPlot", false);
        // A hundred samples each at x 20 and x 80: the columns between them repeat the first hundred.
        auto *points = m_document->object<PlotPoints>("points");
        points->setXData(QVector<double>(100, 20.0) + QVector<double>(100, 80.0));
        points->setYData(QVector<double>(200, 10.0));
        plot()->setPlotData(points);
        plot()->setPlotStyle(GraphPlot::MaxLinePlot);
        QCOMPARE(paintedRows(painted(plot()), 50), Rows(40, 40));
        plot()->setUseIntermittentPlot(true);
        QCOMPARE(paintedRows(painted(plot()), 50), nothing);
    }

private:
    GraphPlot *plot() const { return m_document->object<GraphPlot>("plot"); }
    PlotSeries *series() const { return m_document->object<PlotSeries>("series"); }

    std::unique_ptr<QmlDocument> m_document;
};

QTEST_MAIN(tst_graphplot)
#include "tst_graphplot.moc"
