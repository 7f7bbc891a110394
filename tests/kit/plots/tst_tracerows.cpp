#include "kit/plots/CurvedLine.h"
#include "kit/plots/TraceRows.h"
#include "kit/plots/TraceShapes.h"
#include "support/Table.h"

#include "data/MinMaxPyramid.h"

#include <random>

using namespace graph;

namespace {

constexpr QSize size(60, 40);

// Every sample for itself: the line from each to the next, one pixel column after the other.
class PlainRows
{
public:
    PlainRows(const SampleSpan &samples, const PixelMapping &mapping)
    {
        for (int i = 0; i < samples.size(); ++i) {
            const QPointF end = vertex(samples, mapping, i);
            if (isPlace(end))
                add(int(end.x()), end.y(), end.y());
            const QPointF begin = i > 0 ? vertex(samples, mapping, i - 1) : QPointF(qQNaN(), 0);
            if (!isPlace(begin) || !isPlace(end) || begin.x() == end.x())
                continue;
            const double slope = (end.y() - begin.y()) / (end.x() - begin.x());
            for (int c = std::max(0, int(begin.x())); c <= std::min(size.width() - 1, int(end.x())); ++c) {
                const double left = std::max(begin.x(), c - 0.5);
                const double right = std::min(end.x(), c + 0.5);
                add(c, begin.y() + (left - begin.x()) * slope, begin.y() + (right - begin.x()) * slope);
            }
        }
    }

    double top[size.width()];
    double bottom[size.width()];
    bool any[size.width()] = {};

private:
    static bool isPlace(const QPointF &p) { return !std::isnan(p.x()) && !std::isnan(p.y()); }
    static QPointF vertex(const SampleSpan &samples, const PixelMapping &mapping, int i)
    {
        if (!mapping.hasPlace(samples.x(i), samples.y(i)))
            return {qQNaN(), qQNaN()};
        return {double(mapping.column(samples.x(i))), double(mapping.row(samples.y(i)))};
    }

    void add(int column, double y, double otherY)
    {
        if (column < 0 || column >= size.width())
            return;
        top[column] = std::min({any[column] ? top[column] : y, y, otherY});
        bottom[column] = std::max({any[column] ? bottom[column] : y, y, otherY});
        any[column] = true;
    }
};

} // namespace

Q_DECLARE_METATYPE(graph::TraceCourse)

class tst_tracerows : public QObject
{
    Q_OBJECT

private slots:
    // Dense, sparse and bursty data with gaps, wholly or partly in view, with and without a pyramid, on axes
    // of both kinds and directions.
    void likeAPlainLoop()
    {
        std::mt19937 random(1);
        const auto uniform = [&](double low, double high) {
            return std::uniform_real_distribution<double>(low, high)(random);
        };
        for (int round = 0; round < 3000; ++round) {
            const int count = int(std::exp(uniform(0, 7.5)));
            const double gaps = round % 3 == 0 ? 0.2 : 0.0;
            QVector<QPointF> points;
            double x = uniform(-30, 60);
            const double spacing = uniform(0.001, round % 5 == 0 ? 0.01 : 8);
            for (int i = 0; i < count; ++i) {
                x += round % 2 || i % 20 ? uniform(0, spacing) : uniform(0, 30);
                const double y = uniform(0, 1) < gaps ? (i % 2 ? qQNaN() : qInf()) : uniform(-15, 55);
                points.append({x, y});
            }
            const int kind = round % 7;
            const auto scale = [](bool isLogarithmic, double begin, double end, int pixels) {
                return PixelScale(isLogarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear, {begin, end},
                                  end - begin, pixels);
            };
            const PixelScale scaleX = kind == 1 || kind == 5 ? scale(true, 1, 59, size.width())
                                      : kind == 3            ? scale(false, 59, 0, size.width())
                                                             : scale(false, 0, 59, size.width());
            const PixelScale scaleY = kind == 2 || kind == 5 ? scale(true, 39, 0.5, size.height())
                                      : kind == 4            ? scale(false, 0, 39, size.height())
                                                             : scale(false, 39, 0, size.height());
            const PixelMapping mapping(scaleX, scaleY, size);
            const bool hasGaps = gaps > 0.0 || !mapping.isLinearX() || !mapping.isLinearY();
            const MinMaxPyramid pyramid(points.constData(), points.size());
            SampleSpan samples = SampleSpan(points).between(mapping.isLinearX() ? 0 : 1, 59).withNeighbours();
            if (kind == 3)
                samples = samples.reversed();
            if (round % 2)
                samples.setPyramid(std::make_shared<MinMaxPyramid>(pyramid));
            const TraceRows rows(traceColumns(samples, mapping), TraceCourse::Straight, size);
            const PlainRows plain(samples, mapping);
            for (int c = 0; c < size.width(); ++c) {
                const Rows &own = rows.at(c);
                QCOMPARE(!own.isEmpty(), plain.any[c]);
                // A row that the line passes on its way into the next column may be that one's.
                if (own.isEmpty())
                    continue;
                QVERIFY2(std::abs(own.top - plain.top[c]) <= 1.5 &&
                             std::abs(own.end - 1 - plain.bottom[c]) <= 1.5,
                         qPrintable(QString("round %1, column %2: %3..%4, not %5..%6")
                                        .arg(round)
                                        .arg(c)
                                        .arg(own.top)
                                        .arg(own.end - 1)
                                        .arg(plain.top[c])
                                        .arg(plain.bottom[c])));
                if (c > 0 && !hasGaps && !rows.at(c - 1).isEmpty())
                    QVERIFY(rows.at(c - 1).touches(own));
            }
        }
    }

