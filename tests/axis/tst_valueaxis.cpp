#include "axis/ValueAxis.h"
#include "common/PixelMapping.h"
#include "data/PlotSeries.h"
#include "platform/ui/SystemLocale.h"
#include "support/Pictures.h"
#include "view/base/XYScale.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <QPainter>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

// Writes down what it is asked for.
class FeetFormatter : public BaseFormatter
{
public:
    QString formatValue(const QVariant &value) const override
    {
        asked.append(value.toDouble());
        return "<" + QString::number(value.toDouble(), 'f', decimals) + ">";
    }
    QString getType() const override { return "FeetFormatter"; }
    void setSigDigs(int) override {}
    void setPrecision(int precision) override { decimals = precision; }

    int decimals = 0;
    mutable QVector<double> asked;
};

struct Text
{
    QString text;
    QRectF rect;
};

// Keeps the texts that are drawn and where they stand, from their ascent to their descent.
class TextRecorder : public QPaintEngine, public QPaintDevice
{
public:
    QVector<Text> texts;

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    Type type() const override { return User; }
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        const QFontMetrics metrics(item.font());
        texts.append({item.text(), QRectF(at.x(), at.y() - metrics.ascent(),
                                          metrics.horizontalAdvance(item.text()), metrics.height())});
    }
    QPaintEngine *paintEngine() const override { return const_cast<TextRecorder *>(this); }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        if (which == PdmDevicePixelRatio)
            return 1;
        return which == PdmDevicePixelRatioScaled ? int(devicePixelRatioFScale()) : 96;
    }
};

QVector<Text> paintedTexts(ValueAxis &axis, const QRectF &rect)
{
    TextRecorder recorder;
    QPainter painter(&recorder);
    axis.paintLabels(&painter, rect);
    painter.end();
    return recorder.texts;
}

QStringList words(const QVector<Text> &texts)
{
    QStringList list;
    for (const Text &text : texts)
        list.append(text.text);
    return list;
}

} // namespace

class tst_valueaxis : public QObject
{
    Q_OBJECT

private slots:
    void alignmentMovesTheAxis();
    void changesAreCoalesced();
    void changesComeThroughAConstantStream();
    void pinnedSpanMoves();
    void spanSurvivesItsRange_data();
    void spanSurvivesItsRange();
    void followsTheZoomRect();
    void waitsForTheEndOfMovement();
    void textsOfValues();
    void textsFollowTheFormatter();
    void linesStandOnThePlotsPixels_data();
    void linesStandOnThePlotsPixels();
    void dashes_data();
    void dashes();
    void sides_data();
    void sides();
    void labelsAndUnit();
    void labelsKeepTheirPlaceWhilePanning();
    void labelsStayWholeAndApart();
    void neighbours_data();
    void neighbours();
    void unitPlaces_data();
    void unitPlaces();
    void requiredMarginIgnoresTheZoom();
};

void tst_valueaxis::alignmentMovesTheAxis()
{
    ValueAxis axis;
    QStringList order;
    connect(&axis, &ValueAxis::orientationChanged, [&] { order.append("orientation"); });
    connect(&axis, &ValueAxis::alignmentChanged, [&] { order.append("alignment"); });
    connect(&axis, &ValueAxis::marginChanged, [&] { order.append("margin"); });
    axis.setAlignment(Qt::AlignLeft);
    QCOMPARE(order, (QStringList{"orientation", "alignment", "margin"}));
    axis.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(axis.orientation(), Qt::Horizontal);
    axis.setAlignment(Qt::AlignHCenter);
    QCOMPARE(axis.orientation(), Qt::Vertical);
}

