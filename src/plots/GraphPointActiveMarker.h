#pragma once

#include "common/Export.h"
#include "plots/GraphPointMarker.h"

#include <QRect>

// Marks a point with a vertical line and up to two lines of text.
class GRAPH_CHARTS_EXPORT GraphPointActiveMarker : public GraphPointMarker
{
    Q_OBJECT
    Q_PROPERTY(OrnData *firstLabels READ firstLabels WRITE setFirstLabels NOTIFY firstLabelsChanged)
    Q_PROPERTY(OrnData *secondLabels READ secondLabels WRITE setSecondLabels NOTIFY secondLabelsChanged)
    Q_PROPERTY(QColor secondLabelColor READ secondLabelColor WRITE setSecondLabelColor NOTIFY
                   secondLabelColorChanged)
    Q_PROPERTY(int secondLabelFontSize READ secondLabelFontSize WRITE setSecondLabelFontSize NOTIFY
                   secondLabelFontSizeChanged)

public:
    using GraphPointMarker::GraphPointMarker;

    OrnData *firstLabels() const { return m_firstLabels; }
    OrnData *secondLabels() const { return m_secondLabels; }
    QColor secondLabelColor() const { return m_secondLabelColor; }
    int secondLabelFontSize() const { return m_secondLabelFontSize; }

    void paint(QPainter *painter, int x, int y) override;

public slots:
    void setFirstLabels(OrnData *labels);
    void setSecondLabels(OrnData *labels);
    void setSecondLabelColor(const QColor &color);
    void setSecondLabelFontSize(int size);

signals:
    void firstLabelsChanged(OrnData *firstLabels);
    void secondLabelsChanged(OrnData *secondLabels);
    void secondLabelColorChanged(const QColor &secondLabelColor);
    void secondLabelFontSizeChanged(int secondLabelFontSize);

protected:
    // firstRect: what the first label occupies; of no height when there is none.
    virtual void drawFirstLabel(QPainter *painter, int x, int y, const QRect &firstRect);
    virtual void drawSecondLabel(QPainter *painter, int x, int y, const QRect &firstRect);

private slots:
    void firstLabelsValueChanged();
    void secondLabelsValueChanged();

private:
    QSize firstTextSize(QPainter *painter) const;
    QSize secondTextSize(QPainter *painter) const;
    QRect firstLabelRect(QPainter *painter, int x, int y) const;
    QRect centred(const QSize &text, int x, int top) const;

    QPointer<OrnData> m_firstLabels;
    QPointer<OrnData> m_secondLabels;
    QColor m_secondLabelColor = Qt::black;
    int m_secondLabelFontSize = 12;
};
