#pragma once

#include "common/Export.h"
#include "data/SampleHistory.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QStringList>

#include <optional>

class AbstractPlot;
class GraphCursor;
class PlotData;
class ValueAxis;

namespace graph {
class CursorMarkers;
}

// A fixed reference position on a cursor: a sample of the primary plot's data whose distance to the cursor is
// shown. The cursor paints it.
class GRAPH_CHARTS_EXPORT GraphMarker : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int posIndex READ posIndex WRITE setPosIndex NOTIFY posIndexChanged)
    Q_PROPERTY(double posValue READ posValue WRITE setPosValue NOTIFY posValueChanged)
    Q_PROPERTY(int posOnScreen READ posOnScreen WRITE setPosOnScreen NOTIFY posOnScreenChanged)
    Q_PROPERTY(QString formattedPosValue READ formattedPosValue NOTIFY formattedPosValueChanged)
    Q_PROPERTY(QString formattedDelta READ formattedDeltaX NOTIFY formattedDeltaXChanged)
    Q_PROPERTY(double xValue READ posValue NOTIFY posValueChanged)
    Q_PROPERTY(double yValue READ yValue NOTIFY yValueChanged)
    Q_PROPERTY(int xPosOnScreen READ posOnScreen NOTIFY posOnScreenChanged)
    Q_PROPERTY(int yPosOnScreen READ yPosOnScreen NOTIFY yPosOnScreenChanged)
    Q_PROPERTY(QString formattedXValue READ formattedPosValue NOTIFY formattedPosValueChanged)
    Q_PROPERTY(QString formattedYValue READ formattedYValue NOTIFY formattedYValueChanged)
    Q_PROPERTY(QString formattedDeltaX READ formattedDeltaX NOTIFY formattedDeltaXChanged)
    Q_PROPERTY(QString formattedDeltaY READ formattedDeltaY NOTIFY formattedDeltaYChanged)
    Q_PROPERTY(QStringList formattedDeltasY READ formattedDeltasY NOTIFY formattedDeltasYChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(bool showDelta READ showDelta WRITE setShowDelta NOTIFY showDeltaChanged)
    Q_PROPERTY(int deltaY READ deltaY WRITE setDeltaY NOTIFY deltaYChanged)
    Q_PROPERTY(QQuickItem *label READ label WRITE setLabel NOTIFY labelChanged)
    Q_CLASSINFO("DefaultProperty", "label")

public:
    explicit GraphMarker(QObject *parent = nullptr);

    int posIndex() const { return m_posIndex; }
    double posValue() const { return m_posValue; }
    int posOnScreen() const { return m_posOnScreen; }
    QString formattedPosValue() const { return m_formattedPosValue; }
    double yValue() const { return m_yValue; }
    int yPosOnScreen() const { return m_yPosOnScreen; }
    QString formattedYValue() const { return readTexts().y; }
    QString formattedDeltaX() const { return m_formattedDeltaX; }
    QString formattedDeltaY() const { return readTexts().deltaY; }
    QStringList formattedDeltasY() const { return readTexts().deltasY; }
    QColor color() const { return m_color; }
    bool isVisible() const { return m_visible; }
    // Whether visible was written, be it false.
    bool hasWrittenVisible() const { return m_hasWrittenVisible; }
    // A written value that the data do not reach; the marker is hidden.
    std::optional<double> awaitedValue() const { return m_awaitedValue; }
    bool showDelta() const { return m_showDelta; }
    int deltaY() const { return m_deltaY; }
    QQuickItem *label() const { return m_label; }

    AbstractPlot *primaryPlot() const;
    PlotData *primarySeries() const;
    ValueAxis *primaryAxis() const;

    // Where the document gives none.
    void setDefaultColor(const QColor &color);

public slots:
    void setPosValue(double value);
    void setPosIndex(int index);
    void setPosOnScreen(int pixel);
    void setColor(QColor color);
    void setVisible(bool visible);
    void setShowDelta(bool show);
    void setDeltaY(int deltaY);
    void setLabel(QQuickItem *label);

signals:
    void posIndexChanged();
    void posValueChanged();
    void posOnScreenChanged(int posOnScreen);
    void formattedPosValueChanged();
    void yValueChanged();
    void yPosOnScreenChanged();
    void formattedYValueChanged();
    void formattedDeltaXChanged();
    void formattedDeltaYChanged();
    void formattedDeltasYChanged();
    void colorChanged();
    void visibleChanged();
    void showDeltaChanged();
    void deltaYChanged();
    void labelChanged();

protected slots:
    void setCursor(GraphCursor *cursor);
    void handleDeltaChanged();
    void update();

private:
    // The list that a cursor takes the marker into.
    friend class graph::CursorMarkers;

    // The value that it was given last, or that of its sample.
    void placeAgain();
    // New data may have the sample that a value waits for.
    void placeIfAwaited();
    // The index of a sample of data that scroll.
    void followScroll();
    void hideForLackOfSample();
    void show(bool visible);
    void placeOnScreen();
    void showColor(const QColor &color);
    // What is written about the values. To format all of it takes longer than anything else that a cursor does.
    struct Texts
    {
        QString y;
        QString deltaY;
        QStringList deltasY;
    };

    bool hasDelta() const;
    bool areTextsHeard() const;
    const Texts &readTexts() const;
    Texts foundTexts() const;
    QString distanceText(const PlotData &data) const;
    QStringList seriesDeltas() const;

    int m_posIndex = -1;
    double m_posValue = 0.0;
    QString m_formattedPosValue;
    int m_posOnScreen = 0;
    double m_yValue = 0.0;
    int m_yPosOnScreen = 0;
    QColor m_color = Qt::darkYellow;
    bool m_hasOwnColor = false;
    bool m_hasWrittenVisible = false;
    bool m_visible = false;
    bool m_hiddenForLackOfSample = false; // by its own doing: the next valid place shows it again
    std::optional<double> m_awaitedValue; // no sample had it yet
    bool m_fellOut = false;               // with its sample; until it is placed elsewhere
    QPointer<const PlotData> m_placedData;
    graph::SampleHistory m_placedHistory;
    bool m_showDelta = true;
    int m_deltaY = 100;
    QString m_formattedDeltaX;
    mutable Texts m_texts;
    mutable bool m_areTextsOld = false; // until somebody asks, as nobody listens
    QPointer<QQuickItem> m_label;
    QPointer<GraphCursor> m_cursor;
};
