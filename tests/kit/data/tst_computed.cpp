#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "kit/data/Average.h"
#include "kit/data/Difference.h"
#include "kit/data/MaxHold.h"
#include "kit/data/MinHold.h"
#include "kit/data/PeakList.h"
#include "kit/data/Smooth.h"
#include "kit/data/Statistics.h"
#include "kit/data/StreamSeries.h"
#include "support/QmlDocument.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace graph;

namespace {

QVector<double> valuesOf(const PlotData &data)
{
    QVector<double> values;
    for (int i = 0; i < data.size(); ++i)
        values.append(data.y(i));
    return values;
}

// Until everything that waits for the event loop has come.
void settle()
{
    for (int i = 0; i < 8; ++i)
        QCoreApplication::processEvents();
}

using Values = QVector<double>;

} // namespace

class tst_computed : public QObject
{
    Q_OBJECT

private slots:
    void eachChangeIsTakenOnce()
    {
        PlotSeries series;
        series.setYData({1, 1});
        Average average;
        MaxHold high;
        MinHold low;
        for (ComputedData *computed : {static_cast<ComputedData *>(&average),
                                       static_cast<ComputedData *>(&high), static_cast<ComputedData *>(&low)})
            computed->setSource(&series);
        series.setLabel("announced with the first trace, and by itself");
        settle();
        series.setLabel("no new trace");
        settle();
        series.setYData({4, -2});
        settle();
        QCOMPARE(valuesOf(average), Values({2.5, -0.5}));
        QCOMPARE(valuesOf(high), Values({4, 1}));
        QCOMPARE(valuesOf(low), Values({1, -2}));

        high.setRunning(false);
        series.setYData({9, 9});
        settle();
        QCOMPARE(valuesOf(high), Values({4, 1}));
        high.setRunning(true);
        settle();
        QCOMPARE(valuesOf(high), Values({9, 9}));
        high.clear();
        settle();
        QCOMPARE(high.size(), 0);
        series.setYData({0, 3});
        settle();
        QCOMPARE(valuesOf(high), Values({0, 3}));

        // Other places and other lengths begin again.
        series.setXFirstValue(10);
        settle();
        QCOMPARE(high.first(), QPointF(10, 0));
        series.setYData({-5, -6, -7});
        settle();
        QCOMPARE(valuesOf(high), Values({-5, -6, -7}));
        QCOMPARE(valuesOf(average), Values({-5, -6, -7}));
    }

    void anyDataAreASource()
    {
        PlotPoints points;
        points.setXData({3, 1, 2});
        points.setYData({30, 10, 20});
        StreamSeries backwards;
        backwards.setInterval(-2.0);
        backwards.append({1, 2, 3});
        Difference difference;
        difference.setSource(&points);
        settle();
        QCOMPARE(difference.size(), 0);
        difference.setReference(&backwards);
        settle();
        QCOMPARE(valuesOf(difference), Values({7, 18, 29}));
        QCOMPARE(difference.last(), QPointF(3, 29));
        backwards.clear();
        backwards.append({1, 2});
        settle();
        QCOMPARE(valuesOf(difference), Values({8, 19}));
        difference.setSource(&backwards);
        settle();
        QCOMPARE(valuesOf(difference), Values({0, 0}));
        QCOMPARE(difference.first().x(), -2.0);
        QCOMPARE(difference.indexOf(-0.3), 1);
    }

    void chainsEndWithTheirSources()
    {
        auto series = std::make_unique<PlotSeries>();
        auto smooth = std::make_unique<Smooth>();
        Difference difference;
        smooth->setWindow(3);
        smooth->setSource(series.get());
        difference.setSource(series.get());
        difference.setReference(smooth.get());
        series->setYData({0, 3, 0});
        settle();
        QCOMPARE(valuesOf(difference), Values({-1.5, 2, -1.5}));

        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("as its source, whose data are its own or made of them"));
        smooth->setSource(&difference);
        smooth->setSource(smooth.get());
        QCOMPARE(smooth->source(), series.get());