void tst_valueaxis::changesAreCoalesced()
{
    ValueAxis axis;
    QSignalSpy changed(&axis, SIGNAL(axisChanged()));
    axis.setAlignment(Qt::AlignLeft);
    axis.setMinValue(-5.0);
    axis.setTicks({1.0, 10.0});
    axis.setUnit("m");
    QCOMPARE(changed.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    axis.setMinVisible(-4.0);
    axis.setStaggered(true);
    axis.setLabelColor(Qt::red);
    axis.setMinValue(-5.0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    // A margin that follows the required one belongs to the same change.
    connect(&axis, &ValueAxis::requiredMarginChanged, &axis,
            [&axis] { axis.setMargin(axis.requiredMargin()); });
    axis.setMaxValue(1e6);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 2);
    QCOMPARE(axis.margin(), axis.requiredMargin());
}

void tst_valueaxis::changesComeThroughAConstantStream()
{
    ValueAxis axis;
    QSignalSpy changed(&axis, SIGNAL(axisChanged()));
    QTimer producer;
    int writes = 0;
    connect(&producer, &QTimer::timeout, [&] { axis.setUnit(QString::number(++writes)); });
    producer.start(0);
    for (int pass = 0; pass < 20; ++pass)
        QCoreApplication::processEvents();
    QVERIFY(writes > 10);
    QVERIFY(changed.count() >= writes / 2 - 1);
}

void tst_valueaxis::pinnedSpanMoves()
{
    ValueAxis axis;
    axis.setMaxValue(100.0);
    axis.setVisibleRange(10.0);
    QCOMPARE(axis.maxVisible(), 10.0);
    QStringList order;
    connect(&axis, &ValueAxis::minValueChanged, [&] { order.append("minValue"); });
    connect(&axis, &ValueAxis::minVisibleChanged, [&] { order.append("minVisible"); });
    connect(&axis, &ValueAxis::maxVisibleChanged, [&] { order.append("maxVisible"); });
    connect(&axis, &ValueAxis::valueRangeChanged, [&] { order.append("valueRange"); });
    axis.setMinValue(5.0);
    QCOMPARE(axis.minVisible(), 5.0);
    QCOMPARE(axis.maxVisible(), 15.0);
    QCOMPARE(order.mid(order.size() - 4),
             (QStringList{"minValue", "minVisible", "maxVisible", "valueRange"}));

    axis.setMinVisible(30.0);
    axis.setMaxVisible(40.0);
    axis.setMinValue(6.0);
    QCOMPARE(axis.minVisible(), 30.0);
    QCOMPARE(axis.maxVisible(), 40.0);

    axis.setMaxVisible(100.0);
    axis.setMaxValue(120.0);
    QCOMPARE(axis.minVisible(), 110.0);
    QCOMPARE(axis.maxVisible(), 120.0);
}

void tst_valueaxis::spanSurvivesItsRange_data()
{
    QTest::addColumn<bool>("maxFirst");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("minValue");
    QTest::addColumn<double>("maxValue");
    QTest::addColumn<double>("shown");
    for (const bool maxFirst : {false, true}) {
        const QByteArray order = maxFirst ? "max first: " : "min first: ";
        const auto row = [&](const char *name, double lowest, double minValue, double maxValue,
                             double shown) {
            QTest::newRow(order + name) << maxFirst << lowest << minValue << maxValue << shown;
        };
        row("smaller", 30.0, 0.0, 50.0, 30.0);
        row("larger", 30.0, 0.0, 1000.0, 30.0);
        row("begin moves", 60.0, 50.0, 100.0, 60.0);
        row("too small above", 30.0, 0.0, 35.0, 25.0);
        row("too small below", 30.0, 33.0, 100.0, 33.0);
        row("further up", 30.0, 200.0, 300.0, 200.0);
        row("further down", 30.0, -300.0, -200.0, -210.0);
        row("at the begin", 0.0, 20.0, 80.0, 20.0);
        row("at the end", 90.0, 20.0, 80.0, 70.0);
    }
}

void tst_valueaxis::spanSurvivesItsRange()
{
    QFETCH(bool, maxFirst);
    QFETCH(double, lowest);
    QFETCH(double, minValue);
    QFETCH(double, maxValue);
    QFETCH(double, shown);
    for (const Qt::Alignment alignment : {Qt::AlignBottom, Qt::AlignLeft}) {
        ZoomRect zoom;
        ValueAxis axis;
        axis.setAlignment(alignment);
        axis.setMaxValue(100.0);
        axis.setZoomRect(&zoom);
        axis.setVisibleRange(10.0);
        axis.setMaxVisible(lowest + 10.0);
        axis.setMinVisible(lowest);
        if (maxFirst)
            axis.setMaxValue(maxValue);
        axis.setMinValue(minValue);
        axis.setMaxValue(maxValue);
        QVERIFY2(std::abs(axis.minVisible() - shown) < 1e-9, qPrintable(QString::number(axis.minVisible())));
        QVERIFY2(std::abs(axis.maxVisible() - shown - 10.0) < 1e-9,
                 qPrintable(QString::number(axis.maxVisible())));
    }
}

void tst_valueaxis::followsTheZoomRect()
{
    ZoomRect zoom;
    ValueAxis axis;
    axis.setMinValue(100.0);
    axis.setMaxValue(200.0);
    axis.setZoomRect(&zoom);
    QSignalSpy visibleRange(&axis, SIGNAL(visibleRangeChanged()));
    zoom.setCenterAndZoom({0.5F, 1.0F}, {0.5, 0.5});
    QCOMPARE(axis.minVisible(), 125.0);
    QCOMPARE(axis.maxVisible(), 175.0);
    QCOMPARE(visibleRange.count(), 1);
    zoom.setTop(0.5);
    QCOMPARE(visibleRange.count(), 1);
    axis.setMinVisible(150.0);
    QCOMPARE(zoom.left(), 0.5);
    axis.setScalable(false);
    zoom.setRight(0.6);
    QCOMPARE(axis.minVisible(), 100.0);
    QCOMPARE(axis.maxVisible(), 200.0);
    axis.setScalable(true);
    QCOMPARE(axis.maxVisible(), 160.0);

    // Neither an empty range nor NaN gets into the rectangle.
    axis.setMaxVisible(std::nan(""));
    axis.setMaxValue(100.0);
    axis.setMinVisible(120.0);
    QCOMPARE(zoom.left(), 0.5);

    axis.setZoomRect(nullptr);
    zoom.setLeft(0.1);
    axis.setMaxVisible(130.0);
    QCOMPARE(axis.maxVisible(), 130.0);
    auto *shortLived = new ZoomRect;
    axis.setZoomRect(shortLived);
    delete shortLived;
    axis.setMinVisible(3.0);
    QCOMPARE(axis.minVisible(), 3.0);
}

void tst_valueaxis::waitsForTheEndOfMovement()
{
    QQuickItem flickable;
    ZoomRect zoom;
    zoom.setFlickable(&flickable);
    ValueAxis axis;
    axis.setZoomRect(&zoom);
    flickable.setProperty("moving", true);
    axis.setMinValue(-3.0);
    axis.setMaxValue(5.0);
    axis.setMaxValue(7.0);
    axis.setMinValue(0.0);
    QCOMPARE(axis.valueRange(), 1.0);
    flickable.setProperty("moving", false);
    emit zoom.movingChanged();
    QCOMPARE(axis.minValue(), 0.0);
    QCOMPARE(axis.maxValue(), 7.0);
}

void tst_valueaxis::textsOfValues()
{
    ValueAxis axis;
    axis.setTickLabels({"a", "b", "c"});
    QCOMPARE(axis.formattedValue(2.0), QString("c"));
    QCOMPARE(axis.formattedValue(2.5), QString("2.5"));
    QCOMPARE(axis.formattedValue(1234567.0), QString("1.23457e+06"));
    QCOMPARE(axis.localizationFactor(), 1.0);

    QPointer<BaseFormatter> adopted = new FeetFormatter;
    axis.setFormatter(adopted);
    QCOMPARE(adopted->parent(), &axis);
    QCOMPARE(axis.formattedValue(2.0), QString("<2>"));
    const bool metric = SystemLocale::instance().getMeasurementSystem() == 0;
    QCOMPARE(axis.localizationFactor(), metric ? 0.3048 : 1.0);
    // Ticks are round in the unit that is shown.
    axis.setMaxVisible(100.0);
    const double shown = axis.interval10(5) * axis.localizationFactor();
    QCOMPARE(shown, metric ? 10.0 : 20.0);
    delete adopted;
    QCOMPARE(axis.formattedValue(2.0), QString("c"));
}

// A formatter may answer differently at any time; nothing but asking tells.
void tst_valueaxis::textsFollowTheFormatter()
{
    ValueAxis axis;
    axis.setAlignment(Qt::AlignLeft);
    auto *formatter = new FeetFormatter;
    axis.setFormatter(formatter);
    axis.setCustomInterval(0.5);
    const QRectF rect(0, 0, 200, 200);
    QSignalSpy margin(&axis, SIGNAL(requiredMarginChanged()));
    QCOMPARE(words(paintedTexts(axis, rect)), (QStringList{"<1>", "<1>", "<0>"}));
    QCoreApplication::processEvents();
    formatter->setPrecision(1);
    margin.clear();
    QCOMPARE(words(paintedTexts(axis, rect)), (QStringList{"<1.0>", "<0.5>", "<0.0>"}));
    QCOMPARE(margin.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(margin.count(), 1);
    // Each label is asked for once a repaint, and so are the ends of the range.
    formatter->asked.clear();
    paintedTexts(axis, rect);
    std::sort(formatter->asked.begin(), formatter->asked.end());
    QCOMPARE(formatter->asked, (QVector<double>{0.0, 0.5, 1.0}));

    // The data that made the formatter tells of its digits.
    PlotSeries series;
    series.setXUnits("dBm");
    axis.setFormatter(series.xFormatter());
    QCoreApplication::processEvents();
    QSignalSpy changed(&axis, SIGNAL(axisChanged()));
    series.setXPrecision(5);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);
    axis.setFormatter(formatter);
    QCoreApplication::processEvents();
    series.setXSigDigs(5);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 2);
}

