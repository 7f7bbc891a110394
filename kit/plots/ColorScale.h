#pragma once

#include "common/Export.h"
#include "common/QtVersion.h"
#include "kit/plots/ScaleTicks.h"
#include "view/base/AbstractPlot.h"

#include <QPointer>
#include <QQuickPaintedItem>

namespace graph {

class WaterfallPlot;

// The colours of a plot with their levels, as a bar with labels.
class GRAPH_CHARTS_EXPORT ColorScale : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(AbstractPlot *plot READ plot WRITE setPlot NOTIFY plotChanged)
    Q_PROPERTY(bool draggable READ isDraggable WRITE setDraggable NOTIFY draggableChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize NOTIFY fontSizeChanged)
    Q_PROPERTY(int barWidth READ barWidth WRITE setBarWidth NOTIFY barWidthChanged)

public:
    explicit ColorScale(QQuickItem *parent = nullptr);

    AbstractPlot *plot() const { return m_plot; }
    bool isDraggable() const { return m_draggable; }
    QColor textColor() const { return m_textColor; }
    int fontSize() const { return m_fontSize; }
    int barWidth() const { return m_barWidth; }

    void setPlot(AbstractPlot *plot);
    void setDraggable(bool draggable);
    void setTextColor(const QColor &color);
    void setFontSize(int size);
    void setBarWidth(int width);
    // Of a theme: they count until the document writes others.
    void setDefaultLook(const QColor &textColor, const QFont &font);

    void paint(QPainter *painter) override;

signals:
    void plotChanged();
    void draggableChanged();
    void textColorChanged();
    void fontSizeChanged();
    void barWidthChanged();

protected:
    void GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private slots:
    void handlePlotGone();
    void handleLabelsChanged();

private:
    enum class Grab { None, Top, Middle, Bottom };

    struct Label
    {
        double row;
        QString text;
    };

    WaterfallPlot *waterfall() const;
    QVector<Label> levelLabels(const WaterfallPlot &plot) const;
    QVector<Label> stepLabels() const;
    void measureAgain();
    QRect bar() const;
    QFont font() const;
    // The place of a row on the bar, 0 at its bottom and 1 at its top.
    double placeAt(double row) const;
    void drag(double place);
    void paintLevels(QPainter *painter, const WaterfallPlot &plot) const;
    void paintSteps(QPainter *painter) const;
    void paintLabel(QPainter *painter, const Label &label) const;

    QPointer<AbstractPlot> m_plot;
    QColor m_textColor{Qt::gray};
    QString m_fontFamily;
    int m_fontSize = 12;
    bool m_hasTextColor = false; // that the document wrote
    bool m_hasFontSize = false;
    int m_barWidth = 14;
    bool m_draggable = true;
    Grab m_grab = Grab::None;
    double m_grabbedLevel = 0.0;
};

} // namespace graph