        QSignalSpy changes(smooth.get(), SIGNAL(sourceChanged()));
        series.reset();
        settle();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(smooth->size() + difference.size(), 0);
        smooth.reset();
        settle();
        QVERIFY(!difference.source() && !difference.reference());
    }

    void statisticsOfAStretch()
    {
        PlotSeries series;
        series.setXInterval(0.5);
        series.setYData({9, 1, 2, qQNaN(), 3, 9});
        Statistics statistics;
        QVERIFY(std::isnan(statistics.mean()) && std::isnan(statistics.peakToPeak()));
        statistics.setSeries(&series);
        statistics.setFrom(2.0);
        statistics.setTo(0.5);
        settle();
        QCOMPARE(statistics.count(), 3);
        QCOMPARE(statistics.mean(), 2.0);
        QCOMPARE(statistics.peakToPeak(), 2.0);
        QCOMPARE(statistics.rms(), std::sqrt(14.0 / 3.0));
        series.setYData({9, 5, 9});
        settle();
        QCOMPARE(statistics.min(), 5.0);
        QCOMPARE(statistics.max(), 9.0);
        QSignalSpy told(&statistics, SIGNAL(valuesChanged()));
        series.setYData({3, 5, 9}); // the same from 0.5 on
        settle();
        QCOMPARE(told.count(), 0);
        statistics.setTo(qQNaN());
        settle();
        QCOMPARE(statistics.count(), 0);
    }

    // A plot is as good as its data, also when it gets other data; what is neither is told.
    void plotsAreInputs()
    {
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression("^MaxHold \"wrong\" has Timer \"clock\" as its source, which"));
        const QmlDocument document(R"(
            import graph_kit 1.0
            Item {
                property var trace: Trace { values: [1, 5, 3] }
                property PlotSeries other: PlotSeries { yData: [7, 9, 8] }
                function give() {
                    trace.values = undefined;
                    trace.series = other;
                }
                function found() {
                    return [hold.size, hold.last().y, difference.last().y, peaks.count, statistics.max, limit.margin,
                            fall.count, wrong.source].join(" ");
                }
                MaxHold { id: hold; source: trace }
                Difference { id: difference; source: hold; reference: trace }
                PeakList { id: peaks; series: trace }
                Statistics { id: statistics; series: trace }
                LimitLine { id: limit; series: trace; values: [4] }
                WaterfallPlot { id: fall; series: trace }
                MaxHold { id: wrong; source: clock }
                Timer { id: clock }
            })");
        const auto found = [&document] {
            QVariant text;
            QMetaObject::invokeMethod(document.root(), "found", Q_RETURN_ARG(QVariant, text));
            return text.toString();
        };
        QTRY_COMPARE(found(), QString("3 3 0 1 5 -1 1 "));
        QMetaObject::invokeMethod(document.root(), "give");
        QTRY_COMPARE(found(), QString("3 8 0 1 9 -5 1 "));
        delete document.root()->property("trace").value<QObject *>();
        QTRY_COMPARE(found(), QString("0 0 0 0 NaN NaN 1 "));
    }

    void peakList()
    {
        const QmlDocument document(R"(
            import graph_kit 1.0
            Item {
                property alias peaks: peaks
                property var values: []
                property int shown: labels.count
                PlotSeries { id: spectrum; yData: [0, 5, 1, 9, 9, 9, 2, 7, 6.5, 6.8, 0]; xInterval: 10 }
                PeakList { id: peaks; series: spectrum; from: 70; to: 0; prominence: 1; limit: 2 }
                Repeater {
                    id: labels
                    model: peaks
                    Item { Component.onCompleted: values.push(position, value, prominence, width, index) }
                }
            })");
        auto *peaks = document.root()->property("peaks").value<PeakList *>();
        QTRY_COMPARE(document.root()->property("shown").toInt(), 2);
        const QVariantList values =
            document.root()->property("values").value<QJSValue>().toVariant().toList();
        QCOMPARE(values.mid(0, 3), QVariantList({40.0, 9.0, 9.0}));
        QCOMPARE(values.mid(5, 3), QVariantList({70.0, 7.0, 5.0}));
        QCOMPARE(values.at(4).toInt(), 4);
        QCOMPARE(peaks->next(10.0), 40.0);
        QCOMPARE(peaks->previous(40.0), 10.0);
        QVERIFY(std::isnan(peaks->next(70.0)) && std::isnan(peaks->previous(10.0)) &&
                std::isnan(peaks->next(qQNaN())));
        peaks->setFrom(qInf());
        peaks->setProminence(0.1);
        peaks->setLimit(100);
        QTRY_COMPARE(peaks->count(), 4);
        delete peaks->series();
        QTRY_COMPARE(peaks->count(), 0);
    }
};

QTEST_MAIN(tst_computed)
#include "tst_computed.moc"