void tst_valueaxis::linesStandOnThePlotsPixels_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("order");
    QTest::newRow("bottom") << int(Qt::AlignBottom) << int(ValueAxis::Increasing);
    QTest::newRow("top, decreasing") << int(Qt::AlignTop) << int(ValueAxis::Decreasing);
    QTest::newRow("left") << int(Qt::AlignLeft) << int(ValueAxis::Increasing);
    QTest::newRow("right, decreasing") << int(Qt::AlignRight) << int(ValueAxis::Decreasing);
}

void tst_valueaxis::linesStandOnThePlotsPixels()
{
    QFETCH(int, alignment);
    QFETCH(int, order);
    ValueAxis axis;
    axis.setAlignment(Qt::Alignment(alignment));
    axis.setRangeOrder(ValueAxis::AxisRangeOrder(order));
    axis.setMaxValue(2.0);
    axis.setMinVisible(0.1);
    axis.setMaxVisible(1.3);
    axis.setCustomInterval(0.15);
    axis.setLineColor(Qt::red);
    const QRect rect(10, 4, 80, 65);
    const QImage image =
        picture([&](QPainter *painter) { axis.paintLines(painter, rect); }, QSize(100, 80), Qt::white);
    const graph::PixelMapping mapping(0.1, 1.3, 1.3 - 0.1, 1.3 - 0.1, rect.size());
    const bool horizontal = axis.orientation() == Qt::Horizontal;
    QSet<int> lines;
    for (const double tick : axis.ticks(5)) {
        const double value = order == ValueAxis::Decreasing ? 2.0 - tick : tick;
        lines.insert(horizontal ? 10 + mapping.column(value) : 4 + mapping.row(value));
    }
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isLine = rect.contains(x, y) && lines.contains(horizontal ? x : y);
            QCOMPARE(image.pixelColor(x, y), QColor(isLine ? Qt::red : Qt::white));
        }
    }
}

