#pragma once

#include "common/Export.h"
#include "data/PlotData.h"
#include "data/SampleSpan.h"
#include "view/base/AbstractPlot.h"

#include <QPointer>

// Fills the band between an upper and a lower trace, such as the maximum and minimum hold of a measurement.
class GRAPH_CHARTS_EXPORT AreaPlot : public AbstractPlot
{
    Q_OBJECT
    Q_PROPERTY(PlotData *maxData READ maxData WRITE setMaxData NOTIFY maxDataChanged)
    Q_PROPERTY(PlotData *minData READ minData WRITE setMinData NOTIFY minDataChanged)

public:
    explicit AreaPlot(QQuickItem *parent = nullptr);

    PlotData *maxData() const { return m_maxData; }
    PlotData *minData() const { return m_minData; }

public slots:
    void setMaxData(PlotData *data);
    void setMinData(PlotData *data);

signals:
    void maxDataChanged(PlotData *maxData);
    void minDataChanged(PlotData *minData);

protected:
    void paintPlot(const graph::PlotFrame &frame) override;

protected slots:
    void handlePlotChanged() override;

private slots:
    void connectData();

private:
    void replace(QPointer<PlotData> &envelope, PlotData *data);
    void fillPolygon(const graph::PlotFrame &frame, const graph::SampleSpan &upper,
                     const graph::SampleSpan &lower) const;

    QPointer<PlotData> m_maxData;
    QPointer<PlotData> m_minData;
};
