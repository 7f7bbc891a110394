#include "raster/LinePoints.h"
#include "raster/OutlineFill.h"
#include "raster/RectangleSweep.h"
#include "raster/RecordedStrokes.h"
#include "raster/Strokes.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QtTest>

#include <functional>
#include <random>

class tst_strokes : public QObject
{
    Q_OBJECT

private slots:
    void uprightLines();
    void linePaths();
    void steepLines();
    void areas();
    void rectanglesAreWide();
    void takenDownIsOnlyWhatIsSteady();

private:
    int whole(int low, int high) { return std::uniform_int_distribution<>(low, high)(m_random); }
    bool oneIn(int n) { return whole(1, n) == 1; }
    QPainterPath randomPath();
    template <typename Draw> QImage picture(Draw draw);
    QColor randomColor(int alpha) { return QColor(whole(0, 255), whole(0, 255), whole(0, 255), alpha); }
    void newBackdrop() { m_backdrop = randomColor(oneIn(2) ? 0 : whole(0, 255)); }

    std::mt19937 m_random{11};
    QColor m_backdrop;
};

// Random strokes, as plots have them and as they had better not be: of any length and direction, beside the
// picture, through wide, thin and translucent pens, shifted, clipped, scaled and smoothed.
void tst_strokes::uprightLines()
{
    const QSize size(61, 47);
    constexpr int far = 1 << 24;
    for (int round = 0; round < 4000; ++round) {
        newBackdrop();
        QVector<QLine> lines(whole(0, 60));
        const bool areColumns = oneIn(2);
        const bool areUpward = oneIn(2);
        for (int i = 0; i < lines.size(); ++i) {
            QLine &line = lines[i];
            const int x = areColumns && !oneIn(20) ? i : whole(-4, size.width() + 4);
            const int y = areColumns ? whole(30, 40) : whole(-6, size.height() + 6);
            const int end = oneIn(8) ? y : oneIn(20) ? (oneIn(2) ? far : -far) : whole(-6, size.height() + 6);
            line = areUpward ? QLine(x, qMax(y, end), x, qMin(y, end)) : QLine(x, y, x, end);
        }
        QPen pen(randomColor(oneIn(2) ? 255 : whole(0, 255)));
        pen.setWidth(whole(0, oneIn(10) ? 40 : 5));
        pen.setCapStyle(oneIn(20) ? Qt::SquareCap : Qt::FlatCap);
        const QPoint shift = oneIn(2) ? QPoint(1, 1) : QPoint();
        const double fraction = oneIn(10) ? 0.5 : 0.0;
        const double scale = oneIn(10) ? 1.5 : 1.0;
        const bool smooth = oneIn(20);
        const bool clipped = oneIn(5);
        const double opacity = oneIn(10) ? 0.5 : 1.0;

        const auto picture = [&](auto draw) {
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(m_backdrop);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing, smooth);
            painter.setOpacity(opacity);
            painter.translate(shift.x() + fraction, shift.y());
            painter.scale(scale, scale);
            if (clipped)
                painter.setClipRect(7, 5, 31, 29);
            painter.setPen(pen);
            draw(&painter);
            // The painter is as it was.
            painter.drawRect(20, 20, 9, 9);
            return image;
        };
        const QImage expected = picture([&](QPainter *painter) { painter->drawLines(lines); });
        const QImage actual = picture([&](QPainter *painter) { graph::drawUprightLines(painter, lines); });
        if (actual != expected) {
            QFAIL(qPrintable(QStringLiteral("round %1: pen %2, alpha %3, shift %4 %5, scale %6")
                                 .arg(round)
                                 .arg(pen.width())
                                 .arg(pen.color().alpha())
                                 .arg(shift.x())
                                 .arg(fraction)
                                 .arg(scale)));
        }
    }
}

// A path, mostly a long one: steep or flat, with gaps and lone points, now and then going back, reaching out
// of the picture a little or beyond what the engine can hold.
QPainterPath tst_strokes::randomPath()
{
    const int farthest = oneIn(8) ? 1 << whole(10, 24) : 60;
    const int steepest = oneIn(4) ? 3 : farthest;
    const int widestStep = oneIn(3) ? 1 : 7;
    const int widestStepBack = oneIn(5) ? 7 : 0;
    const int gap = oneIn(3) ? whole(1, 4) : 1000;
    const bool areLinesApart = oneIn(8);
    const double fraction = oneIn(2) ? 1.0 : 0.37;
    QPainterPath path(QPointF(whole(-9, 9), whole(0, 40)));
    for (int i = whole(2, 90); i > 0; --i) {
        const QPointF last = path.currentPosition();
        const double y = qBound(-1.0 * farthest, last.y() + whole(-steepest, steepest), 1.0 * farthest);
        const QPointF next(last.x() + whole(-widestStepBack, widestStep) * fraction,
                           oneIn(9) ? whole(-9, 60) : y * fraction);
        if (areLinesApart ? path.elementCount() % 2 == 0 : oneIn(gap))
            path.moveTo(next);
        else
            path.lineTo(next);
    }
    return path;
}

