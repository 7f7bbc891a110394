#include "kit/chart/Canvas.h"

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLibrary>
#include <QPainter>
#include <QScreen>
#include <QStringList>

#include <cmath>

namespace graph {

namespace {

using MakeDevice = QPaintDevice *(*)(QIODevice *output, int width, int height, int resolution);

MakeDevice loadMaker(const QStringList &importPaths, QString *error)
{
    for (const QString &path : importPaths) {
        const QString file = path + QLatin1String("/graph_kit/libgraph_svg.so");
        if (!QFileInfo::exists(file))
            continue;
        QLibrary library(file);
        if (const auto maker = reinterpret_cast<MakeDevice>(library.resolve("graphSvgDevice")))
            return maker;
        *error = library.errorString();
        return nullptr;
    }
    *error = QStringLiteral("graph_kit/libgraph_svg.so, which writes it, is not installed");
    return nullptr;
}

// Qt's generator knows no clipping, and has one state at a time: each content is a document of its own first,
// whose inside then becomes a clipped group of the whole.
class SvgCanvas : public Canvas
{
public:
    SvgCanvas(MakeDevice makeDevice, const QSizeF &size, double scale)
        : m_makeDevice(makeDevice)
        , m_size(size)
        , m_scale(scale)
    {
    }

    void draw(const Placement &placement, bool smooth, const Content &content) override
    {
        const QByteArray piece = document(placement, smooth, content);
        const int definitions = piece.indexOf("<defs>");
        const int end = piece.indexOf("</defs>");
        const int last = piece.lastIndexOf("</svg>");
        if (definitions < 0 || end < definitions || last < end)
            return;
        const QByteArray number = QByteArray::number(++m_count);
        m_definitions += "<clipPath id=\"clip" + number + "\">" + rectangle(placement.clip) +
                         "</clipPath>\n" + renamed(piece.mid(definitions + 6, end - definitions - 6), number);
        m_body += "<g clip-path=\"url(#clip" + number + ")\"";
        if (placement.opacity < 1.0)
            m_body += " opacity=\"" + QByteArray::number(placement.opacity) + '"';
        if (!smooth)
            m_body += " shape-rendering=\"crispEdges\"";
        m_body += ">" + renamed(piece.mid(end + 7, last - end - 7), number) + "</g>\n";
    }

    QByteArray finish() override
    {
        const QByteArray width = QByteArray::number(m_size.width());
        const QByteArray height = QByteArray::number(m_size.height());
        return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
               "<svg width=\"" +
               QByteArray::number(m_size.width() * m_scale) + "\" height=\"" +
               QByteArray::number(m_size.height() * m_scale) + "\" viewBox=\"0 0 " + width + ' ' + height +
               "\" xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
               "version=\"1.2\" "
               "baseProfile=\"tiny\">\n<defs>\n" +
               m_definitions + "</defs>\n" + m_body + "</svg>\n";
    }

private:
    QByteArray document(const Placement &placement, bool smooth, const Content &content) const
    {
        QByteArray piece;
        QBuffer buffer(&piece);
        buffer.open(QIODevice::WriteOnly);
        const std::unique_ptr<QPaintDevice> device(
            m_makeDevice(&buffer, int(std::ceil(m_size.width())), int(std::ceil(m_size.height())),
                         qRound(QGuiApplication::primaryScreen()->logicalDotsPerInch())));
        QPainter painter(device.get());
        painter.setTransform(placement.transform);
        painter.setRenderHint(QPainter::Antialiasing, smooth);
        content(&painter);
        painter.end();
        return piece;
    }

    static QByteArray rectangle(const QRectF &rect)
    {
        return "<rect x=\"" + QByteArray::number(rect.x()) + "\" y=\"" + QByteArray::number(rect.y()) +
               "\" width=\"" + QByteArray::number(rect.width()) + "\" height=\"" +
               QByteArray::number(rect.height()) + "\"/>";
    }

    // Gradients are numbered from 1 in each piece.
    static QByteArray renamed(QByteArray piece, const QByteArray &number)
    {
        piece.replace("id=\"gradient", "id=\"gradient" + number + '_');
        return piece.replace("url(#gradient", "url(#gradient" + number + '_');
    }

    MakeDevice m_makeDevice;
    QSizeF m_size;
    double m_scale;
    int m_count = 0;
    QByteArray m_definitions;
    QByteArray m_body;
};

} // namespace

std::unique_ptr<Canvas> makeSvgCanvas(const QSizeF &size, double scale, const QStringList &importPaths,
                                      QString *error)
{
    const MakeDevice makeDevice = loadMaker(importPaths, error);
    return makeDevice ? std::make_unique<SvgCanvas>(makeDevice, size, scale) : nullptr;
}

} // namespace graph
