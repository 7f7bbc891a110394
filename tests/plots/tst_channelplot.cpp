#include "support/QmlDocument.h"
#include "support/Regions.h"
#include "support/Table.h"

#include "data/PlotRegions.h"
#include "plots/ChannelPlot.h"

using graph::ChannelLabel;

class tst_channelplot : public QObject
{
    Q_OBJECT

private slots:
    // 101 x 101 pixels, x and y 0..100: a value v is in row 100 - v.
    void init()
    {
        m_document = std::make_unique<QmlDocument>(R"(
            Item {
                PlotRegions { id: regions; axisX: horizontal; axisY: vertical }
                ValueAxis { id: horizontal; maxValue: 100; maxVisible: 100 }
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100; maxVisible: 100 }
                ChannelPlot {
                    id: plot; width: 101; height: 101
                    plotData: regions; penColor: "blue"; labelPen: "red"
                }
            })");
    }

    void cleanup() { m_document.reset(); }

    void labelPlace_data()
    {
        columns<QRectF, int, QRectF>({"channel", "style", "place"});
        // Name and value are 50 x 40, the name alone 30 x 20; the item is 100 x 100.
        QTest::newRow("above") << QRectF(20, 60, 60, 40) << int(ChannelLabel::NameAndValue)
                               << QRectF(25, 18, 50, 40);
        QTest::newRow("no room above")
            << QRectF(20, 30, 60, 70) << int(ChannelLabel::NameAndValue) << QRectF(25, 32, 50, 40);
        QTest::newRow("top out of sight")
            << QRectF(0, -2, 60, 90) << int(ChannelLabel::NameAndValue) << QRectF(5, 2, 50, 40);
        QTest::newRow("name fits") << QRectF(0, 60, 40, 40) << int(ChannelLabel::Name)
                                   << QRectF(5, 38, 30, 20);
        QTest::newRow("upright") << QRectF(0, 60, 24, 40) << int(ChannelLabel::UprightName)
                                 << QRectF(2, 62, 20, 30);
        QTest::newRow("too low for upright") << QRectF(0, 80, 24, 20) << int(ChannelLabel::None) << QRectF();
        QTest::newRow("too narrow") << QRectF(0, 10, 19, 90) << int(ChannelLabel::None) << QRectF();
    }

    void labelPlace()
    {
        QFETCH(QRectF, channel);
        const ChannelLabel label =
            graph::channelLabel(channel, QSizeF(50, 40), QSizeF(30, 20), QSizeF(100, 100));
        QTEST(int(label.style), "style");
        QTEST(label.rect, "place");
    }

    void labelsOfMeasuredChannelsHaveTwoLines()
    {
        const auto labelHeight = [this] {
            const auto isLabel = [](const QColor &pixel) { return pixel.red() > pixel.blue(); };
            return inkBox(painted(plot()), isLabel).height();
        };
        add(10, 90, 40, "M")->setValid(false);
        const int oneLine = labelHeight();
        QVERIFY(oneLine > 0);
        add(10, 90, 60, "M");
        plot()->setSelectedPoint(1);
        QVERIFY(labelHeight() > 2 * oneLine);
    }

    void framesAndFill()
    {
        add(10, 30, 60);
        add(60, 40, -5)->setColor("lime"); // the wrong way round, and below the baseline, out of sight
        add(70, 90, 0, {}, false);
        const QImage image = painted(plot());
        QCOMPARE(image.pixelColor(10, 70), QColor("blue"));
        QCOMPARE(image.pixelColor(29, 70), QColor("blue"));
        QCOMPARE(image.pixelColor(20, 40), QColor("blue"));
        QCOMPARE(image.pixelColor(20, 70).alpha(), 96); // 0.375
        QCOMPARE(paintedRows(image, 11), Rows(40, 99));
        QCOMPARE(paintedRows(image, 9), nothing);
        QCOMPARE(paintedRows(image, 30), nothing);
        QCOMPARE(image.pixelColor(50, 100), QColor("lime"));
        // Not measured: dashes over the full height, at the edges only.
        QCOMPARE(paintedRows(image, 80), nothing);
        int dashes = 0;
        for (int row = 0; row < 101; ++row)
            dashes += image.pixelColor(70, row) == QColor("blue");
        QVERIFY(dashes > 30 && dashes < 90);

        plot()->setSelectedPoint(0);
        QCOMPARE(painted(plot()).pixelColor(11, 70), QColor("blue"));
    }

    void tallestOfAColumn()
    {
        for (const double value : {20, 80, 50})
            add(50, 50.1, value, "Channel")->setColor(QColor(0, 0, int(value)));
        QImage image = painted(plot());
        QCOMPARE(paintedRows(image, 50), Rows(20, 99));
        for (int row = 20; row < 100; ++row)
            QCOMPARE(image.pixelColor(50, row), QColor(0, 0, 80));
        QCOMPARE(paintedRows(image, 45), nothing);
        // The selected one has precedence, and a label although there is no room for one.
        plot()->setSelectedPoint(0);
        image = painted(plot());
        QCOMPARE(image.pixelColor(50, 90), QColor(0, 0, 20));
        QVERIFY(paintedRows(image, 45) != nothing);
        plot()->setWidth(20);
        QCOMPARE(paintedRows(painted(plot()), 5), nothing);
    }

    void clicks()
    {
        add(10, 90, 60);
        add(40, 60, 40);
        QCOMPARE(plot()->checkClickPosition(15, 80, 0), 0);
        QCOMPARE(plot()->checkClickPosition(50, 80, 0), 1); // the narrower of two
        QCOMPARE(plot()->checkClickPosition(38, 80, 5), 0); // under the click before near it
        QCOMPARE(plot()->checkClickPosition(50, 37, 5), 0);
        QCOMPARE(plot()->checkClickPosition(50, 30, 5), -1);
        QCOMPARE(plot()->checkClickPosition(qQNaN(), 80, 5), -1);
        QCOMPARE(plot()->checkClickPosition(15, 80, qQNaN()), -1);
        // At twice the zoom a channel lies at twice the distance from the start of the data.
        m_document->object("horizontal")->setProperty("minVisible", 50.0);
        QCOMPARE(plot()->checkClickPosition(110, 80, 0), 1);
        QCOMPARE(plot()->checkClickPosition(140, 80, 0), 0);
        plot()->setWidth(0);
        QCOMPARE(plot()->checkClickPosition(140, 80, 0), -1);
    }

    void framesPerSecond()
    {
        add(10, 90, 60);
        QSignalSpy spy(plot(), SIGNAL(fpsChanged(int)));
        for (int i = 0; i < 7; ++i)
            painted(plot());
        QCOMPARE(spy.count(), 0);
        QTRY_COMPARE(plot()->fps(), 7);
        QTRY_COMPARE(plot()->fps(), 0);
        QCOMPARE(spy.count(), 2);
        painted(plot());
        plot()->setVisible(false);
        QTest::qWait(1100);
        QCOMPARE(spy.count(), 2);
    }

    void nothingToDraw()
    {
        QCOMPARE(paintedRows(painted(plot()), 0), nothing);
        delete add(10, 90, 60);
        delete add(qQNaN(), 90, 60);
        add(-qInf(), 90, 60);
        PlotRegion *noValue = add(10, 90, qInf());
        QCOMPARE(paintedRows(painted(plot()), 10).first, 0); // no value: as not measured
        noValue->setBegin(qQNaN());
        QCOMPARE(paintedRows(painted(plot()), 10), nothing);
        delete m_document->object<PlotRegions>("regions");
        QCOMPARE(paintedRows(painted(plot()), 10), nothing);
    }

private:
    ChannelPlot *plot() const { return m_document->object<ChannelPlot>("plot"); }
    PlotRegion *add(double begin, double end, double value, const QString &name = {}, bool valid = true)
    {
        PlotRegion *added = region(begin, end, value, m_document->root(), name);
        added->setValid(valid);
        m_document->object<PlotRegions>("regions")->append(added);
        QTest::qWait(1); // the region tells its list, and that the plot
        return added;
    }

    std::unique_ptr<QmlDocument> m_document;
};

QTEST_MAIN(tst_channelplot)
#include "tst_channelplot.moc"
