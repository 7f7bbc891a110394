#pragma once

#include "common/Export.h"
#include "common/QtVersion.h"
#include "cursors/CursorLook.h"
#include "cursors/CursorMarkers.h"
#include "cursors/FollowedAxis.h"
#include "cursors/KeyAcceleration.h"
#include "cursors/TrackedPlots.h"
#include "data/SampleHistory.h"
#include "view/base/ShiftedItem.h"

#include <QColor>
#include <QElapsedTimer>
#include <QFont>
#include <QPointer>
#include <QQmlListProperty>
#include <QStringList>
#include <QVector>

#include <optional>

class AbstractPlot;
class GraphCursorAttached;
class GraphMarker;
class PlotData;
class ValueAxis;
class ZoomRect;

Q_MOC_INCLUDE("cursors/GraphMarker.h")
Q_MOC_INCLUDE("data/PlotData.h")
Q_MOC_INCLUDE("view/base/AbstractPlot.h")

namespace graph {
class CursorPainter;
class CursorPlaces;
struct CursorDirection;
struct CursorPlace;
} // namespace graph

// The cursor's own flag beside that of the item, which stays true. Qt 6 allows no other than the item's.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#define GRAPH_CURSOR_VISIBLE Q_PROPERTY(bool visible READ isCursorVisible WRITE setVisible)
#else
#define GRAPH_CURSOR_VISIBLE
#endif

// A line over the plots of a view that is always on a sample of the primary plot's data. Each form in which
// the position is written becomes a sample index, and every other form is derived from that index.
class GRAPH_CHARTS_EXPORT GraphCursor : public graph::ShiftedItem
{
    Q_OBJECT
    Q_PROPERTY(int posIndex READ posIndex WRITE setPosIndex NOTIFY posIndexChanged)
    Q_PROPERTY(double position READ position WRITE setPosition NOTIFY positionChanged)
    Q_PROPERTY(double posValue READ posValue WRITE setPosValue NOTIFY posValueChanged)
    Q_PROPERTY(int posOnScreen READ posOnScreen WRITE setPosOnScreen NOTIFY posOnScreenChanged)
    Q_PROPERTY(int panMargin READ panMargin WRITE setPanMargin)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(AbstractPlot *primaryPlot READ primaryPlot WRITE setPrimaryPlot NOTIFY primaryPlotChanged)
    Q_PROPERTY(QQmlListProperty<AbstractPlot> plots READ plots NOTIFY plotsChanged)
    Q_PROPERTY(QQmlListProperty<PlotData> series READ series NOTIFY seriesChanged)
    Q_PROPERTY(QQmlListProperty<GraphMarker> markers READ markers NOTIFY markersChanged)
    Q_PROPERTY(QList<qreal> yPositions READ yPositions NOTIFY yPositionsChanged)
    Q_PROPERTY(QList<qreal> yValues READ yValues NOTIFY yValuesChanged)
    Q_PROPERTY(QStringList formattedYValues READ formattedYValues NOTIFY yValuesChanged)
    Q_PROPERTY(bool staysOnScreen READ staysOnScreen WRITE setStaysOnScreen NOTIFY staysOnScreenChanged)
    GRAPH_CURSOR_VISIBLE
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(
        bool autoPrimaryPlot READ autoPrimaryPlot WRITE setAutoPrimaryPlot NOTIFY sgnAutoPrimaryPlotChanged)
    Q_PROPERTY(int primaryPlotIndex READ primaryPlotIndex NOTIFY sgnPrimaryPlotIndexChanged)
    Q_PROPERTY(int paintedWidth READ paintedWidth WRITE setPaintedWidth NOTIFY sgnPaintedWidthChanged)

public:
    enum PeakType : int { NoPeak = 0, PeakLeft = 3, PeakRight = 4 };
    Q_ENUM(PeakType)

    explicit GraphCursor(QQuickItem *parent = nullptr);
    ~GraphCursor() override;

    static GraphCursorAttached *qmlAttachedProperties(QObject *object);

    int posIndex() const { return m_posIndex; }
    // Where it was told to be while there were no data to be placed on.
    std::optional<double> awaitedValue() const { return m_awaitedValue; }
    // The value that it was given last; none once a hand has moved it.
    std::optional<double> writtenValue() const { return m_writtenValue; }
    double position() const { return m_position; }
    double posValue() const { return m_posValue; }
    int posOnScreen() const { return m_posOnScreen; }
    int panMargin() const { return m_panMargin; }
    QFont font() const { return m_font; }
    // Whether its line is a level. Also while it is being destroyed, when a GraphCursorY is no longer one.
    bool isHorizontal() const;
    AbstractPlot *primaryPlot() const;
    PlotData *primarySeries() const;
    ValueAxis *followedAxis() const;
    QQmlListProperty<AbstractPlot> plots();
    QQmlListProperty<PlotData> series();
    QQmlListProperty<GraphMarker> markers();
    const graph::TrackedPlots &trackedPlots() const { return m_plots; }
    // Whether the plot has a value at the cursor; yPositions and yValues have an entry without one, too.
    bool hasReading(int index) const;
    QList<qreal> yPositions() const { return m_readings.positions; }
    QList<qreal> yValues() const { return m_readings.values; }
    QStringList formattedYValues() const { return m_readings.texts; }
    bool staysOnScreen() const { return m_staysOnScreen; }
    bool isCursorVisible() const;
    QColor color() const { return m_color; }
    bool autoPrimaryPlot() const { return m_autoPrimaryPlot; }
    int primaryPlotIndex() const { return m_primaryPlotIndex; }
    int paintedWidth() const { return m_paintedWidth; }

