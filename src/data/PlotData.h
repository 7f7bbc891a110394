#pragma once

#include "common/Export.h"
#include "common/QtVersion.h"
#include "data/BusBinding.h"
#include "data/Quantity.h"
#include "data/SampleHistory.h"
#include "data/SampleSpan.h"

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QVector>

#include <atomic>
#include <iosfwd>

class QDataStream;
class QTextStream;
class ValueAxis;

Q_MOC_INCLUDE("axis/ValueAxis.h")

// What all data objects have in common: names, units, digits and nominal ranges of x and y, the axes that the data
// belong to, and the address of a service on the bus that feeds them. Changes are announced by plotChanged(), once
// for all of them within one pass of the event loop. To be used on the application's thread.
class GRAPH_CHARTS_EXPORT PlotData : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString dbusAddress READ dbusAddress WRITE setDbusAddress NOTIFY dbusAddressChanged)
    Q_PROPERTY(int size READ size NOTIFY sizeChanged)
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    Q_PROPERTY(QString xLabel READ xLabel WRITE setXLabel NOTIFY xLabelChanged)
    Q_PROPERTY(QString yLabel READ yLabel WRITE setYLabel NOTIFY yLabelChanged)
    Q_PROPERTY(int xSigDigs READ xSigDigs WRITE setXSigDigs NOTIFY xSigDigsChanged)
    Q_PROPERTY(int ySigDigs READ ySigDigs WRITE setYSigDigs NOTIFY ySigDigsChanged)
    Q_PROPERTY(int xPrecision READ xPrecision WRITE setXPrecision NOTIFY xPrecisionChanged)
    Q_PROPERTY(int yPrecision READ yPrecision WRITE setYPrecision NOTIFY yPrecisionChanged)
    Q_PROPERTY(double xRangeBegin READ xRangeBegin WRITE setXRangeBegin NOTIFY xRangeBeginChanged)
    Q_PROPERTY(double yRangeBegin READ yRangeBegin WRITE setYRangeBegin NOTIFY yRangeBeginChanged)
    Q_PROPERTY(double xRangeEnd READ xRangeEnd WRITE setXRangeEnd NOTIFY xRangeEndChanged)
    Q_PROPERTY(double yRangeEnd READ yRangeEnd WRITE setYRangeEnd NOTIFY yRangeEndChanged)
    Q_PROPERTY(QString xUnits READ xUnits WRITE setXUnits NOTIFY xUnitsChanged)
    Q_PROPERTY(QString yUnits READ yUnits WRITE setYUnits NOTIFY yUnitsChanged)
    Q_PROPERTY(BaseFormatter *xFormatter READ xFormatter NOTIFY xFormatterChanged)
    Q_PROPERTY(BaseFormatter *yFormatter READ yFormatter NOTIFY yFormatterChanged)
    Q_PROPERTY(ValueAxis *axisX READ axisX WRITE setAxisX NOTIFY axisXChanged)
    Q_PROPERTY(ValueAxis *axisY READ axisY WRITE setAxisY NOTIFY axisYChanged)
    Q_PROPERTY(bool usePointsAsSegments READ usePointsAsSegments WRITE setUsePointsAsSegments NOTIFY
                   sgnUsePointsAsSignalsChanged)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY sgnActiveChanged)

