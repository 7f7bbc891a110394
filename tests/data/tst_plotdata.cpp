#include "axis/ValueAxis.h"
#include "data/DataStreams.h"
#include "data/PlotBands.h"
#include "data/PlotRegions.h"
#include "data/PlotSeries.h"
#include "painters/IntegralPainter.h"
#include "support/QmlDocument.h"

#include <QSignalSpy>
#include <QTextStream>
#include <QtTest>

#include <list>
#include <memory>
#include <sstream>

namespace {

// Shows what it was told: value, significant digits, decimals.
class ProbeFormatter : public BaseFormatter
{
public:
    QString formatValue(const QVariant &value) const override
    {
        return QStringLiteral("%1|%2|%3").arg(value.toDouble()).arg(sigDigs).arg(precision);
    }
    QString getType() const override { return QStringLiteral("probe"); }
    void setSigDigs(int digits) override { sigDigs = digits; }
    void setPrecision(int decimals) override { precision = decimals; }

    int sigDigs = 0;
    int precision = 0;
};

} // namespace

// In place of the UI library's factory.
BaseFormatter *getFormatter(const QString &unit)
{
    return unit == QLatin1String("probe") ? new ProbeFormatter : nullptr;
}

class tst_plotdata : public QObject
{
    Q_OBJECT

private slots:
    void namesAreNumbered()
    {
        const PlotSeries first, second;
        QCOMPARE(first.objectName(), QStringLiteral("PD0"));
        QCOMPARE(second.objectName(), QStringLiteral("PD1"));
    }

