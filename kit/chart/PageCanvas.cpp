#include "kit/chart/Canvas.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>

namespace graph {

namespace {

void paintContent(QPainter *painter, const Placement &placement, bool smooth, const Canvas::Content &content)
{
    painter->save();
    painter->setClipRect(placement.clip, Qt::IntersectClip);
    painter->setTransform(placement.transform, true);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, smooth);
    content(painter);
    painter->restore();
}

class PngCanvas : public Canvas
{
public:
    PngCanvas(const QSizeF &size, double scale)
        : m_image((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied)
        , m_scale(scale)
    {
        m_image.fill(Qt::transparent);
    }

    void draw(const Placement &placement, bool smooth, const Content &content) override
    {
        if (m_image.isNull())
            return;
        if (placement.opacity >= 1.0) {
            paintOn(&m_image, placement, smooth, content);
            return;
        }
        // The content may set an opacity of its own.
        QImage layer(m_image.size(), m_image.format());
        layer.fill(Qt::transparent);
        paintOn(&layer, placement, smooth, content);
        QPainter painter(&m_image);
        painter.setOpacity(placement.opacity);
        painter.drawImage(0, 0, layer);
    }

    QByteArray finish() override
    {
        QByteArray file;
        QBuffer buffer(&file);
        buffer.open(QIODevice::WriteOnly);
        return m_image.save(&buffer, "PNG") ? file : QByteArray();
    }

private:
    void paintOn(QImage *image, const Placement &placement, bool smooth, const Content &content) const
    {
        QPainter painter(image);
        painter.scale(m_scale, m_scale);
        paintContent(&painter, placement, smooth, content);
    }

    QImage m_image;
    double m_scale;
};

class PainterCanvas : public Canvas
{
public:
    explicit PainterCanvas(QPainter *painter)
        : m_painter(painter)
    {
    }

    void draw(const Placement &placement, bool smooth, const Content &content) override
    {
        const double opacity = m_painter->opacity();
        m_painter->setOpacity(opacity * placement.opacity);
        paintContent(m_painter, placement, smooth, content);
        m_painter->setOpacity(opacity);
    }

    QByteArray finish() override { return {}; }

private:
    QPainter *m_painter;
};

class PdfCanvas : public PainterCanvas
{
public:
    PdfCanvas(const QSizeF &size, double scale)
        : PainterCanvas(&m_painter)
        , m_buffer(&m_file)
    {
        m_buffer.open(QIODevice::WriteOnly);
        m_writer = std::make_unique<QPdfWriter>(&m_buffer);
        // The screen's own, so that fonts in points keep their size beside everything else.
        const int resolution = qRound(QGuiApplication::primaryScreen()->logicalDotsPerInch());
        constexpr double pointsPerInch = 72.0;
        m_writer->setResolution(resolution);
        m_writer->setPageSize(QPageSize(size * scale * pointsPerInch / resolution, QPageSize::Point,
                                        QString(), QPageSize::ExactMatch));
        m_writer->setPageMargins(QMarginsF());
        m_painter.begin(m_writer.get());
        m_painter.scale(scale, scale);
    }

    QByteArray finish() override { return m_painter.end() ? m_file : QByteArray(); }

private:
    QByteArray m_file;
    QBuffer m_buffer;
    std::unique_ptr<QPdfWriter> m_writer;
    QPainter m_painter;
};

} // namespace

std::unique_ptr<Canvas> makePngCanvas(const QSizeF &size, double scale)
{
    return std::make_unique<PngCanvas>(size, scale);
}

std::unique_ptr<Canvas> makePainterCanvas(QPainter *painter)
{
    return std::make_unique<PainterCanvas>(painter);
}

std::unique_ptr<Canvas> makePdfCanvas(const QSizeF &size, double scale)
{
    return std::make_unique<PdfCanvas>(size, scale);
}

} // namespace graph
