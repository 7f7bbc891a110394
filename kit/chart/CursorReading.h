#pragma once

#include "kit/chart/CursorText.h"
#include "axis/ValueAxis.h"
#include "view/base/AbstractPlot.h"

#include <QPointF>
#include <QTimer>

#include <limits>

namespace graph {

class WaterfallPlot;

// The reading of one plot at a cursor, for CursorReadout.qml.
class GRAPH_CHARTS_EXPORT CursorReading : public CursorText
{
    Q_OBJECT
    Q_PROPERTY(AbstractPlot *plot READ plot WRITE setPlot NOTIFY plotChanged)
    Q_PROPERTY(bool readsLevel READ readsLevel NOTIFY plotChanged)
    Q_PROPERTY(double levelY READ levelY WRITE setLevelY NOTIFY levelYChanged)
    Q_PROPERTY(double reading READ reading NOTIFY readingChanged)
    Q_PROPERTY(QQuickItem *dot READ dot WRITE setDot NOTIFY partsChanged)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize NOTIFY fontSizeChanged)
    Q_PROPERTY(double topInset READ topInset WRITE setTopInset NOTIFY topInsetChanged)
    Q_PROPERTY(int interval READ interval WRITE setInterval NOTIFY intervalChanged)
    Q_PROPERTY(bool shown READ isShown NOTIFY placeChanged)
    Q_PROPERTY(double crossingX READ crossingX NOTIFY placeChanged)
    Q_PROPERTY(double crossingY READ crossingY NOTIFY placeChanged)
    Q_PROPERTY(double labelHeight READ labelHeight NOTIFY placeChanged)
    Q_PROPERTY(double wantedY READ wantedY NOTIFY placeChanged)
    Q_PROPERTY(double labelY READ labelY NOTIFY placeChanged)

public:
    struct Place
    {
        bool isShown = false;
        QPointF crossing;
        double width = 0.0;
        double height = 0.0;
        double wantedY = 0.0; // above the crossing, where a peak leaves room; below it at the top of the plot
        double labelX = 0.0;
        double labelY = 0.0;

        bool operator==(const Place &other) const;
    };

    explicit CursorReading(QQuickItem *parent = nullptr);

    AbstractPlot *plot() const { return m_plot; }
    bool readsLevel() const;
    double levelY() const { return m_levelY; }
    double reading() const;
    QQuickItem *dot() const { return m_dot; }
    int fontSize() const { return m_fontSize; }
    double topInset() const { return m_topInset; }
    int interval() const { return m_interval; }
    bool isShown() const { return freshPlace().isShown; }
    double crossingX() const { return freshPlace().crossing.x(); }
    double crossingY() const { return freshPlace().crossing.y(); }
    double labelHeight() const { return freshPlace().height; }
    double wantedY() const { return freshPlace().wantedY; }
    double labelY() const { return freshPlace().labelY; }

    void setPlot(AbstractPlot *plot);
    void setLevelY(double y);
    void setDot(QQuickItem *dot);
    void setFontSize(int size);
    void setTopInset(double inset);
    void setInterval(int milliseconds);

    void read() override;
    void show() override;
    void tell() override;
    std::optional<Wish> wish() const override;
    void placeLabel(const QPointF &place) override
    {
        m_place.labelX = place.x();
        m_place.labelY = place.y();
    }

signals:
    void plotChanged();
    void levelYChanged();
    void readingChanged();
    void fontSizeChanged();
    void topInsetChanged();
    void intervalChanged();
    void placeChanged();

private:
    const WaterfallPlot *waterfall() const;
    const Place &freshPlace() const;
    void followAxis();
    double columnOfSample(const GraphCursor &cursor) const;
    void readValue(const GraphCursor &cursor, int index);
    QString textOf(const GraphCursor &cursor, int index) const;
    QString rowText() const;
    void passOn(double cursorValue);

    QPointer<AbstractPlot> m_plot;
    QPointer<ValueAxis> m_axis; // vertical, of the plot
    QPointer<QQuickItem> m_dot;
    double m_levelY = std::numeric_limits<double>::quiet_NaN();
    double m_reading = std::numeric_limits<double>::quiet_NaN();
    double m_toldReading = std::numeric_limits<double>::quiet_NaN();
    int m_fontSize = 14;
    double m_topInset = 0.0;
    int m_interval = 0;
    Place m_place;
    Place m_toldPlace;
    double m_writtenAt = std::numeric_limits<double>::quiet_NaN(); // the cursor
    QTimer m_pause;
};

} // namespace graph
