#pragma once

#include "common/Export.h"
#include "plots/GraphPointMarker.h"

// Marks a point with a framed text at the lower edge of the plot area.
class GRAPH_CHARTS_EXPORT GraphPointPictogramMarker : public GraphPointMarker
{
    Q_OBJECT
    Q_PROPERTY(OrnData *labels READ labels WRITE setLabels NOTIFY labelsChanged)

public:
    using GraphPointMarker::GraphPointMarker;

    OrnData *labels() const { return m_labels; }

    void paint(QPainter *painter, int x, int y) override;

public slots:
    void setLabels(OrnData *labels);

signals:
    void labelsChanged(OrnData *labels);

private slots:
    void labelsValueChanged();

private:
    void drawFramedText(QPainter *painter, int x, int y, const QString &text) const;

    QPointer<OrnData> m_labels;
};
