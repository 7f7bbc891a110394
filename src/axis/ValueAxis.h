#pragma once

#include "axis/AxisTexts.h"
#include "platform/ui/BaseFormatter.h"
#include "view/zoom/ZoomRect.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QObject>
#include <QPen>
#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QVector>

class QPainter;
class XYScale;

// One value axis: its full and its visible range, its ticks and their texts, and how a plane draws them. With
// a zoom rectangle the visible range follows the rectangle's edges, and writes to it go there.
class ValueAxis : public QObject
{
    Q_OBJECT

    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment NOTIFY alignmentChanged)
    Q_PROPERTY(Qt::Orientation orientation READ orientation NOTIFY orientationChanged)
    Q_PROPERTY(double minValue READ minValue WRITE setMinValue NOTIFY minValueChanged)
    Q_PROPERTY(double maxValue READ maxValue WRITE setMaxValue NOTIFY maxValueChanged)
    Q_PROPERTY(double valueRange READ valueRange NOTIFY valueRangeChanged)
    Q_PROPERTY(double minVisible READ minVisible WRITE setMinVisible NOTIFY minVisibleChanged)
    Q_PROPERTY(double maxVisible READ maxVisible WRITE setMaxVisible NOTIFY maxVisibleChanged)
    Q_PROPERTY(double visibleRange READ visibleRange WRITE setVisibleRange NOTIFY visibleRangeChanged)
    Q_PROPERTY(QColor lineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(Qt::PenJoinStyle lineJoinStyle READ lineJoinStyle WRITE setLineJoinStyle)
    Q_PROPERTY(QVector<qreal> lineDashPattern READ lineDashPattern WRITE setLineDashPattern)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth)
    Q_PROPERTY(Qt::PenStyle lineStyle READ lineStyle WRITE setLineStyle)
    Q_PROPERTY(QColor labelColor READ labelColor WRITE setLabelColor)
    Q_PROPERTY(QColor verticalUnitLabelColor READ verticalUnitLabelColor WRITE setVerticalUnitLabelColor
                   NOTIFY verticalUnitLabelColorChanged)
    Q_PROPERTY(QFont labelFont READ labelFont WRITE setLabelFont NOTIFY labelFontChanged)
    Q_PROPERTY(int margin READ margin WRITE setMargin NOTIFY marginChanged)
    Q_PROPERTY(bool staggered READ staggered WRITE setStaggered NOTIFY staggeredChanged)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(bool scalable READ scalable WRITE setScalable NOTIFY scalableChanged)
    Q_PROPERTY(AxisStyle axisStyle READ axisStyle WRITE setAxisStyle NOTIFY axisStyleChanged)
    Q_PROPERTY(TickInterval tickInterval READ tickInterval WRITE setTickInterval)
    Q_PROPERTY(int numTicks READ numTicks WRITE setNumTicks)
    Q_PROPERTY(double dynamicTicksRatio READ dynamicTicksRatio WRITE setDynamicTicksRatio)
    Q_PROPERTY(double baseline READ baseline WRITE setBaseline)
    Q_PROPERTY(QList<qreal> ticks READ ticks WRITE setTicks NOTIFY ticksChanged)
    Q_PROPERTY(QStringList tickLabels READ tickLabels WRITE setTickLabels)
    Q_PROPERTY(BaseFormatter *formatter READ formatter WRITE setFormatter NOTIFY formatterChanged)
    Q_PROPERTY(double customInterval READ customInterval WRITE setCustomInterval)
    Q_PROPERTY(AxisRangeOrder rangeOrder READ rangeOrder WRITE setRangeOrder NOTIFY rangeOrderChanged)
    Q_PROPERTY(XYScale *labelsPlane READ labelsPlane WRITE setLabelsPlane)
    Q_PROPERTY(XYScale *linesPlane READ linesPlane WRITE setLinesPlane)
    Q_PROPERTY(QColor linePen READ linePen WRITE setLinePen)
    Q_PROPERTY(QColor labelPen READ labelPen WRITE setLabelPen)
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    Q_PROPERTY(int requiredMargin READ requiredMargin NOTIFY requiredMarginChanged)

