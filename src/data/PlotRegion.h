#pragma once

#include "common/Export.h"

#include <QColor>
#include <QObject>
#include <QStaticText>

// A stretch of x, in either order of its ends, with a level, a name and a colour. Numbers that are not finite overlap
// nothing.
class GRAPH_CHARTS_EXPORT PlotRegion : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool valid READ valid WRITE setValid NOTIFY validChanged)
    Q_PROPERTY(double begin READ begin WRITE setBegin NOTIFY beginChanged)
    Q_PROPERTY(double end READ end WRITE setEnd NOTIFY endChanged)
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(PlotStyle plotStyle READ plotStyle WRITE setPlotStyle NOTIFY plotStyleChanged)

public:
    enum PlotStyle : int { Ellipse = 0, Trapezoid = 1, Rectangle = 2, LabelOnly = 3 };
    Q_ENUM(PlotStyle)

    explicit PlotRegion(QObject *parent = nullptr);

    bool valid() const { return m_valid; }
    double begin() const { return m_begin; }
    double end() const { return m_end; }
    double value() const { return m_value; }
    QString name() const { return m_name; }
    QColor color() const { return m_color; }
    PlotStyle plotStyle() const { return m_plotStyle; }
    // The name, laid out for the transform and font it was prepared with last.
    const QStaticText &staticText() const { return m_staticText; }

    void setValid(bool valid);
    void setBegin(double begin);
    void setEnd(double end);
    void setValue(double value);
    void setName(const QString &name);
    void setColor(const QColor &color);
    void setPlotStyle(PlotStyle style);
    void prepareStaticText(const QTransform &transform, const QFont &font);

    // begin and end in ascending order; NaN in either overlaps nothing.
    bool overlaps(double xMin, double xMax) const;
    bool hasValuesOf(const PlotRegion &other) const;

public slots:
    // Announces a change: one regionChanged() for all calls within one pass of the event loop.
    void emitRegionChanged();

signals:
    void validChanged();
    void beginChanged();
    void endChanged();
    void valueChanged();
    void nameChanged();
    void colorChanged();
    void plotStyleChanged(PlotStyle plotStyle);
    void regionChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    bool m_valid = false;
    double m_begin = 0.0;
    double m_end = 0.0;
    double m_value = 0.0;
    QString m_name;
    QColor m_color;
    int m_regionChangedTimer = 0;
    PlotStyle m_plotStyle = Ellipse;
    QStaticText m_staticText;
};
