#pragma once

#include "data/PlotData.h"
#include "kit/data/DataInput.h"
#include "kit/plots/DataExtent.h"
#include "plots/GraphPlot.h"

#include <QVariant>

#include <memory>

namespace graph {

class TraceCanvas;
class TraceSource;

// A plot with its data: values written in the document, any data object, or an address on the bus.
class GRAPH_CHARTS_EXPORT Trace : public GraphPlot, public ExtentSource
{
    Q_OBJECT
    Q_PROPERTY(QVariant values READ values WRITE setValues NOTIFY valuesChanged)
    Q_PROPERTY(double interval READ interval WRITE setInterval NOTIFY intervalChanged)
    Q_PROPERTY(QVariant start READ start WRITE setStart NOTIFY startChanged)
    Q_PROPERTY(QVariant positions READ positions WRITE setPositions NOTIFY positionsChanged)
    Q_PROPERTY(QObject *series READ givenSeries WRITE giveSeries NOTIFY seriesChanged)
    Q_PROPERTY(QString address READ address WRITE setAddress NOTIFY addressChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    Q_PROPERTY(QColor color READ penColor WRITE setColor RESET resetColor NOTIFY colorChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth RESET resetLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(Style style READ style WRITE setStyle NOTIFY styleChanged)
    Q_PROPERTY(bool curved READ isCurved WRITE setCurved NOTIFY curvedChanged)
    Q_PROPERTY(bool readings READ hasReadings WRITE setReadings NOTIFY readingsChanged)
    Q_PROPERTY(double fillOpacity READ fillOpacity WRITE setFillOpacity NOTIFY fillOpacityChanged)

public:
    enum Style : int { Line, Area, Steps, Bars, Points, LineAndPoints };
    Q_ENUM(Style)

    explicit Trace(QQuickItem *parent = nullptr);
    ~Trace() override;

    QVariant values() const;
    double interval() const;
    double start() const;
    QVariant positions() const;
    PlotData *series() const;
    QString address() const;
    QString name() const;
    QString unit() const;
    int lineWidth() const { return m_lineWidth; }
    Style style() const { return m_style; }
    bool isCurved() const { return m_curved; }
    double fillOpacity() const { return m_fillOpacity; }
    bool hasReadings() const { return m_hasReadings; }

    void setValues(const QVariant &values);
    // Shares the array with the caller.
    void setValues(const QVector<double> &values);
    void setValues(std::initializer_list<double> values) { setValues(QVector<double>(values)); }
    void setInterval(double interval);
    void setStart(double start);
    void setStart(const QVariant &start);
    void setPositions(const QVariant &positions);
    void setPositions(const QVector<double> &positions);
    void setPositions(std::initializer_list<double> positions) { setPositions(QVector<double>(positions)); }
    void setSeries(PlotData *series) { giveSeries(series); }
    // Data, or a plot.
    QObject *givenSeries() const { return m_input.given(); }
    void giveSeries(QObject *series) { m_input.give(series); }
    void setAddress(const QString &address);
    void setName(const QString &name);
    void setUnit(const QString &unit);
    void setColor(const QColor &color);
    void resetColor();
    void setLineWidth(int width);
    void resetLineWidth();
    void setStyle(Style style);
    void setCurved(bool curved);
    void setFillOpacity(double opacity);
    void setReadings(bool on);

    // Whether an address was written, be it an empty one.
    bool hasWrittenAddress() const;
    bool hasValues() const;
    bool hasDates() const { return m_hasDates; } // as values
    bool hasPositions() const;

    // What a chart chooses, which counts while the document has not chosen.
    bool hasOwnColor() const { return m_hasOwnColor; }
    void setDefaultColor(const QColor &color);
    void setDefaultLineWidth(int width);

    // How far the data reaches; empty without any.
    DataExtent dataExtent() const override;
    MinMax extentX() const override;
    DataExtent dataExtent(double xMin, double xMax) const override;
    bool beginsAtBaseline() const override;
    int reach() const override;
    // Where its bars or areas begin.
    double shownBaseline() const;
    // Where the nearest bars of other traces are, which say how wide its only one is, unless an interval does.
    void setBarNeighbours(const BarNeighbours &neighbours);
    BarNeighbours barNeighbours() const;

    bool isTextureProvider() const override;
    QSGTextureProvider *textureProvider() const override;

signals:
    void valuesChanged();
    void intervalChanged();
    void startChanged();
    void positionsChanged();
    void seriesChanged();
    void addressChanged();
    void nameChanged();
    void unitChanged();
    void colorChanged();
    void lineWidthChanged();
    void styleChanged();
    void curvedChanged();
    void fillOpacityChanged();
    void readingsChanged();
    // After each change of the samples, once for all changes of one pass of the event loop.
    void dataChanged();

protected:
    void classBegin() override;
    void componentComplete() override;
    void handlePlotChanged() override;
    void paintPlot(const PlotFrame &frame) override;
    bool paintsStrokesOnly() const override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private slots:
    void handlePenColor();

private:
    void applyColor(const QColor &color);
    void draw(TraceCanvas &canvas, const PixelMapping &mapping, const QRectF &visible) const;
    bool takesGeometry() const;
    bool hasNoBaseline() const;

    void useSeries(PlotData *series);

    std::unique_ptr<TraceSource> m_source;
    DataInput m_input{this, "series", [this](PlotData *series) {
                          useSeries(series);
                          return true;
                      }};
    QColor m_defaultColor{Qt::black};
    int m_lineWidth = 2;
    int m_defaultLineWidth = 2;
    Style m_style = Line;
    bool m_curved = false;
    bool m_hasReadings = true;
    double m_fillOpacity = 0.25;
    bool m_hasOwnColor = false;
    bool m_hasOwnLineWidth = false;
    bool m_isChoosingColor = false;
    bool m_hasDates = false;
    BarNeighbours m_barNeighbours;
    bool m_isPainted = false; // its node is that of the painted item
};

} // namespace graph
