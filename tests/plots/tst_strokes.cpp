#include "plots/Strokes.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QtTest>

#include <random>

class tst_strokes : public QObject
{
    Q_OBJECT

private slots:
    void uprightLines();
    void linePaths();

private:
    int whole(int low, int high) { return std::uniform_int_distribution<>(low, high)(m_random); }
    bool oneIn(int n) { return whole(1, n) == 1; }

    std::mt19937 m_random{11};
};

// Random strokes, as plots have them and as they had better not be: of any length and direction, beside the picture,
// through wide, thin and translucent pens, shifted, clipped, scaled and smoothed.
void tst_strokes::uprightLines()
{
    const QSize size(61, 47);
    constexpr int far = 1 << 24;
    for (int round = 0; round < 4000; ++round) {
        QVector<QLine> lines(whole(0, 60));
        const bool areColumns = oneIn(2);
        for (int i = 0; i < lines.size(); ++i) {
            QLine &line = lines[i];
            const int x = areColumns && !oneIn(20) ? i : whole(-4, size.width() + 4);
            const int y = areColumns ? whole(30, 40) : whole(-6, size.height() + 6);
            const int end = oneIn(8) ? y : oneIn(20) ? (oneIn(2) ? far : -far) : whole(-6, size.height() + 6);
            line = QLine(x, y, x, end);
        }
        QPen pen(QColor(whole(0, 255), whole(0, 255), whole(0, 255), oneIn(2) ? 255 : whole(0, 255)));
        pen.setWidth(whole(0, oneIn(10) ? 17 : 5));
        pen.setCapStyle(oneIn(20) ? Qt::SquareCap : Qt::FlatCap);
        const QPoint shift = oneIn(2) ? QPoint(1, 1) : QPoint();
        const double fraction = oneIn(10) ? 0.5 : 0.0;
        const double scale = oneIn(10) ? 1.5 : 1.0;
        const bool smooth = oneIn(20);
        const bool clipped = oneIn(5);
        const double opacity = oneIn(10) ? 0.5 : 1.0;

        const auto picture = [&](auto draw) {
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
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
                                 .arg(round).arg(pen.width()).arg(pen.color().alpha()).arg(shift.x())
                                 .arg(fraction).arg(scale)));
        }
    }
}

// Paths of ascending x, long enough to be divided: steep and flat, with gaps and lone points, reaching out of the picture
// a little or beyond what the engine can hold.
void tst_strokes::linePaths()
{
    for (int round = 0; round < 3000; ++round) {
        const int farthest = oneIn(8) ? 1 << whole(10, 24) : 60;
        const int steepest = oneIn(4) ? 3 : farthest;
        const int widestStep = oneIn(3) ? 1 : 7;
        const int gap = whole(1, 3) == 1 ? whole(1, 4) : 1000;
        QPainterPath path(QPointF(whole(-9, 9), whole(0, 40)));
        for (int i = whole(2, 90); i > 0; --i) {
            const QPointF last = path.currentPosition();
            const double y = qBound(-1.0 * farthest, last.y() + whole(-steepest, steepest), 1.0 * farthest);
            const QPointF next(last.x() + whole(0, widestStep), oneIn(9) ? whole(-9, 60) : y);
            if (oneIn(gap))
                path.moveTo(next);
            else
                path.lineTo(next);
        }
        QPen pen(QColor(10, 200, 30, oneIn(3) ? 120 : 255));
        pen.setWidth(whole(0, oneIn(3) ? 17 : 5));
        pen.setCapStyle(Qt::FlatCap);
        const auto picture = [&](auto draw) {
            QImage image(101, 47, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.translate(1, 1);
            painter.setPen(pen);
            draw(&painter);
            painter.drawRect(20, 20, 9, 9);
            return image;
        };
        if (picture([&](QPainter *painter) { graph::drawLinePath(painter, path); })
            != picture([&](QPainter *painter) { painter->strokePath(path, pen); }))
            QFAIL(qPrintable(QStringLiteral("round %1: pen %2, %3 points, up to row %4, gaps one in %5")
                                 .arg(round).arg(pen.width()).arg(path.elementCount()).arg(farthest).arg(gap)));
    }
}

QTEST_MAIN(tst_strokes)
#include "tst_strokes.moc"
