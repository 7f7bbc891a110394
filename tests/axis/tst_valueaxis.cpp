#include "axis/ValueAxis.h"
#include "common/PixelMapping.h"
#include "platform/ui/SystemLocale.h"
#include "view/base/XYScale.h"

#include <QFontMetrics>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

class FeetFormatter : public BaseFormatter
{
public:
    QString formatValue(const QVariant &value) const override { return "<" + value.toString() + ">"; }
    QString getType() const override { return "FeetFormatter"; }
    void setSigDigs(int) override {}
    void setPrecision(int) override {}
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
    void pinnedSpanMoves();
    void followsTheZoomRect();
    void waitsForTheEndOfMovement();
    void textsOfValues();
    void linesStandOnThePlotsPixels();
    void labelsAndUnit();
    void labelsKeepTheirPlaceWhilePanning();
    void labelsStayWholeAndApart();
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

void tst_valueaxis::linesStandOnThePlotsPixels()
{
    ValueAxis axis;
    axis.setMinVisible(0.1);
    axis.setMaxVisible(1.3);
    axis.setCustomInterval(0.05);
    axis.setLineColor(Qt::red);
    QImage image(97, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QRectF rect(10, 2, 80, 15);
    axis.paintLines(&painter, rect);
    painter.end();
    const graph::PixelMapping mapping(0.1, 1.3, 1.3 - 0.1, 1.0, rect.size());
    QSet<int> columns;
    for (const double tick : axis.ticks(5))
        columns.insert(10 + mapping.column(tick));
    for (int x = 0; x < image.width(); ++x) {
        const QColor expected = columns.contains(x) ? Qt::red : Qt::white;
        QCOMPARE(image.pixelColor(x, 2), expected);
        QCOMPARE(image.pixelColor(x, 16), expected);
        QCOMPARE(image.pixelColor(x, 1), QColor(Qt::white));
        QCOMPARE(image.pixelColor(x, 17), QColor(Qt::white));
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
    }
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
