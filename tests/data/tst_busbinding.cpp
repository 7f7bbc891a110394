#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "platform/bus/BusPublisher.h"

#include <QSignalSpy>
#include <QtTest>

// Everything on the bus of this process: no daemon is involved.
class tst_busbinding : public QObject
{
    Q_OBJECT

private slots:
    void everyKeySetsItsProperty()
    {
        const QMap<QString, QVariant> values{
            {"xLabel", "Distance"}, {"yLabel", "Level"}, {"xSigDigs", 6},       {"ySigDigs", 5},
            {"xPrecision", 1},      {"yPrecision", 3},   {"xRangeBegin", -1.5}, {"yRangeBegin", -60.0},
            {"xRangeEnd", 20.0},    {"yRangeEnd", 5.0},  {"xUnits", "Hz"},      {"yUnits", "dB"},
            {"label", "A"}};
        BusPublisher bus("allkeys");
        QVector<double> trace(1000, 1.0);
        for (auto value = values.begin(); value != values.end(); ++value)
            bus.setValue("pfx_" + value.key() + ":", value.value());
        bus.setVector("pfx_yData:doubleARRAY:", trace);
        PlotSeries series;
        series.setDbusAddress("allkeys,pfx,ignored");
        QCOMPARE(series.dbusAddress(), QStringLiteral("allkeys,pfx,ignored"));
        for (auto value = values.begin(); value != values.end(); ++value)
            QCOMPARE(series.property(value.key().toLatin1()), value.value());
        QVERIFY(series.yData().isSharedWith(trace));

        QSignalSpy plotChanged(&series, SIGNAL(plotChanged()));
        trace[0] = 2.0;
        bus.setVector("pfx_yData:doubleARRAY:", trace);
        QVERIFY(series.yData().isSharedWith(trace));
        bus.setValue("pfx_xLabel:", "Time");
        bus.setValue("pfx_yRangeEnd:", 7.0);
        QCOMPARE(series.xLabel(), QStringLiteral("Time"));
        QCOMPARE(series.yRangeEnd(), 7.0);
        QTRY_COMPARE(plotChanged.count(), 1);
    }

    void prefixMayHaveUnderscores()
    {
        BusPublisher bus("underscores");
        bus.setValue("a_b_label:", "first");
        bus.setVector("a_b_xData:doubleARRAY:", {1, 2});
        bus.setVector("a_b_yData:doubleARRAY:", {3, 4});
        PlotPoints points;
        points.setDbusAddress("underscores,a_b");
        bus.setValue("a_b_label:", "second");
        bus.setVector("a_b_xData:doubleARRAY:", {5, 6});
        QCOMPARE(points.label(), QStringLiteral("second"));
        QCOMPARE(points.last(), QPointF(6, 4));
        QVERIFY(points.dynamicPropertyNames().isEmpty());
    }

    void namesThatAreNotProperties()
    {
        BusPublisher bus("dynamic");
        bus.setValue("t_xFirsValue:", 5.0);
        bus.setValue("t_xIncrement:", 0.5);
        bus.setVector("t_yData:doubleARRAY:", {1});
        PlotSeries series;
        series.setDbusAddress("dynamic,t");
        bus.setValue("t_xFirsValue:", 6.0);
        QCOMPARE(series.property("xFirsValue").toDouble(), 6.0);
        QCOMPARE(series.property("xIncrement").toDouble(), 0.5);
        QCOMPARE(series.first(), QPointF(0, 1));
        QCOMPARE(series.xInterval(), 1.0);
    }

    void incompleteAddresses()
    {
        BusPublisher bus("unbound");
        bus.setValue("_label:", "wrong");
        bus.setValue("t_label:", "kept");
        bus.setVector("t_yData:doubleARRAY:", {1});
        PlotSeries series;
        series.setDbusAddress("unbound");
        QCOMPARE(series.dbusAddress() + series.label(), QString());
        series.setDbusAddress("unbound,t");
        series.setDbusAddress(QString());
        series.setDbusAddress(",");
        bus.setValue("t_label:", "lost");
        bus.setVector("t_yData:doubleARRAY:", {2});
        QCOMPARE(series.dbusAddress(), QStringLiteral(","));
        QCOMPARE(series.label(), QStringLiteral("kept"));
        QCOMPARE(series.yData(), QVector<double>{1});
    }

    void rebindingLetsGoOfFormerItems()
    {
        BusPublisher bus("rebind");
        BusPublisher other("rebindother");
        for (const char *prefix : {"old", "new"}) {
            bus.setValue(QString(prefix) + "_label:", QString(prefix));
            bus.setVector(QString(prefix) + "_yData:doubleARRAY:", {1});
        }
        bus.setValue("old_xLabel:", "x");
        other.setVector("new_yData:doubleARRAY:", {8});
        PlotSeries series;
        series.setDbusAddress("rebind,old");
        series.setDbusAddress("rebind,old");
        QSignalSpy labels(&series, SIGNAL(labelChanged(QString)));
        bus.setValue("old_label:", "old again");
        QCOMPARE(labels.count(), 1);

        series.setDbusAddress("rebind,new");
        QCOMPARE(series.label(), QStringLiteral("new"));
        bus.setValue("old_label:", "lost");
        bus.setValue("old_xLabel:", "lost, too: the new prefix has none");
        bus.setVector("old_yData:doubleARRAY:", {5, 5});
        QCOMPARE(series.label(), QStringLiteral("new"));
        QCOMPARE(series.xLabel(), QStringLiteral("x"));
        QCOMPARE(series.size(), 1);

        series.setDbusAddress("rebindother,new");
        bus.setValue("new_label:", "lost");
        QCOMPARE(series.label(), QStringLiteral("new"));
        QCOMPARE(series.y(0), 8.0);
    }

    void missingItemsAndForeignSenders()
    {
        BusPublisher bus("novector");
        bus.setValue("t_label:", "there");
        PlotSeries series;
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression("^PlotSeries\\(.*\\) No ORNVecDoubleClientItem for$"));
        series.setDbusAddress("novector,t");
        QCOMPARE(series.label(), QStringLiteral("there"));

        PlotSeries foreign;
        QVERIFY(QMetaObject::invokeMethod(&series, "handleOrnItemValueChanged"));
        QTest::ignoreMessage(
            QtDebugMsg,
            QRegularExpression("^in handleOrnVecDoubleItemChanged: sender\\(\\) = QObject\\(0x0\\)$"));
        QVERIFY(QMetaObject::invokeMethod(&series, "handleOrnVecDoubleItemChanged"));
        connect(&foreign, SIGNAL(labelChanged(QString)), &series, SLOT(handleOrnItemValueChanged()));
        connect(&foreign, SIGNAL(labelChanged(QString)), &series, SLOT(handleOrnVecDoubleItemChanged()));
        QTest::ignoreMessage(
            QtDebugMsg,
            QRegularExpression("^in handleOrnVecDoubleItemChanged: sender\\(\\) = PlotSeries\\("));
        foreign.setLabel("a");
        QVERIFY(series.dynamicPropertyNames().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_busbinding)
#include "tst_busbinding.moc"
