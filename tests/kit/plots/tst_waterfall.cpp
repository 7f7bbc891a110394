#include "kit/plots/ColorScale.h"
#include "axis/AxisBench.h"
#include "kit/plots/WaterfallPlot.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include <random>

using namespace graph;

namespace {

// What each pixel is to be, asked of every cell that covers it.
QImage plainImage(const std::vector<QVector<double>> &newestFirst, const WaterfallPlace &place,
                  const WaterfallLevels &levels, const ColorMap &colors, const PixelMapping &mapping)
{
    QImage image(int(mapping.width()), int(mapping.height()), QImage::Format_ARGB32_Premultiplied);
    const auto covers = [](double edge, double otherEdge, int p, int last) {
        const double low = std::min(edge, otherEdge), high = std::max(edge, otherEdge);
        return (high > 0.0 || low == 0.0) && low <= last && p >= pixel(low) &&
               p < std::max(pixel(high), pixel(low) + 1);
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            double largest = -qInf();
            for (int row = 0; row < int(newestFirst.size()); ++row) {
                if (!covers(mapping.y(place.rowEdge(row)), mapping.y(place.rowEdge(row + 1)), y,
                            image.height() - 1))
                    continue;
                for (int c = 0; c < newestFirst[row].size(); ++c) {
                    if (covers(mapping.x(place.columnEdge(c)), mapping.x(place.columnEdge(c + 1)), x,
                               image.width() - 1))
                        largest = std::max(largest, newestFirst[row].at(c));
                }
            }
            const double share = (largest - levels.from) / (levels.to - levels.from);
            const int index = int(0.5 + (colorMapSize - 1) * std::min(std::max(share, 0.0), 1.0));
            image.setPixel(x, y, largest == -qInf() ? 0 : colors.at(index));
        }
    }
    return image;
}

} // namespace

