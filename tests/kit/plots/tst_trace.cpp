#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartView.h"
#include "kit/data/StreamPoints.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/Trace.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "platform/bus/BusPublisher.h"

using graph::Trace;

class tst_trace : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qmlRegisterType<Trace>("charts", 1, 0, "Trace");
        qmlRegisterType<graph::ChartAxis>("charts", 1, 0, "ChartAxis");
        qmlRegisterType<graph::ChartView>("charts", 1, 0, "ChartView");
        qmlRegisterType<graph::StreamPoints>("charts", 1, 0, "StreamPoints");
    }

    void data_data()
    {
        columns<QByteArray, QString>({"source", "samples"});
        QTest::newRow("values") << QByteArray("values: [1, 5]; interval: 0.5; start: 2") << "2,1 2.5,5";
        QTest::newRow("no numbers") << QByteArray("values: [1, undefined, 'x', null, '3']")
                                    << "0,1 1,nan 2,nan 3,nan 4,3";
        QTest::newRow("doubles") << QByteArray("values: new Float64Array([1.5, NaN])") << "0,1.5 1,nan";
        QTest::newRow("part of a buffer")
            << QByteArray("values: new Int16Array([1, 2, -3, 4]).subarray(1, 3)") << "0,2 1,-3";
        QTest::newRow("positions") << QByteArray("positions: [4, 2]; values: [1, 5, 6]; interval: 3")
                                   << "4,1 2,5";
        QTest::newRow("gap in x") << QByteArray("positions: [NaN, 0, NaN, 2]; values: [9, 1, 5, 3]")
                                  << "nan,9 0,1 0,nan 2,3";
        QTest::newRow("dates")
            << QByteArray("positions: [new Date(1500), new Date(Date.UTC(1970, 0, 2))]; values: [1, 5]")
            << "1.5,1 86400,5";
        QTest::newRow("series") << QByteArray("series: given") << "0,7 1,8";
        QTest::newRow("series of a trace") << QByteArray("series: Trace { series: later; PlotSeries { id: "
                                                         "later; yData: [3] } Component.onCompleted: "
                                                         "series = given }")
                                           << "0,7 1,8";
        QTest::newRow("series no longer")
            << QByteArray("series: given; Component.onCompleted: series = null") << "";
        QTest::newRow("as data") << QByteArray("plotData: given") << "0,7 1,8";
        QTest::newRow("empty") << QByteArray("values: []; series: null; address: ''") << "";
        QTest::newRow("two") << QByteArray("values: [1]; series: given") << "0,7 1,8";
        QTest::newRow("no list") << QByteArray("values: 'abc'") << "";
    }

    void data()
    {
        QFETCH(QByteArray, source);
        if (source == "values: [1]; series: given")
            QTest::ignoreMessage(
                QtWarningMsg,
                QRegularExpression(
                    "is given its data twice: of series, address and values it uses series; remove"));
        if (source.contains("'x'"))
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("is given the text \"x\" among its values"));
        if (source == "values: 'abc'")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("is given values that are no list"));
        QmlDocument document("Item { PlotSeries { id: given; yData: [7, 8]; yUnits: 'Hz' } "
                             "Trace { id: trace; unit: 'V'; " +
                             source + " } }");
        auto *trace = document.object<Trace>("trace");
        QStringList samples;
        for (int i = 0; trace->plotData() && i < trace->plotData()->size(); ++i)
            samples << QString("%1,%2").arg(trace->plotData()->x(i)).arg(trace->plotData()->y(i));
        const QString found = samples.join(' ');
        QTEST(found, "samples");
        QCOMPARE(document.object<PlotData>("given")->yUnits(), QString("Hz"));
        if (trace->plotData() && !source.contains("given"))
            QCOMPARE(trace->plotData()->yUnits(), QString("V"));
        delete document.object<PlotData>("given");
        QCoreApplication::processEvents();
        QCOMPARE(trace->plotData() != nullptr, source.contains("values") && !source.contains("abc"));
    }

    // It says where its values are and what they are, as far as the document does not.
    void service_data()
    {
        columns<QByteArray, QString, QString>({"written", "found", "later"});
        QTest::newRow("nothing") << QByteArray() << "700,1 702.5,2 dBm Hz"
                                 << "700,1 705,2 V Hz";
        QTest::newRow("interval") << QByteArray("interval: 1") << "700,1 701,2 dBm Hz"
                                  << "700,1 701,2 V Hz";
        QTest::newRow("start") << QByteArray("start: 0") << "0,1 2.5,2 dBm Hz"
                               << "0,1 5,2 V Hz";
        QTest::newRow("unit") << QByteArray("unit: 'A'") << "700,1 702.5,2 A Hz"
                              << "700,1 705,2 A Hz";
        QTest::newRow("unknown unit") << QByteArray("unit: 'rpm'") << "700,1 702.5,2  Hz"
                                      << "700,1 705,2  Hz";
    }

    void service()
    {
        QFETCH(QByteArray, written);
        BusPublisher meter("meter");
        meter.setVector("s_yData:doubleARRAY:", {1, 2});
        meter.setVector("other_yData:doubleARRAY:", {8});
        meter.setValue("s_xFirsValue:", 700.0);
        meter.setValue("s_xIncrement:", 2.5);
        meter.setValue("s_yUnits:", "dBm");
        meter.setValue("s_xUnits:", "Hz");
        QmlDocument document("Item { Trace { id: trace; address: 'meter,s'; " + written + " } }");
        auto *trace = document.object<Trace>("trace");
        const auto shown = [trace] {
            const PlotData *data = trace->plotData();
            QStringList texts;
            for (int i = 0; i < data->size(); ++i)
                texts << QString("%1,%2").arg(data->x(i)).arg(data->y(i));
            return (texts << data->yUnits() << data->xUnits()).join(' ');
        };
        QTEST(shown(), "found");
        meter.setValue("s_xIncrement:", 5.0);
        meter.setValue("s_yUnits:", "V");
        QFETCH(QString, later);
        QTRY_COMPARE(shown(), later);
        trace->setUnit({});
        QVERIFY2(shown().endsWith("V Hz"), qPrintable(shown()));
        meter.setValue("s_yUnits:", "counts"); // which data do not know
        QTRY_COMPARE(graph::unitOfValues(*trace), QString("counts"));
        trace->setAddress("meter,other");
        QVERIFY2(shown().contains(",8 ") && !shown().contains("Hz"), qPrintable(shown()));
        trace->setAddress({});
        trace->setValues({4});
        meter.setVector("other_yData:doubleARRAY:", {9});
        QTest::qWait(50);
        QVERIFY2(shown().contains(",4 "), qPrintable(shown()));
    }

    void anyData_data()
    {
        columns<QVector<double>, double, double, bool>({"values", "interval", "from", "isSeen"});
        QTest::newRow("none") << QVector<double>() << 1.0 << 0.0 << false;
        QTest::newRow("one") << QVector<double>{3} << 1.0 << 0.0 << true;
        QTest::newRow("at the baseline") << QVector<double>{0, 0} << 5.0 << 0.0 << true;
        QTest::newRow("gaps") << QVector<double>{qQNaN(), qInf(), -qInf()} << 1.0 << 0.0 << false;
        QTest::newRow("one before and one after") << QVector<double>{1, 2} << 1e6 << 5e5 << true;
        QTest::newRow("far up and down") << QVector<double>{1e300, -1e300} << 10.0 << 0.0 << true;
        QTest::newRow("all at one x") << QVector<double>{1, 9} << 0.0 << 0.0 << true;
        QTest::newRow("no distance") << QVector<double>{1, 9} << qQNaN() << 0.0 << false;
        QTest::newRow("backwards") << QVector<double>{1, 9, 4} << -3.0 << -6.0 << true;
        QTest::newRow("two million") << QVector<double>(2000000, 4.0) << 5e-6 << 0.0 << true;
    }

    void anyData()
    {
        QFETCH(QVector<double>, values);
        QFETCH(double, interval);
        QFETCH(double, from);
        QFETCH(bool, isSeen);
        QmlDocument document(R"(Item {
            ValueAxis { id: horizontal; minValue: -1e7; maxValue: 1e7 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minValue: -10; maxValue: 10; minVisible: -10; maxVisible: 10 }
            Trace { id: trace; width: 101; height: 101; axisX: horizontal; axisY: vertical }
        })");
        auto *trace = document.object<Trace>("trace");
        auto *axis = document.object<ValueAxis>("horizontal");
        axis->setProperty("maxVisible", from + 10);
        axis->setProperty("minVisible", from);
        trace->setInterval(interval);
        trace->setValues(values);
        const QByteArray name = QTest::currentDataTag();
        // Of these only what lies between the samples is in sight, or reaches there from the baseline.
        const bool hasLineOnly = name == "one before and one after";
        const bool hasNoPoints = hasLineOnly || name == "far up and down";
        for (int style = Trace::Line; style <= Trace::LineAndPoints; ++style) {
            trace->setProperty("style", style);
            trace->setSize(QSizeF(101, 101));
            const bool hasInk =
                !inkBox(painted(trace), [](const QColor &c) { return c.alpha() > 0; }).isEmpty();
            const bool isLeftOut =
                (style == Trace::Bars && hasLineOnly) || (style == Trace::Points && hasNoPoints);
            QVERIFY2(hasInk == (isSeen && !isLeftOut), qPrintable(QString::number(style)));
            trace->setSize(QSizeF(0, 101));
            painted(trace);
        }
    }

    // In which rows of 101 an area at half the height of the item is.
    void baseline_data()
    {
        columns<QByteArray, QByteArray, int, int>({"axis", "trace", "top", "bottom"});
        QTest::newRow("zero") << QByteArray("minValue: -100; maxValue: 100") << QByteArray() << 50 << 50;
        QTest::newRow("level") << QByteArray("minValue: -100; maxValue: 100") << QByteArray("unit: 'dBm'")
                               << 50 << 99;
        QTest::newRow("level of the axis")
            << QByteArray("unit: 'dBV'; minValue: -100; maxValue: 100") << QByteArray() << 50 << 99;
        QTest::newRow("decreasing") << QByteArray("minValue: 100; maxValue: -100")
                                    << QByteArray("unit: 'dBm'") << 0 << 50;
        QTest::newRow("ratio") << QByteArray("minValue: -100; maxValue: 100") << QByteArray("unit: 'dB'")
                               << 50 << 50;
        QTest::newRow("written zero") << QByteArray("baseline: 0; minValue: -100; maxValue: 100")
                                      << QByteArray("unit: 'dBm'") << 50 << 50;
    }

    void baseline()
    {
        QFETCH(QByteArray, axis);
        QFETCH(QByteArray, trace);
        QFETCH(int, top);
        QFETCH(int, bottom);
        QmlDocument document(
            "Item { ValueAxis { id: horizontal }"
            "ChartAxis { id: vertical; alignment: Qt.AlignLeft; " +
            axis +
            " } Trace { id: trace; width: 101; height: 101; axisX: horizontal; axisY: vertical; "
            "style: Trace.Area; lineWidth: 1; " +
            "values: [0, 0]; " + trace + "} }");
        const Rows rows = paintedRows(painted(document.object<Trace>("trace")), 50);
        QCOMPARE(rows, Rows(top, bottom));
    }

    // A bar that is alone in its trace is as wide as one between the bars of others would be, or as its interval says. Those
    // at the ends of automatic ranges are whole.
    void loneBar_data()
    {
        columns<QByteArray, QByteArray, QByteArray, double>({"chart", "others", "alone", "neighbour"});
        QTest::newRow("positions") << QByteArray() << QByteArray() << QByteArray("positions: [3]") << 2.0;
        QTest::newRow("start") << QByteArray() << QByteArray("interval: 10") << QByteArray("start: 40")
                               << 30.0;
        QTest::newRow("written interval")
            << QByteArray() << QByteArray() << QByteArray("start: 3; interval: 0.5") << 3.5;
        QTest::newRow("reversed") << QByteArray("axisX { minValue: 4.5; maxValue: -0.5 }") << QByteArray()
                                  << QByteArray("positions: [3]") << 2.0;
        QTest::newRow("decades") << QByteArray("axisX.scale: ChartAxis.Logarithmic;")
                                 << QByteArray("positions: [1, 10, 100, 1000]")
                                 << QByteArray("positions: [1000]") << 100.0;
        QTest::newRow("decades, one by one")
            << QByteArray("axisX.scale: ChartAxis.Logarithmic;") << QByteArray("positions: [100]")
            << QByteArray("positions: [10]") << 100.0;
        QTest::newRow("one by one") << QByteArray() << QByteArray("positions: [2]") << QByteArray("start: 4")
                                    << 2.0;
        QTest::newRow("only one") << QByteArray() << QByteArray("visible: false")
                                  << QByteArray("start: 7; interval: 3") << 10.0;
    }

    void loneBar()
    {
        QFETCH(QByteArray, chart);
        QFETCH(QByteArray, others);
        QFETCH(QByteArray, alone);
        QFETCH(double, neighbour);
        QmlDocument document("ChartView { width: 640; height: 400; " + chart +
                             " Trace { id: others; style: Trace.Bars; values: [9, 9, 9, 9]; " + others +
                             " } Trace { id: alone; style: Trace.Bars; values: [5]; " + alone + " } }");
        auto *trace = document.object<Trace>("alone");
        const QRect bar = inkBox(painted(trace), [](const QColor &color) { return color.alpha() > 0; });
        const double x = trace->mapToItemX(trace->plotData()->x(0));
        const double width = 0.75 * std::abs(trace->mapToItemX(neighbour) - x);
        QVERIFY2(std::abs(bar.width() - width) <= 1.0, qPrintable(QString::number(bar.width() / width)));
        QVERIFY(std::abs(bar.left() + bar.width() / 2.0 - x) <= 1.0);
        for (Trace *whole : {trace, document.object<Trace>("others")}) {
            const QRect ink = inkBox(painted(whole), [](const QColor &color) { return color.alpha() > 0; });
            QVERIFY(!whole->isVisible() || (ink.left() > 0 && ink.right() < whole->width() - 1.0));
        }
    }

    void loneSample()
    {
        QmlDocument document(R"(Item {
            ValueAxis { id: horizontal; maxValue: 2 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 2 }
            Trace { id: trace; width: 101; height: 101; axisX: horizontal; axisY: vertical; start: 1; values: [1]; lineWidth: 1 }
        })");
        const auto isInk = [](const QColor &color) { return color.alpha() > 0; };
        QCOMPARE(inkBox(painted(document.object<Trace>("trace")), isInk).size(), QSize(5, 5));
    }

    // In the middle of its pixel, a line covers what becomes of that pixel.
    void scaled()
    {
        QmlDocument document(R"(Item {
            ValueAxis { id: horizontal; maxValue: 2 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100 }
            Trace { id: trace; width: 101; height: 101; axisX: horizontal; axisY: vertical; values: [30.5, 30.5, 30.5] }
        })");
        auto *trace = document.object<Trace>("trace");
        for (const int width : {1, 3}) {
            trace->setLineWidth(width);
            const Rows rows = paintedRows(painted(trace), 50);
            const auto draw = [trace](QPainter *painter) {
                painter->scale(2, 2);
                trace->paint(painter);
            };
            QCOMPARE(paintedRows(picture(draw, QSize(202, 202), Qt::transparent), 100),
                     Rows(2 * rows.first, 2 * rows.second + 1));
        }
    }

    // Of axes that a chart gave to the data; the values change their kind.
    void keepsItsAxes()
    {
        QmlDocument document("Item { ValueAxis { id: axis } Trace { id: trace; values: [1] } }");
        auto *trace = document.object<Trace>("trace");
        trace->plotData()->setAxisX(document.object<ValueAxis>("axis"));
        trace->setPositions(QVector<double>{3});
        QCOMPARE(trace->plotData()->axisX(), document.object<ValueAxis>("axis"));
        QCOMPARE(trace->plotData()->x(0), 3.0);
    }

    void extent()
    {
        Trace trace;
        QVERIFY(trace.dataExtent().x.isEmpty());
        trace.setInterval(-2);
        trace.setValues(QVector<double>{qQNaN(), 3, -qInf(), 8});
        QCOMPARE(trace.dataExtent().x.min, -6.0);
        QCOMPARE(trace.dataExtent().y.min, 3.0);
        QCOMPARE(trace.dataExtent(-4, 0).y.max, 3.0);
        QSignalSpy changed(&trace, SIGNAL(dataChanged()));
        trace.setValues(QVector<double>{1});
        QTRY_COMPARE(changed.count(), 1);
    }

    // Also of points in any order, which have no samples beyond their ends.
    void extentX_data()
    {
        columns<QByteArray>({"source"});
        QTest::newRow("positions") << QByteArray("positions: [2, 0, 10, 3]; values: [1, 2, 3, 4]");
        QTest::newRow("points") << QByteArray(
            "series: PlotPoints { xData: [0, 1, NaN, 10, 3]; yData: [1, 2, 3, 4, 5] }");
        QTest::newRow("stream") << QByteArray("series: StreamPoints { Component.onCompleted: "
                                              "{ append([0, 1, 10], [1, 2, 3]); append(3, NaN) } }");
        QTest::newRow("backwards") << QByteArray("values: [1, 2, 3]; start: 10; interval: -5");
        QTest::newRow("segments") << QByteArray("series: PlotPoints { usePointsAsSegments: true; "
                                                "xData: [8, 10, 0, 3]; yData: [1, 2, 3, 4] }");
    }

    void extentX()
    {
        QFETCH(QByteArray, source);
        QmlDocument document("Item { Trace { id: trace; " + source + " } }");
        auto *trace = document.object<Trace>("trace");
        QCOMPARE(trace->extentX().min, 0.0);
        QCOMPARE(trace->extentX().max, 10.0);
        QCOMPARE(trace->dataExtent().x.max, 10.0);
        if (source.contains("positions"))
            QVERIFY(trace->plotData()->containsPoint(9) && !trace->plotData()->containsPoint(11));
    }

    void choiceOfColor()
    {
        Trace trace;
        trace.setDefaultColor(Qt::red);
        QCOMPARE(trace.penColor(), QColor(Qt::red));
        trace.setPenColor(Qt::blue);
        trace.setDefaultColor(Qt::green);
        QCOMPARE(trace.penColor(), QColor(Qt::blue));
        trace.resetColor();
        QCOMPARE(trace.penColor(), QColor(Qt::green));
    }
};

QTEST_MAIN(tst_trace)
#include "tst_trace.moc"