void tst_valueaxis::dashes_data()
{
    QTest::addColumn<QVector<qreal>>("pattern");
    QTest::addColumn<int>("inked");
    QTest::newRow("as written") << QVector<qreal>{4, 2} << 40;
    QTest::newRow("no last gap") << QVector<qreal>{4} << 48;
    QTest::newRow("none") << QVector<qreal>{} << 60;
    QTest::newRow("negative") << QVector<qreal>{4, -2} << 60;
    QTest::newRow("not finite") << QVector<qreal>{4, qInf()} << 60;
    QTest::newRow("no number") << QVector<qreal>{qQNaN(), 4} << 60;
    QTest::newRow("too fine") << QVector<qreal>{1e-9, 1e-9} << 60;
    QTest::newRow("nothing") << QVector<qreal>{0, 0} << 60;
}

void tst_valueaxis::dashes()
{
    QFETCH(QVector<qreal>, pattern);
    ValueAxis axis;
    axis.setLineStyle(Qt::DashDotLine);
    axis.setLineStyle(Qt::SolidLine);
    axis.setLineDashPattern(pattern);
    QCOMPARE(axis.lineDashPattern().size(), pattern.size());
    for (int i = 0; i < pattern.size(); ++i)
        QVERIFY(axis.lineDashPattern().at(i) == pattern.at(i) || std::isnan(pattern.at(i)));
    axis.setCustomInterval(1.0);
    axis.setMaxVisible(1.5);
    const QImage image = picture([&](QPainter *painter) { axis.paintLines(painter, QRectF(0, 0, 60, 60)); });
    int inked = 0;
    for (int y = 0; y < image.height(); ++y)
        inked += isInk(image.pixelColor(0, y));
    QTEST(inked, "inked");
    axis.setLineStyle(Qt::DashLine);
    QCOMPARE(axis.lineDashPattern(), QPen(Qt::DashLine).dashPattern());
}

