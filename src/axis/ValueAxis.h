#pragma once

#include "axis/AxisLook.h"
#include "axis/AxisRange.h"
#include "axis/AxisTicks.h"
#include "axis/LabelTexts.h"
#include "common/Export.h"
#include "common/QtVersion.h"
#include "platform/ui/BaseFormatter.h"
#include "view/zoom/ZoomRect.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QVector>

class QPainter;
class XYScale;

Q_MOC_INCLUDE("view/base/XYScale.h")

namespace graph {
struct TickSet;
}

// One value axis: its full and its visible range, its ticks and their texts, and how a plane draws them. With
// a zoom rectangle the visible range follows the rectangle's edges, and writes to it go there.
class GRAPH_CHARTS_EXPORT ValueAxis : public QObject
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
    ~ValueAxis() override;

    // A plane that is being destroyed: no axis names it any more. Planes know axes, axes only name planes.
    static void forgetPlane(const XYScale *plane);

    // The ticks for that many of them; below 1 means numTicks.
    virtual QList<qreal> ticks(int count);
    virtual QStringList tickLabels() const { return m_tickLabels; }
    virtual QString formattedValue(double value) const;

    Qt::Alignment alignment() const { return m_look.alignment; }
    Qt::Orientation orientation() const { return m_look.orientation; }
    double minValue() const { return m_range.minValue(); }
    double maxValue() const { return m_range.maxValue(); }
    double valueRange() const { return m_range.extent(); }
    double minVisible() const { return m_range.minVisible(); }
    double maxVisible() const { return m_range.maxVisible(); }
    double visibleRange() const { return m_range.span(); }
    QColor lineColor() const { return m_look.linePen.color(); }
    Qt::PenJoinStyle lineJoinStyle() const { return m_look.linePen.joinStyle(); }
    QVector<qreal> lineDashPattern() const;
    int lineWidth() const { return m_look.linePen.width(); }
    Qt::PenStyle lineStyle() const { return m_look.linePen.style(); }
    QColor labelColor() const { return m_look.labelColor; }
    QColor verticalUnitLabelColor() const { return m_look.verticalUnitColor; }
    QFont labelFont() const { return m_look.labelFont; }
    int margin() const { return m_look.margin; }
    bool staggered() const { return m_look.staggered; }
    bool visible() const { return m_visible; }
    bool scalable() const { return m_range.isScalable(); }
    AxisStyle axisStyle() const { return m_axisStyle; }
    TickInterval tickInterval() const { return static_cast<TickInterval>(m_ticks.kind()); }
    int numTicks() const { return m_ticks.number(); }
    double dynamicTicksRatio() const { return m_ticks.dynamicRatio(); }
    double baseline() const { return m_baseline; }
    // Whether the document chose it, also where it is the default.
    bool hasWrittenBaseline() const { return m_hasWrittenBaseline; }
    QList<qreal> ticks() const { return m_ticks.positions(); }
    BaseFormatter *formatter() const { return m_formatter; }
    double customInterval() const { return m_ticks.customInterval(); }
    AxisRangeOrder rangeOrder() const { return m_rangeOrder; }
    XYScale *labelsPlane() const { return m_labelsPlane; }
    XYScale *linesPlane() const { return m_linesPlane; }
    QColor linePen() const { return lineColor(); }
    QColor labelPen() const { return labelColor(); }
    QString unit() const { return m_look.unit; }
    virtual int requiredMargin() const;
    ZoomRect *zoomRect() const { return m_zoomRect; }

    // How values are spread along the axis, and their places in its full range.
    graph::ScaleKind scaleKind() const { return m_range.scaleKind(); }
    const graph::AxisRange &axisRange() const { return m_range; }
    // Whether begin and end may change places: a plain axis then shows no ticks, and its plots look for their
    // samples as if it had not happened.
    bool isReversible() const { return m_reversible; }
    bool isReversed() const { return m_reversible && m_range.minVisible() > m_range.maxVisible(); }
    // Whether the margin is beside those of other axes of its side instead of shared with them, and how far from
    // the plot area it then is; the plane takes care of that.
    virtual bool hasOwnMargin() const { return false; }
    bool setMarginOffset(int offset);

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
    bool getTicksDirty() const { return m_ticks.isDirty(); }
    void setTicksDirty(bool dirty) { m_ticks.setDirty(dirty); }

    // Announces requiredMargin where it has changed, for example with the digits of the formatter.
    void updateRequiredMargin();

    // How the axis is drawn, for planes and for the other axes there.
    virtual graph::AxisLook look() const;

    // Draw into the plot rectangle of a plane, labels also into the margins around it.
    void paintLines(QPainter *painter, const QRectF &rect);
    virtual void paintLabels(QPainter *painter, const QRectF &rect,
                             const graph::LabelSurroundings &surroundings);

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
    // The axis looks different; at most once per pass of the event loop.
    void axisChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

    // Keeps what the zoom rectangle shows of the full range.
    void setScaleKind(graph::ScaleKind kind);
    void setReversible() { m_reversible = true; }
    // Whether the full range may be written while the chart is flicked: it is not what the finger moves.
    void setFitsWhileMoved(bool fits) { m_fitsWhileMoved = fits; }

    // What there is to draw in a plot area.
    virtual graph::TickSet tickSet(const QRectF &rect);
    // To be called when a tick has another text than in the last repaint.
    void forgetTexts();

private:
    bool isRangeHeld() const;
    void pushVisibleRange();
    void followDigits(QObject *owner);
    QList<qreal> namedValues() const;

    graph::AxisRange m_range;
    graph::AxisTicks m_ticks;
    graph::AxisLook m_look;
    bool m_visible = true;
    bool m_reversible = false;
    bool m_fitsWhileMoved = false;
    bool m_hasWrittenBaseline = false;
    AxisStyle m_axisStyle = TicksAndLabels;
    AxisRangeOrder m_rangeOrder = Increasing;
    double m_baseline = 0.0;
    QStringList m_tickLabels;
    QPointer<BaseFormatter> m_formatter;
    QPointer<QObject> m_digitsOwner;
    XYScale *m_labelsPlane = nullptr;
    XYScale *m_linesPlane = nullptr;
    QPointer<ZoomRect> m_zoomRect;
    bool m_rectChangePending = false;
    int m_axisChangedTimer = 0;
    int m_announcedMargin = -1;
    graph::LabelTexts m_texts;
};
