#pragma once

#include "common/Export.h"
#include "common/PixelMapping.h"
#include "view/base/AbstractPlot.h"

#include <QFont>
#include <QVector>

class PlotRegion;
class PlotRegions;

// What the plots of regions have in common: the look of the labels and of the fill.
class GRAPH_CHARTS_EXPORT RegionPlot : public AbstractPlot
{
    Q_OBJECT
    Q_PROPERTY(QFont labelFont READ labelFont WRITE setLabelFont NOTIFY labelFontChanged)
    Q_PROPERTY(QColor labelPen READ labelPen WRITE setLabelPen NOTIFY labelPenChanged)
    Q_PROPERTY(double fillOpacity READ fillOpacity WRITE setFillOpacity NOTIFY fillOpacityChanged)

public:
    explicit RegionPlot(QQuickItem *parent = nullptr);

    QFont labelFont() const { return m_labelFont; }
    QColor labelPen() const { return m_labelPen; }
    double fillOpacity() const { return m_fillOpacity; }

public slots:
    void setLabelFont(const QFont &font);
    void setLabelPen(const QColor &color);
    void setFillOpacity(double opacity);

signals:
    void labelFontChanged(QFont labelFont);
    void labelPenChanged(QColor labelPen);
    void fillOpacityChanged(double fillOpacity);

protected:
    struct Entry
    {
        int index = -1; // in the data
        const PlotRegion *region = nullptr;
    };

    // Null for data of another kind.
    PlotRegions *regions() const;
    // Those that overlap the visible x range, by begin; the begin and the end of each are finite.
    QVector<Entry> visibleRegions() const;
    QColor colorOf(const PlotRegion *region) const;
    // The row of the baseline.
    int baseRow(const graph::PixelMapping &mapping) const;

private:
    QFont m_labelFont;
    QColor m_labelPen = Qt::black;
    double m_fillOpacity = 0.375;
};
