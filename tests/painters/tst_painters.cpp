#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "painters/CrossPainter.h"
#include "painters/CustomPainter.h"
#include "painters/IntegralPainter.h"
#include "painters/SegmentPainter.h"
#include "painters/TextPainter.h"
#include "plots/ContainerPlot.h"
#include "support/Pictures.h"
#include "support/Table.h"

#include <QFontMetrics>
#include <QPainter>
#include <QtTest>

#include <memory>

namespace {

// One pixel per data unit: x is the column, 100 - y the row.
const QRectF range(0.0, 0.0, 100.0, 100.0);

QImage painted(BasePainter &figure, const QRectF &visible = range, float scale = 1.0f)
{
    return picture([&](QPainter *painter) { figure.paint(painter, visible, scale, scale); });
}

// A plot of one pixel per data unit whose data begin at 0 and end at 100, without axes.
class Plot : public ContainerPlot
{
public:
    explicit Plot(QQuickItem *parent = nullptr)
        : ContainerPlot(parent)
    {
        setSize(QSizeF(101, 101));
    }

    double minValueX() const override { return 0.0; }
    double maxValueX() const override { return 100.0; }
    double visibleRangeX() const override { return range_; }
    double visibleRangeY() const override { return 100.0; }

    double range_ = 100.0;
};

class Recorder : public BasePainter
{
public:
    using BasePainter::BasePainter;
    void paint(QPainter *, const QRectF &visibleRect, float scaleX, float scaleY) override
    {
        visible = visibleRect;
        scales = QPointF(scaleX, scaleY);
    }

    QRectF visible;
    QPointF scales;
};

QImage painted(ContainerPlot &plot)
{
    return picture([&](QPainter *painter) { plot.paint(painter); });
}

} // namespace

class tst_painters : public QObject
{
    Q_OBJECT

private slots:
    void cross_data()
    {
        columns<QPointF, int, QRect>({"point", "size", "box"});
        QTest::newRow("inside") << QPointF(50, 50) << 4 << QRect(48, 48, 5, 5);
        QTest::newRow("odd size") << QPointF(50, 50) << 5 << QRect(48, 48, 5, 5);
        QTest::newRow("dot") << QPointF(50, 50) << 1 << QRect(50, 50, 1, 1);
        QTest::newRow("truncated") << QPointF(50.9, 50.1) << 2 << QRect(49, 48, 3, 3);
        QTest::newRow("top right edge") << QPointF(100, 100) << 2 << QRect(99, 0, 2, 2);
        QTest::newRow("bottom left edge") << QPointF(0, 0) << 2 << QRect(0, 99, 2, 2);
        QTest::newRow("a hair outside") << QPointF(100.001, 50) << 8 << QRect();
        QTest::newRow("a hair below") << QPointF(50, -0.001) << 8 << QRect();
        QTest::newRow("nowhere") << QPointF(50, qQNaN()) << 8 << QRect();
    }

    void cross()
    {
        QFETCH(QPointF, point);
        QFETCH(int, size);
        CrossPainter figure;
        figure.setPoint1X(point.x());
        figure.setPoint1Y(point.y());
        figure.setCrossSize(size);
        figure.setCrossColor(Qt::red);
        QColor pen;
        const QImage image = picture([&](QPainter *painter) {
            figure.paint(painter, range, 1.0f, 1.0f);
            pen = painter->pen().color(); // stays set
        });
        QTEST(inkBox(image), "box");
        QCOMPARE(pen == QColor(Qt::red), !inkBox(image).isEmpty());
    }

    void textIsPlacedByItsAlignment()
    {
        TextPainter figure;
        figure.setLabel("M");
        figure.setOrigin({50.0, 50.0});
        const QRect leftBottom = inkBox(painted(figure));
        QVERIFY(leftBottom.left() >= 50 && leftBottom.bottom() <= 50);
        figure.setLabelOffset(7.0);
        QCOMPARE(inkBox(painted(figure)), leftBottom.translated(0, -7));
        figure.setLabelOffset(0.0);
        figure.setHTextAlignment(Qt::AlignRight);
        figure.setVTextAlignment(Qt::AlignTop);
        const QRect rightTop = inkBox(painted(figure));
        QVERIFY(rightTop.right() <= 50 && rightTop.top() >= 50);

        // Seen as long as it may reach into the range.
        figure.setLabel("MMMMMMMM");
        figure.setHTextAlignment(Qt::AlignLeft);
        const auto isSeen = [&figure](double x, double y) {
            figure.setOrigin({x, y});
            const auto draw = [&figure](QPainter *painter) {
                painter->translate(100, 100);
                figure.paint(painter, QRectF(20.0, 40.0, 60.0, 30.0), 1.0f, 1.0f);
            };
            return !inkBox(picture(draw, QSize(301, 301))).isEmpty();
        };
        for (double hair : {0.0, -0.5}) {
            const QVector<bool> seen{isSeen(10.0 + hair, 50.0), isSeen(90.0 - hair, 50.0),
                                     isSeen(50.0, 30.0 + hair), isSeen(50.0, 80.0 - hair)};
            QCOMPARE(seen, QVector<bool>(4, hair == 0.0));
        }

        picture([&](QPainter *painter) {
            painter->setPen(Qt::green);
            const QFont font = painter->font();
            figure.paint(painter, range, 1.0f, 1.0f);
            QCOMPARE(painter->pen().color(), QColor(Qt::green));
            QCOMPARE(painter->font(), font);
        });
    }

