#pragma once

#include "data/PlotData.h"
#include "kit/data/DataInput.h"
#include "kit/plots/DataExtent.h"
#include "kit/plots/LimitCheck.h"
#include "kit/plots/TracePoints.h"
#include "plots/GraphPlot.h"

#include <QVariant>

namespace graph {

// A line that samples are not to cross, and whether they do.
class GRAPH_CHARTS_EXPORT LimitLine : public GraphPlot, public ExtentSource
{
    Q_OBJECT
    Q_PROPERTY(QVariant positions READ positions WRITE setPositions NOTIFY positionsChanged)
    Q_PROPERTY(QVariant values READ values WRITE setValues NOTIFY valuesChanged)
    Q_PROPERTY(Kind kind READ kind WRITE setKind NOTIFY kindChanged)
    // Its own, which no document replaces.
    Q_PROPERTY(PlotData *plotData READ plotData WRITE refuseData NOTIFY valuesChanged)
    Q_PROPERTY(QObject *series READ givenSeries WRITE giveSeries NOTIFY seriesChanged)
    Q_PROPERTY(bool passed READ passed NOTIFY verdictChanged)
    Q_PROPERTY(double margin READ margin NOTIFY verdictChanged)
    Q_PROPERTY(double worstAt READ worstAt NOTIFY verdictChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ penColor WRITE setPenColor NOTIFY colorChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(double fillOpacity READ fillOpacity WRITE setFillOpacity NOTIFY fillOpacityChanged)

public:
    enum Kind : int { Upper, Lower };
    Q_ENUM(Kind)

    explicit LimitLine(QQuickItem *parent = nullptr);
    ~LimitLine() override;

    QVariant positions() const { return QVariant::fromValue(m_positions); }
    QVariant values() const { return QVariant::fromValue(m_values); }
    Kind kind() const { return m_kind; }
    PlotData *series() const { return m_series; }
    bool passed() const { return m_verdict.isPassed(); }
    double margin() const { return m_verdict.margin; }
    double worstAt() const { return m_verdict.worstAt; }
    QString name() const { return m_limit.label(); }
    int lineWidth() const { return m_lineWidth; }
    double fillOpacity() const { return m_fillOpacity; }

    void setPositions(const QVariant &positions);
    void setValues(const QVariant &values);
    // Both at once; no positions for one value that holds everywhere.
    void setLimit(const QVector<double> &positions, const QVector<double> &values);
    void setKind(Kind kind);
    void setSeries(PlotData *series) { giveSeries(series); }
    // Data, or a plot.
    QObject *givenSeries() const { return m_input.given(); }
    void giveSeries(QObject *series) { m_input.give(series); }
    bool hasWrittenSeries() const { return m_input.isWritten(); }
    bool hasPositionsOnly() const { return !m_positions.isEmpty() && m_values.isEmpty(); }
    // Whether a binding or a handler uses the verdict.
    bool isAsked() const;
    void setName(const QString &name);
    void setLineWidth(int width);
    void setFillOpacity(double opacity);

    DataExtent dataExtent() const override;
    DataExtent dataExtent(double xMin, double xMax) const override;

signals:
    void positionsChanged();
    void valuesChanged();
    void kindChanged();
    void seriesChanged();
    void verdictChanged();
    void nameChanged();
    void colorChanged();
    void lineWidthChanged();
    void fillOpacityChanged();

protected:
    void componentComplete() override;
    void paintPlot(const PlotFrame &frame) override;

private slots:
    void judge();
    void followScale(ValueAxis *axis);

private:
    void refuseData(PlotData *data);
    void useSeries(PlotData *series);
    bool holdsEverywhere() const { return m_positions.isEmpty() && m_values.size() == 1; }
    void applyLimit();
    QVector<QPointF> limitOver(double xMin, double xMax) const;
    LimitScales scales() const;

    TracePoints m_limit;
    QVector<double> m_positions;
    QVector<double> m_values;
    DataInput m_input{this, "series", [this](PlotData *series) {
                          useSeries(series);
                          return true;
                      }};
    QPointer<PlotData> m_series;
    LimitVerdict m_verdict;
    Kind m_kind = Upper;
    int m_lineWidth = 2;
    double m_fillOpacity = 0.12;
};

} // namespace graph
