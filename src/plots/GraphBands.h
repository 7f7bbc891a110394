#pragma once

#include "common/Export.h"
#include "plots/RegionPlot.h"

#include <QImage>

#include <atomic>

// Draws regions as translucent bands with their names on top: the services of a band plan.
class GRAPH_CHARTS_EXPORT GraphBands : public RegionPlot
{
    Q_OBJECT
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(bool renderToImage READ renderToImage WRITE setRenderToImage NOTIFY renderToImageChanged)

public:
    using RegionPlot::RegionPlot;

    int lineWidth() const { return m_lineWidth; }
    bool renderToImage() const { return m_renderToImage; }

public slots:
    void setLineWidth(int width);
    void setRenderToImage(bool on);

signals:
    void lineWidthChanged(int lineWidth);
    void renderToImageChanged(bool renderToImage);

protected:
    void paintPlot(const graph::PlotFrame &frame) override;

protected slots:
    void handlePlotChanged() override;

private:
    struct Band
    {
        const PlotRegion *region;
        int left;
        int right;
        int base;
        int level;

        int height() const { return qAbs(level - base); }
        int top() const { return qMin(level, base); }
    };
    // All that the picture depends on, the data apart.
    struct Look
    {
        QSizeF size;
        double pixelRatio = 0.0;
        QRectF visible;
        double baseline = 0.0;
        QFont font;
        QColor labelPen;
        QColor penColor;
        double opacity = 0.0;
        int lineWidth = 0;
        QVector<int> styles; // no change of the data announces these

        bool operator==(const Look &other) const;
    };

    Look look(double pixelRatio) const;
    bool updateImage(const graph::PlotFrame &frame);
    void paintBands(QPainter *painter, const graph::PixelMapping &mapping);
    QVector<Band> bands(const graph::PixelMapping &mapping) const;
    void paintShape(QPainter *painter, const Band &band) const;
    void paintLabels(QPainter *painter, const QVector<Band> &bands);

    int m_lineWidth = 1;
    bool m_renderToImage = false;
    QImage m_image;
    Look m_imageLook;
    std::atomic<bool> m_dataChanged{true}; // paint may run on another thread
};