    void textIsNudgedAtBothEnds()
    {
        Plot plot;
        TextPainter figure;
        figure.setLabel("MM");
        figure.setHTextAlignment(Qt::AlignHCenter);
        const int width = QFontMetrics(figure.font()).horizontalAdvance("MM");
        const QMap<double, int> nudges{{0.0, width / 2}, {50.0, 0}, {100.0, -(width / 2)}};
        // Wide enough to see the whole text on both sides of the plot.
        const auto leftmostInk = [&](AbstractPlot *parent) {
            figure.setPlotParent(parent);
            const auto draw = [&](QPainter *painter) {
                painter->translate(100, 0);
                const graph::PixelMapping mapping(plot.range_ < 0.0 ? 100.0 : 0.0, 100.0, plot.range_, 100.0,
                                                  QSizeF(101, 101));
                figure.paintWith(mapping, painter, range);
            };
            return inkBox(picture(draw, QSize(301, 101))).left();
        };
        for (auto nudge = nudges.begin(); nudge != nudges.end(); ++nudge) {
            figure.setOrigin({nudge.key(), 50.0});
            for (int way : {1, -1}) { // to the right and to the left
                plot.range_ = 100.0 * way;
                QCOMPARE(leftmostInk(&plot) - leftmostInk(nullptr), nudge.value() * way);
            }
        }
    }

    void segmentIsClipped()
    {
        SegmentPainter figure;
        const auto drawn = [&](double x1, double y1, double x2, double y2) {
            figure.setPoint1X(x1);
            figure.setPoint1Y(y1);
            figure.setPoint2X(x2);
            figure.setPoint2Y(y2);
            return inkBox(painted(figure));
        };
        QCOMPARE(drawn(20, 50, 80, 50), QRect(20, 50, 61, 1));
        QCOMPARE(drawn(-50, 50, 150, 50), QRect(0, 50, 101, 1));
        QCOMPARE(drawn(50, 20, 50, 1e18), QRect(50, 0, 1, 81));
        // Clipped only after the conversion to whole pixels, this one would not keep its slope.
        QCOMPARE(drawn(-1e12, -1e12, 1e12, 1e12), QRect(0, 0, 101, 101));
        QCOMPARE(drawn(-1e300, 50, 1e308, 50), QRect(0, 50, 101, 1));
        QCOMPARE(drawn(50, -1e308, 50, 1e308), QRect(50, 0, 1, 101));
        QCOMPARE(drawn(-50, 50, 50, 150), QRect(0, 0, 1, 1)); // through the corner
        QCOMPARE(drawn(-50, 101, 150, 101), QRect());
        QCOMPARE(drawn(20, 50, qInf(), 50), QRect());
        QCOMPARE(drawn(qQNaN(), 50, 150, 50), QRect());
        figure.setEndSize(4);
        QCOMPARE(drawn(20, 50, 150, 50), QRect(20, 46, 81, 9));
        QVERIFY(painted(figure).pixel(100, 46) == 0xffffffff);
        QCOMPARE(drawn(-20, 50, 150, 50), QRect(0, 50, 101, 1));
    }