    void changesAreAnnouncedOnce()
    {
        PlotSeries series;
        series.setYData({7.0});
        QCoreApplication::processEvents();
        QSignalSpy plotChanged(&series, SIGNAL(plotChanged()));
        series.setLabel("b");
        series.clear();
        QCOMPARE(series.size(), 0);
        series.setYData({8.0});
        QVERIFY(plotChanged.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(plotChanged.count(), 1);
        series.setYData({9.0}); // as many as before
        QCoreApplication::processEvents();
        QCOMPARE(plotChanged.count(), 2);
        QCoreApplication::processEvents();
        QCOMPARE(plotChanged.count(), 2);
    }

    void busyProducersDoNotPostponeTheirSignals()
    {
        PlotSeries series;
        PlotRegion region;
        ValueAxis axis;
        IntegralPainter painter;
        painter.setPlotData(&series);
        std::list<QSignalSpy> spies;
        spies.emplace_back(&series, SIGNAL(plotChanged()));
        spies.emplace_back(&region, SIGNAL(regionChanged()));
        spies.emplace_back(&axis, SIGNAL(axisChanged()));
        spies.emplace_back(&painter, SIGNAL(valueChanged()));
        QTimer producer;
        int passes = 0;
        connect(&producer, &QTimer::timeout, this, [&] {
            ++passes;
            series.setYData(QVector<double>(3, passes));
            region.setValue(passes);
            axis.setMaxValue(passes + 1.0);
            painter.setEnd(passes);
        });
        producer.start(0);
        QTRY_VERIFY(passes >= 100);
        for (const QSignalSpy &spy : spies)
            QVERIFY2(spy.count() >= passes / 2 - 2 && spy.count() <= passes, spy.signal());
    }

    void unitsChooseTheFormatter()
    {
        for (const QByteArray axis : {"x", "y"}) {
            PlotSeries series;
            const auto set = [&](const char *property, const QVariant &value) {
                QVERIFY(series.setProperty(axis + property, value));
            };
            const auto formatter = [&] {
                return static_cast<ProbeFormatter *>(
                    series.property(axis + "Formatter").value<BaseFormatter *>());
            };
            const auto text = [&](double value) {
                return axis == "x" ? series.formattedXValue(value) : series.formattedYValue(value);
            };
            for (const auto &[end, value] : {std::pair("RangeBegin", 2.5), std::pair("RangeEnd", 4.5)}) {
                QSignalSpy told(&series, "2" + axis + end + "Changed(double)");
                set(end, value);
                QCOMPARE(told, QList<QVariantList>{{value}});
            }
            set("SigDigs", 9);
            QSignalSpy units(&series, "2" + axis + "UnitsChanged(QString)");
            QSignalSpy formatters(&series, "2" + axis + "FormatterChanged(BaseFormatter*)");
            set("Units", "probe");
            set("Units", "probe");
            QCOMPARE(units.count(), 1);
            QCOMPARE(units.first().first().toString(), QStringLiteral("probe"));
            QCOMPARE(formatter()->parent(), &series);
            QCOMPARE(text(1.5), QStringLiteral("1.5|9|2"));
            set("Precision", 5);
            set("SigDigs", 8);
            QCOMPARE(text(2.5), QStringLiteral("2.5|8|5"));

            const QPointer<ProbeFormatter> former = formatter();
            set("Units", "nobody knows");
            QCOMPARE(series.property(axis + "Units").toString(), QString());
            QVERIFY(!formatter());
            QCOMPARE(units.count(), 2);
            QCOMPARE(formatters.count(), 2);
            QVERIFY(former);
            set("SigDigs", 1);
            QCOMPARE(former->sigDigs, 8);
            QCoreApplication::sendPostedEvents(former, QEvent::DeferredDelete);
            QVERIFY(!former);

            set("Units", "probe");
            delete formatter();
            QCOMPARE(text(0.000012345678), QStringLiteral("1.23457e-05"));
        }
        PlotSeries series;
        series.setXFirstValue(0.5);
        series.setYData({0.0, 2.5});
        QCOMPARE(series.formattedXValueByPosIndex(1), QStringLiteral("1.5"));
        QCOMPARE(series.formattedYValueByPosIndex(1), QStringLiteral("2.5"));
    }

    void axesAreOnlyReferredTo()
    {
        qRegisterMetaType<ValueAxis *>();
        PlotSeries series;
        QSignalSpy plotChanged(&series, SIGNAL(plotChanged()));
        for (const QByteArray name : {"axisX", "axisY"}) {
            QSignalSpy changed(&series, "2" + name + "Changed(ValueAxis*)");
            auto axis = std::make_unique<ValueAxis>();
            axis->setBaseline(-90.0);
            for (int i = 0; i < 2; ++i)
                series.setProperty(name, QVariant::fromValue(axis.get()));
            QCOMPARE(changed.count(), 1);
            QCOMPARE(series.baseline(), name == "axisY" ? -90.0 : 0.0);
            axis.reset();
            QVERIFY(!series.property(name).value<ValueAxis *>());
            QCOMPARE(series.baseline(), 0.0);
        }
        QCoreApplication::processEvents();
        QVERIFY(plotChanged.isEmpty());
    }

    void seriesIndices()
    {
        const auto indexOf = [](double x, double xInterval) {
            PlotSeries series;
            series.setYData({1, 2, 3});
            series.setXFirstValue(10.0);
            series.setXInterval(xInterval);
            return series.indexOf(x);
        };
        QCOMPARE(indexOf(13.0, 2.0), 2); // half away from zero
        QCOMPARE(indexOf(5.0, 2.0), -3);
        QCOMPARE(indexOf(1010.0, 2.0), 500);
        QCOMPARE(indexOf(6.0, -2.0), 2);
        QCOMPARE(indexOf(1e9, 1e-9), std::numeric_limits<int>::max());
        QCOMPARE(indexOf(13.0, 0.0), -1);
        QCOMPARE(indexOf(13.0, qQNaN()), -1);
        QCOMPARE(indexOf(qQNaN(), 2.0), -1);
        QCOMPARE(PlotSeries().indexOf(0.0), -1);
        QCOMPARE(PlotSeries().last(), QPointF());
    }

    void rangesAreRounded()
    {
        PlotSeries series;
        series.setXInterval(0.1);
        series.setYData({0, 1, 2, 3, 4, 5, 6});
        // 3 * 0.1 is greater than 0.3, 6 * 0.1 greater than 0.6.
        QCOMPARE(series.samples(QRectF(0, 0, 0.3, 0)).size(), 4);
        QCOMPARE(series.samples(QRectF(0.6, 0, -0.6, 0)).size(), 7);
        QCOMPARE(series.samples(QRectF(3 * 0.1 + 1e-14, 0, 0.3 - 2e-14, 0)).size(), 2);
        QCOMPARE(series.samples(QRectF(0.25, 0, qInf(), 0)).size(), 4);
    }

    void fillDataWanders()
    {
        PlotSeries series;
        QSignalSpy sizes(&series, SIGNAL(sizeChanged(int)));
        series.fillData(0, 0, 1);
        series.fillData(-3, 0, 1);
        series.fillData(100, 5, 5);
        series.fillData(1000, -2, 3);
        QCOMPARE(sizes, QList<QVariantList>({{0}, {-3}, {100}, {1000}}));
        QCOMPARE(series.yData().mid(0, 100), QVector<double>(100, 5.0));
        QCOMPARE(series.size(), 1100);
        double largestStep = 0.0;
        for (int i = 101; i < series.size(); ++i) {
            QVERIFY(series.y(i) >= -2 && series.y(i) <= 3);
            largestStep = std::max(largestStep, std::abs(series.y(i) - series.y(i - 1)));
        }
        QVERIFY(largestStep <= 0.625 && largestStep > 0.5);
        graph::MinMax starts;
        for (int i = 0; i < 100; ++i) {
            PlotSeries other;
            other.fillData(1, -2, 3);
            starts.add({other.y(0), other.y(0)});
        }
        QVERIFY(starts.min < -1.5 && starts.max > 2.5);
    }

    void arraysInQml()
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        const QByteArray list = "[1, 2.5, undefined, null, 'none', , '12']";
#else // makes 0 of everything that is no number, with a warning, before the property sees it
        const QByteArray list = "[1, 2.5, NaN, 0, NaN, NaN, '12']";
#endif
        const QmlDocument document("PlotSeries { yData: " + list + R"(
                property int changes: 0
                onSizeChanged: ++changes
                function edit() { yData[1] = 7; yData.push(8); return yData.length + size * 100 }
            })");
        auto *series = qobject_cast<PlotSeries *>(document.root());
        QCOMPARE(series->size(), 7);
        for (int gap : {2, 4, 5})
            QVERIFY(qIsNaN(series->y(gap)));
        QCOMPARE(series->y(3), 0.0);
        QCOMPARE(series->y(6), 12.0);
        QVariant result;
        QMetaObject::invokeMethod(series, "edit", Q_RETURN_ARG(QVariant, result));
        QCOMPARE(result.toInt(), 808);
        QCOMPARE(series->y(1), 7.0);
        QCOMPARE(series->property("changes").toInt(), 2); // seven at the start, then eight

