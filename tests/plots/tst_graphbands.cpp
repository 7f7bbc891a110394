#include "support/QmlDocument.h"
#include "support/Regions.h"
#include "support/Table.h"

#include "data/PlotRegions.h"
#include "plots/GraphBands.h"
#include "plots/RegionLabels.h"

class tst_graphbands : public QObject
{
    Q_OBJECT

private slots:
    // 201 x 101 pixels, x 0..200 and y -50..50: a value v is in row 50 - v.
    void init()
    {
        m_document = std::make_unique<QmlDocument>(R"(
            Item {
                PlotRegions { id: regions; axisX: horizontal; axisY: vertical }
                ValueAxis { id: horizontal; maxValue: 200; maxVisible: 200 }
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
                GraphBands {
                    id: plot; width: 201; height: 101
                    plotData: regions; penColor: "blue"; lineWidth: 0
                }
            })");
    }

    void cleanup() { m_document.reset(); }

    void labelsStepAside()
    {
        const QSizeF item(100, 100);
        const QRectF label(10, 50, 30, 12);
        const QVector<QRectF> places =
            graph::separatedLabels({label, label, QRectF(20, 45, 30, 12), label, label, label}, item);
        QCOMPARE(places, (QVector<QRectF>{label, QRectF(10, 38, 30, 12), QRectF(20, 21, 30, 12), QRectF(),
                                          QRectF(), QRectF()}));
        // Into the item, where the top is the end; those that cannot be inside are left out.
        QCOMPARE(
            graph::separatedLabels({QRectF(-9, 95, 30, 12), QRectF(90, -5, 30, 12), QRectF(90, 3, 30, 12),
                                    QRectF(0, 0, 101, 9), QRectF(qQNaN(), 0, 9, 9)},
                                   item),
            (QVector<QRectF>{QRectF(0, 88, 30, 12), QRectF(70, 0, 30, 12), QRectF(), QRectF(), QRectF()}));
        // Beside each other with a gap. One that moved up has a line to its foot, behind those that are in between.
        const QVector<QRectF> moved =
            graph::separatedLabels({label, label.translated(33, 0), label, label}, item);
        QCOMPARE(moved, (QVector<QRectF>{label, QRectF(43, 38, 30, 12), QRectF(10, 26, 30, 12),
                                         QRectF(10, 14, 30, 12)}));
        QCOMPARE(graph::labelStems(moved, {{25, 56}, {58, 56}, {25, 70}, {90, 60}}),
                 (QVector<QLineF>{{58, 50, 58, 56}, {25, 38, 25, 50}, {25, 62, 25, 70}, {90, 26, 90, 60}}));
    }

    void shapes_data()
    {
        // The band's begin, end and value; the rows painted at x = 100 and at x = 65, which is an eighth of
        // the band's width from its begin.
        columns<int, QVector<double>, Rows, Rows>({"style", "band", "middle", "near"});
        const QVector<double> up{60, 140, 40};
        const QVector<double> down{140, 60, -40};
        QTest::newRow("ellipse") << int(PlotRegion::Ellipse) << up << Rows(10, 49) << Rows(30, 49);
        QTest::newRow("trapezoid") << int(PlotRegion::Trapezoid) << up << Rows(10, 49) << Rows(27, 49);
        QTest::newRow("rectangle") << int(PlotRegion::Rectangle) << up << Rows(10, 49) << Rows(10, 49);
        QTest::newRow("label only") << int(PlotRegion::LabelOnly) << up << nothing << nothing;
        QTest::newRow("no such style") << 9 << up << nothing << nothing;
        QTest::newRow("ellipse, downward, swapped")
            << int(PlotRegion::Ellipse) << down << Rows(50, 89) << Rows(50, 69);
        QTest::newRow("trapezoid, downward")
            << int(PlotRegion::Trapezoid) << down << Rows(50, 89) << Rows(50, 72);
        QTest::newRow("line") << int(PlotRegion::Ellipse) << QVector<double>{100, 102, 40} << Rows(10, 49)
                              << nothing;
    }