public:
    // Of a fixed type: documents can write any number, and a plain enumeration may not hold it.
    enum AxisStyle : int { TicksAndLabels, TicksOnly, LabelsOnly };
    Q_ENUM(AxisStyle)
    enum TickInterval : int { ScaledDecimal, ScaledBinary, FixedTicks, DisplayDynamic };
    Q_ENUM(TickInterval)
    enum AxisRangeOrder : int { Increasing, Decreasing };
    Q_ENUM(AxisRangeOrder)

    explicit ValueAxis(QObject *parent = nullptr);

    // The ticks for that many of them; below 1 means numTicks.
    virtual QList<qreal> ticks(int count);
    virtual QStringList tickLabels() const { return m_tickLabels; }
    virtual QString formattedValue(double value) const;

    Qt::Alignment alignment() const { return m_alignment; }
    Qt::Orientation orientation() const { return m_orientation; }
    double minValue() const { return m_minValue; }
    double maxValue() const { return m_maxValue; }
    double valueRange() const { return m_maxValue - m_minValue; }
    double minVisible() const { return m_minVisible; }
    double maxVisible() const { return m_maxVisible; }
    double visibleRange() const { return m_visibleRange; }
    QColor lineColor() const { return m_linePen.color(); }
    Qt::PenJoinStyle lineJoinStyle() const { return m_linePen.joinStyle(); }
    QVector<qreal> lineDashPattern() const;
    int lineWidth() const { return m_linePen.width(); }
    Qt::PenStyle lineStyle() const { return m_linePen.style(); }
    QColor labelColor() const { return m_labelColor; }
    QColor verticalUnitLabelColor() const { return m_verticalUnitLabelColor; }
    QFont labelFont() const { return m_labelFont; }
    int margin() const { return m_margin; }
    bool staggered() const { return m_staggered; }
    bool visible() const { return m_visible; }
    bool scalable() const { return m_scalable; }
    AxisStyle axisStyle() const { return m_axisStyle; }
    TickInterval tickInterval() const { return m_tickInterval; }
    int numTicks() const { return m_numTicks; }
    double dynamicTicksRatio() const { return m_dynamicTicksRatio; }
    double baseline() const { return m_baseline; }
    QList<qreal> ticks() const { return m_ticks; }
    BaseFormatter *formatter() const { return m_formatter; }
    double customInterval() const { return m_customInterval; }
    AxisRangeOrder rangeOrder() const { return m_rangeOrder; }
    XYScale *labelsPlane() const;
    XYScale *linesPlane() const;
    QPen gridPen() const { return m_linePen; }
    QColor linePen() const { return lineColor(); }
    QColor labelPen() const { return labelColor(); }
    QString unit() const { return m_unit; }
    int requiredMargin() const;
    ZoomRect *zoomRect() const { return m_zoomRect; }

    void setZoomRect(ZoomRect *zoomRect);
    void handleValueRangeChanged();

    // Axis values times this are the values that the formatter shows.
    double localizationFactor() const;

    QList<qreal> buildTicks(int count) const;
    double interval10(int count) const;
    double interval2(int count) const;
    // The distance of ticks when count of them share range; 0 for fixed ticks and where there is none.
    double tickSpacing(int count, double range) const;
    int computeTickCountH(double width) const;
    int computeTickCountV(double height) const;
    static int computeTickCount(double length, double labelSize, double ratio);
    int estimateAverageLabelWidth() const;
    int getLabelHeight() const;
    bool getTicksDirty() const { return m_ticksDirty; }
    void setTicksDirty(bool dirty) { m_ticksDirty = dirty; }

    // Announces requiredMargin where it has changed, for example with the digits of the formatter.
    void updateRequiredMargin();

    // Draw into the plot rectangle of a plane, labels also into the margins around it.
    void paintLines(QPainter *painter, const QRectF &rect);
    void paintLabels(QPainter *painter, const QRectF &rect);