    // A curve stays between its samples, wherever the view begins it is the same, and crowds leave it straight.
    void curves()
    {
        std::mt19937 random(3);
        QVector<QPointF> points;
        for (double x = -20; x < 90; x += 3 + random() % 9)
            points.append({x, double(random() % 38)});
        const auto rowsFrom = [&](double left, const QVector<QPointF> &of, bool isCurved) {
            const PixelMapping mapping(left, 39, 59, 39, size);
            const SampleSpan samples = withCurveNeighbours(SampleSpan(of).between(left, left + 59), mapping);
            const auto columns = traceColumns(samples, mapping);
            return TraceRows(isCurved ? curvedColumns(columns, 60) : columns, TraceCourse::Straight, size);
        };
        const TraceRows rows = rowsFrom(0, points, true);
        int others = 0;
        for (int i = 1; i < points.size(); ++i) {
            const auto [low, high] = std::minmax({points[i - 1].y(), points[i].y()});
            for (int c = int(std::max(0.0, points[i - 1].x())); c <= std::min(59.0, points[i].x()); ++c) {
                QVERIFY(rows.at(c).end >= 39 - high && rows.at(c).top <= 39 - low + 1);
                if (c > points[i - 1].x() && c < points[i].x())
                    QVERIFY(rows.at(c).top >= 39 - high - 1 && rows.at(c).end <= 39 - low + 2);
                others += rows.at(c).top != rowsFrom(0, points, false).at(c).top;
            }
        }
        QVERIFY(others > 20);
        const TraceRows panned = rowsFrom(7, points, true);
        for (int c = 1; c < 52; ++c)
            QVERIFY(panned.at(c).top == rows.at(c + 7).top && panned.at(c).end == rows.at(c + 7).end);
        for (QPointF &point : points)
            point.setX(point.x() * 1e-3);
        const auto zoomedOut = rowsFrom(0, points, true);
        QCOMPARE(zoomedOut.at(0).top, rowsFrom(0, points, false).at(0).top);
        QVERIFY(!rowsFrom(-3e7, {{-9e8, 1}, {-8e8, 5}, {1e8, 9}, {2e8, 4}}, true).at(0).isEmpty());
    }

    void lines_data()
    {
        columns<QVector<QPointF>, TraceCourse, QString>({"points", "course", "rows"});
        const auto straight = TraceCourse::Straight;
        const auto steps = TraceCourse::Steps;
        // Rows of a picture of 60 columns, as column:top-bottom; y grows upwards from row 39.
        QTest::newRow("one sample") << QVector<QPointF>{{3, 9}} << straight << "3:30-30";
        QTest::newRow("one row a column")
            << QVector<QPointF>{{3, 9}, {5, 7}} << straight << "3:30-30 4:31-31 5:32-32";
        QTest::newRow("upwards") << QVector<QPointF>{{3, 7}, {5, 9}} << straight << "3:32-32 4:31-31 5:30-30";
        QTest::newRow("steep") << QVector<QPointF>{{3, 9}, {4, 5}} << straight << "3:30-31 4:32-34";
        QTest::newRow("gap") << QVector<QPointF>{{3, 9}, {4, qQNaN()}, {5, 9}} << straight
                             << "3:30-30 5:30-30";
        QTest::newRow("steps") << QVector<QPointF>{{3, 9}, {5, 7}} << steps << "3:30-30 4:30-30 5:30-32";
        QTest::newRow("held up to a gap")
            << QVector<QPointF>{{3, 9}, {5, qQNaN()}} << steps << "3:30-30 4:30-30 5:30-30";
        QTest::newRow("held to the left")
            << QVector<QPointF>{{3, 9}, {5, 7}} << TraceCourse::StepsToLeft << "3:30-32 4:32-32 5:32-32";
        QTest::newRow("far outside") << QVector<QPointF>{{-1e9, 1e9 + 1}, {1e9, -1e9 + 1}} << straight
                                     << "0:38-38 1:39-39 2:40-40";
        QTest::newRow("infinite") << QVector<QPointF>{{3, qInf()}, {4, -qInf()}} << straight << "";
    }

    void lines()
    {
        QFETCH(QVector<QPointF>, points);
        QFETCH(TraceCourse, course);
        const PixelMapping mapping(0, size.height() - 1, size.width() - 1, size.height() - 1, size);
        const TraceRows rows(traceColumns(SampleSpan(points), mapping), course, size);
        QStringList text;
        for (int c = 0; c < 6; ++c) {
            if (!rows.at(c).isEmpty() && rows.at(c).top <= size.height())
                text << QString("%1:%2-%3").arg(c).arg(rows.at(c).top).arg(rows.at(c).end - 1);
        }
        const QString found = text.join(QLatin1Char(' '));
        QTEST(found, "rows");
    }
};

QTEST_APPLESS_MAIN(tst_tracerows)
#include "tst_tracerows.moc"