    void shapes()
    {
        CustomPainter figure;
        figure.setXData({10, 30, 30, 10, qQNaN(), 15, 25, 25, 15});
        figure.setYData({90, 90, 70, 70, 0, 85, 85, 75, 75, 1234});
        figure.setFillColor(Qt::red);
        figure.setFillOpacity(1.0);
        figure.setLineWidth(0);
        QImage image = painted(figure);
        QCOMPARE(inkBox(image), QRect(10, 10, 20, 20));
        QCOMPARE(image.pixelColor(12, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(20, 20), QColor(Qt::white));

        figure.setOrigin({50.0, -50.0});
        QCOMPARE(inkBox(painted(figure)), QRect(60, 60, 20, 20));
        // A symbol stays as large as it is and grows upwards.
        figure.setPixelShape(true);
        figure.setOrigin({20.0, 10.0});
        figure.setYData({0, 0, 20, 20});
        QCOMPARE(inkBox(painted(figure, QRectF(0, 0, 50, 50), 2.0f)), QRect(50, 60, 20, 20));

        figure.setFillColor(Qt::transparent);
        figure.setLineWidth(1);
        figure.setClosed(false);
        image = painted(figure, QRectF(0, 0, 50, 50), 2.0f);
        QVERIFY(image.pixel(60, 80) != 0xffffffff && image.pixel(50, 70) == 0xffffffff);
        figure.setClosed(true);
        QVERIFY(painted(figure, QRectF(0, 0, 50, 50), 2.0f).pixel(50, 70) != 0xffffffff);
        figure.setYData({5});
        QVERIFY(inkBox(painted(figure)).isEmpty());
    }

    void shapesBeyondTheEdges()
    {
        CustomPainter figure;
        figure.setFillColor(Qt::red);
        for (bool closed : {true, false}) {
            figure.setClosed(closed);
            // A mask that reaches far out of sight: its edge at y = 40 is all that is seen.
            figure.setXData({-1e300, 1e300, 1e300, -1e300});
            figure.setYData({40, 40, -1e300, -1e300});
            const QImage image = painted(figure);
            QCOMPARE(inkBox(image), QRect(0, 60, 101, 41));
            QCOMPARE(image.pixelColor(50, 60), QColor(Qt::black));
            QVERIFY(image.pixelColor(0, 100).red() == 255 && image.pixelColor(0, 100).blue() > 100);
            figure.setYData({140, 140, 120, 120});
            QVERIFY(inkBox(painted(figure)).isEmpty());
        }
    }

    void shapeAsMask()
    {
        CustomPainter figure;
        figure.setOrigin({1e9, 0.0});
        figure.setXData({0, 10, 5, qQNaN(), 4, 6, 5});
        figure.setYData({0, 0, 10, 0, 2, 2, 4});
        QVERIFY(figure.containsPoint(1e9 + 2.0, 1.0));
        QVERIFY(!figure.containsPoint(1e9 + 5.0, 3.0) && !figure.containsPoint(2.0, 1.0));
        QVERIFY(!figure.containsPoint(1e9 + 0.25, 1.0)); // left of the side that closes it
        figure.setPixelShape(true);
        QVERIFY(!figure.containsPoint(1e9 + 2.0, 1.0));
    }

    void integralArea()
    {
        PlotPoints data;
        data.setXData({-500.0, 20.0, 40.0, 60.0, 500.0});
        data.setYData({50.0, 50.0, qQNaN(), 50.0, 50.0});
        IntegralPainter figure;
        figure.setPlotData(&data);
        figure.setBaseLevel(30.0);
        figure.setFillOpacity(1.0);
        figure.setLineWidth(0);
        figure.setBegin(10.0);
        figure.setEnd(20.0);
        QCOMPARE(inkBox(painted(figure)), QRect(10, 50, 10, 20));
        // Seen the wrong way round, with x from 100 down to 0.
        const auto reversed = [&](QPainter *painter) {
            figure.paint(painter, QRectF(100.0, 0.0, -100.0, 100.0), -1.0f, 1.0f);
        };
        QCOMPARE(inkBox(picture(reversed)), QRect(80, 50, 10, 20));
        figure.setEnd(70.0);
        QCOMPARE(inkBox(painted(figure)), QRect(10, 50, 10, 20) | QRect(60, 50, 10, 20));
        QCOMPARE(painted(figure).pixel(40, 60), 0xffffffff);
        figure.setBegin(-1e9);
        figure.setEnd(1e9);
        figure.setBaseLevel(-1e300);
        QCOMPARE(inkBox(painted(figure)), QRect(0, 50, 101, 51));

        // A line that leaves the range upwards keeps its slope.
        PlotPoints steep;
        steep.setXData({0.0, 100.0});
        steep.setYData({50.0, 250.0});
        figure.setPlotData(&steep);
        QImage image = painted(figure);
        QVERIFY(image.pixel(26, 0) != 0xffffffff && image.pixel(20, 5) == 0xffffffff);
        figure.setPlotData(&data);

        // The vertical lines are at the limits that are in sight.
        figure.setBaseLevel(30.0);
        figure.setFillOpacity(0.0);
        figure.setLineWidth(1);
        figure.setEnd(10.0);
        QCOMPARE(inkBox(painted(figure)), QRect(10, 50, 1, 20));
        figure.setBegin(10.0);
        figure.setEnd(90.0);
        QCOMPARE(inkBox(painted(figure, QRectF(0.0, 20.0, 100.0, 40.0))), QRect(10, 10, 81, 20));
    }

    void integralColumns()
    {
        // Many samples around the baseline, then a line to a distant one.
        QVector<double> x, y;
        for (int i = 0; i < 1000; ++i) {
            x.append(i * 0.04);
            y.append(i % 2 ? 65.0 : 40.0);
        }
        PlotPoints data;
        data.setXData(x << 200.0);
        data.setYData(y << 65.0);
        IntegralPainter figure;
        figure.setPlotData(&data);
        figure.setBaseLevel(60.0);
        figure.setFillOpacity(1.0);
        figure.setLineWidth(0);
        figure.setBegin(10.0);
        figure.setEnd(1e3);
        const QImage image = painted(figure);
        for (int column = 0; column <= 100; ++column) {
            // A column goes to the farther of its samples.
            const QRect ink = inkBox(image.copy(column, 0, 1, 101));
            const QPair<int, int> rows = column < 10   ? qMakePair(0, -1)
                                         : column < 40 ? qMakePair(40, 60)
                                                       : qMakePair(35, 39);
            QVERIFY(qAbs(ink.top() - rows.first) <= 1 && qAbs(ink.bottom() - rows.second) <= 1);
        }
        figure.setEnd(30.0);
        QCOMPARE(inkBox(painted(figure)).right(), 30);
    }

    void integralValueFollowsItsSource()
    {
        auto series = std::make_unique<PlotSeries>();
        series->setYData({1.0, 1.0, 1.0, 1.0});
        Plot plot;
        IntegralPainter figure;
        QSignalSpy valueSpy(&figure, SIGNAL(valueChanged()));
        QSignalSpy updateSpy(&figure, SIGNAL(updateNeeded()));
        figure.setPlotParent(&plot);
        figure.setEnd(2.0);
        figure.setBegin(0.5);
        plot.setPlotData(series.get());
        QTRY_COMPARE(figure.value(), 1.5);
        QCOMPARE(valueSpy.count(), 1);
        updateSpy.clear();
        series->setYData({3.0, 3.0, 3.0, 3.0});
        QTRY_COMPARE(figure.value(), 4.5);
        QVERIFY(updateSpy.count() > 0);

        // Data of its own take precedence; after them those of the plot count again, even the same ones.
        auto own = std::make_unique<PlotSeries>();
        own->setYData({2.0, 2.0, 2.0});
        auto former = std::make_unique<PlotSeries>();
        figure.setPlotData(former.get());
        figure.setPlotData(own.get());
        QSignalSpy dataSpy(&figure, SIGNAL(plotDataChanged()));
        former.reset();
        QCOMPARE(dataSpy.count(), 0);
        QTRY_COMPARE(figure.value(), 3.0);
        own->setYData({4.0, 4.0, 4.0});
        QTRY_COMPARE(figure.value(), 6.0);
        own.reset();
        QTRY_COMPARE(figure.value(), 4.5);
        figure.setPlotData(series.get());
        figure.setPlotData(nullptr);
        QTRY_COMPARE(figure.value(), 4.5);
        series->setYData({4.0, 4.0, 4.0});
        QTRY_COMPARE(figure.value(), 6.0);
        series.reset();
        QTRY_COMPARE(figure.value(), 0.0);
        painted(figure);
    }

    void containerPaintsItsChildren()
    {
        Plot plot;
        QVERIFY(inkBox(painted(plot)).isEmpty());
        auto *lower = new CrossPainter(&plot);
        new QQuickItem(&plot);
        auto *upper = new SegmentPainter(&plot);
        QVERIFY(qobject_cast<BasePainter *>(static_cast<QObject *>(lower)));
        // Without a vertical axis the lowest visible value is 0.
        lower->setPoint1X(50.0);
        lower->setPoint1Y(50.0);
        lower->setCrossSize(10);
        lower->setCrossColor(Qt::red);
        upper->setPoint1X(50.0);
        upper->setPoint2X(50.0);
        upper->setPoint2Y(100.0);
        upper->setSegmentColor(Qt::blue);
        QCOMPARE(painted(plot).pixelColor(50, 50), QColor(Qt::blue));
        lower->setParentItem(nullptr);
        lower->setParentItem(&plot);
        QCOMPARE(painted(plot).pixelColor(50, 50), QColor(Qt::red));
        lower->setVisible(false);
        QCOMPARE(painted(plot).pixelColor(50, 50), QColor(Qt::blue));
        // What a figure is handed: the visible range, its lowest y first, and pixels a unit.
        Recorder figure(&plot);
        plot.setSize(QSizeF(201, 51));
        painted(plot);
        QCOMPARE(figure.visible, QRectF(0.0, 0.0, 100.0, 100.0));
        QCOMPARE(figure.scales, QPointF(2.0, 0.5));
        plot.range_ = 0.0;
        QVERIFY(inkBox(painted(plot)).isEmpty());
    }
};

QTEST_MAIN(tst_painters)
#include "tst_painters.moc"