    void shapes()
    {
        QFETCH(int, style);
        QFETCH(QVector<double>, band);
        QFETCH(Rows, middle);
        QFETCH(Rows, near);
        add(band[0], band[1], band[2], style);
        const QImage image = painted(plot());
        QVERIFY(isClose(paintedRows(image, 100), middle));
        QVERIFY(isClose(paintedRows(image, 65), near));
        QCOMPARE(paintedRows(image, 57), nothing);
        QCOMPARE(paintedRows(image, 143), nothing);
    }

    void smallBandsOnTop()
    {
        plot()->setFillOpacity(1);
        add(50, 100, 10, PlotRegion::Rectangle)->setColor("lime");
        add(40, 160, 40, PlotRegion::Rectangle)->setColor("red");
        QCOMPARE(painted(plot()).pixelColor(75, 45), QColor("lime"));
        QCOMPARE(painted(plot()).pixelColor(75, 35), QColor("red"));
    }

    void imageHasTheSamePixels()
    {
        plot()->setLineWidth(2);
        add(20, 90, 20, PlotRegion::Ellipse, "ellipse");
        add(60, 150, 21, PlotRegion::Trapezoid, "trapezoid");
        PlotRegion *last = add(100, 180, 10, PlotRegion::Rectangle, "rectangle");
        const auto sameBothWays = [this] {
            plot()->setRenderToImage(false);
            const QImage direct = painted(plot());
            plot()->setRenderToImage(true);
            painted(plot());
            return painted(plot()) == direct;
        };
        QVERIFY(sameBothWays());
        // Whatever changes, the image follows.
        const auto follows = [&](auto change) {
            const QImage before = painted(plot());
            change();
            QTest::qWait(1);
            const QImage after = painted(plot());
            return after != before && sameBothWays() && painted(plot()) == after;
        };
        QObject *axis = m_document->object("horizontal");
        QFont smallFont;
        smallFont.setPixelSize(9);
        const QVector<std::tuple<QObject *, const char *, QVariant>> changes{
            {last, "value", 40},
            {axis, "maxVisible", 150},
            {plot(), "width", 150},
            {plot(), "penColor", QColor("red")},
            {plot(), "labelPen", QColor("red")},
            {plot(), "fillOpacity", 0.8},
            {plot(), "labelFont", smallFont},
            {last, "plotStyle", PlotRegion::LabelOnly}};
        for (const auto &[object, property, value] : changes)
            QVERIFY2(follows([&, o = object, p = property, v = value] { o->setProperty(p, v); }), property);
        QVERIFY(follows([&] { m_document->object<PlotRegions>("regions")->remove(last); }));
        plot()->setWidth(100000); // more than is kept
        QVERIFY(sameBothWays());
    }

    void badRegions()
    {
        const double numbers[] = {qQNaN(), qInf(), -qInf(), 1e300, -1e300, 0, 100};
        for (int i = 0; i < 7 * 7 * 7; ++i)
            add(numbers[i % 7], numbers[i / 7 % 7], numbers[i / 49], i % 4, "bad", false);
        QTest::qWait(1);
        QVERIFY(paintedRows(painted(plot()), 50) != nothing);
        plot()->setPlotData(nullptr);
        QCOMPARE(paintedRows(painted(plot()), 50), nothing);
    }

private:
    GraphBands *plot() const { return m_document->object<GraphBands>("plot"); }
    PlotRegion *add(double begin, double end, double value, int style, const QString &name = {},
                    bool wait = true)
    {
        PlotRegion *added = region(begin, end, value, m_document->root(), name);
        added->setPlotStyle(PlotRegion::PlotStyle(style));
        m_document->object<PlotRegions>("regions")->append(added);
        if (wait)
            QTest::qWait(1); // the region tells its list, and that the plot
        return added;
    }

    std::unique_ptr<QmlDocument> m_document;
};

QTEST_MAIN(tst_graphbands)
#include "tst_graphbands.moc"