    void setPlots(const QList<AbstractPlot *> &plots);
    void setZoomRect(ZoomRect *zoomRect);
    // In a chart: thin lines, and its colours, font and texts where the document gives none. None when it leaves it.
    void setLook(const std::optional<graph::CursorLook> &look);
    const std::optional<graph::CursorLook> &look() const { return m_look; }

    Q_INVOKABLE int indexOfPlot(AbstractPlot *plot) const;
    Q_INVOKABLE void setPeak();
    Q_INVOKABLE void setPeakLeft();
    Q_INVOKABLE void setPeakRight();
    Q_INVOKABLE int findPeak(PeakType type) const;
    Q_INVOKABLE int getNextPeak(bool right, const QVector<double> &y, int first, int last, double min,
                                double max) const;
    Q_INVOKABLE double computePeakTolerance(const QVector<double> &y, int first, int last, double min,
                                            double max) const;
    Q_INVOKABLE bool getMinMaxY(const QVector<double> &y, int first, int last, double &min,
                                double &max) const;
    Q_INVOKABLE static int getPositionIndex(double value, int count, double min, double max);

public slots:
    void setPosition(double position);
    void setPosValue(double value);
    void setPosIndex(double index);
    void setPosOnScreen(int pixel);
    void setPanMargin(int margin);
    void setFont(QFont font);
    void setPrimaryPlot(AbstractPlot *plot);
    void setStaysOnScreen(bool staysOnScreen);
    void setVisible(bool visible);
    void setColor(QColor color);
    void setAutoPrimaryPlot(bool automatic);
    void setPaintedWidth(int newWidth);
    void moveLeft(bool autoRepeat = false);
    void moveRight(bool autoRepeat = false);
    void updateCursorPos();
    void handlePlotActiveChanged();

signals:
    void posIndexChanged();
    void posValueChanged();
    void positionChanged();
    void posOnScreenChanged(int posOnScreen);
    void fontChanged();
    void primaryPlotChanged();
    void plotsChanged();
    void seriesChanged();
    void markersChanged();
    void yPositionsChanged();
    void yValuesChanged();
    void plotValuesChanged();
    void staysOnScreenChanged();
    void colorChanged();
    void sgnAutoPrimaryPlotChanged();
    void sgnPrimaryPlotIndexChanged();
    void sgnPaintedWidthChanged();

protected slots:
    void handlePlotDataChanged(PlotData *data = nullptr);
    void handleXAxisChanged(ValueAxis *axis);
    void handleYAxesChanged(ValueAxis *axis = nullptr);
    void handlePlotValuesChanged();
    void handleRectChanged();
    void handlePlotSizeChanged();

protected:
    bool event(QEvent *event) override;
    void GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void componentComplete() override;
    void paintShifted(QPainter *painter) override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

    GraphCursor(const graph::CursorDirection &direction, QQuickItem *parent);

private slots:
    void adoptZoomRectOfParent();

private:
    void placeOnValue(double value);
    graph::CursorPlaces places() const;
    void placeOnChosenPlot(double value);
    void placeAt(const std::optional<graph::CursorPlace> &place);
    bool isNew(const graph::CursorPlace &place) const;
    void publish(const graph::CursorPlace &place);
    void readAll();
    void announce(const graph::PlotReadings &readings);
    void followSamples();
    void followScroll();
    double fractionOf(double value) const;
    void placeAgain();
    void placeOnScreen();
    int moveOnScreen(const PlotData &data, int direction, bool autoRepeat);
    bool makePrimary(AbstractPlot *plot);
    void handlePrimaryPlotDestroyed();
    void setPeakBeside(PeakType type);
    int senderPlotIndex() const;
    void followZoomRectOf(const QQuickItem *parent);
    void giveReadingTo(QQuickItem *child);
    void colorMarkers();
    void paintMarkers(graph::CursorPainter &lines) const;

    const graph::CursorDirection &m_direction;
    int m_posIndex = -1;
    double m_position = 0.0;
    double m_posValue = 0.0;
    int m_posOnScreen = 0;
    int m_panMargin = 48;
    QFont m_font;
    QPointer<AbstractPlot> m_primaryPlot;
    graph::FollowedAxis m_axis; // of the primary plot, chosen or not
    graph::TrackedPlots m_plots{this};
    graph::PlotReadings m_readings;
    bool m_isRead = false; // all of m_readings, in this pass of the event loop
    graph::CursorMarkers m_markers;
    graph::KeyAcceleration m_acceleration;
    QElapsedTimer m_moveTimer;
    QPointer<ZoomRect> m_zoomRect;
    QPointer<const PlotData> m_placedData; // where posIndex, posValue and position come from
    graph::SampleHistory m_placedHistory;
    QPointer<ValueAxis> m_placedAxis;
    std::optional<double> m_awaitedValue;
    std::optional<double> m_writtenValue;
    bool m_staysOnScreen = true;
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    bool m_visible = false;
#endif
    QColor m_color = Qt::red;
    bool m_autoPrimaryPlot = false;
    int m_primaryPlotIndex = -1;
    int m_paintedWidth = 3;
    std::optional<graph::CursorLook> m_look;
    bool m_hasOwnColor = false;
    bool m_hasOwnFont = false;
    bool m_hasOwnWidth = false;
};

QML_DECLARE_TYPEINFO(GraphCursor, QML_HAS_ATTACHED_PROPERTIES)