class tst_waterfall : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qmlRegisterType<WaterfallPlot>("charts", 1, 0, "WaterfallPlot");
        qmlRegisterType<ColorScale>("charts", 1, 0, "ColorScale");
    }

    // Rows come one or several at a time, the view is zoomed and the levels change in between.
    void likeAPlainLoop()
    {
        std::mt19937 random(3);
        const auto uniform = [&](double low, double high) {
            return std::uniform_real_distribution<double>(low, high)(random);
        };
        ColorMap colors(colorMapSize);
        for (int i = 0; i < colorMapSize; ++i)
            colors[i] = qRgb(i, 1, 2);
        for (int round = 0; round < 60; ++round) {
            WaterfallRows rows;
            rows.setCapacity(int(uniform(1, 30)));
            WaterfallRaster raster(round % 4 ? 10000 : 100); // the latter keeps three rows of pixels
            std::vector<QVector<double>> plain;
            WaterfallPlace place{uniform(-5, 5), uniform(0.2, 3) * (round % 3 ? 1 : -1),
                                 round % 2 ? 1.0 : -1.0};
            WaterfallLevels levels{0, 1};
            const int columns = int(uniform(1, 60));
            PixelMapping mapping(-3, 3, 40, 20, QSizeF(30, 20));
            for (int step = 0; step < 12; ++step) {
                for (int added = int(uniform(0, 5)); added > 0; --added) {
                    QVector<double> row(columns);
                    for (double &level : row)
                        level = uniform(0, 1) < 0.1 ? qQNaN() : double(float(uniform(-0.2, 1.2)));
                    rows.add(row.constData(), columns);
                    plain.insert(plain.begin(), row);
                }
                if (step == 5)
                    rows.setCapacity(int(uniform(1, 40)));
                plain.resize(std::min(plain.size(), std::size_t(rows.count())));
                if (step % 4 == 3)
                    mapping = PixelMapping(uniform(-5, 5), uniform(-10, 20), uniform(1, 80), uniform(1, 40),
                                           QSizeF(30, 20));
                if (step == 8)
                    levels = {0.75, 0.25};
                if (rows.count() == 0)
                    continue;
                const QImage image = raster.image(rows, place, levels, colors, mapping);
                const QImage expected = plainImage(plain, place, levels, colors, mapping);
                for (int y = 0; y < image.height(); ++y) {
                    for (int x = 0; x < image.width(); ++x) {
                        // Single precision may fall on the neighbouring colour.
                        const QRgb a = image.pixel(x, y), b = expected.pixel(x, y);
                        QVERIFY2(qAlpha(a) == qAlpha(b) && std::abs(qRed(a) - qRed(b)) <= 1,
                                 qPrintable(QString("round %1 step %2 at %3,%4: %5 %6")
                                                .arg(round)
                                                .arg(step)
                                                .arg(x)
                                                .arg(y)
                                                .arg(a, 0, 16)
                                                .arg(b, 0, 16)));
                    }
                }
            }
        }
    }

    void maps_data()
    {
        columns<QVariant, QString>({"map", "colors"});
        // First, middle and last colour as they are published; those of turbo are of its polynomials.
        QTest::newRow("viridis") << QVariant("viridis") << "#440154 #21918c #fde725";
        QTest::newRow("inferno") << QVariant("inferno") << "#000004 #bc3754 #fcffa4";
        QTest::newRow("turbo") << QVariant("turbo") << "#23171b #95fb51 #900c00";
        QTest::newRow("grey") << QVariant("grey") << "#000000 #808080 #ffffff";
        QTest::newRow("list") << QVariant(QVariantList{"black", "red", "#ffffff"})
                              << "#000000 #ff0000 #ffffff";
        QTest::newRow("one") << QVariant(QVariantList{QColor(Qt::red)}) << "#ff0000 #ff0000 #ff0000";
        QTest::newRow("none") << QVariant(QVariantList()) << "";
        QTest::newRow("unknown") << QVariant("rainbow") << "";
        QTest::newRow("no colour") << QVariant(QVariantList{"red", "reddish"}) << "";
    }

    void maps()
    {
        QFETCH(QVariant, map);
        QFETCH(QString, colors);
        const auto found = colorMap(map);
        QCOMPARE(found.has_value(), !colors.isEmpty());
        const QStringList names = colors.split(' ');
        for (int i = 0; found && i < 3; ++i) {
            const QColor a(found->at(i * (colorMapSize - 1) / 2)), b(names.at(i));
            QVERIFY2(std::abs(a.red() - b.red()) <= 9 && std::abs(a.green() - b.green()) <= 9 &&
                         std::abs(a.blue() - b.blue()) <= 9,
                     qPrintable(a.name()));
        }
    }

    void plot()
    {
        QmlDocument document(R"(Item {
            PlotSeries { id: spectrum; xFirstValue: 100; xInterval: 10 }
            WaterfallPlot { id: plot; width: 30; height: 20; rows: 4; rowInterval: 0.5; series: spectrum }
            ColorScale { id: scale; plot: plot }
        })");
        auto *plot = document.object<WaterfallPlot>("plot");
        auto *spectrum = document.object<PlotSeries>("spectrum");
        for (double level : {1.0, 2.0, 3.0}) {
            spectrum->setYData({level, level + 10, qQNaN()});
            QCoreApplication::processEvents();
        }
        QCOMPARE(plot->count(), 3);
        QCOMPARE(plot->levelAt(111, -0.2), 13.0);
        QCOMPARE(plot->levelAt(100, -0.7), 2.0);
        QVERIFY(std::isnan(plot->levelAt(120, -0.2)) && std::isnan(plot->levelAt(90, -0.2)) &&
                std::isnan(plot->levelAt(100, 0.1)) && std::isnan(plot->levelAt(100, -1.6)));
        QVERIFY(plot->from() < 1.0 && plot->to() > 13.0);
        // Without axes everything is shown: row 0 fills the upper quarter, and the last column has no level.
        QImage image = painted(plot);
        QVERIFY(qAlpha(image.pixel(5, 2)) == 255 && qAlpha(image.pixel(5, 17)) == 0 &&
                qAlpha(image.pixel(25, 2)) == 0);
        QCOMPARE(plot->plotData()->y(1), 13.0);
        plot->setReadRow(2);
        QCOMPARE(plot->plotData()->y(1), 11.0);
        plot->setDirection(WaterfallPlot::Up);
        image = painted(plot);
        QVERIFY(qAlpha(image.pixel(5, 2)) == 0 && qAlpha(image.pixel(5, 17)) == 255);

        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("a row of 2 levels after rows of 3, which clears these"));
        QMetaObject::invokeMethod(plot, "addRow",
                                  Q_ARG(QVariant, QVariant::fromValue(QVector<double>{1, qInf()})));
        QCOMPARE(plot->count(), 1);
        plot->addRow({4.0}); // told once
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression("unknown colorMap: write a list of colours, or one of .*viridis"));
        plot->setProperty("colorMap", QVariantList());
        // Of rows this long there is room for 16.
        plot->setRows(20);
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression("keeps 16 rows of 4194304 levels instead of 20, .*write rows: 16"));
        const QVector<double> row(4194304, 1.0);
        plot->addRow(row);
        plot->addRow(row);
        QCOMPARE(plot->dataExtent().y.max, 16 * 0.5);
        delete spectrum;
        plot->clear();
        painted(plot);
        delete plot;
        painted(document.object<ColorScale>("scale"));
    }

    void draggedScale()
    {
        WaterfallPlot plot;
        plot.setFrom(-100);
        plot.setTo(0);
        ColorScale scale;
        scale.setPlot(&plot);
        scale.setSize(QSizeF(64, 200));
        const auto send = [&](QEvent::Type type, double y) {
            QMouseEvent event(type, QPointF(5, y), QPointF(5, y), Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&scale, &event);
        };
        const auto drag = [&](double from, double to) {
            send(QEvent::MouseButtonPress, from);
            send(QEvent::MouseMove, to);
            send(QEvent::MouseButtonRelease, to);
        };
        // Towards the middle from above: the level there now spans less.
        drag(20, 60);
        QVERIFY(plot.to() > 20 && plot.to() < 35);
        QCOMPARE(plot.from(), -100.0);
        plot.setTo(0);
        drag(180, 140);
        QVERIFY(plot.from() < -120 && plot.from() > -135);
        drag(100, 120);
        QVERIFY(plot.to() > 10 && qAbs((plot.to() - plot.from()) - (0 - plot.from())) > 10);
        drag(20, 1e9);
        QVERIFY(std::isfinite(plot.to()));
    }

    // The ends too, and nothing that touches them.
    void scaleLabels()
    {
        WaterfallPlot plot;
        plot.setFrom(-105.3);
        plot.setTo(-20);
        plot.setUnit("dBm");
        ColorScale scale;
        scale.setPlot(&plot);
        scale.setHeight(1e12); // with no more labels than can be counted
        scale.setSize(QSizeF(64, 200));
        const PaintRecorder recorder([&scale](QPainter *painter) { scale.paint(painter); });
        QStringList texts;
        for (const PaintRecorder::Text &text : recorder.texts)
            texts.append(text.text);
        QCOMPARE(texts.join(' '), QString("-20 dBm -105 -80 -60 -40"));
    }

    void ticks_data()
    {
        columns<double, double, int, QString>({"from", "to", "most", "labels"});
        QTest::newRow("decibels") << -120.0 << -20.0 << 6 << "-120 -100 -80 -60 -40 -20";
        QTest::newRow("backwards") << 1.0 << 0.0 << 3 << "0.0 0.5 1.0";
        QTest::newRow("few") << -0.3 << 9.7 << 2 << "0 5";
        QTest::newRow("tiny") << 0.0 << 2e-9 << 3 << "0 1e-09 2e-09";
        QTest::newRow("beside a large one") << 2400000.0 << 2400001.0 << 3 << "2400000 2400000.5 2400001";
        QTest::newRow("nothing") << 5.0 << 5.0 << 3 << "";
        QTest::newRow("too narrow") << 1e16 << 1e16 + 2 << 9 << "";
        QTest::newRow("infinite") << 0.0 << qInf() << 3 << "";
    }

    void ticks()
    {
        QFETCH(double, from);
        QFETCH(double, to);
        QFETCH(int, most);
        QFETCH(QString, labels);
        const ScaleTicks found = scaleTicks(from, to, most);
        QVERIFY(found.values.size() <= most);
        QCOMPARE(found.labels.toList().join(' '), labels);
    }
};

QTEST_MAIN(tst_waterfall)
#include "tst_waterfall.moc"