        // The object that QML made is of a class of its own.
        PlotSeries other;
        other.setYData({1, 2});
        series->setYData({1, 2});
        QVERIFY(other == *series);
    }

    void textAndStreams()
    {
        PlotSeries series;
        series.setObjectName("trace");
        series.setXFirstValue(0.5);
        series.setYData({1, 2.5});
        QString text;
        QTextStream textStream(&text);
        textStream << series;
        std::ostringstream stream;
        stream << series;
        QCOMPARE(text, QStringLiteral("trace (2): (0.5, 1) (1.5, 2.5)"));
        QCOMPARE(stream.str(), text.toStdString());

        const QByteArray bytes = written(series);
        PlotSeries copy;
        copy.setLabel("labels do not count");
        QVERIFY(isRead(bytes, copy));
        QVERIFY(copy == series);
        copy.setXInterval(2.0);
        QVERIFY(!(copy == series));

        PlotPoints points;
        points.setXData({1e-13});
        PlotPoints near;
        near.setXData({2e-13});
        QVERIFY(!(points == near));
        PlotBands bands;
        bands.setXData({1e-13});
        QVERIFY(!(points == bands) && !(bands == points) && !(bands == series));
        QVERIFY(!(PlotRegions() == PlotSeries()) && !(PlotSeries() == PlotRegions()));
        QVERIFY(isRead(written(points), near));
        QVERIFY(points == near);
    }

    void brokenStreamsChangeNothing()
    {
        PlotSeries series;
        series.setYData({7});
        for (qint32 count : {2, std::numeric_limits<qint32>::max(), -1}) {
            QByteArray bytes;
            QDataStream stream(&bytes, QIODevice::WriteOnly);
            stream << 0.5 << 2.0 << count << 1.0 << 2.0;
            QVERIFY(!isRead(bytes.chopped(1), series));
            QCOMPARE(series.yData(), QVector<double>{7});
            QCOMPARE(series.xInterval(), 1.0);
        }
    }
};

QTEST_MAIN(tst_plotdata)
#include "tst_plotdata.moc"