template <typename Draw> QImage tst_strokes::picture(Draw draw)
{
    QImage image(101, 47, QImage::Format_ARGB32_Premultiplied);
    image.fill(m_backdrop);
    QPainter painter(&image);
    painter.translate(1, 1);
    draw(&painter);
    painter.drawRect(20, 20, 9, 9); // the painter is as it was
    return image;
}

void tst_strokes::linePaths()
{
    int recorded = 0;
    for (int round = 0; round < 3000; ++round) {
        newBackdrop();
        const QPainterPath path = randomPath();
        QPen pen(QColor(10, 200, 30, oneIn(3) ? 120 : 255));
        pen.setWidth(whole(0, oneIn(3) ? 17 : 5));
        pen.setCapStyle(Qt::FlatCap);
        const auto drawn = [&](QPainter *painter) {
            painter->setPen(pen);
            graph::drawLinePath(painter, path);
        };
        const auto stroked = [&](QPainter *painter) {
            painter->setPen(pen);
            painter->strokePath(path, pen);
        };
        const auto repeated = [&](QPainter *painter) {
            const QSize size(painter->device()->width(), painter->device()->height());
            const graph::RecordedStrokes strokes = graph::recordedStrokes(size, [&](QPainter *recorder) {
                recorder->translate(1, 1);
                drawn(recorder);
            });
            if (!strokes.isComplete)
                return drawn(painter);
            recorded += int(strokes.parts.size());
            painter->save();
            painter->translate(-1, -1);
            // As a window asks for it: in parts, of several rectangles each.
            const QRegion hole = QRegion(30, 10, 11, 9) + QRect(60, 20, 1, 20);
            strokes.paint(painter, QRegion(QRect(QPoint(), size)) - hole);
            strokes.paint(painter, hole);
            painter->restore();
            painter->setPen(pen);
        };
        const QImage expected = picture(stroked);
        if (picture(drawn) != expected || picture(repeated) != expected)
            QFAIL(qPrintable(QStringLiteral("round %1: pen %2, %3 points")
                                 .arg(round)
                                 .arg(pen.width())
                                 .arg(path.elementCount())));
    }
    QVERIFY(recorded > 300);
}

// Ways over the height of the picture, and some so short that rounding moves a corner of theirs past another one.
void tst_strokes::steepLines()
{
    for (int round = 0; round < 4000; ++round) {
        const double unit = oneIn(2) ? 1.0 : 1.0 / whole(2, 64);
        QPainterPath path(QPointF(whole(-9, 9), whole(0, 40)));
        for (int i = whole(3, 30); i > 0; --i) {
            const QPointF last = path.currentPosition();
            const bool isShort = oneIn(3);
            const QPointF next(last.x() + (isShort ? whole(0, 9) / 37.0 : whole(0, 4) * unit),
                               isShort ? last.y() + whole(-9, 9) / 41.0 : whole(-30, 80) + unit);
            path.lineTo(next);
        }
        QPen pen(Qt::red, whole(2, 12), Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin);
        const QRect clip(0, 0, 101, 47);
        const QPoint shift(1, 1);
        const QVector<QRect> rectangles =
            graph::strokedRectangles(graph::LinePoints(path), pen.width(), shift, clip);
        QRegion covered;
        int pixels = 0;
        for (const QRect &rectangle : rectangles) {
            covered += rectangle;
            pixels += rectangle.width() * rectangle.height();
        }
        for (const QRect &rectangle : covered)
            pixels -= rectangle.width() * rectangle.height();
        QCOMPARE(pixels, 0);
        const QImage expected = picture([&](QPainter *painter) { painter->strokePath(path, pen); });
        const QImage actual = picture([&](QPainter *painter) {
            painter->translate(-shift);
            for (const QRect &rectangle : rectangles)
                painter->fillRect(rectangle, Qt::red);
            painter->translate(shift);
        });
        if (actual != expected)
            QFAIL(qPrintable(QStringLiteral("round %1: pen %2").arg(round).arg(pen.width())));
    }
}

