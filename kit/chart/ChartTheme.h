#pragma once

#include "common/Export.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QVariantList>

namespace graph {

// The colours and the font of a chart. A theme of one's own starts from the dark one.
class GRAPH_CHARTS_EXPORT ChartTheme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor background READ background WRITE setBackground NOTIFY changed)
    Q_PROPERTY(QColor plotBackground READ plotBackground WRITE setPlotBackground NOTIFY changed)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor NOTIFY changed)
    Q_PROPERTY(QColor minorGridColor READ minorGridColor WRITE setMinorGridColor NOTIFY changed)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY changed)
    Q_PROPERTY(QVariantList traceColors READ traceColors WRITE setTraceColors NOTIFY changed)
    Q_PROPERTY(QColor cursorColor READ cursorColor WRITE setCursorColor NOTIFY changed)
    Q_PROPERTY(QVariantList markerColors READ markerColors WRITE setMarkerColors NOTIFY changed)
    Q_PROPERTY(QString fontFamily READ fontFamily WRITE setFontFamily NOTIFY changed)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize NOTIFY changed)
    Q_PROPERTY(int gridWidth READ gridWidth WRITE setGridWidth NOTIFY changed)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY changed)

public:
    explicit ChartTheme(QObject *parent = nullptr);

    // The two that every chart knows.
    static ChartTheme *dark(QObject *parent) { return new ChartTheme(parent); }
    static ChartTheme *light(QObject *parent);

    QColor background() const { return m_background; }
    QColor plotBackground() const { return m_plotBackground; }
    QColor gridColor() const { return m_gridColor; }
    QColor minorGridColor() const { return m_minorGridColor; }
    QColor textColor() const { return m_textColor; }
    QVariantList traceColors() const { return m_traceColors; }
    QColor cursorColor() const { return m_cursorColor; }
    QVariantList markerColors() const { return m_markerColors; }
    QString fontFamily() const { return m_fontFamily; }
    int fontSize() const { return m_fontSize; }
    int gridWidth() const { return m_gridWidth; }
    int lineWidth() const { return m_lineWidth; }

    QFont font() const;
    // The colour of a trace that names none; the colours start again after the last one.
    QColor traceColor(int index) const;
    QVector<QColor> colorsOfMarkers() const;

    void setBackground(const QColor &color);
    void setPlotBackground(const QColor &color);
    void setGridColor(const QColor &color);
    void setMinorGridColor(const QColor &color);
    void setTextColor(const QColor &color);
    void setTraceColors(const QVariantList &colors);
    void setCursorColor(const QColor &color);
    void setMarkerColors(const QVariantList &colors);
    void setFontFamily(const QString &family);
    void setFontSize(int pixels);
    void setGridWidth(int pixels);
    void setLineWidth(int pixels);

signals:
    void changed();

private:
    template <typename T> void store(T &member, const T &value);
    void checkColors(const char *property, const QVariantList &colors) const;

    QColor m_background;
    QColor m_plotBackground;
    QColor m_gridColor;
    QColor m_minorGridColor;
    QColor m_textColor;
    QVariantList m_traceColors;
    QColor m_cursorColor;
    QVariantList m_markerColors;
    QString m_fontFamily;
    int m_fontSize = 14;
    int m_gridWidth = 1;
    int m_lineWidth = 1;
};

} // namespace graph
