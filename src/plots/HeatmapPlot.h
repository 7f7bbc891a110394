#pragma once

#include "common/Export.h"
#include "plots/HeatmapFile.h"
#include "view/base/AbstractPlot.h"

#include <QImage>
#include <QTimer>

#include <array>
#include <memory>
#include <mutex>
#include <vector>

// Spectrum over time as a coloured grid: how often each level was seen at each frequency. The grid comes from
// files that another process writes; files that have been read, and older ones, are deleted.
class GRAPH_CHARTS_EXPORT HeatmapPlot : public AbstractPlot
{
    Q_OBJECT
    Q_PROPERTY(int offset READ offset WRITE setOffset)
    Q_PROPERTY(bool enabled READ isMapEnabled WRITE setMapEnabled)
    Q_PROPERTY(QString units READ units WRITE setUnits)
    Q_PROPERTY(QString dataFilePath READ dataFilePath WRITE setDataFilePath NOTIFY dataFilePathChanged)
    Q_PROPERTY(int testPointState READ testPointState WRITE setTestPointState NOTIFY testPointStateChanged)
    Q_PROPERTY(QString dataDirectory READ dataDirectory WRITE setDataDirectory)

public:
    explicit HeatmapPlot(QQuickItem *parent = nullptr);

    int offset() const { return m_offset; }
    bool isMapEnabled() const { return m_enabled; }
    QString units() const { return m_units; }
    QString dataFilePath() const { return m_dataFilePath; }
    int testPointState() const { return m_testPointState; }
    // By code; the first is that of cells without one.
    static const std::vector<unsigned int> &colors() { return m_heatMapColors; }
    QString dataDirectory() const { return m_dataDirectory; }

    double framebufferShift() const override;

    // A level in dBmV in the chosen unit.
    Q_INVOKABLE double dBmVLevelConversion(double level) const;

public slots:
    void setOffset(int offset);
    void setMapEnabled(bool enabled);
    void setUnits(const QString &units);
    void setDataFilePath(const QString &path);
    void setTestPointState(int state);
    void setDataDirectory(const QString &directory);

signals:
    void dataFilePathChanged();
    void testPointStateChanged();

protected:
    bool isPaintable(const graph::PixelMapping &mapping) const override;
    void paintPlot(const graph::PlotFrame &frame) override;
    bool paintsStrokesOnly() const override;

private slots:
    void drawHeatmap();

private:
    void readDataFromFile(const QString &path);
    void setHeatmap(std::shared_ptr<const graph::Heatmap> heatmap);
    std::shared_ptr<const graph::Heatmap> heatmap() const;
    void draw(const graph::PlotFrame &frame);

    static const std::vector<unsigned int> m_heatMapColors;

    int m_offset = 0;
    bool m_enabled = true;
    QString m_units;
    QString m_dataFilePath;
    int m_testPointState = 0;
    QString m_dataDirectory{QStringLiteral("/dev/")};
    // Replaced as a whole, so that a paint on another thread keeps the map it started with, without a copy.
    std::shared_ptr<const graph::Heatmap> m_heatmap;
    mutable std::mutex m_dataMutex;
    QTimer m_redrawTimer{this};
    // In turns: the scene may still show the last one.
    std::array<QImage, 2> m_images;
    std::mutex m_imageMutex;
};
