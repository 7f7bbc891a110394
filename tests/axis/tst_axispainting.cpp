#include "axis/AxisBench.h"
#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "support/Pictures.h"
#include "view/base/XYScale.h"
#include "support/Table.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

using Text = PaintRecorder::Text;

namespace {

QVector<Text> paintedTexts(ValueAxis &axis, const QRectF &rect)
{
    const QRectF bounds = axis.labelsPlane() ? axis.labelsPlane()->boundingRect() : rect;
    return PaintRecorder([&](QPainter *painter) { axis.paintLabels(painter, rect, {bounds, {}}); }).texts;
}

QStringList words(const QVector<Text> &texts)
{
    QStringList list;
    for (const Text &text : texts)
        list.append(text.text);
    return list;
}

// As tall with Qt 5 as with Qt 6, unlike the axis' own.
QFont sameFont()
{
    QFont font("DejaVu Sans");
    font.setPixelSize(16);
    return font;
}

} // namespace

class tst_axispainting : public QObject
{
    Q_OBJECT

private slots:
    void textsFollowTheFormatter();
    void dashes_data();
    void dashes();
    void sides_data();
    void sides();
    void listsAndRows();
    void labelsMayFillTheirRoom();
    void labelsKeepTheirPlaceWhilePanning();
    void labelsStayWholeAndApart();
    void neighbours_data();
    void neighbours();
    void verticalLabelsAreOnTop();
    void unitPlaces_data();
    void unitPlaces();
};

// A formatter may answer differently at any time; nothing but asking tells.
void tst_axispainting::textsFollowTheFormatter()
{
    ValueAxis axis;
    axis.setAlignment(Qt::AlignLeft);
    auto *formatter = new FeetText;
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
    // Ticks that are out of sight are not asked for any more.
    axis.setMinVisible(0.6);
    paintedTexts(axis, rect);
    formatter->asked.clear();
    paintedTexts(axis, rect);
    QVERIFY(!formatter->asked.contains(0.5));

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

void tst_axispainting::dashes_data()
{
    columns<QVector<qreal>, int>({"pattern", "inked"});
    QTest::newRow("as written") << QVector<qreal>{4, 2} << 40;
    QTest::newRow("no last gap") << QVector<qreal>{4} << 48;
    QTest::newRow("none") << QVector<qreal>{} << 60;
    QTest::newRow("negative") << QVector<qreal>{4, -2} << 60;
    QTest::newRow("not finite") << QVector<qreal>{4, qInf()} << 60;
    QTest::newRow("no number") << QVector<qreal>{qQNaN(), 4} << 60;
    QTest::newRow("too fine") << QVector<qreal>{1e-9, 1e-9} << 60;
    QTest::newRow("nothing") << QVector<qreal>{0, 0} << 60;
}

void tst_axispainting::dashes()
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
    axis.setLineColor(Qt::red);
    const QImage image = picture([&](QPainter *painter) { axis.paintLines(painter, QRectF(0, 0, 60, 60)); });
    int inked = 0;
    for (int y = 0; y < image.height(); ++y)
        inked += image.pixelColor(0, y) == QColor(Qt::red);
    QTEST(inked, "inked");
    axis.setLineStyle(Qt::DashLine);
    QCOMPARE(axis.lineDashPattern(), QPen(Qt::DashLine).dashPattern());
}

void tst_axispainting::sides_data()
{
    // edge: of the text
    columns<int, int, QByteArray, double>({"alignment", "margin", "edge", "place"});
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

void tst_axispainting::sides()
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

void tst_axispainting::listsAndRows()
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
    // Those that are left where there is no room for all are equally far apart.
    axis.setCustomInterval(0.05);
    for (int width = 130; width < 600; ++width) {
        const QStringList numbers = words(paintedTexts(axis, QRectF(50, 0, width, 150)));
        for (int i = 2; i < numbers.size(); ++i) {
            const double steps[] = {numbers.at(i).toDouble() - numbers.at(i - 1).toDouble(),
                                    numbers.at(1).toDouble() - numbers.at(0).toDouble()};
            QVERIFY2(qFuzzyCompare(steps[0], steps[1]), qPrintable(numbers.join(' ')));
        }
    }
    axis.setCustomInterval(0.0);
    // Above each other they need their height only.
    ValueAxis upright;
    upright.setAlignment(Qt::AlignLeft);
    upright.setMargin(90);
    upright.setMaxValue(1e6);
    upright.setCustomInterval(1e5);
    QCOMPARE(words(paintedTexts(upright, QRectF(90, 0, 200, 300))).size(), 9);
    // Rows belong to the values, whatever is visible.
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
    // Where there is no room for all names, those that are left are equally far apart.
    axis.setStaggered(false);
    axis.setMinVisible(-0.6);
    QList<qreal> ticks;
    QStringList names;
    for (int i = 0; i <= 12; ++i) {
        ticks.append(-0.6 + 0.1 * i);
        names.append(QString("label %1").arg(i));
    }
    axis.setTicks(ticks);
    axis.setTickLabels(names);
    QCOMPARE(words(paintedTexts(axis, rect)), (QStringList{"label 10", "label 5", "label 0"}));

    axis.setAxisStyle(ValueAxis::TicksOnly);
    QVERIFY(paintedTexts(axis, rect).isEmpty());
}

