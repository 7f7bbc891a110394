#pragma once

#include "common/Export.h"
#include "view/zoom/FlickableContent.h"
#include "view/zoom/ZoomInterval.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QRectF>
#include <QVector2D>

// The visible part of a chart, in fractions of the whole data extent. Axes and plots follow it, a flickable
// may be kept in step with it, and the item it is parented to supplies the pixel size of the mappings.
class GRAPH_CHARTS_EXPORT ZoomRect : public QObject
{
    Q_OBJECT

    // left and right resize, top and bottom pan: existing documents rely on this asymmetry.
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY widthChanged)
    Q_PROPERTY(double height READ height WRITE setHeight NOTIFY heightChanged)
    Q_PROPERTY(double left READ left WRITE setLeft NOTIFY leftChanged)
    Q_PROPERTY(double right READ right WRITE setRight NOTIFY rightChanged)
    Q_PROPERTY(double top READ top WRITE moveTop NOTIFY topChanged)
    Q_PROPERTY(double bottom READ bottom WRITE moveBottom NOTIFY bottomChanged)
    Q_PROPERTY(QRectF boundingRect READ boundingRect WRITE setBoundingRect)
    Q_PROPERTY(double minWidth READ minWidth WRITE setMinWidth NOTIFY minWidthChanged)
    Q_PROPERTY(double minHeight READ minHeight WRITE setMinHeight NOTIFY minHeightChanged)
    Q_PROPERTY(Qt::Orientations zoomAxis READ zoomAxis WRITE setZoomAxis NOTIFY zoomAxisChanged)
    Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged)
    Q_PROPERTY(double x READ left WRITE moveLeft NOTIFY leftChanged)
    Q_PROPERTY(double y READ top WRITE moveTop NOTIFY topChanged)

public:
    explicit ZoomRect(QObject *parent = nullptr);

    double width() const { return m_x.extent(); }
    double height() const { return m_y.extent(); }
    double left() const { return m_x.begin(); }
    double right() const { return m_x.end(); }
    double top() const { return m_y.begin(); }
    double bottom() const { return m_y.end(); }
    QRectF boundingRect() const { return {m_x.lowest(), m_y.lowest(), m_x.room(), m_y.room()}; }
    double minWidth() const { return m_x.leastExtent(); }
    double minHeight() const { return m_y.leastExtent(); }
    Qt::Orientations zoomAxis() const { return m_zoomAxis; }
    bool isMoving() const;

    // The item that supplies the pixel size; null when the parent is none, or is none any more: an item of a document
    // that is being destroyed still has the meta-object of its type, so that qobject_cast would take it for one.
    QQuickItem *parentItem() const { return dynamic_cast<QQuickItem *>(parent()); }

    // Size and position of the flickable's content that show this rectangle; 0 when they cannot be told.
    double contentWidth() const;
    double contentHeight() const;
    double contentX() const;
    double contentY() const;

    void setFlickable(QQuickItem *item);

    // Shows that part of the extent, for every zoomAxis; unlike setCenterAndZoom() in full precision.
    void show(const QRectF &rect);

    // While a change is in progress rectChanged() waits for its end. Gives the previous state.
    bool setChanging(bool changing);
    void emitRectChanged();

    void updateFlickableContentWidth();
    void updateFlickableContentHeight();
    void updateFlickableContentX();
    void updateFlickableContentY();

    Q_INVOKABLE double mapToItemX(double x) const;
    Q_INVOKABLE double mapFromItemX(double x) const;
    Q_INVOKABLE double mapToContentX(double x) const;
    Q_INVOKABLE double mapFromContentX(double x) const;
    Q_INVOKABLE double mapToItemY(double y) const;
    Q_INVOKABLE double mapFromItemY(double y) const;
    Q_INVOKABLE double mapToContentY(double y) const;
    Q_INVOKABLE double mapFromContentY(double y) const;
    Q_INVOKABLE QPointF mapToItem(const QPointF &point) const;
    Q_INVOKABLE QPointF mapFromItem(const QPointF &point) const;
    Q_INVOKABLE QPointF mapToContent(const QPointF &point) const;
    Q_INVOKABLE QPointF mapFromContent(const QPointF &point) const;
    Q_INVOKABLE QRectF mapRectToItem(const QRectF &rect) const;
    Q_INVOKABLE QRectF mapRectFromItem(const QRectF &rect) const;

public slots:
    void setWidth(double width);
    void setHeight(double height);
    void setLeft(double left);
    void setRight(double right);
    void setTop(double top);
    void setBottom(double bottom);
    void setBoundingRect(const QRectF &rect);
    void setMinWidth(double minWidth);
    void setMinHeight(double minHeight);
    void setZoomAxis(Qt::Orientations zoomAxis);
    void zoomX(double width, double center = 0.0);
    void zoomY(double height, double center = 0.0);
    void zoom(const QVector2D &scale, const QPointF &center = QPointF());
    void scaleX(double width, double center = 0.0);
    void scaleY(double height, double center = 0.0);
    void scale(const QVector2D &scale, const QPointF &center = QPointF());
    bool moveLeft(double left);
    bool moveRight(double right);
    bool moveTop(double top);
    bool moveBottom(double bottom);
    bool setPosition(const QPointF &position);
    void setCenterAndZoom(const QVector2D &scale, const QPointF &center = QPointF());

signals:
    void widthChanged(double width);
    void heightChanged(double height);
    void leftChanged(double left);
    void rightChanged(double right);
    void topChanged(double top);
    void bottomChanged(double bottom);
    void minWidthChanged(double minWidth);
    void minHeightChanged(double minHeight);
    void zoomAxisChanged(Qt::Orientations zoomAxis);
    void movingChanged();
    void rectChanged(const QRectF &rect);
    // Kept for documents that connect to them; never emitted.
    void contentWidthChanged(double contentWidth);
    void contentHeightChanged(double contentHeight);
    void contentXChanged(double contentX);
    void contentYChanged(double contentY);

protected slots:
    void handleParentWidthChanged();
    void handleParentHeightChanged();
    void handleVisibleAreaXPositionChanged(double x);
    void handleVisibleAreaYPositionChanged(double y);

private:
    void apply(const graph::ZoomInterval::Changes &x, const graph::ZoomInterval::Changes &y);
    // A flickable that is being flicked knows its position; writing it back would stop it.
    bool isFlick() const { return m_visibleArea && sender() == m_visibleArea; }

    graph::ZoomInterval m_x;
    graph::ZoomInterval m_y;
    Qt::Orientations m_zoomAxis;
    QPointer<QQuickItem> m_flickable;
    QPointer<QObject> m_visibleArea;
    graph::FlickableContent m_contentX{"contentWidth", "contentX", &QQuickItem::width};
    graph::FlickableContent m_contentY{"contentHeight", "contentY", &QQuickItem::height};
    bool m_changing = false;
    QRectF m_lastRect{0.0, 0.0, 1.0, 1.0};
};