void tst_valueaxis::sides_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("margin");
    QTest::addColumn<QByteArray>("edge"); // of the text
    QTest::addColumn<double>("place");
    const auto row = [](const char *name, int alignment, int margin, const char *edge, double place) {
        QTest::newRow(name) << alignment << margin << QByteArray(edge) << place;
    };
    row("below", Qt::AlignBottom, 40, "top", 242.0);
    row("above", Qt::AlignTop, 40, "bottom", 38.0);
    row("left of it", Qt::AlignLeft, 40, "right", 46.0);
    row("right of it", Qt::AlignRight, 40, "left", 354.0);
    row("inside, bottom", Qt::AlignBottom, 0, "bottom", 238.0);
    row("inside, top", Qt::AlignTop, 0, "top", 42.0);
    row("inside, left", Qt::AlignLeft, 0, "left", 52.0);
    row("inside, right", Qt::AlignRight, 0, "right", 348.0);
    row("middle row", Qt::AlignVCenter, 40, "top", 142.0);
    row("middle column", Qt::AlignHCenter, 40, "right", 196.0);
}

void tst_valueaxis::sides()
{
    QFETCH(int, alignment);
    QFETCH(int, margin);
    QFETCH(QByteArray, edge);
    QFETCH(double, place);
    XYScale plane;
    plane.setSize({400, 300});
    ValueAxis axis;
    axis.setLabelsPlane(&plane);
    axis.setAlignment(Qt::Alignment(alignment));
    axis.setMargin(margin);
    axis.setMaxValue(8.0);
    axis.setCustomInterval(2.0);
    const QVector<Text> texts = paintedTexts(axis, QRectF(50, 40, 300, 200));
    QCOMPARE(texts.size(), 5);
    const bool horizontal = axis.orientation() == Qt::Horizontal;
    for (const Text &text : texts) {
        const QRectF box = text.rect;
        QCOMPARE(edge == "top"      ? box.top()
                 : edge == "bottom" ? box.bottom()
                 : edge == "left"   ? box.left()
                                    : box.right(),
                 place);
        const bool atAnEnd = text.text == "0" || text.text == "8";
        const double fraction = text.text.toDouble() / 8.0;
        const double wanted = horizontal ? 50.0 + int(fraction * 299) : 40.0 + int((1.0 - fraction) * 199);
        // Inside the plot area the numbers of a vertical axis are above their lines.
        const double reference = horizontal ? box.left() + int(box.width()) / 2
                                 : margin > 0 && alignment != Qt::AlignHCenter
                                     ? box.top() + int(box.height()) / 2
                                     : box.top() + int(box.height()) / 2 * 2;
        QVERIFY2(atAnEnd || reference == wanted, qPrintable(text.text));
    }
}

void tst_valueaxis::labelsAndUnit()
{
    XYScale plane;
    plane.setSize({400, 200});
    ValueAxis axis;
    axis.setLabelsPlane(&plane);
    axis.setMinValue(-0.6);
    axis.setMaxValue(0.6);
    axis.setMargin(50);
    const QRectF rect(50, 0, 350, 150);
    QCOMPARE(words(paintedTexts(axis, rect)), (QStringList{"-0.5", "-0.25", "0", "0.25", "0.5"}));
    QCOMPARE(paintedTexts(axis, rect).first().rect.top(), 152.0);
    axis.setUnit("MHz");
    QCOMPARE(paintedTexts(axis, rect).first().rect.right(), 400.0);
    QVERIFY(paintedTexts(axis, rect).first().rect.top() > 165.0);

    // Rows belong to the values, whatever is visible.
    axis.setUnit({});
    axis.setStaggered(true);
    for (const double pan : {0.0, 0.2}) {
        axis.setMinVisible(-0.6 + pan);
        axis.setMaxVisible(0.6 + pan);
        for (const Text &text : paintedTexts(axis, rect))
            QCOMPARE(text.rect.top() > 155.0, std::abs(text.text.toDouble()) == 0.25 || text.text == "0.75");
    }

    axis.setMinVisible(-0.6);
    axis.setTickInterval(ValueAxis::FixedTicks);
    axis.setTicks({-0.4, 0.0, 0.4});
    axis.setTickLabels({"left", "", "right"});
    QCOMPARE(words(paintedTexts(axis, rect)), (QStringList{"left", "right"}));
    axis.setRangeOrder(ValueAxis::Decreasing);
    axis.setMinVisible(0.0);
    axis.setMaxVisible(0.6);
    QCOMPARE(words(paintedTexts(axis, rect)), QStringList{"left"});
    QVERIFY(paintedTexts(axis, rect).first().rect.left() > 200.0);

    axis.setAxisStyle(ValueAxis::TicksOnly);
    QVERIFY(paintedTexts(axis, rect).isEmpty());
}

