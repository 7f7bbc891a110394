#pragma once

#include "common/Export.h"
#include "plots/RegionLabels.h"
#include "plots/RegionPlot.h"

#include <QBasicTimer>
#include <QRect>

#include <atomic>

// Draws regions as channels: frames whose edges mark the channel and whose height is its power, with name and
// value.
class GRAPH_CHARTS_EXPORT ChannelPlot : public RegionPlot
{
    Q_OBJECT
    Q_PROPERTY(int fps READ fps NOTIFY fpsChanged)
    Q_PROPERTY(int selectedPoint READ selectedPoint WRITE setSelectedPoint NOTIFY selectedPointChanged)

public:
    explicit ChannelPlot(QQuickItem *parent = nullptr);

    int fps() const { return m_fps; }
    int selectedPoint() const { return m_selectedPoint; }

    Q_INVOKABLE int checkClickPosition(double x, double y, double threshold) const;

    void paint(QPainter *painter) override;

public slots:
    void setSelectedPoint(int index);

signals:
    void fpsChanged(int fps);
    void selectedPointChanged(int selectedPoint);

protected:
    void paintPlot(const graph::PlotFrame &frame) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void timerEvent(QTimerEvent *event) override;

private:
    struct Channel
    {
        Entry entry;
        QRect rect;
        bool isMeasured = false;
    };

    QVector<Channel> channels(const graph::PixelMapping &mapping) const;
    QVector<Channel> tallestInColumn(const QVector<Channel> &channels) const;
    bool isSelected(const Channel &channel) const { return channel.entry.index == m_selectedPoint; }
    QString labelText(const Channel &channel) const;
    graph::ChannelLabel placedLabel(const Channel &channel, const QSizeF &text, const QSizeF &name) const;
    void paintChannel(QPainter *painter, const Channel &channel) const;
    void paintLabels(QPainter *painter, QVector<Channel> channels) const;
    void publishFps(int fps);

    int m_selectedPoint = -1;
    int m_fps = 0;
    std::atomic<int> m_paintCount{0}; // paint may run on another thread
    QBasicTimer m_fpsTimer;
};