void tst_strokes::areas()
{
    for (int round = 0; round < 3000; ++round) {
        newBackdrop();
        QPainterPath path = randomPath();
        const int row = oneIn(8) ? whole(-100000, 100000) : whole(-20, 60);
        QPainterPath outline;
        for (int i = 0; i < path.elementCount(); ++i) {
            const QPainterPath::Element point = path.elementAt(i);
            if (point.isMoveTo())
                outline.moveTo(point.x, row);
            outline.lineTo(point);
            if (i + 1 == path.elementCount() || path.elementAt(i + 1).isMoveTo()) {
                outline.lineTo(point.x, row);
                outline.closeSubpath();
            }
        }
        const QBrush brush(QColor(10, 200, 30, 120));
        if (picture([&](QPainter *painter) { graph::fillToRow(painter, path, row, brush); }) !=
            picture([&](QPainter *painter) { painter->fillPath(outline, brush); }))
            QFAIL(qPrintable(QStringLiteral("round %1: %2 points").arg(round).arg(path.elementCount())));
        path.setFillRule(oneIn(2) ? Qt::WindingFill : Qt::OddEvenFill);
        if (picture([&](QPainter *painter) { graph::fillOutline(painter, path, brush); }) !=
            picture([&](QPainter *painter) { painter->fillPath(path, brush); }))
            QFAIL(qPrintable(
                QStringLiteral("round %1: outline of %2 points").arg(round).arg(path.elementCount())));
    }
}

// Runs of pixels are covered exactly once, by no more rows of rectangles than there are stretches of pixels
// side by side.
void tst_strokes::rectanglesAreWide()
{
    constexpr int columns = 40;
    constexpr int rows = 30;
    for (int round = 0; round < 1000; ++round) {
        graph::RectangleSweep sweep;
        std::vector<int> covered(columns * rows, 0);
        for (int column = 0; column < columns; ++column) {
            const int top = whole(0, rows - 1);
            const int end = oneIn(10) ? top : whole(top, rows);
            sweep.add(column, {top, end});
            for (int row = top; row < end; ++row)
                --covered[row * columns + column];
        }
        int stretches = 0;
        for (int i = 0; i < columns * rows; ++i)
            stretches += covered[i] != 0 && (i % columns == 0 || covered[i - 1] == 0);

        const QVector<QRect> rectangles = sweep.takeRectangles();
        for (const QRect &rectangle : rectangles) {
            stretches -= rectangle.height();
            for (int row = rectangle.top(); row <= rectangle.bottom(); ++row) {
                for (int column = rectangle.left(); column <= rectangle.right(); ++column)
                    ++covered[row * columns + column];
            }
        }
        QCOMPARE(stretches, 0);
        QCOMPARE(std::count(covered.begin(), covered.end(), 0), columns * rows);
    }
}

void tst_strokes::takenDownIsOnlyWhatIsSteady()
{
    using Draw = std::function<void(QPainter *)>;
    const auto isTakenDown = [](const Draw &draw) {
        return graph::recordedStrokes(QSize(50, 50),
                                      [&](QPainter *painter) {
                                          painter->setPen(Qt::NoPen);
                                          painter->setBrush(Qt::red);
                                          draw(painter);
                                          painter->drawRect(QRect(1, 1, 5, 5));
                                      })
            .isComplete;
    };
    QVERIFY(isTakenDown([](QPainter *painter) { painter->translate(3.0, -2.0); }));
    const QImage picture(9, 9, QImage::Format_ARGB32_Premultiplied);
    QVERIFY(isTakenDown([&](QPainter *painter) { painter->drawImage(0, 0, picture); }));
    const Draw others[] = {
        [](QPainter *painter) { painter->setPen(Qt::blue); },
        [](QPainter *painter) { painter->setRenderHint(QPainter::Antialiasing); },
        [](QPainter *painter) { painter->setOpacity(0.5); },
        [](QPainter *painter) { painter->setCompositionMode(QPainter::CompositionMode_Plus); },
        [](QPainter *painter) { painter->setClipRect(0, 0, 9, 9); },
        [](QPainter *painter) { painter->setBrush(QColor(255, 0, 0, 99)); },
        [](QPainter *painter) { painter->setBrush(Qt::Dense4Pattern); },
        [](QPainter *painter) { painter->translate(0.5, 0.0); },
        [](QPainter *painter) { painter->translate(0.0, 0.5); },
        [](QPainter *painter) { painter->scale(2.0, 1.0); },
        [](QPainter *painter) { painter->drawRect(QRectF(1.0, 1.0, 5.0, 5.0)); },
        [](QPainter *painter) { painter->drawEllipse(QRect(1, 1, 5, 5)); },
        [](QPainter *painter) { painter->drawLine(1, 1, 9, 9); },
        [&](QPainter *painter) { painter->drawImage(QRect(0, 0, 8, 9), picture); },
        [&](QPainter *painter) { painter->drawImage(QPointF(0.5, 0.0), picture); },
        [&](QPainter *painter) {
            painter->drawRect(QRect(1, 1, 5, 5));
            painter->drawImage(0, 0, picture);
        }};
    for (const Draw &other : others)
        QVERIFY2(!isTakenDown(other), qPrintable(QString::number(&other - others)));
}

QTEST_APPLESS_MAIN(tst_strokes)
#include "tst_strokes.moc"