void tst_valueaxis::labelsKeepTheirPlaceWhilePanning()
{
    ValueAxis axis;
    axis.setMaxValue(1000.0);
    axis.setCustomInterval(2.5);
    const QRectF rect(0, 0, 480, 100);
    QHash<QString, double> before;
    const double pannedPixels = 0.13 * 479.0 / 50.0;
    for (int frame = 0; frame < 400; ++frame) {
        const double minVisible = 80.0 + frame * 0.13;
        axis.setMinVisible(minVisible);
        axis.setMaxVisible(minVisible + 50.0);
        QHash<QString, double> now;
        for (const Text &text : paintedTexts(axis, rect)) {
            const double left = text.rect.left();
            now.insert(text.text, left);
            const bool atAnEnd = left < 1.0 || text.rect.right() > 479.0;
            const double center = left + int(text.rect.width()) / 2;
            const int tick = int((text.text.toDouble() - minVisible) * 479.0 / 50.0);
            QVERIFY2(atAnEnd || center == tick, qPrintable(text.text));
        }
        // Labels leave at the left end only.
        for (auto it = before.cbegin(); it != before.cend(); ++it)
            QVERIFY2(it.value() <= pannedPixels + 1.0 || now.contains(it.key()), qPrintable(it.key()));
        before = now;
    }
}

void tst_valueaxis::labelsStayWholeAndApart()
{
    QRandomGenerator random(11);
    const QVector<Qt::Alignment> alignments{Qt::AlignBottom,
                                            Qt::AlignTop,
                                            Qt::AlignLeft,
                                            Qt::AlignRight,
                                            Qt::AlignVCenter,
                                            Qt::AlignHCenter,
                                            Qt::AlignLeft | Qt::AlignTop};
    const double inf = std::numeric_limits<double>::infinity();
    for (int round = 0; round < 1500; ++round) {
        XYScale plane;
        const QSizeF size(random.bounded(500), random.bounded(300));
        plane.setSize(size);
        ValueAxis axis;
        axis.setLabelsPlane(&plane);
        axis.setAlignment(alignments.at(random.bounded(alignments.size())));
        const bool band = random.bounded(2);
        axis.setMargin(band ? random.bounded(1, 80) : 0);
        QFont font = axis.labelFont();
        font.setPixelSize(6 + random.bounded(30));
        axis.setLabelFont(font);
        const double scale = std::pow(10.0, random.bounded(30) - 10);
        axis.setMinValue(-scale * random.bounded(3));
        axis.setMaxValue(round % 50 == 0 ? inf : scale);
        axis.setNumTicks(random.bounded(1, 200));
        axis.setTickInterval(random.bounded(3) ? ValueAxis::ScaledDecimal : ValueAxis::FixedTicks);
        axis.setStaggered(random.bounded(2));
        axis.setUnit(random.bounded(2) ? "unit" : "");
        if (random.bounded(3) == 0)
            axis.setRangeOrder(ValueAxis::Decreasing);
        const int m = axis.margin();
        const QRectF rect = QRectF(QPointF(), size).adjusted(m, m, -m, -m);
        if (std::isinf(axis.maxValue()))
            QVERIFY(paintedTexts(axis, rect).isEmpty());
        const QVector<Text> texts = paintedTexts(axis, rect);
        const QFontMetrics metrics(font);
        const bool horizontal = axis.orientation() == Qt::Horizontal;
        const int gapX = horizontal ? metrics.horizontalAdvance('0') : 0;
        const int gapY = horizontal ? 0 : metrics.height() / 4;
        for (int i = 0; i < texts.size(); ++i) {
            QVERIFY2(QRectF(QPointF(), size).contains(texts.at(i).rect), qPrintable(texts.at(i).text));
            const QRectF kept = texts.at(i).rect.adjusted(-gapX, -gapY, gapX, gapY);
            for (int k = 0; k < i; ++k)
                QVERIFY2(!texts.at(k).rect.intersects(kept), qPrintable(words(texts).join(' ')));
        }
        // The unit is there once, wherever it has room, and costs no number.
        const QStringList withUnit = words(texts);
        const int units = withUnit.filter("unit").size();
        const bool isRoomy =
            rect.width() > 300 && rect.height() > 200 && font.pixelSize() < 14 && !texts.isEmpty();
        QVERIFY2(units <= 1 && (units == 1 || axis.unit().isEmpty() || !isRoomy),
                 qPrintable(withUnit.join('|')));
        axis.setUnit("");
        axis.emitAxisChanged();
        QStringList numbers = words(paintedTexts(axis, rect));
        for (QString text : withUnit) {
            text.remove(" unit");
            QVERIFY2(text == "unit" || numbers.removeOne(text), qPrintable(text));
        }
        QVERIFY2(numbers.isEmpty(), qPrintable(withUnit.join('|') + " lacks " + numbers.join('|')));
    }
}

