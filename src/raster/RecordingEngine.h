#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPen>
#include <QRect>
#include <QTransform>

namespace graph {

// The engine and the device of a painter whose work is taken down. A subclass takes what it can show again; anything
// else that is painted makes the record incomplete, and so does an opacity, a composition mode or a clip.
class RecordingEngine : public QPaintEngine, public QPaintDevice
{
public:
    explicit RecordingEngine(const QSize &size);

    bool isComplete() const { return m_isComplete; }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    QPaintEngine *paintEngine() const override { return const_cast<RecordingEngine *>(this); }
    void updateState(const QPaintEngineState &now) override;

    // Those for whole numbers call these.
    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;
    void drawRects(const QRectF *, int) override { refuse(); }
    void drawLines(const QLineF *, int) override { refuse(); }
    void drawEllipse(const QRectF &) override { refuse(); }
    void drawPath(const QPainterPath &) override { refuse(); }
    void drawPoints(const QPointF *, int) override { refuse(); }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { refuse(); }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { refuse(); }
    void drawTiledPixmap(const QRectF &, const QPixmap &, const QPointF &) override { refuse(); }
    void drawTextItem(const QPointF &, const QTextItem &) override { refuse(); }
    void drawImage(const QRectF &, const QImage &, const QRectF &, Qt::ImageConversionFlags) override
    {
        refuse();
    }

protected:
    int metric(PaintDeviceMetric metric) const override;

    void refuse() { m_isComplete = false; }
    const QRect &picture() const { return m_picture; }
    const QPen &pen() const { return m_pen; }
    const QTransform &transform() const { return m_transform; }

private:
    QRect m_picture;
    QPen m_pen;
    QTransform m_transform;
    bool m_isComplete = true;
};

} // namespace graph
