#include "support/QmlDocument.h"
#include "support/Table.h"

#include "data/PlotSeries.h"
#include "plots/AreaPlot.h"
#include "plots/AreaStrokes.h"

#include <cmath>
#include <random>

class tst_areaplot : public QObject
{
    Q_OBJECT

private slots:
    // 101 x 101 pixels, x and y 0..100: a value v is in row 100 - v.
    void init()
    {
        m_document = std::make_unique<QmlDocument>(R"(
            Item {
                PlotSeries { id: upper; axisX: horizontal; axisY: vertical }
                PlotSeries { id: lower }
                ValueAxis { id: horizontal; maxValue: 100; maxVisible: 100 }
                ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100; maxVisible: 100 }
                AreaPlot { id: plot; width: 101; height: 101; maxData: upper; minData: lower }
            })");
    }

    void cleanup() { m_document.reset(); }

    void strokesEqualPlainScan()
    {
        std::mt19937 random(5);
        const auto uniform = [&](double low, double high) {
            return std::uniform_real_distribution<>(low, high)(random);
        };
        for (int round = 0; round < 500; ++round) {
            QVector<QPointF> above(int(uniform(1, 600))), below(above.size());
            const int columns = int(uniform(2, 200));
            const graph::PixelMapping mapping(0, 100, 100, 100, QSizeF(columns, 101));
            QMap<int, graph::MinMax> bands; // by column
            double x = uniform(-20, 20);
            for (int i = 0; i < above.size(); ++i) {
                above[i] = QPointF(x, random() % 4 ? uniform(50, 100) : qQNaN());
                below[i] = QPointF(x, random() % 4 ? uniform(0, 50) : round % 2 ? qInf() : qQNaN());
                if (x >= 0 && mapping.column(x) < columns) {
                    graph::MinMax &band = bands[mapping.column(x)];
                    if (std::isfinite(above[i].y()) && std::isfinite(below[i].y()))
                        band.add({below[i].y(), above[i].y()});
                }
                x += random() % 4 ? 0.3 : uniform(0, 4);
            }
            QVector<QLine> expected;
            const int end = bands.isEmpty() ? 0 : bands.lastKey() + 1;
            for (int c = bands.isEmpty() ? 0 : bands.firstKey(); c < end; ++c) {
                const graph::MinMax band = *--bands.upperBound(c); // that of the last column with a sample
                if (!band.isEmpty())
                    expected.append(QLine(c, mapping.row(band.min), c, mapping.row(band.max)));
            }
            const graph::SampleSpan upper = graph::SampleSpan(above).between(0, 1e9);
            const graph::SampleSpan lower = graph::SampleSpan(below).between(0, 1e9);
            QCOMPARE(graph::areaStrokes(upper, lower, mapping, columns, true), expected);
        }
    }

    void bandIsFilled_data()
    {
        columns<double, double, bool>({"interval", "missing", "swapped"});
        QTest::newRow("sparse") << 10.0 << 70.0 << false;
        QTest::newRow("sparse, swapped") << 10.0 << 70.0 << true;
        QTest::newRow("sparse, missing") << 10.0 << qQNaN() << false;
        QTest::newRow("dense") << 0.25 << 70.0 << false;
        QTest::newRow("dense, missing") << 0.25 << qQNaN() << false;
        QTest::newRow("dense, infinite") << 0.25 << qInf() << false;
    }

    void bandIsFilled()
    {
        QFETCH(double, interval);
        QFETCH(double, missing);
        QFETCH(bool, swapped);
        const int n = int(80 / interval) + 1; // the traces end at x = 80
        QVector<double> above(n, 70.0);
        const QVector<double> below(n, 20.0);
        for (int i = 0; i < n; ++i) {
            if (i * interval >= 40 && i * interval <= 60)
                above[i] = missing;
        }
        const QImage image = swapped ? filled(interval, below, above) : filled(interval, above, below);
        QCOMPARE(paintedRows(image, 20), Rows(30, 79));
        QCOMPARE(paintedRows(image, 50), std::isfinite(missing) ? Rows(30, 79) : nothing);
        QCOMPARE(paintedRows(image, 90), nothing);
    }

    void validWhilePaired()
    {
        QSignalSpy spy(plot(), SIGNAL(validChanged(bool)));
        filled(10, {1, 2, 3}, {0, 1, 2});
        QVERIFY(plot()->isValid() && spy.count() == 1);
        QCOMPARE(plot()->axisX(), upper()->axisX());
        QCOMPARE(paintedRows(filled(10, {1, 2, 3}, {0, 1}), 5), nothing);
        QVERIFY(!plot()->isValid() && spy.count() == 2);
        filled(10, {1, 2}, {0, 1});
        plot()->setMinData(nullptr);
        QVERIFY(!plot()->isValid());
        plot()->setMinData(lower());
        QVERIFY(plot()->isValid());
        plot()->setMaxData(nullptr);
        QVERIFY(!plot()->isValid());
        plot()->setMaxData(upper());
        QVERIFY(plot()->isValid());
        delete lower();
        QVERIFY(!plot()->isValid() && spy.count() == 8);
    }

    void oneObjectInEveryRole()
    {
        plot()->setPlotData(upper());
        plot()->setMinData(upper());
        plot()->setMinData(lower());
        plot()->setPlotData();
        // Still the upper trace: its changes count.
        filled(10, {50, 50}, {20, 20});
        QVERIFY(plot()->isValid());
        plot()->setPlotData(lower());
        {
            PlotSeries former; // which has no part in the plot any more
            plot()->setMinData(&former);
            plot()->setMinData(lower());
        }
        QCOMPARE(plot()->plotData(), lower());
        QSignalSpy spy(plot(), SIGNAL(maxDataChanged(PlotData *)));
        delete upper();
        QVERIFY(!plot()->plotData() && !plot()->maxData()); // the plot's own data goes with it
        QVERIFY(spy.isEmpty() && !plot()->isValid());
        QCOMPARE(paintedRows(painted(plot()), 5), nothing);
    }

private:
    AreaPlot *plot() const { return m_document->object<AreaPlot>("plot"); }
    PlotSeries *upper() const { return m_document->object<PlotSeries>("upper"); }
    PlotSeries *lower() const { return m_document->object<PlotSeries>("lower"); }
    QImage filled(double interval, const QVector<double> &above, const QVector<double> &below)
    {
        for (PlotSeries *series : {upper(), lower()})
            series->setXInterval(interval);
        upper()->setYData(above);
        lower()->setYData(below);
        return painted(plot());
    }

    std::unique_ptr<QmlDocument> m_document;
};

QTEST_MAIN(tst_areaplot)
#include "tst_areaplot.moc"