public slots:
    void setAlignment(Qt::Alignment alignment);
    void setMinValue(double minValue);
    void setMaxValue(double maxValue);
    void setMinVisible(double minVisible);
    void setMaxVisible(double maxVisible);
    void setVisibleRange(double visibleRange);
    void setLineColor(const QColor &color);
    void setLineJoinStyle(Qt::PenJoinStyle style);
    void setLineDashPattern(const QVector<qreal> &pattern);
    void setLineWidth(int width);
    void setLineStyle(Qt::PenStyle style);
    void setLabelColor(const QColor &color);
    void setVerticalUnitLabelColor(const QColor &color);
    void setLabelFont(const QFont &font);
    void setMargin(int margin);
    void setStaggered(bool staggered);
    void setVisible(bool visible);
    void setScalable(bool scalable);
    void setAxisStyle(AxisStyle style);
    void setTickInterval(TickInterval interval);
    void setNumTicks(int count);
    void setDynamicTicksRatio(double ratio);
    void setBaseline(double baseline);
    void setTicks(const QList<qreal> &ticks);
    void setTickLabels(const QStringList &labels);
    void setFormatter(BaseFormatter *formatter);
    void setCustomInterval(double interval);
    void setRangeOrder(AxisRangeOrder order);
    void setLabelsPlane(XYScale *plane);
    void setLinesPlane(XYScale *plane);
    void setLinePen(const QColor &color) { setLineColor(color); }
    void setLabelPen(const QColor &color) { setLabelColor(color); }
    void setUnit(const QString &unit);
    void setLowerBound(double bound);
    void setUpperBound(double bound);
    void handleRectChanged();
    void handleMovingChanged();
    void emitAxisChanged();

signals:
    void alignmentChanged(Qt::Alignment alignment);
    void orientationChanged(Qt::Orientation orientation);
    void minValueChanged(double minValue);
    void maxValueChanged(double maxValue);
    void valueRangeChanged();
    void minVisibleChanged(double minVisible);
    void maxVisibleChanged(double maxVisible);
    void visibleRangeChanged();
    void verticalUnitLabelColorChanged();
    void labelFontChanged();
    void marginChanged();
    void staggeredChanged();
    void visibleChanged(bool visible);
    void scalableChanged();
    void axisStyleChanged();
    void ticksChanged(const QList<qreal> &ticks);
    void formatterChanged();
    void rangeOrderChanged();
    void unitChanged();
    void requiredMarginChanged();
    // The axis has to be drawn anew; at most once per pass of the event loop.
    void axisChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void pushVisibleRange();
    void followDigits(QObject *owner);

    Qt::Alignment m_alignment = Qt::AlignBottom;
    Qt::Orientation m_orientation = Qt::Horizontal;
    double m_minValue = 0.0;
    double m_maxValue = 1.0;
    double m_minVisible = 0.0;
    double m_maxVisible = 1.0;
    QPen m_linePen;
    QVector<qreal> m_dashPattern;
    QColor m_labelColor = Qt::black;
    QColor m_verticalUnitLabelColor;
    QFont m_labelFont;
    int m_margin = 0;
    bool m_staggered = false;
    bool m_visible = true;
    bool m_scalable = true;
    AxisStyle m_axisStyle = TicksAndLabels;
    TickInterval m_tickInterval = ScaledDecimal;
    double m_customInterval = 0.0;
    AxisRangeOrder m_rangeOrder = Increasing;
    int m_numTicks = 5;
    int m_lastTickCount = 0;
    double m_dynamicTicksRatio = 0.5;
    double m_baseline = 0.0;
    QList<qreal> m_ticks{1.0, 1.5, 2.0, 2.5, 5.0, 10.0};
    QStringList m_tickLabels;
    QPointer<BaseFormatter> m_formatter;
    QPointer<QObject> m_digitsOwner;
    QPointer<QQuickItem> m_labelsPlane;
    QPointer<QQuickItem> m_linesPlane;
    double m_visibleRange = 0.0;
    bool m_ticksDirty = true;
    bool m_rectChangePending = false;
    QList<qreal> m_cachedTicks;
    QPointer<ZoomRect> m_zoomRect;
    double m_lowerBound = 0.0;
    double m_upperBound = 1.0;
    double m_pendingMinValue = 0.0;
    double m_pendingMaxValue = 1.0;
    int m_axisChangedTimer = 0;
    QString m_unit;
    int m_notifiedMargin = -1;
    graph::AxisTexts m_texts;
};
