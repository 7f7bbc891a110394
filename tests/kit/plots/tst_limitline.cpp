#include "kit/plots/LimitLine.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include "data/MinMaxPyramid.h"
#include "data/PlotSeries.h"

#include <random>

using namespace graph;

Q_DECLARE_METATYPE(graph::LimitSide)

class tst_limitline : public QObject
{
    Q_OBJECT

private slots:
    void check_data()
    {
        columns<QVector<QPointF>, LimitSide, bool, QVector<QPointF>, double, double>(
            {"limit", "side", "logarithmic", "samples", "margin", "worstAt"});
        using Points = QVector<QPointF>;
        const auto upper = LimitSide::Upper;
        const auto lower = LimitSide::Lower;
        QTest::newRow("below") << Points{{0, 5}, {10, 15}} << upper << false << Points{{2, 3}, {5, 9}} << 1.0
                               << 5.0;
        QTest::newRow("at it") << Points{{0, 5}, {10, 5}} << upper << false << Points{{2, 5}} << 0.0 << 2.0;
        QTest::newRow("above") << Points{{0, 5}, {10, 15}} << upper << false << Points{{2, 9}, {5, 9}} << -2.0
                               << 2.0;
        QTest::newRow("lower") << Points{{0, 5}, {10, 15}} << lower << false << Points{{2, 9}, {5, 9}} << -1.0
                               << 5.0;
        QTest::newRow("beside") << Points{{0, 5}, {10, 5}} << upper << false << Points{{-1, 9}, {11, 9}}
                                << qQNaN() << qQNaN();
        QTest::newRow("jump") << Points{{0, 9}, {4, 9}, {4, 2}, {8, 2}} << upper << false
                              << Points{{3, 8}, {4, 3}} << -1.0 << 4.0;
        QTest::newRow("gap") << Points{{0, 5}, {4, qQNaN()}, {8, 5}} << upper << false
                             << Points{{2, 9}, {6, 9}} << qQNaN() << qQNaN();
        QTest::newRow("infinite") << Points{{0, 5}, {4, 5}} << upper << false << Points{{1, qInf()}}
                                  << -qInf() << 1.0;
        QTest::newRow("no number") << Points{{0, 5}, {4, 5}} << upper << false << Points{{1, qQNaN()}, {2, 4}}
                                   << 1.0 << 2.0;
        QTest::newRow("logarithmic") << Points{{1, 1}, {100, 100}} << upper << true << Points{{10, 8}} << 2.0
                                     << 10.0;
        QTest::newRow("one point") << Points{{1, 1}} << upper << false << Points{{1, 8}} << qQNaN()
                                   << qQNaN();
    }

    void check()
    {
        QFETCH(QVector<QPointF>, limit);
        QFETCH(LimitSide, side);
        QFETCH(bool, logarithmic);
        QFETCH(QVector<QPointF>, samples);
        const ScaleKind kind = logarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear;
        const LimitVerdict verdict = checkLimit(limit, side, SampleSpan(samples), {kind, kind});
        QTEST(verdict.margin, "margin");
        QTEST(verdict.worstAt, "worstAt");
        QCOMPARE(verdict.isPassed(), verdict.margin >= 0);
    }

    void likeAPlainLoop()
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> uniform(0, 1);
        for (int round = 0; round < 300; ++round) {
            QVector<QPointF> points, limit;
            for (int i = 0; i < 3000; ++i)
                points.append({i / 3000.0, uniform(random) < 0.01 ? qQNaN() : uniform(random)});
            for (double x = 0.1; x < 0.9; x += 0.3 * uniform(random))
                limit.append({x, 2 * uniform(random)});
            SampleSpan samples(points);
            if (round % 2)
                samples.setPyramid(std::make_shared<MinMaxPyramid>(points.constData(), points.size()));
            const double sign = round % 3 ? 1 : -1;
            double least = qInf();
            for (const QPointF &p : points) {
                for (int i = 0; i + 1 < limit.size(); ++i) {
                    const QPointF a = limit.at(i), b = limit.at(i + 1);
                    if (p.x() >= a.x() && p.x() <= b.x() && !std::isnan(p.y()))
                        least = std::min(
                            least,
                            sign * (a.y() + (p.x() - a.x()) / (b.x() - a.x()) * (b.y() - a.y()) - p.y()));
                }
            }
            const double margin =
                checkLimit(limit, sign > 0 ? LimitSide::Upper : LimitSide::Lower, samples).margin;
            QVERIFY(limit.size() < 2 ? std::isnan(margin) : std::abs(margin - least) < 1e-12);
        }
    }

    void line()
    {
        qmlRegisterType<LimitLine>("charts", 1, 0, "LimitLine");
        QmlDocument document(R"(Item {
            ValueAxis { id: horizontal; maxValue: 100; maxVisible: 100 }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100; maxVisible: 100 }
            PlotSeries { id: spectrum; yData: [10, 40, 20] }
            LimitLine {
                id: line; width: 101; height: 101; axisX: horizontal; axisY: vertical; lineWidth: 1
                series: spectrum; values: 50; name: 'ceiling'
            }
        })");
        auto *line = document.object<LimitLine>("line");
        auto *spectrum = document.object<PlotSeries>("spectrum");
        QCoreApplication::processEvents();
        QVERIFY(line->passed());
        QCOMPARE(line->margin(), 10.0);
        QCOMPARE(line->worstAt(), 1.0);
        QCOMPARE(line->dataExtent().y.max, 50.0);
        QVERIFY(line->dataExtent().x.isEmpty());
        // From edge to edge, with what is forbidden above it.
        QCOMPARE(paintedRows(painted(line), 0), Rows(0, 50));
        QCOMPARE(paintedRows(painted(line), 100), Rows(0, 50));
        QSignalSpy changed(line, SIGNAL(verdictChanged()));
        spectrum->setYData({10, 60});
        QCoreApplication::processEvents();
        QVERIFY(!line->passed() && changed.count() == 1);
        line->setLimit({30, 0}, {20, 20});
        line->setKind(LimitLine::Lower);
        QCOMPARE(line->margin(), -10.0);
        QCOMPARE(paintedRows(painted(line), 20), Rows(80, 100));
        QCOMPARE(paintedRows(painted(line), 40), nothing);
        delete spectrum;
        QVERIFY(!line->passed() && std::isnan(line->margin()));
    }
};

QTEST_MAIN(tst_limitline)
#include "tst_limitline.moc"