void tst_axispainting::labelsMayFillTheirRoom()
{
    const QFontMetrics metrics(ValueAxis().labelFont());
    const auto narrowest = [](Qt::Alignment alignment, const QString &unit, const QString &word) {
        ValueAxis axis;
        axis.setAlignment(alignment);
        axis.setMaxValue(20000.0);
        axis.setTickInterval(ValueAxis::FixedTicks);
        axis.setTicks({12345.0});
        axis.setUnit(unit);
        int width = 1;
        while (width < 300 && !words(paintedTexts(axis, QRectF(0, 0, width, 100))).contains(word))
            ++width;
        return width;
    };
    QCOMPARE(narrowest(Qt::AlignLeft, "", "12345"), metrics.horizontalAdvance("12345"));
    // From the first to the last pixel.
    QCOMPARE(narrowest(Qt::AlignBottom, "dBm", "12345 dBm"), metrics.horizontalAdvance("12345 dBm") + 1);
}

void tst_axispainting::labelsKeepTheirPlaceWhilePanning()
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

void tst_axispainting::labelsStayWholeAndApart()
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
        const int width = random.bounded(500);
        const int height = random.bounded(300);
        const QSizeF size(width, height);
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

void tst_axispainting::neighbours_data()
{
    // edge: of the labels that keeps away: 0 left, 1 top, 2 right, 3 bottom
    columns<int, int, int, int, double>({"alignment", "other", "margin", "edge", "nearest"});
    const auto row = [](const char *name, int alignment, int other, int margin, int edge, double nearest) {
        QTest::newRow(name) << alignment << other << margin << edge << nearest;
    };
    const QFontMetrics metrics(sameFont());
    const double inset = metrics.height() + 2.0;
    const double free = metrics.descent() + metrics.ascent() - metrics.capHeight();
    row("below, numbers at the left", Qt::AlignBottom, Qt::AlignLeft, 50, 0, 46.0);
    row("above, numbers at the right", Qt::AlignTop, Qt::AlignRight, 50, 2, 354.0);
    row("left, numbers below", Qt::AlignLeft, Qt::AlignBottom, 50, 3, 250.0 + free);
    row("right, numbers above", Qt::AlignRight, Qt::AlignTop, 50, 1, 50.0 - free);
    row("inside left, numbers at the bottom", Qt::AlignLeft, Qt::AlignBottom, 0, 3, 300.0 - inset);
    row("inside right, numbers at the top", Qt::AlignRight, Qt::AlignTop, 0, 1, inset);
}

void tst_axispainting::neighbours()
{
    QFETCH(int, alignment);
    QFETCH(int, other);
    QFETCH(int, margin);
    QFETCH(int, edge);
    QFETCH(double, nearest);
    XYScale plane;
    plane.setSize({400, 300});
    ValueAxis axis;
    ValueAxis neighbour;
    for (ValueAxis *each : {&axis, &neighbour}) {
        each->setAlignment(Qt::Alignment(each == &axis ? alignment : other));
        each->setMargin(margin);
        each->setLabelFont(sameFont());
        each->setLabelsPlane(&plane);
    }
    plane.setAxes({&axis, &neighbour});
    axis.setMinValue(-1000000.0);
    axis.setMaxValue(1000000.0);
    axis.setCustomInterval(1000000.0);
    const auto outmost = [&] {
        const PaintRecorder recorder([&](QPainter *painter) { plane.paint(painter); });
        QRectF all;
        for (const Text &text : recorder.texts) {
            if (text.text.contains("e+06")) // not of the neighbour
                all |= text.rect;
        }
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

void tst_axispainting::verticalLabelsAreOnTop()
{
    XYScale plane;
    plane.setSize({400, 300});
    ValueAxis vertical;
    ValueAxis horizontal;
    vertical.setAlignment(Qt::AlignLeft);
    horizontal.setMinValue(5.0);
    horizontal.setMaxValue(6.0);
    for (ValueAxis *axis : {&vertical, &horizontal}) {
        axis->setMargin(50);
        axis->setCustomInterval(1.0);
        axis->setLabelsPlane(&plane);
    }
    plane.setAxes({&vertical, &horizontal});
    const PaintRecorder recorder([&](QPainter *painter) { plane.paint(painter); });
    QCOMPARE(words(recorder.texts), (QStringList{"5", "6", "1", "0"}));
}

void tst_axispainting::unitPlaces_data()
{
    // plot: on a plane of 300 x 230 pixels
    // left: or the right edge; relative to the plot
    columns<int, int, bool, QRectF, QString, double, double>(
        {"alignment", "margin", "staggered", "plot", "text", "left", "top"});
    const auto row = [](const char *name, int alignment, int margin, bool staggered, const QRectF &plot,
                        const char *text, double left, double top) {
        QTest::newRow(name) << alignment << margin << staggered << plot << QString(text) << left << top;
    };
    const QRectF whole(0, 0, 300, 230);
    row("row below", Qt::AlignBottom, 50, false, QRectF(50, 0, 250, 180), "dBm", 250, 201);
    row("staggered, beside the end", Qt::AlignBottom, 50, true, QRectF(50, 40, 180, 150), "dBm", 250, 171);
    row("staggered, joined", Qt::AlignBottom, 50, true, QRectF(50, 0, 250, 180), "0 dBm", 250, 182);
    row("inside, joined", Qt::AlignTop, 0, false, whole, "0 dBm", 300, 2);
    row("above", Qt::AlignLeft, 50, false, QRectF(50, 40, 200, 150), "dBm", -4, -32);
    row("no room above", Qt::AlignLeft, 40, false, QRectF(40, 0, 260, 190), "dBm", 2, 2);
    row("no room above, at the right", Qt::AlignRight, 40, false, QRectF(0, 0, 260, 190), "dBm", 258, 2);
    row("no room above, wide margin", Qt::AlignRight, 90, false, QRectF(0, 0, 210, 190), "0 dBm", 214, 0);
    row("inside, vertical", Qt::AlignLeft, 0, false, whole, "0 dBm", 2, 0);
}

void tst_axispainting::unitPlaces()
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
    axis.setLabelFont(sameFont());
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

QTEST_MAIN(tst_axispainting)
#include "tst_axispainting.moc"
