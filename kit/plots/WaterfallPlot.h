#pragma once

#include "data/PlotSeries.h"
#include "kit/data/DataInput.h"
#include "kit/plots/DataExtent.h"
#include "kit/plots/FollowedLevels.h"
#include "kit/plots/WaterfallRaster.h"
#include "view/base/AbstractPlot.h"

namespace graph {

// Rows of levels over time, as colours: the newest at one end, the others behind it.
class GRAPH_CHARTS_EXPORT WaterfallPlot : public AbstractPlot, public ExtentSource
{
    Q_OBJECT
    Q_PROPERTY(int rows READ rows WRITE setRows NOTIFY rowsChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QVariant start READ start WRITE setStart NOTIFY startChanged)
    Q_PROPERTY(double interval READ interval WRITE setInterval NOTIFY intervalChanged)
    Q_PROPERTY(double rowInterval READ rowInterval WRITE setRowInterval NOTIFY rowIntervalChanged)
    // Its own, which no document replaces.
    Q_PROPERTY(PlotData *plotData READ plotData WRITE refuseData NOTIFY readRowChanged)
    Q_PROPERTY(QObject *series READ givenSeries WRITE giveSeries NOTIFY seriesChanged)
    Q_PROPERTY(QVariant colorMap READ colorMap WRITE setColorMap NOTIFY colorMapChanged)
    Q_PROPERTY(double from READ from WRITE setFrom RESET resetFrom NOTIFY levelsChanged)
    Q_PROPERTY(double to READ to WRITE setTo RESET resetTo NOTIFY levelsChanged)
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    Q_PROPERTY(Direction direction READ direction WRITE setDirection NOTIFY directionChanged)
    Q_PROPERTY(int readRow READ readRow WRITE setReadRow NOTIFY readRowChanged)

public:
    enum Direction : int { Down, Up };
    Q_ENUM(Direction)

    explicit WaterfallPlot(QQuickItem *parent = nullptr);
    ~WaterfallPlot() override;

    int rows() const { return m_rows.capacity(); }
    int count() const { return m_rows.count(); }
    double start() const { return m_place.start; }
    double interval() const { return m_place.interval; }
    double rowInterval() const { return std::abs(m_place.rowStep); }
    PlotData *series() const { return m_series; }
    QVariant colorMap() const { return m_colorMap; }
    double from() const { return m_levels.levels().from; }
    double to() const { return m_levels.levels().to; }
    QString unit() const { return m_unit; }
    Direction direction() const { return m_direction; }
    int readRow() const { return m_readRow; }
    const ColorMap &colors() const { return m_colors; }

    void setRows(int rows);
    void setStart(double start);
    void setStart(const QVariant &start);
    void setInterval(double interval);
    void setRowInterval(double interval);
    void setSeries(PlotData *series) { giveSeries(series); }
    // Data, or a plot.
    QObject *givenSeries() const { return m_input.given(); }
    void giveSeries(QObject *series) { m_input.give(series); }
    void setColorMap(const QVariant &map);
    void setFrom(double level);
    void setTo(double level);
    void resetFrom();
    void resetTo();
    void setUnit(const QString &unit);
    void setDirection(Direction direction);
    void setReadRow(int row);

    void addRow(const double *levels, int count);
    void addRow(const QVector<double> &levels) { addRow(levels.constData(), int(levels.size())); }
    void addRow(std::initializer_list<double> levels) { addRow(QVector<double>(levels)); }
    Q_INVOKABLE void addRow(const QVariant &levels);
    Q_INVOKABLE void clear();
    Q_INVOKABLE double levelAt(double x, double y) const;
    Q_INVOKABLE int rowAt(double y) const;

    DataExtent dataExtent() const override;
    DataExtent dataExtent(double, double) const override { return dataExtent(); }
    bool fillsExtent() const override { return true; }

    // Without an axis all rows and columns are shown.
    double minVisibleX() const override;
    double maxVisibleX() const override;
    double visibleRangeX() const override;
    double minVisibleY() const override;
    double maxVisibleY() const override;
    double visibleRangeY() const override;

signals:
    void rowsChanged();
    void countChanged();
    void startChanged();
    void intervalChanged();
    void rowIntervalChanged();
    void seriesChanged();
    void colorMapChanged();
    void levelsChanged();
    void unitChanged();
    void directionChanged();
    void readRowChanged();

protected:
    void paintPlot(const PlotFrame &frame) override;

private slots:
    void takeSeries();

private:
    void refuseData(PlotData *data);
    void useSeries(PlotData *series);
    void placeRows(double interval, Direction direction);
    void followLevels();
    void tellOfRoom();
    void handleLevels(bool areChanged);
    bool isLevel(const char *property, double level) const;
    void showReadRow();

    WaterfallRows m_rows;
    WaterfallPlace m_place;
    FollowedLevels m_levels;
    WaterfallRaster m_raster;
    QVariant m_colorMap{QStringLiteral("viridis")};
    ColorMap m_colors;
    DataInput m_input{this, "series", [this](PlotData *series) {
                          useSeries(series);
                          return true;
                      }};
    QPointer<PlotData> m_series;
    PlotSeries m_read; // the row that a cursor reads
    QString m_unit;
    Direction m_direction = Down;
    int m_readRow = 0;
};

} // namespace graph
