#pragma once

#include "common/Export.h"
#include "cursors/GraphCursor.h"

#include <QObject>
#include <QPointer>
#include <QString>

// The reading of a cursor for one plot, attached to an item that shows it (a value label, a dot).
class GRAPH_CHARTS_EXPORT GraphCursorAttached : public QObject
{
    Q_OBJECT
    Q_PROPERTY(GraphCursor *cursor READ cursor NOTIFY cursorChanged)
    Q_PROPERTY(AbstractPlot *plot READ plot WRITE setPlot NOTIFY plotChanged)
    Q_PROPERTY(int index READ index NOTIFY indexChanged)
    Q_PROPERTY(int xPosOnScreen READ xPosOnScreen NOTIFY xPosOnScreenChanged)
    Q_PROPERTY(int yPosOnScreen READ yPosOnScreen NOTIFY yPosOnScreenChanged)
    Q_PROPERTY(double xValue READ xValue NOTIFY xValueChanged)
    Q_PROPERTY(double yValue READ yValue NOTIFY yValueChanged)
    Q_PROPERTY(QString formattedXValue READ formattedXValue NOTIFY formattedXValueChanged)
    Q_PROPERTY(QString formattedYValue READ formattedYValue NOTIFY formattedYValueChanged)
    Q_PROPERTY(bool peak READ peak NOTIFY peakChanged)

public:
    explicit GraphCursorAttached(QObject *parent = nullptr);

    GraphCursor *cursor() const { return m_cursor; }
    AbstractPlot *plot() const;
    int index() const { return m_index; }
    int xPosOnScreen() const { return m_xPosOnScreen; }
    int yPosOnScreen() const { return m_yPosOnScreen; }
    double xValue() const { return m_xValue; }
    double yValue() const { return m_yValue; }
    QString formattedXValue() const { return m_formattedXValue; }
    QString formattedYValue() const { return m_formattedYValue; }
    bool peak() const { return m_peak; }

    void setCursor(GraphCursor *cursor);
    void setPlot(AbstractPlot *plot);
    void setIndex(int index);
    void setPeak(bool peak);

signals:
    void cursorChanged();
    void plotChanged();
    void indexChanged();
    void xPosOnScreenChanged();
    void yPosOnScreenChanged();
    void xValueChanged();
    void yValueChanged();
    void formattedXValueChanged();
    void formattedYValueChanged();
    void peakChanged();

protected slots:
    void handlePlotsChanged();
    void handleXPosOnScreenChanged(int x);
    void handleYPosOnScreenChanged(int y = 0);
    void handleXValueChanged();
    void handleYValueChanged();

protected:
    // False: the readings are those of a horizontal cursor.
    bool m_followsX = true;

private:
    void connectX();
    void connectY();
    void setYPosOnScreen(int y);
    void updatePeak();
    void publishYValue(double value, const QString &formatted);

    QPointer<GraphCursor> m_cursor;
    QPointer<AbstractPlot> m_plot;
    int m_index = -1;
    int m_xPosOnScreen = 0;
    int m_yPosOnScreen = 0;
    double m_xValue = 0.0;
    double m_yValue = 0.0;
    QString m_formattedXValue;
    QString m_formattedYValue;
    bool m_peak = false;
};