public:
    explicit PlotData(QObject *parent = nullptr);

    virtual QString toString() const;
    Q_INVOKABLE virtual int size() const = 0;
    Q_INVOKABLE virtual QRectF boundingRect() const = 0;
    Q_INVOKABLE virtual QPointF sample(int index) const = 0;
    // A copy of the samples whose x lies in the x range of `rect`, see sampleSpan.
    virtual QVector<QPointF> samples(const QRectF &rect) const = 0;
    Q_INVOKABLE virtual int indexOf(double x) const = 0;
    Q_INVOKABLE virtual double x(int index) const = 0;
    Q_INVOKABLE virtual double y(int index) const = 0;
    Q_INVOKABLE virtual QPointF first() const = 0;
    Q_INVOKABLE virtual QPointF last() const = 0;
    virtual void setDbusAddress(const QString &address);
    virtual bool containsPoint(double x);
    virtual void clear();
    virtual void reserve(int n) = 0;
    virtual void resize(int n) = 0;
    virtual bool operator==(const PlotData &other) const;

    // The samples with xMin <= x <= xMax in ascending order of x, in place; the ends may be swapped, NaN
    // gives none. Of points used as segments: the pairs that overlap the range, in the order of the data.
    virtual graph::SampleSpan sampleSpan(double xMin, double xMax) const;
    // Those in the x range of a visible rectangle, a rounding error at its ends included.
    graph::SampleSpan sampleSpan(const QRectF &rect) const;

    virtual graph::SampleHistory history() const { return {}; }
    // Whether plotChanged() is still to come for a change.
    bool isChangePending() const { return m_plotChangedTimer != 0; }

    QString dbusAddress() const { return m_bus.address(); }
    const BusBinding &busBinding() const { return m_bus; }
    QString label() const { return m_label; }
    QString xLabel() const { return m_x.label; }
    QString yLabel() const { return m_y.label; }
    int xSigDigs() const { return m_x.sigDigs; }
    int ySigDigs() const { return m_y.sigDigs; }
    int xPrecision() const { return m_x.precision; }
    int yPrecision() const { return m_y.precision; }
    double xRangeBegin() const { return m_x.rangeBegin; }
    double yRangeBegin() const { return m_y.rangeBegin; }
    double xRangeEnd() const { return m_x.rangeEnd; }
    double yRangeEnd() const { return m_y.rangeEnd; }
    QString xUnits() const;
    QString yUnits() const;
    BaseFormatter *xFormatter() const { return m_x.formatter; }
    BaseFormatter *yFormatter() const { return m_y.formatter; }
    ValueAxis *axisX() const;
    ValueAxis *axisY() const;
    bool usePointsAsSegments() const { return m_usePointsAsSegments; }
    bool active() const { return m_active; }
    // The y that bars and fills start from: that of the vertical axis, 0 without one.
    double baseline() const;

    void setLabel(const QString &label);
    void setXLabel(const QString &label);
    void setYLabel(const QString &label);
    void setXSigDigs(int sigDigs);
    void setYSigDigs(int sigDigs);
    void setXPrecision(int precision);
    void setYPrecision(int precision);
    void setXRangeBegin(double value);
    void setYRangeBegin(double value);
    void setXRangeEnd(double value);
    void setYRangeEnd(double value);
    void setXUnits(const QString &units);
    void setYUnits(const QString &units);
    void setAxisX(ValueAxis *axis);
    void setAxisY(ValueAxis *axis);
    void setUsePointsAsSegments(bool use);
    void setActive(bool active);

    Q_INVOKABLE QString formattedXValue(double x) const;
    Q_INVOKABLE QString formattedYValue(double y) const;
    Q_INVOKABLE QString formattedXValueByPosIndex(int posIndex) const;
    Q_INVOKABLE QString formattedYValueByPosIndex(int posIndex) const;

public slots:
    // Announces a change: one plotChanged() for all calls within one pass of the event loop.
    void emitPlotChanged();

signals:
    void dbusAddressChanged(QString address);
    void sizeChanged(int size);
    void labelChanged(QString label);
    void xLabelChanged(QString label);
    void yLabelChanged(QString label);
    void xSigDigsChanged(int sigDigs);
    void ySigDigsChanged(int sigDigs);
    void xPrecisionChanged(int precision);
    void yPrecisionChanged(int precision);
    void xRangeBeginChanged(double value);
    void yRangeBeginChanged(double value);
    void xRangeEndChanged(double value);
    void yRangeEndChanged(double value);
    void xUnitsChanged(QString units);
    void yUnitsChanged(QString units);
    void xFormatterChanged(BaseFormatter *formatter);
    void yFormatterChanged(BaseFormatter *formatter);
    void axisXChanged(ValueAxis *axis);
    void axisYChanged(ValueAxis *axis);
    void sgnUsePointsAsSignalsChanged();
    void sgnActiveChanged();
    void plotChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

    // Follow a bus item with the property of that name.
    void connectOrnItem(const QString &key);
    void connectOrnVecDoubleItem(const QString &key);
    // Without a property: the array is given to the sink.
    void connectOrnVecDoubleItem(const QString &key, const BusBinding::Sink &sink);

    // Equal objects are of the same kind: the class that holds the data, because an object that QML made may
    // have a class and a meta-object of its own.
    virtual const QMetaObject *kind() const { return &staticMetaObject; }
    bool isSameKind(const PlotData &other) const { return kind() == other.kind(); }
    // The data of the object without its labels; a broken stream leaves the object as it was.
    virtual void write(QDataStream &stream) const;
    virtual void read(QDataStream &stream);

protected slots:
    void handleOrnItemValueChanged();
    void handleOrnVecDoubleItemChanged();

private:
    void tellOfThread();

    friend QDataStream &operator<<(QDataStream &stream, const PlotData &data);
    friend QDataStream &operator>>(QDataStream &stream, PlotData &data);

    BusBinding m_bus{this};
    QString m_label;
    Quantity m_x;
    Quantity m_y;
    QPointer<ValueAxis> m_axisX;
    QPointer<ValueAxis> m_axisY;
    int m_plotChangedTimer = 0;
    bool m_usePointsAsSegments = false;
    bool m_active = false;
    std::atomic<bool> m_isToldOfThread{false};
};

QTextStream &operator<<(QTextStream &stream, const PlotData &data);
std::ostream &operator<<(std::ostream &stream, const PlotData &data);
QDataStream &operator<<(QDataStream &stream, const PlotData &data);
QDataStream &operator>>(QDataStream &stream, PlotData &data);