void tst_valueaxis::neighbours_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("other");
    QTest::addColumn<int>("margin");
    QTest::addColumn<int>("edge"); // of the labels that keeps away: 0 left, 1 top, 2 right, 3 bottom
    QTest::addColumn<double>("nearest");
    const auto row = [](const char *name, int alignment, int other, int margin, int edge, double nearest) {
        QTest::newRow(name) << alignment << other << margin << edge << nearest;
    };
    const QFontMetrics metrics(ValueAxis().labelFont());
    const double inset = metrics.height() + 2.0;
    const double free = metrics.descent() + metrics.ascent() - metrics.capHeight();
    row("below, numbers at the left", Qt::AlignBottom, Qt::AlignLeft, 50, 0, 46.0);
    row("above, numbers at the right", Qt::AlignTop, Qt::AlignRight, 50, 2, 354.0);
    row("left, numbers below", Qt::AlignLeft, Qt::AlignBottom, 50, 3, 250.0 + free);
    row("right, numbers above", Qt::AlignRight, Qt::AlignTop, 50, 1, 50.0 - free);
    row("inside left, numbers at the bottom", Qt::AlignLeft, Qt::AlignBottom, 0, 3, 250.0 - inset);
    row("inside right, numbers at the top", Qt::AlignRight, Qt::AlignTop, 0, 1, 50.0 + inset);
}

void tst_valueaxis::neighbours()
{
    QFETCH(int, alignment);
    QFETCH(int, other);
    QFETCH(int, margin);
    QFETCH(int, edge);
    QFETCH(double, nearest);
    ValueAxis axis;
    ValueAxis neighbour;
    for (ValueAxis *each : {&axis, &neighbour}) {
        each->setAlignment(Qt::Alignment(each == &axis ? alignment : other));
        each->setMargin(margin);
    }
    axis.setMinValue(-1000000.0);
    axis.setMaxValue(1000000.0);
    axis.setCustomInterval(1000000.0);
    const auto outmost = [&] {
        const graph::LabelSurroundings surroundings{QRectF(0, 0, 400, 300), {axis.look(), neighbour.look()}};
        TextRecorder recorder;
        QPainter painter(&recorder);
        axis.paintLabels(&painter, QRectF(50, 50, 300, 200), surroundings);
        painter.end();
        QRectF all;
        for (const Text &text : qAsConst(recorder.texts))
            all |= text.rect;
        const double edges[] = {all.left(), all.top(), all.right(), all.bottom()};
        return edges[edge];
    };
    const bool towardsEnd = edge >= 2;
    // Inside, a number whose line is in the way of others goes altogether.
    QVERIFY(margin > 0 ? outmost() == nearest : towardsEnd ? outmost() < nearest : outmost() > nearest);
    // Numbers that are not there need no room.
    neighbour.setAxisStyle(ValueAxis::TicksOnly);
    QVERIFY(towardsEnd ? outmost() > nearest : outmost() < nearest);
    neighbour.setAxisStyle(ValueAxis::LabelsOnly);
    neighbour.setVisible(false);
    QVERIFY(towardsEnd ? outmost() > nearest : outmost() < nearest);
}

