#pragma once

#include "common/Export.h"

#include <QColor>
#include <QObject>
#include <QPen>

class QPainter;

// What a scatter plot draws at each of its points. The plot hands over the facts of one point, then calls
// paint(), and goes on to the next point with the same object.
class GRAPH_CHARTS_EXPORT GraphPoint : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int pointSize READ pointSize WRITE setPointSize NOTIFY pointSizeChanged)
    Q_PROPERTY(bool isSelected READ isSelected WRITE setSelected NOTIFY selectedChanged)

public:
    explicit GraphPoint(QObject *parent = nullptr);

    int pointSize() const { return m_pointSize; }
    bool isSelected() const { return m_isSelected; }

    // x, y: the point in item pixels. Called on the render thread while the GUI thread waits.
    virtual void paint(QPainter *painter, int x, int y) = 0;

    void setPenColor(const QColor &color);
    void setLineWidth(int width) { m_lineWidth = width; }
    void setPointIndex(int index) { m_pointIndex = index; }
    // Distances in pixels from the point to the edges of the plot area; -1 leaves a margin as it is.
    void setMargins(int top, int right, int bottom, int left);

public slots:
    void setPointSize(int size);
    void setSelected(bool selected);

signals:
    void pointSizeChanged(int pointSize);
    void selectedChanged(bool isSelected);
    void pointChanged();

protected:
    QPen roundPen() const;

    // Bounded, so that offsets from a pixel never overflow.
    int lineWidth() const;
    int size() const;
    int marginLeft() const;
    int marginRight() const;
    int marginTop() const;
    int marginBottom() const;
    int pointIndex() const { return m_pointIndex; }

    void drawHorizontalLine(QPainter *painter, int x, int y) const;
    void drawVerticalLine(QPainter *painter, int x, int y) const;

private:
    QColor m_penColor = Qt::black;
    int m_lineWidth = 1;
    int m_pointSize = 5;
    int m_pointIndex = 0;
    bool m_isSelected = false;
    int m_marginLeft = 0;
    int m_marginRight = 0;
    int m_marginTop = 0;
    int m_marginBottom = 0;
};
