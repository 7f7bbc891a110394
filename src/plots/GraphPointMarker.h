#pragma once

#include "common/Export.h"
#include "platform/bus/OrnData.h"
#include "plots/GraphPoint.h"

#include <QFont>
#include <QPointer>

#include <optional>

// A vertical line at the point; the base of the markers that add labels and icons taken from the bus.
class GRAPH_CHARTS_EXPORT GraphPointMarker : public GraphPoint
{
    Q_OBJECT
    Q_PROPERTY(QColor labelColor READ labelColor WRITE setLabelColor NOTIFY labelColorChanged)
    Q_PROPERTY(int labelFontSize READ labelFontSize WRITE setLabelFontSize NOTIFY labelFontSizeChanged)

public:
    using GraphPoint::GraphPoint;

    QColor labelColor() const { return m_labelColor; }
    int labelFontSize() const { return m_labelFontSize; }

    // Of a chart: its size in pixels counts until a size in points is written.
    void setDefaultFont(const QFont &font);

    void paint(QPainter *painter, int x, int y) override;

public slots:
    void setLabelColor(const QColor &color);
    void setLabelFontSize(int size);

signals:
    void labelColorChanged(const QColor &labelColor);
    void labelFontSizeChanged(int labelFontSize);

protected:
    void drawMarkerLine(QPainter *painter, int x, int y) const;
    // Sets colour and font. False for a size at which no text can be written.
    bool setTextStyle(QPainter *painter, const QColor &color, int fontSize) const;

    // Stores the object and connects its changes, its destruction included, to the slot. False when it was
    // stored before.
    bool follow(QPointer<OrnData> &stored, OrnData *data, const char *slot);
    // The value that belongs to the point being drawn; invalid when there is none.
    QVariant pointValue(const OrnData *data) const;

private:
    static constexpr int defaultFontSize = 12;

    QColor m_labelColor = Qt::black;
    int m_labelFontSize = defaultFontSize;
    std::optional<QFont> m_defaultFont;
};