void tst_valueaxis::unitPlaces_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("margin");
    QTest::addColumn<bool>("staggered");
    QTest::addColumn<QRectF>("plot"); // on a plane of 300 x 230 pixels
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("left"); // or the right edge; relative to the plot
    QTest::addColumn<double>("top");
    const auto row = [](const char *name, int alignment, int margin, bool staggered, const QRectF &plot,
                        const char *text, double left, double top) {
        QTest::newRow(name) << alignment << margin << staggered << plot << QString(text) << left << top;
    };
    const QRectF whole(0, 0, 300, 230);
    row("row below", Qt::AlignBottom, 50, false, QRectF(50, 0, 250, 180), "dBm", 250, 201);
    row("staggered, beside the end", Qt::AlignBottom, 50, true, QRectF(50, 40, 190, 150), "dBm", 250, 171);
    row("staggered, joined", Qt::AlignBottom, 50, true, QRectF(50, 0, 250, 180), "0 dBm", 250, 182);
    row("inside, joined", Qt::AlignTop, 0, false, whole, "0 dBm", 300, 2);
    row("above", Qt::AlignLeft, 50, false, QRectF(50, 40, 200, 150), "dBm", -4, -32);
    row("no room above", Qt::AlignLeft, 40, false, QRectF(40, 0, 260, 190), "dBm", 2, 2);
    row("no room above, at the right", Qt::AlignRight, 40, false, QRectF(0, 0, 260, 190), "dBm", 258, 2);
    row("no room above, wide margin", Qt::AlignRight, 90, false, QRectF(0, 0, 210, 190), "0 dBm", 214, 0);
    row("inside, vertical", Qt::AlignLeft, 0, false, whole, "0 dBm", 2, 0);
}

void tst_valueaxis::unitPlaces()
{
    QFETCH(int, alignment);
    QFETCH(int, margin);
    QFETCH(bool, staggered);
    QFETCH(QRectF, plot);
    QFETCH(double, left);
    QFETCH(double, top);
    XYScale plane;
    plane.setSize({300, 230});
    ValueAxis axis;
    axis.setLabelsPlane(&plane);
    axis.setAlignment(Qt::Alignment(alignment));
    axis.setMargin(margin);
    axis.setStaggered(staggered);
    axis.setMinValue(-100.0);
    axis.setMaxValue(0.0);
    axis.setCustomInterval(50.0);
    axis.setUnit("dBm");
    const Text unit = paintedTexts(axis, plot).first();
    QTEST(unit.text, "text");
    const QRectF box = unit.rect.translated(-plot.topLeft());
    QVERIFY(box.left() == left || box.right() == left);
    QCOMPARE(box.top(), top);
    // In a colour of its own it is a text of its own, at the same place.
    axis.setVerticalUnitLabelColor(Qt::red);
    const QVector<Text> apart = paintedTexts(axis, plot);
    QCOMPARE(words(apart).contains("dBm"), axis.orientation() == Qt::Vertical || unit.text == "dBm");
    QCOMPARE(apart.first().rect.left(), unit.rect.left());
}

void tst_valueaxis::requiredMarginIgnoresTheZoom()
{
    ValueAxis axis;
    const int oneRow = axis.requiredMargin();
    axis.setStaggered(true);
    QVERIFY(axis.requiredMargin() >= 2 * oneRow - 6);

    axis.setAlignment(Qt::AlignLeft);
    const int forDecimals = axis.requiredMargin();
    const QFontMetrics metrics(axis.labelFont());
    QCOMPARE(forDecimals, metrics.horizontalAdvance("0.2") + 6);
    axis.setMinVisible(0.001);
    axis.setMaxVisible(0.002);
    QCOMPARE(axis.requiredMargin(), forDecimals);
    QSignalSpy changed(&axis, SIGNAL(requiredMarginChanged()));
    axis.setMinValue(-1000.0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);
    QVERIFY(axis.requiredMargin() > forDecimals);
}

QTEST_MAIN(tst_valueaxis)
#include "tst_valueaxis.moc"
