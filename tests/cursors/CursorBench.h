#pragma once

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "support/Pictures.h"
#include "view/base/AbstractPlot.h"
#include "view/zoom/ZoomRect.h"

#include <QMetaMethod>

// Writes down the names of the signals of an object in the order in which they come.
class SignalLog : public QObject
{
    Q_OBJECT

public:
    explicit SignalLog(QObject *object)
    {
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("note()"));
        const QMetaObject *meta = object->metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                connect(object, meta->method(i), this, slot);
        }
    }

    QString take()
    {
        const QString all = names.join(' ').remove("Changed");
        names.clear();
        return all;
    }

public slots:
    void note() { names.append(sender()->metaObject()->method(senderSignalIndex()).name()); }

private:
    QStringList names;
};

class TracePlot : public AbstractPlot
{
public:
    void paint(QPainter *) override {}
};

// A cursor over plots of 101 x 51 pixels on axes 0..100 and 0..50. In the data of the first plot sample,
// value and pixel column i are the same, and y is half of it.
struct CursorBench
{
    explicit CursorBench(GraphCursor *benchCursor = new GraphCursor)
        : cursor(benchCursor)
    {
        objects = {zoom.data(), x.data(), y.data(), data.data(), cursor.data()};
        area.setSize(QSizeF(101, 51));
        x->setMaxValue(100.0);
        y->setAlignment(Qt::AlignLeft);
        y->setMaxValue(50.0);
        QVector<double> samples(101);
        for (int i = 0; i < samples.size(); ++i)
            samples[i] = 0.5 * i;
        data->setYData(samples);
        plot = addPlot(data);
        cursor->setParentItem(&area);
        cursor->setSize(QSizeF(101, 51));
        cursor->setRenderTarget(QQuickPaintedItem::Image);
        cursor->setZoomRect(zoom);
    }
    ~CursorBench() { qDeleteAll(QVector<QPointer<QObject>>(objects)); }

    TracePlot *addPlot(PlotData *plotData)
    {
        auto *added = new TracePlot;
        objects.append(added);
        added->setSize(QSizeF(101, 51));
        added->setAxisX(x);
        added->setAxisY(y);
        added->setZoomRect(zoom);
        added->setPlotData(plotData);
        plots.append(added);
        return added;
    }
    GraphMarker *addMarker()
    {
        auto *marker = new GraphMarker;
        objects.append(marker);
        QQmlListProperty<GraphMarker> markers = cursor->markers();
        markers.append(&markers, marker);
        return marker;
    }
    // Gives the cursor the plots, and it its place.
    void place(int index)
    {
        cursor->setPlots(plots);
        cursor->setPosIndex(index);
    }
    QImage painted() const
    {
        const auto draw = [this](QPainter *painter) { cursor->paint(painter); };
        return picture(draw, QSize(101, 51), Qt::transparent);
    }

    QQuickItem area;
    QPointer<ZoomRect> zoom = new ZoomRect(&area);
    QPointer<ValueAxis> x = new ValueAxis;
    QPointer<ValueAxis> y = new ValueAxis;
    QPointer<PlotSeries> data = new PlotSeries;
    QPointer<GraphCursor> cursor;
    TracePlot *plot = nullptr;
    QList<AbstractPlot *> plots;
    QVector<QPointer<QObject>> objects;
};

// The alphas of the pixels of a row, columns first to last.
inline QVector<int> alphas(const QImage &image, int row, int first, int last)
{
    QVector<int> result;
    for (int column = first; column <= last; ++column)
        result.append(qAlpha(image.pixel(column, row)));
    return result;
}
